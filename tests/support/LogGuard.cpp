#include "tests/support/LogGuard.h"

#include <gtest/gtest.h>

#include <QString>
#include <QtGlobal>

#include <cstdio>
#include <vector>

namespace kelo::test {
namespace {

std::vector<std::string> &expectedWarnings()
{
    static std::vector<std::string> expected;
    return expected;
}

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const std::string text = message.toStdString();
    std::fprintf(stderr, "%s\n", text.c_str());
    if (type != QtWarningMsg && type != QtCriticalMsg) return;
    auto &expected = expectedWarnings();
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        if (text.find(*it) != std::string::npos) {
            expected.erase(it);
            return;
        }
    }
    ADD_FAILURE() << "unannounced Qt warning: " << text;
}

} // namespace

void installLogGuard()
{
    qInstallMessageHandler(handleMessage);
}

void expectQtWarning(const std::string &part)
{
    expectedWarnings().push_back(part);
}

void checkExpectedQtWarnings()
{
    for (const std::string &part : expectedWarnings())
        ADD_FAILURE() << "the announced Qt warning did not come: " << part;
    expectedWarnings().clear();
}

} // namespace kelo::test
