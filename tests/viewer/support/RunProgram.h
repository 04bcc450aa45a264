#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>

namespace viewer::test {

struct Ended
{
    int status;
    QByteArray output;
    QByteArray errors;
};

/// Runs the program to its end in a process that is prepared for it.
inline Ended ended(QProcess &process, const QStringList &arguments)
{
    process.start(KELO_VIEWER_PROGRAM, arguments);
    if (!process.waitForFinished(120000)) return {-1, {}, process.errorString().toUtf8()};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

inline Ended run(const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    return ended(process, arguments);
}

/// No display server of any kind.
inline QProcessEnvironment bareEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    return environment;
}

inline Ended run(const QStringList &arguments)
{
    return run(arguments, bareEnvironment());
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace viewer::test
