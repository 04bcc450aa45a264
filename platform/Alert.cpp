#include "platform/Alert.h"

#include "platform/RunLoop.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace kelo {
namespace {

AlertPresenter::Presenter &presenterSlot()
{
    static AlertPresenter::Presenter presenter;
    return presenter;
}

bool canShowABox()
{
    const QCoreApplication *application = QCoreApplication::instance();
    // By name: this room's sources outside widgets/ do without Qt Widgets.
    if (!application || !application->inherits("QApplication")) return false;
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

void writeLine(const Alert &alert)
{
    std::string line = alert.messageText;
    if (!line.empty() && !alert.informativeText.empty()) {
        const bool isSentence = std::string(".!?:").find(line.back()) != std::string::npos;
        line += isSentence ? " " : ": ";
    }
    line += alert.informativeText;
    std::replace(line.begin(), line.end(), '\n', ' ');
    std::fprintf(stderr, "%s\n", line.c_str());
}

} // namespace

void AlertPresenter::runModal(const Alert &alert)
{
    const RunLoop::ModeScope modal(RunLoop::main(), RunLoopMode::ModalPanel);
    // A copy: the presenter may be replaced while it shows the alert.
    if (const Presenter presenter = presenterSlot())
        presenter(alert);
    else if (canShowABox())
        runModalAlertBox(alert);
    else
        writeLine(alert);
}

AlertPresenter::Presenter AlertPresenter::setPresenter(Presenter presenter)
{
    return std::exchange(presenterSlot(), std::move(presenter));
}

} // namespace kelo
