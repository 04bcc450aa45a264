#pragma once

#include "base/Rect.h"
#include "viewer/settings/PageSettings.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace viewer {

/// How the program ends.
enum ExitStatus {
    Done = 0,
    WrongUse = 1,
    BadInput = 2, ///< a file, database, mesh or script, named with its place
    NoOpenGL = 3, ///< no usable OpenGL or display
};

/// What the command line asks for.
struct CommandLine
{
    bool headless = false;
    kelo::Size size{1024.0, 768.0};        ///< of the view, in points
    bool isSizeGiven = false;              ///< otherwise a window opens as it was left
    double scale = 1.0;                    ///< backing scale of headless runs
    QString file;                          ///< treatment file to open; empty: none
    QStringList files;                     ///< all of them: several are printed one after the other
    QString database;                      ///< embedded database; empty: the usual one
    std::optional<std::int64_t> treatment; ///< of the database's; empty: its first one
    QString meshes;                        ///< folder of meshes; empty: the sample patient's
    QString picture;                       ///< PNG to write at the end; empty: none
    QString state;                         ///< JSON to write at the end, "-" for standard output
    QString exportedScene;                 ///< OBJ to write at the end; empty: none
    QString script;                        ///< interaction script to play, "-" for standard input
    QString print;                         ///< PDF of the treatment page, or a folder; empty: none
    QString printImages; ///< folder for what a print request hands over; empty: none
    PageSettings page;   ///< of the treatment page
};

/// The command line, or what to say and how to end at once (help, version, wrong use).
struct ParsedCommandLine
{
    CommandLine commandLine;
    std::optional<ExitStatus> endsWith; ///< set when the program has nothing more to do
    QString message;                    ///< for standard output when Done, else for standard error
};

ParsedCommandLine parseCommandLine(const QStringList &arguments);

/// Whether pages, or pictures and lists, are printed into a folder, each under the name of its
/// FILE: where there are several, and where --print names a folder: one that is there, or a name
/// that ends in "/" or not in ".pdf" while nothing else has it.
bool printsIntoFolder(const CommandLine &commandLine);

/// A run for each FILE, under its name where they are printed into a folder: NAME.pdf, and a folder
/// NAME of pictures. The name of no FILE is "sample".
std::vector<CommandLine> runsOf(const CommandLine &commandLine);

/// The program's version.
QString version();

/// Whether --headless is among the raw arguments: asked before the application object is made,
/// which needs to know whether there is a display.
bool asksForHeadless(int argc, char **argv);
/// Whether --help or --version is among them, which need neither display nor platform plug-in.
bool asksForText(int argc, char **argv);
/// What is wrong with the raw arguments, or an empty string: bytes that are no text would name
/// another file than the one that is meant.
QString problemOfArguments(int argc, char **argv);

} // namespace viewer
