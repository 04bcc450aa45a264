#include "viewer/settings/CommandLine.h"

#include "viewer/files/Limits.h"
#include "viewer/text/ShownText.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QRegularExpression>

#include <cmath>
#include <cstring>
#include <initializer_list>

namespace viewer {
namespace {

constexpr double smallestScale = 0.5;
constexpr double largestScale = 8.0;

/// In every locale: other programs read what the command line says.
QString english(const char *text)
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
    return {{}, WrongUse, reason + english("\nTry 'treatment-viewer --help'.\n")};
}

QCommandLineOption option(const char *name, const char *description, const char *value = "")
{
    return {QString::fromUtf8(name), english(description), QString::fromUtf8(value)};
}

/// The options beside --help and --version, in the order in which the help names them.
const QList<QCommandLineOption> &options()
{
    static const QList<QCommandLineOption> all{
        option("headless", "No window, no display server; ends when the other options are done."),
        option("size", "View size in points (default 1024x768).", "WxH"),
        option("scale", "Backing scale factor in headless runs (default 1).", "F"),
        option("database", "The embedded database to use; ':memory:' keeps nothing.", "FILE"),
        option("meshes", "Meshes from another folder; every file is checked before one is loaded.",
               "DIR"),
        option("play", "Plays an interaction script first; '-' for standard input.", "SCRIPT"),
        option("picture", "Writes what the view shows, in device pixels.", "OUT.png"),
        option("print",
               "Writes the treatment page of a print request; an OUT that does not end in .pdf is "
               "a folder for the pages of one or several FILEs.",
               "OUT.pdf"),
        option("print-images", "Writes the pictures and lists that a print request hands over.",
               "DIR"),
        option("page-size", "Paper of the treatment page: a4 or letter (default: the locale's).",
               "NAME"),
        option("portrait", "The treatment page stands upright."),
        option("greyscale", "The treatment page without colours."),
        option("notation", "Tooth numbers of the treatment page: universal, fdi or palmer.",
               "NAME"),
        option("state", "Writes the state at the end; '-' for standard output.", "OUT.json"),
        option("export", "Writes the scene as it stands, one group a model.", "OUT.obj"),
    };
    return all;
}

/// Reads --size and --scale; returns what is wrong with them, or an empty string.
QString readSize(const QCommandLineParser &parser, CommandLine &commandLine)
{
    const QString size = parser.value(QStringLiteral("size"));
    if (parser.isSet(QStringLiteral("size"))) {
        const auto given = sizeFromText(size);
        if (!given)
            return english(
                       "--size takes a width and a height from 1 to %1, as in 1024x768, not '%2'.")
                .arg(QString::number(largestSide), shortened(size));
        commandLine.size = *given;
        commandLine.isSizeGiven = true;
    }
    const QString scale = parser.value(QStringLiteral("scale"));
    if (parser.isSet(QStringLiteral("scale"))) {
        const auto given = scaleFromText(scale);
        if (!given)
            return english("--scale takes a number from 0.5 to 8, not '%1'.").arg(shortened(scale));
        commandLine.scale = *given;
    }
    if (std::lround(commandLine.size.width * commandLine.scale) > largestSide ||
        std::lround(commandLine.size.height * commandLine.scale) > largestSide)
        return english("--size times --scale may be %1 pixels at most on each side.")
            .arg(largestSide);
    return {};
}

/// Reads what the treatment page is like; returns what is wrong with it, or an empty string.
QString readPage(const QCommandLineParser &parser, PageSettings &page)
{
    const QString size = parser.value(QStringLiteral("page-size"));
    if (size == QStringLiteral("a4"))
        page.layout.setPageSize(QPageSize(QPageSize::A4), page.layout.margins());
    else if (size == QStringLiteral("letter"))
        page.layout.setPageSize(QPageSize(QPageSize::Letter), page.layout.margins());
    else if (parser.isSet(QStringLiteral("page-size")))
        return english("--page-size takes a4 or letter, not '%1'.").arg(size);
    if (parser.isSet(QStringLiteral("portrait"))) page.layout.setOrientation(QPageLayout::Portrait);
    page.greyscale = parser.isSet(QStringLiteral("greyscale"));
    if (parser.isSet(QStringLiteral("notation"))) {
        const QString name = parser.value(QStringLiteral("notation"));
        const auto notation = toothNotationFromName(name);
        if (!notation)
            return english("--notation takes universal, fdi or palmer, not '%1'.").arg(name);
        page.notation = *notation;
        page.isNotationGiven = true;
    }
    return {};
}

/// Whether --print names a folder, which need not be there yet. What is there and is none, a device
/// for example, is written to under any name.
bool isFolder(const QString &print)
{
    const QFileInfo existing(print);
    if (existing.exists()) return existing.isDir();
    return !print.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive);
}

/// What a FILE is printed under in a folder.
QString printedName(const QString &file)
{
    return QFileInfo(file).completeBaseName();
}

/// Whether a name stays in the folder that things are printed into: "...json" is the name of a
/// file, and what is left of it without its ending that of the folder above.
bool isNameInFolder(const QString &name)
{
    return !name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral("..");
}

/// What is wrong with the FILEs, or an empty string. Several are printed in one headless run, each
/// under the name of its file.
QString readFiles(const QCommandLineParser &parser, CommandLine &commandLine)
{
    const QStringList files = parser.positionalArguments();
    if (files.contains(QString())) return english("FILE is the name of a treatment file.");
    commandLine.file = files.value(0);
    commandLine.files = files;
    if (printsIntoFolder(commandLine)) {
        for (const QString &file : files) {
            if (!isNameInFolder(printedName(file)))
                return english("'%1' has no name to be printed under.").arg(file);
        }
    }
    if (files.size() < 2) return {};
    const bool isPrinted = !commandLine.print.isEmpty() || !commandLine.printImages.isEmpty();
    if (!commandLine.headless || !isPrinted)
        return english(
                   "Unexpected argument '%1': several FILEs are only printed, with --headless and "
                   "--print or --print-images.")
            .arg(files[1]);
    if (!commandLine.print.isEmpty() && !isFolder(commandLine.print))
        return english("--print takes a folder for several FILEs, not '%1'.")
            .arg(commandLine.print);
    for (const char *name : {"picture", "state", "export", "play", "database"}) {
        if (parser.isSet(QString::fromUtf8(name)))
            return english("--%1 takes one FILE, not %2.")
                .arg(QString::fromUtf8(name), QString::number(files.size()));
    }
    QHash<QString, QString> sources;
    for (const QString &file : files) {
        const QString name = printedName(file);
        if (sources.contains(name))
            return english("'%1' and '%2' would both be printed as %3.")
                .arg(sources[name], file, name);
        sources[name] = file;
    }
    return {};
}

} // namespace

QString version()
{
    return QStringLiteral(KELO_VERSION);
}

namespace {

bool isAmong(int argc, char **argv, std::initializer_list<const char *> options)
{
    for (int i = 1; i < argc; ++i) {
        for (const char *option : options) {
            if (std::strcmp(argv[i], option) == 0) return true;
        }
    }
    return false;
}

} // namespace

bool asksForHeadless(int argc, char **argv)
{
    return isAmong(argc, argv, {"--headless"});
}

bool asksForText(int argc, char **argv)
{
    return isAmong(argc, argv, {"--help", "--version", "-h", "-v"});
}

QString problemOfArguments(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (QFile::encodeName(QFile::decodeName(argv[i])) != argv[i])
            return english("Argument %1 is not text in the encoding of the system: '%2'.")
                .arg(QString::number(i), shortened(QFile::decodeName(argv[i])));
    }
    return {};
}

ParsedCommandLine parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        english("Shows one patient's orthodontic treatment as an interactive 3D scene."));
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 english("A treatment file to open (JSON)."),
                                 QStringLiteral("[FILE...]"));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption versionOption = parser.addVersionOption();
    parser.addOptions(options());

    if (!parser.parse(arguments)) return wrongUse(parser.errorText());
    if (parser.isSet(help)) return {{}, Done, parser.helpText()};
    if (parser.isSet(versionOption))
        return {{}, Done, english("treatment-viewer %1\n").arg(viewer::version())};

    ParsedCommandLine parsed;
    CommandLine &commandLine = parsed.commandLine;
    commandLine.headless = parser.isSet(QStringLiteral("headless"));
    commandLine.database = parser.value(QStringLiteral("database"));
    commandLine.meshes = parser.value(QStringLiteral("meshes"));
    commandLine.picture = parser.value(QStringLiteral("picture"));
    commandLine.state = parser.value(QStringLiteral("state"));
    commandLine.exportedScene = parser.value(QStringLiteral("export"));
    commandLine.script = parser.value(QStringLiteral("play"));
    commandLine.print = parser.value(QStringLiteral("print"));
    commandLine.printImages = parser.value(QStringLiteral("print-images"));
    for (const QString &problem :
         {readSize(parser, commandLine), readPage(parser, commandLine.page),
          readFiles(parser, commandLine)}) {
        if (!problem.isEmpty()) return wrongUse(problem);
    }
    if (parser.isSet(QStringLiteral("database")) && commandLine.database.isEmpty())
        return wrongUse(english("--database takes the name of a file."));
    if (parser.isSet(QStringLiteral("meshes")) && commandLine.meshes.isEmpty())
        return wrongUse(english("--meshes takes the name of a folder."));
    return parsed;
}

bool printsIntoFolder(const CommandLine &commandLine)
{
    return commandLine.files.size() > 1 ||
           (!commandLine.print.isEmpty() && isFolder(commandLine.print));
}

std::vector<CommandLine> runsOf(const CommandLine &commandLine)
{
    if (!printsIntoFolder(commandLine)) return {commandLine};
    std::vector<CommandLine> runs;
    const QStringList files =
        commandLine.files.isEmpty() ? QStringList{QString()} : commandLine.files;
    for (const QString &file : files) {
        const QString name = file.isEmpty() ? QStringLiteral("sample") : printedName(file);
        CommandLine run = commandLine;
        run.file = file;
        run.files = QStringList{file};
        if (!run.print.isEmpty())
            run.print = QDir(run.print).filePath(name + QStringLiteral(".pdf"));
        if (!run.printImages.isEmpty()) run.printImages = QDir(run.printImages).filePath(name);
        runs.push_back(run);
    }
    return runs;
}

} // namespace viewer
