#include "platform/presenters/Alert.h"

#include "platform/presenters/DesktopPresenters.h"
#include "platform/time/RunLoop.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace kelo {
namespace {

AlertPresenter::Presenter &alertPresenter()
{
    static AlertPresenter::Presenter presenter;
    return presenter;
}

bool canShowABox()
{
    const QCoreApplication *application = QCoreApplication::instance();
    // By name: only platform/widgets knows Qt Widgets.
    if (!application || !application->inherits("QApplication")) return false;
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

std::string onOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text + '\n';
}

} // namespace

void AlertPresenter::runModal(const Alert &alert)
{
    const RunLoop::ModeScope modal(RunLoop::main(), RunLoopMode::ModalPanel);
    // A copy: the presenter may be replaced while it shows the alert.
    if (const Presenter presenter = alertPresenter())
        presenter(alert);
    else if (canShowABox())
        desktopPresenters().alert(alert);
    else
        std::fputs(linesOf(alert).c_str(), stderr);
}

AlertPresenter::Presenter AlertPresenter::setPresenter(Presenter presenter)
{
    return std::exchange(alertPresenter(), std::move(presenter));
}

std::string AlertPresenter::linesOf(const Alert &alert)
{
    std::string line = alert.messageText;
    if (!line.empty() && !alert.informativeText.empty()) {
        const bool isSentence = std::string(".!?:").find(line.back()) != std::string::npos;
        line += isSentence ? " " : ": ";
    }
    line = onOneLine(line + alert.informativeText);
    return alert.detailText.empty() ? line : line + onOneLine(alert.detailText);
}

} // namespace kelo
