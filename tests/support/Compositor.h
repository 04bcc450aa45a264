#pragma once

#include "tests/support/SettledDisplay.h"
#include "tests/support/WaitUntil.h"

#include <QProcess>
#include <QString>

namespace kelo::test {

/// A compositor on the test's display for as long as this lives: a window that was covered, by a
/// menu for example, gets no event then when it is uncovered, and shows the picture that it had.
class Compositor
{
public:
    Compositor()
    {
        process_.start(QStringLiteral("picom"),
                       {QStringLiteral("--config"), QStringLiteral("/dev/null"),
                        QStringLiteral("--backend"), QStringLiteral("xrender")});
        isRunning_ = process_.waitForStarted() && waitUntil([] { return displayHasCompositor(); });
    }
    ~Compositor()
    {
        process_.terminate();
        process_.waitForFinished();
    }
    Compositor(const Compositor &) = delete;
    Compositor &operator=(const Compositor &) = delete;

    bool isRunning() const { return isRunning_; }

private:
    QProcess process_;
    bool isRunning_ = false;
};

} // namespace kelo::test
