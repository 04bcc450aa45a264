#include "viewer/windows/InterfaceFiles.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/windows/ToothChart.h"

/// In no namespace: the macro declares a function of the global one.
static void loadResources()
{
    Q_INIT_RESOURCE(interface);
}

namespace viewer {

void addViewerInterfaceFiles()
{
    loadResources();
    kelo::addInterfaceFileFolder(":/viewer/interface");
    kelo::registerInterfaceFileClass("viewer::ToothChart",
                                     [](QWidget *parent) { return new ToothChart(parent); });
}

} // namespace viewer
