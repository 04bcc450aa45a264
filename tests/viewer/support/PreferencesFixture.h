#pragma once

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

namespace viewer::test {

/// Settings of the user in a folder that ends with the test.
class PreferencesOfTheTest
{
public:
    PreferencesOfTheTest()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("keloOpenGL-tests"));
        QCoreApplication::setApplicationName(QStringLiteral("viewer-tests"));
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
        QSettings().clear();
    }

private:
    QTemporaryDir folder_;
};

} // namespace viewer::test
