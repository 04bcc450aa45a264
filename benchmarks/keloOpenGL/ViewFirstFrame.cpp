// Loads the sample patient, shows one frame of the view and ends: view_first_frame WIDTH HEIGHT.

#include "platform/gl.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/treatment/TreatmentLoader.h"

#include <QCoreApplication>

#include <cstdlib>
#include <unistd.h>

int main(int argc, char **argv)
{
    if (argc != 3) return 1;
    const QCoreApplication application(argc, argv);
    kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Surfaceless);
    const kelo::Size size{std::atof(argv[1]), std::atof(argv[2])};
    const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, size});
    view->setDocumentModel(viewer::samplePatientDocument());
    view->display();
    glFinish();
    _exit(0);
}
