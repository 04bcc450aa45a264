#include <keloOpenGL/keloOpenGL.h>

#include <QApplication>
#include <QImage>
#include <QMainWindow>

// [document]
std::shared_ptr<kelo::DXDocumentModel> samplePatient()
{
    auto document = std::make_shared<kelo::DXDocumentModel>();
    kelo::loadSamplePatient(*document);
    return document;
}
// [document]

/// Shows the sample patient in a window; given a file name, writes a picture there and ends.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0, 0}, {1024, 768}});
    view->setDocumentModel(samplePatient());

    QMainWindow window;
    window.setCentralWidget(view->createContainer());
    window.resize(1024, 768);
    window.show();
    if (argc == 2) return view->grabImage().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
    return QApplication::exec();
}
