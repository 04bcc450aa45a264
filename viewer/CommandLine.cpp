#include "viewer/CommandLine.h"

#include <QCommandLineParser>
#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <cstring>

namespace viewer {
namespace {

/// Larger views than this exceed what renderers draw at once.
constexpr int largestSide = 8192;
constexpr double smallestScale = 0.5;
constexpr double largestScale = 8.0;

QString tr(const char *text)
{
    return QString::fromUtf8(text);
}

std::optional<kelo::Size> sizeFromText(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) return std::nullopt;
    const int width = match.captured(1).toInt();
    const int height = match.captured(2).toInt();
    if (width < 1 || height < 1 || width > largestSide || height > largestSide) return std::nullopt;
    return kelo::Size{static_cast<double>(width), static_cast<double>(height)};
}

std::optional<double> scaleFromText(const QString &text)
{
    bool isNumber = false;
    const double scale = QLocale::c().toDouble(text, &isNumber);
    if (!isNumber || !std::isfinite(scale) || scale < smallestScale || scale > largestScale)
        return std::nullopt;
    return scale;
}

ParsedCommandLine wrongUse(const QString &reason)
{
    return {{}, WrongUse, reason + tr("\nTry 'treatment-viewer --help'.\n")};
}

} // namespace

bool asksForHeadless(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : {"--headless", "--help", "--version", "-h", "-v"}) {
            if (std::strcmp(argv[i], option) == 0) return true;
        }
    }
    return false;
}

ParsedCommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Shows one patient's orthodontic treatment as an interactive 3D scene."));
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A treatment file to open (JSON)."),
                                 QStringLiteral("[FILE]"));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption headless(
        QStringLiteral("headless"),
        tr("No window, no display server; ends when the other options are done."));
    const QCommandLineOption size(QStringLiteral("size"),
                                  tr("View size in points (default 1024x768)."),
                                  QStringLiteral("WxH"));
    const QCommandLineOption scale(QStringLiteral("scale"),
                                   tr("Backing scale factor in headless runs (default 1)."),
                                   QStringLiteral("F"));
    const QCommandLineOption database(QStringLiteral("database"),
                                      tr("The embedded database to use; ':memory:' keeps nothing."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption meshes(
        QStringLiteral("meshes"),
        tr("Meshes from another folder; every file is checked before one is loaded."),
        QStringLiteral("DIR"));
    const QCommandLineOption picture(QStringLiteral("picture"),
                                     tr("Writes what the view shows, in device pixels."),
                                     QStringLiteral("OUT.png"));
    const QCommandLineOption state(QStringLiteral("state"),
                                   tr("Writes the state at the end; '-' for standard output."),
                                   QStringLiteral("OUT.json"));
    const QCommandLineOption exportedScene(QStringLiteral("export"),
                                           tr("Writes the scene as it stands, one group a model."),
                                           QStringLiteral("OUT.obj"));
    const QCommandLineOption play(QStringLiteral("play"),
                                  tr("Plays an interaction script first; '-' for standard input."),
                                  QStringLiteral("SCRIPT"));
    const QCommandLineOption print(QStringLiteral("print"),
                                   tr("Writes the treatment page of a print request."),
                                   QStringLiteral("OUT.pdf"));
    const QCommandLineOption printImages(
        QStringLiteral("print-images"),
        tr("Writes the pictures and lists that a print request hands over."),
        QStringLiteral("DIR"));
    parser.addOptions({headless, size, scale, database, meshes, play, picture, print, printImages,
                       state, exportedScene});

    if (!parser.parse(arguments)) return wrongUse(parser.errorText());
    if (parser.isSet(help)) return {{}, Done, parser.helpText()};
    if (parser.isSet(version))
        return {{}, Done, tr("treatment-viewer %1\n").arg(QStringLiteral(KELO_VERSION))};
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1) return wrongUse(tr("Unexpected argument '%1'.").arg(files[1]));

    ParsedCommandLine parsed;
    CommandLine &commandLine = parsed.commandLine;
    commandLine.headless = parser.isSet(headless);
    if (parser.isSet(size)) {
        const auto given = sizeFromText(parser.value(size));
        if (!given)
            return wrongUse(tr("--size takes a width and a height from 1 to %1, as in 1024x768, "
                               "not '%2'.")
                                .arg(largestSide)
                                .arg(parser.value(size)));
        commandLine.size = *given;
    }
    if (parser.isSet(scale)) {
        const auto given = scaleFromText(parser.value(scale));
        if (!given)
            return wrongUse(
                tr("--scale takes a number from 0.5 to 8, not '%1'.").arg(parser.value(scale)));
        commandLine.scale = *given;
    }
    if (std::lround(commandLine.size.width * commandLine.scale) > largestSide ||
        std::lround(commandLine.size.height * commandLine.scale) > largestSide)
        return wrongUse(
            tr("--size times --scale may be %1 pixels at most on each side.").arg(largestSide));
    commandLine.file = files.value(0);
    commandLine.database = parser.value(database);
    commandLine.meshes = parser.value(meshes);
    commandLine.picture = parser.value(picture);
    commandLine.state = parser.value(state);
    commandLine.exportedScene = parser.value(exportedScene);
    commandLine.script = parser.value(play);
    commandLine.print = parser.value(print);
    commandLine.printImages = parser.value(printImages);
    if (!files.isEmpty() && commandLine.file.isEmpty())
        return wrongUse(tr("FILE is the name of a treatment file."));
    if (parser.isSet(database) && commandLine.database.isEmpty())
        return wrongUse(tr("--database takes the name of a file."));
    if (parser.isSet(meshes) && commandLine.meshes.isEmpty())
        return wrongUse(tr("--meshes takes the name of a folder."));
    return parsed;
}

} // namespace viewer
