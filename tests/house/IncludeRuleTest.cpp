#include "tests/house/SourceTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace {

using kelo::test::contains;
using kelo::test::contentOfSourceFile;
using kelo::test::existsInSourceTree;
using kelo::test::linesOf;
using kelo::test::sourceFiles;
using kelo::test::startsWith;

/// What one room may include. A file belongs to the innermost room whose folder it is in, and so
/// does what it includes; a room may always include itself.
struct Room
{
    std::string folder;
    std::vector<std::string> rooms;
    /// Qt modules; "any" for all of them.
    std::vector<std::string> qtModules;
    bool mayIncludeGL;
};

using Folders = std::vector<std::string>;

Folders joined(std::initializer_list<Folders> lists)
{
    Folders all;
    for (const Folders &list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

/// What a desktop gives, without its widgets.
const Folders platform = {"base/",
                          "platform/gl.h",
                          "platform/time/",
                          "platform/settings/",
                          "platform/presenters/",
                          "platform/view/"};

/// The library below its views.
const Folders library = joined({platform,
                                {"platform/widgets/", "geometry/", "keloModel/", "models/OBJReader",
                                 "models/BakedLight", "models/", "document/"}});

Folders libraryAnd(const Folders &more)
{
    return joined({library, more});
}

/// The folders of keloOpenGL/, each below all that may include it. What lies between the views that
/// any scene has and the treatment view is parts: no part knows another one, and none the view that
/// is put together from them.
std::vector<Room> partRooms()
{
    const Folders scene = joined({platform, {"keloOpenGL/view/", "models/", "geometry/"}});
    const Folders documents =
        joined({platform, {"document/", "models/", "keloModel/", "geometry/"}});
    return {
        {"keloOpenGL/view/", library, {"any"}, true},
        {"keloOpenGL/bands/", joined({scene, {"document/", "keloModel/"}}), {}, true},
        {"keloOpenGL/picking/", joined({scene, {"document/"}}), {}, true},
        {"keloOpenGL/overlay/", scene, {"QtCore"}, true},
        {"keloOpenGL/menus/", documents, {"QtCore", "QtGui"}, false},
        {"keloOpenGL/editing/", documents, {}, false},
        {"keloOpenGL/printing/",
         joined({scene, {"document/", "keloModel/"}}),
         {"QtCore", "QtGui"},
         true},
        {"keloOpenGL/treatment/",
         libraryAnd({"keloOpenGL/view/", "keloOpenGL/bands/", "keloOpenGL/picking/",
                     "keloOpenGL/overlay/", "keloOpenGL/menus/", "keloOpenGL/editing/",
                     "keloOpenGL/printing/"}),
         {"any"},
         true},
        {"keloOpenGL/windows/",
         libraryAnd({"keloOpenGL/view/", "keloOpenGL/treatment/"}),
         {"any"},
         true},
    };
}

std::vector<std::string> foldersOf(const std::vector<Room> &rooms)
{
    std::vector<std::string> folders;
    for (const Room &room : rooms)
        folders.push_back(room.folder);
    return folders;
}

/// The library, the tools and the examples.
std::vector<Room> libraryRooms()
{
    const Folders parts = foldersOf(partRooms());
    std::vector<Room> rooms = {
        {"base/", {}, {}, false},
        {"geometry/", {"base/"}, {}, false},
        {"platform/gl.h", {}, {}, true},
        {"platform/time/", {"base/"}, {"QtCore"}, false},
        {"platform/settings/", {"base/"}, {"QtCore", "QtGui"}, false},
        {"platform/presenters/", {"base/", "platform/time/"}, {"QtCore", "QtGui"}, false},
        {"platform/view/",
         {"base/", "platform/gl.h", "platform/time/", "platform/presenters/"},
         {"QtCore", "QtGui", "QtOpenGL"},
         true},
        {"platform/widgets/", platform, {"any"}, true},
        {"keloModel/", {"base/"}, {"QtCore"}, false},
        {"models/OBJReader", {"base/"}, {}, false},
        {"models/BakedLight", {"base/", "models/OBJReader"}, {}, false},
        {"models/",
         joined({platform, {"models/OBJReader", "models/BakedLight", "keloModel/", "geometry/"}}),
         {"QtCore", "QtGui"},
         true},
        {"document/",
         joined({platform, {"models/", "keloModel/", "geometry/"}}),
         {"QtCore", "QtGui"},
         false},
    };
    for (const Room &room : partRooms())
        rooms.push_back(room);
    const std::vector<Room> upper = {
        {"keloOpenGL/", libraryAnd(parts), {"any"}, false},
        {"tools/",
         {"base/", "models/OBJReader", "models/BakedLight", "models/", "geometry/"},
         {"QtCore"},
         false},
        // It measures the bands that the view draws, so it takes them and the jaws from the view's
        // own pure functions.
        {"tools/banddepth/",
         {"base/", "tools/", "models/OBJReader", "models/BakedLight", "models/", "geometry/",
          "keloOpenGL/view/", "keloOpenGL/bands/"},
         {"QtCore"},
         false},
        // It computes the light that reaches a mesh with the jaws where the view has them.
        {"tools/lightbake/",
         {"base/", "tools/", "models/OBJReader", "models/BakedLight", "geometry/",
          "keloOpenGL/view/"},
         {},
         false},
        // Hosts like any other: they include what an installation has, under its names.
        {"examples/", {}, {"any"}, false},
    };
    rooms.insert(rooms.end(), upper.begin(), upper.end());
    return rooms;
}

/// The viewer's folders, each below all that may include it.
std::vector<Room> viewerRooms()
{
    std::vector<Room> rooms = {
        {"viewer/text/", {"keloModel/"}, {"QtCore"}, false},
        {"viewer/files/", {}, {"QtCore"}, false},
        {"viewer/settings/",
         joined({platform, {"viewer/text/", "viewer/files/", "keloOpenGL/"}}),
         {"any"},
         false},
        {"viewer/view/", {"keloOpenGL/"}, {"QtCore"}, false},
        {"viewer/store/", {"viewer/files/", "keloModel/"}, {"QtCore", "QtSql", "QtNetwork"}, false},
        {"viewer/output/",
         libraryAnd({"viewer/files/", "viewer/view/", "viewer/store/", "keloOpenGL/treatment/",
                     "keloOpenGL/"}),
         {"QtCore", "QtGui"},
         false},
        {"viewer/treatment/",
         libraryAnd({"viewer/text/", "viewer/files/", "viewer/settings/", "viewer/output/",
                     "viewer/store/", "keloOpenGL/", "tools/"}),
         {"QtCore", "QtGui"},
         false},
        {"viewer/script/",
         joined(
             {platform,
              {"viewer/text/", "viewer/files/", "viewer/view/", "viewer/output/", "keloOpenGL/"}}),
         {"QtCore"},
         false},
        {"viewer/page/",
         {"viewer/text/", "viewer/files/", "viewer/settings/", "viewer/output/",
          "viewer/treatment/", "keloOpenGL/"},
         {"any"},
         false},
        {"viewer/windows/",
         {"viewer/text/", "viewer/files/", "viewer/settings/", "viewer/view/", "viewer/output/",
          "viewer/store/", "viewer/treatment/", "viewer/page/", "keloModel/",
          "keloOpenGL/treatment/", "keloOpenGL/"},
         {"any"},
         false},
        {"viewer/app/",
         {"viewer/text/", "viewer/files/", "viewer/settings/", "viewer/view/", "viewer/output/",
          "viewer/store/", "viewer/treatment/", "viewer/script/", "viewer/page/", "viewer/windows/",
          "keloOpenGL/"},
         {"any"},
         false},
    };
    // Which headers of the library a host may include, the test of public headers holds.
    for (Room &room : rooms) {
        if (!contains(room.rooms, "keloOpenGL/")) continue;
        for (const std::string &part : foldersOf(partRooms()))
            if (!contains(room.rooms, part)) room.rooms.push_back(part);
    }
    return rooms;
}

const std::vector<Room> &houseRooms()
{
    static const std::vector<Room> rooms = [] {
        std::vector<Room> all = libraryRooms();
        for (const Room &room : viewerRooms())
            all.push_back(room);
        return all;
    }();
    return rooms;
}

const Room *roomOf(const std::string &path)
{
    const Room *innermost = nullptr;
    for (const Room &room : houseRooms()) {
        const bool isDeeper = !innermost || room.folder.size() > innermost->folder.size();
        if (startsWith(path, room.folder) && isDeeper) innermost = &room;
    }
    return innermost;
}

/// The Qt module of a header, or nothing for other headers. The old home of a class that moved to
/// another module keeps a forwarding header, so the ground floor is asked first.
std::string qtModuleOf(const std::string &header)
{
    static const std::filesystem::path qt = KELO_QT_INCLUDE_DIR;
    const auto slash = header.find('/');
    if (slash != std::string::npos && startsWith(header, "Qt")) return header.substr(0, slash);
    for (const char *module :
         {"QtCore", "QtGui", "QtOpenGL", "QtWidgets", "QtOpenGLWidgets", "QtPrintSupport",
          "QtNetwork", "QtSql", "QtSvg", "QtUiTools", "QtXml", "QtTest"})
        if (std::filesystem::is_regular_file(qt / module / header)) return module;
    return startsWith(header, "Q") ? "unknown Qt module" : "";
}

bool bringsGL(const std::string &header)
{
    return header == "platform/gl.h" || startsWith(header, "GL/") || startsWith(header, "epoxy/") ||
           startsWith(header, "EGL/");
}

std::string problemWithQuoted(const Room &room, const std::string &header)
{
    const Room *entered = roomOf(header);
    if (!entered) return "is not written from the root, or enters no room of the library";
    if (entered->folder != room.folder && !contains(room.rooms, entered->folder))
        return "enters " + entered->folder + ", which is not below " + room.folder;
    if (bringsGL(header) && !room.mayIncludeGL) return "brings GL into " + room.folder;
    return {};
}

std::string problemWithAngled(const Room &room, const std::string &header)
{
    if (room.folder == "examples/" && startsWith(header, "keloOpenGL/")) return {};
    if (roomOf(header)) return "is the project's own and belongs in quotes";
    if (bringsGL(header) && !room.mayIncludeGL) return "brings GL into " + room.folder;
    const std::string module = qtModuleOf(header);
    if (module.empty() || contains(room.qtModules, "any") || contains(room.qtModules, module))
        return {};
    return "brings " + module + " into " + room.folder;
}

/// What is wrong with the includes of a source that lies at `path`, one line each.
std::vector<std::string> includeProblems(const std::string &path, const std::string &content)
{
    static const std::regex include(R"re(^\s*#\s*include\s*(["<])([^">]+)[">].*)re");
    std::vector<std::string> problems;
    const Room *room = roomOf(path);
    if (!room) return problems;
    std::size_t number = 0;
    for (const std::string &line : linesOf(content)) {
        ++number;
        std::smatch match;
        if (!std::regex_match(line, match, include)) continue;
        const std::string header = match[2];
        // What the meta-object compiler makes for a source carries the source's own name.
        if (kelo::test::endsWith(header, ".moc")) continue;
        const std::string problem =
            match[1] == "<" ? problemWithAngled(*room, header) : problemWithQuoted(*room, header);
        if (!problem.empty())
            problems.push_back(path + ":" + std::to_string(number) + ": " + header + " " + problem);
    }
    return problems;
}

bool isSource(const std::string &path)
{
    return kelo::test::endsWith(path, ".h") || kelo::test::endsWith(path, ".cpp");
}

TEST(IncludeRule, noArrowRunsUpwards)
{
    std::size_t sourceCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (!isSource(path) || !roomOf(path)) continue;
        ++sourceCount;
        for (const std::string &problem : includeProblems(path, contentOfSourceFile(path)))
            ADD_FAILURE() << problem;
    }
    // A walk that finds nothing proves nothing.
    EXPECT_GT(sourceCount, 20u);
}

TEST(IncludeRule, everyQuotedIncludeIsThere)
{
    static const std::regex include(R"re(^\s*#\s*include\s*"([^"]+)".*)re");
    for (const std::string &path : sourceFiles()) {
        if (!isSource(path)) continue;
        for (const std::string &line : linesOf(contentOfSourceFile(path))) {
            std::smatch match;
            if (!std::regex_match(line, match, include)) continue;
            const std::string header = match[1];
            if (kelo::test::endsWith(header, ".moc")) continue;
            EXPECT_TRUE(existsInSourceTree(header)) << path << " includes " << header;
        }
    }
}

TEST(IncludeRule, everySourceLiesInARoomOrBesideTheLibrary)
{
    for (const std::string &path : sourceFiles()) {
        if (!isSource(path)) continue;
        const bool isBeside = startsWith(path, "tests/") || startsWith(path, "benchmarks/") ||
                              startsWith(path, "fuzz/");
        EXPECT_TRUE(isBeside || roomOf(path)) << path;
    }
}

TEST(IncludeRule, theTableNamesOnlyRoomsThatItHolds)
{
    for (const Room &room : houseRooms())
        for (const std::string &lower : room.rooms)
            EXPECT_TRUE(std::any_of(houseRooms().begin(), houseRooms().end(),
                                    [&](const Room &other) { return other.folder == lower; }))
                << lower;
}

/// What is wrong with a table in which every room lies below all that may include it, one
/// line each. In such a table no rooms include each other in a circle.
std::vector<std::string> orderProblems(const std::vector<Room> &rooms)
{
    std::vector<std::string> problems;
    std::vector<std::string> below;
    const std::vector<std::string> folders = foldersOf(rooms);
    for (const Room &room : rooms) {
        for (const std::string &lower : room.rooms) {
            if (contains(folders, lower) && !contains(below, lower))
                problems.push_back(room.folder + " may include " + lower + ", but is not above it");
        }
        below.push_back(room.folder);
    }
    return problems;
}

TEST(IncludeRule, noRoomsIncludeEachOtherInACircle)
{
    EXPECT_EQ(orderProblems(houseRooms()), std::vector<std::string>{});
}

TEST(IncludeRule, aPlantedCircleIsFound)
{
    const std::vector<Room> circle = {{"a/", {"c/", "elsewhere/"}, {}, false},
                                      {"b/", {"a/"}, {}, false},
                                      {"c/", {"b/"}, {}, false}};
    EXPECT_EQ(orderProblems(circle),
              std::vector<std::string>{"a/ may include c/, but is not above it"});
}

TEST(IncludeRule, noPartKnowsAnotherOrTheTreatmentView)
{
    const std::vector<std::string> folders = foldersOf(partRooms());
    std::size_t partCount = 0;
    for (const Room &room : partRooms()) {
        if (room.folder == "keloOpenGL/treatment/" || room.folder == "keloOpenGL/windows/")
            continue;
        ++partCount;
        for (const std::string &lower : room.rooms)
            EXPECT_TRUE(lower == "keloOpenGL/view/" || !contains(folders, lower))
                << room.folder << " may include " << lower;
    }
    EXPECT_GE(partCount, 7u);
}

TEST(IncludeRule, onlyTheTreatmentViewsSourcesKnowItsState)
{
    std::size_t includerCount = 0;
    for (const std::string &path : sourceFiles()) {
        if (!isSource(path) || startsWith(path, "tests/house/")) continue;
        const std::string content = contentOfSourceFile(path);
        if (content.find("#include \"keloOpenGL/treatment/DXOpenGLState.h\"") == std::string::npos)
            continue;
        ++includerCount;
        EXPECT_TRUE(startsWith(path, "keloOpenGL/treatment/DXOpenGL") &&
                    kelo::test::endsWith(path, ".cpp"))
            << path;
    }
    EXPECT_GT(includerCount, 0u);
}

struct Planted
{
    const char *name;
    const char *path;
    const char *line;
    /// Empty where the include is allowed.
    const char *expectedProblem;
};

void PrintTo(const Planted &planted, std::ostream *stream)
{
    *stream << planted.name;
}

class PlantedInclude : public testing::TestWithParam<Planted>
{};

TEST_P(PlantedInclude, isToldAsExpected)
{
    const Planted &planted = GetParam();
    std::vector<std::string> expected;
    if (*planted.expectedProblem)
        expected.push_back(std::string(planted.path) + ":1: " + planted.expectedProblem);
    EXPECT_EQ(includeProblems(planted.path, planted.line), expected);
}

const Planted plantedIncludes[] = {
    {"baseTakesNothing", "base/Planted.h", "#include \"geometry/Vector.h\"",
     "geometry/Vector.h enters geometry/, which is not below base/"},
    {"baseTakesNoQt", "base/Planted.h", "#include <QString>", "QString brings QtCore into base/"},
    {"geometryTakesNothingButTheBase", "geometry/Planted.h", "#include \"platform/time/RunLoop.h\"",
     "platform/time/RunLoop.h enters platform/time/, which is not below geometry/"},
    {"geometryTakesNoQt", "geometry/Planted.h", "#include <QString>",
     "QString brings QtCore into geometry/"},
    {"geometryTakesTheExportMark", "geometry/Planted.h", "#include \"base/Export.h\"", ""},
    {"geometryTakesTheStandardLibrary", "geometry/Planted.h", "#include <vector>", ""},
    {"thePlatformsViewTakesNoWidgets", "platform/view/Planted.cpp", "#include <QWidget>",
     "QWidget brings QtWidgets into platform/view/"},
    {"thePlatformsViewDoesNotKnowItsWidgets", "platform/view/Planted.cpp",
     "#include \"platform/widgets/ToolTip.h\"",
     "platform/widgets/ToolTip.h enters platform/widgets/, which is not below platform/view/"},
    {"presentersDoNotKnowTheView", "platform/presenters/Planted.h",
     "#include \"platform/view/Event.h\"",
     "platform/view/Event.h enters platform/view/, which is not below platform/presenters/"},
    {"platformWidgetsTakeWidgets", "platform/widgets/Planted.cpp", "#include <QtWidgets/QMenu>",
     ""},
    {"aClassThatMovedToGuiIsNoWidget", "platform/view/Planted.cpp", "#include <QAction>", ""},
    {"keloModelTakesQtCore", "keloModel/Planted.h", "#include <QDate>", ""},
    {"keloModelTakesNoQtGui", "keloModel/Planted.h", "#include <QImage>",
     "QImage brings QtGui into keloModel/"},
    {"keloModelTakesNoOtherRoom", "keloModel/Planted.h", "#include \"geometry/Vector.h\"",
     "geometry/Vector.h enters geometry/, which is not below keloModel/"},
    {"theOBJReaderStandsAlone", "models/OBJReader.cpp", "#include \"models/Color.h\"",
     "models/Color.h enters models/, which is not below models/OBJReader"},
    {"modelsDoNotKnowTheDocument", "models/Planted.cpp",
     "#  include \"document/DXDocumentModel.h\" // upwards",
     "document/DXDocumentModel.h enters document/, which is not below models/"},
    {"theDocumentTakesNoGL", "document/Planted.cpp", "#include \"platform/gl.h\"",
     "platform/gl.h brings GL into document/"},
    {"theDocumentTakesNoWidgets", "document/Planted.cpp", "#include <QMessageBox>",
     "QMessageBox brings QtWidgets into document/"},
    {"viewDoesNotKnowTreatment", "keloOpenGL/view/Planted.cpp",
     "#include \"keloOpenGL/treatment/DXOpenGL.h\"",
     "keloOpenGL/treatment/DXOpenGL.h enters keloOpenGL/treatment/, which is not below "
     "keloOpenGL/view/"},
    {"viewDoesNotKnowWindows", "keloOpenGL/view/Planted.cpp",
     "#include \"keloOpenGL/windows/DXDocument.h\"",
     "keloOpenGL/windows/DXDocument.h enters keloOpenGL/windows/, which is not below "
     "keloOpenGL/view/"},
    {"viewDoesNotKnowTheParts", "keloOpenGL/view/Planted.cpp",
     "#include \"keloOpenGL/picking/PickPass.h\"",
     "keloOpenGL/picking/PickPass.h enters keloOpenGL/picking/, which is not below "
     "keloOpenGL/view/"},
    {"aPartDoesNotKnowTreatment", "keloOpenGL/bands/Planted.cpp",
     "#include \"keloOpenGL/treatment/DXOpenGL.h\"",
     "keloOpenGL/treatment/DXOpenGL.h enters keloOpenGL/treatment/, which is not below "
     "keloOpenGL/bands/"},
    {"aPartDoesNotKnowAnother", "keloOpenGL/overlay/Planted.h",
     "#include \"keloOpenGL/menus/TreatmentTexts.h\"",
     "keloOpenGL/menus/TreatmentTexts.h enters keloOpenGL/menus/, which is not below "
     "keloOpenGL/overlay/"},
    {"menusTakeNoGL", "keloOpenGL/menus/Planted.cpp", "#include \"platform/gl.h\"",
     "platform/gl.h brings GL into keloOpenGL/menus/"},
    {"editingTakesNoQt", "keloOpenGL/editing/Planted.h", "#include <QString>",
     "QString brings QtCore into keloOpenGL/editing/"},
    {"treatmentKnowsTheParts", "keloOpenGL/treatment/Planted.cpp",
     "#include \"keloOpenGL/bands/RubberBand.h\"", ""},
    {"treatmentDoesNotKnowWindows", "keloOpenGL/treatment/Planted.h",
     "#include \"keloOpenGL/windows/DXDocument.h\"",
     "keloOpenGL/windows/DXDocument.h enters keloOpenGL/windows/, which is not below "
     "keloOpenGL/treatment/"},
    {"theLibraryDoesNotKnowTheViewer", "keloOpenGL/windows/Planted.cpp",
     "#include \"viewer/windows/TreatmentWindow.h\"",
     "viewer/windows/TreatmentWindow.h enters viewer/windows/, which is not below "
     "keloOpenGL/windows/"},
    {"theViewersStoreDoesNotKnowItsTreatment", "viewer/store/Planted.cpp",
     "#include \"viewer/treatment/OpenedTreatment.h\"",
     "viewer/treatment/OpenedTreatment.h enters viewer/treatment/, which is not below "
     "viewer/store/"},
    {"theViewersStoreDrawsNothing", "viewer/store/Planted.h",
     "#include \"keloOpenGL/keloOpenGL.h\"",
     "keloOpenGL/keloOpenGL.h enters keloOpenGL/, which is not below viewer/store/"},
    {"theViewersTreatmentKnowsNoWidgets", "viewer/treatment/Planted.cpp", "#include <QMessageBox>",
     "QMessageBox brings QtWidgets into viewer/treatment/"},
    {"theViewersWindowsDoNotKnowItsStart", "viewer/windows/Planted.cpp",
     "#include \"viewer/app/HeadlessRun.h\"",
     "viewer/app/HeadlessRun.h enters viewer/app/, which is not below viewer/windows/"},
    {"theViewersStartKnowsItsWindows", "viewer/app/Planted.cpp",
     "#include \"viewer/windows/TreatmentWindow.h\"", ""},
    {"theViewersFoldersHoldAllOfIt", "viewer/app/Planted.cpp", "#include \"viewer/MainWindow.h\"",
     "viewer/MainWindow.h is not written from the root, or enters no room of the library"},
    {"anExampleIncludesAsAHostDoes", "examples/planted/main.cpp",
     "#include <keloOpenGL/models/Color.h>", ""},
    {"anExampleDoesNotIncludeFromTheTree", "examples/planted/main.cpp",
     "#include \"models/Color.h\"", "models/Color.h enters models/, which is not below examples/"},
    {"theTreeDoesNotIncludeAsAHostDoes", "viewer/app/Planted.cpp",
     "#include <keloOpenGL/models/Color.h>",
     "keloOpenGL/models/Color.h is the project's own and belongs in quotes"},
    {"includesAreWrittenFromTheRoot", "keloOpenGL/view/Planted.cpp", "#include \"PackedData.h\"",
     "PackedData.h is not written from the root, or enters no room of the library"},
    {"noRoomTakesFromTheTests", "models/Planted.cpp", "#include \"tests/support/GLTest.h\"",
     "tests/support/GLTest.h is not written from the root, or enters no room of the library"},
};

INSTANTIATE_TEST_SUITE_P(IncludeRule, PlantedInclude, testing::ValuesIn(plantedIncludes),
                         [](const auto &planted) { return std::string(planted.param.name); });

} // namespace
