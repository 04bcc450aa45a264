#include "tests/viewer/script/RandomScriptGenerator.h"

#include "keloModel/TreatmentNote.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace viewer::test {
namespace {

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 8);
}

QByteArray quotedTitle(const std::string &title)
{
    QByteArray text;
    for (const char character : title) {
        if (character == '"' || character == '\\') text += '\\';
        text += character;
    }
    return '"' + text + '"';
}

/// The rows of a menu that a script can choose by their titles: of several rows with one title it
/// finds the first.
std::vector<std::shared_ptr<kelo::MenuItem>> rowsWithTitlesOfTheirOwn(const kelo::Menu &menu)
{
    std::set<std::string> titles;
    std::vector<std::shared_ptr<kelo::MenuItem>> rows;
    for (const auto &item : menu.items()) {
        if (item->separator || item->title.empty() || !titles.insert(item->title).second) continue;
        if (item->enabled) rows.push_back(item);
    }
    return rows;
}

/// One `menu` line for each row that can be chosen, those of submenus included. A row whose action
/// does nothing, and one that only opens a submenu, is left out unless there is no other.
std::vector<QByteArray> choices(const kelo::Menu &menu)
{
    std::vector<QByteArray> lines, idleLines;
    for (const auto &item : rowsWithTitlesOfTheirOwn(menu)) {
        const QByteArray line = "menu " + quotedTitle(item->title);
        (item->submenu || item->actionName == "doNothing:" ? idleLines : lines).push_back(line);
        if (!item->submenu) continue;
        for (const auto &row : rowsWithTitlesOfTheirOwn(*item->submenu))
            lines.push_back(line + " > " + quotedTitle(row->title));
    }
    return lines.empty() ? idleLines : lines;
}

/// Of the rows only those that are not one of the many colours or sizes.
std::vector<QByteArray> commandsAmong(const kelo::Menu &menu, bool withRemovalOfAll)
{
    std::vector<QByteArray> lines;
    for (const auto &item : rowsWithTitlesOfTheirOwn(menu)) {
        const bool isOneOfMany = item->representedObject.has_value();
        if (item->submenu || isOneOfMany || item->actionName == "doNothing:") continue;
        if (!withRemovalOfAll && item->actionName.starts_with("removeAll")) continue;
        lines.push_back("menu " + quotedTitle(item->title));
    }
    return lines;
}

} // namespace

QByteArray RandomScriptGenerator::nextLine(const RandomScriptScene &scene)
{
    if (scene.openMenu() && !oneIn(6)) return lineWithMenu(scene);
    if (scene.buttonIsHeld() && !oneIn(6)) return lineWithButton(scene);
    return anyLine(scene);
}

QByteArray RandomScriptGenerator::lineWithMenu(const RandomScriptScene &scene)
{
    if (oneIn(10)) return oneIn(2) ? "dismiss" : "key escape";
    if (oneIn(3)) {
        // All is removed rarely, or little would ever be left to work on.
        const auto commands = commandsAmong(*scene.openMenu(), oneIn(10));
        if (!commands.empty()) return oneOf(commands);
    }
    const auto lines = choices(*scene.openMenu());
    return lines.empty() ? QByteArray("dismiss") : oneOf(lines);
}

QByteArray RandomScriptGenerator::lineWithButton(const RandomScriptScene &scene)
{
    QByteArray line = oneIn(3) ? "release " : "drag ";
    line += point(scene);
    return line;
}

QByteArray RandomScriptGenerator::anyLine(const RandomScriptScene &scene)
{
    const kelo::DXOpenGL &view = scene.view();
    // Back to where the treatment can be changed, or most of a script would only turn the jaws.
    if (view.approvedDate().isValid() && oneIn(6)) return "approve none";
    if (!view.displayedDateIsToday() && !scene.openMenu() && oneIn(6)) return "date today";
    if (view.mouseMode() == kelo::DXOpenGL::rotateMode && oneIn(5)) return "click tool elastics";
    const bool isStringing = view.bracketSequence().has_value();
    if (isStringing && oneIn(8)) { // the right button has the brackets' menu then too
        QByteArray line = "press right ";
        line += point(scene);
        return line;
    }
    const std::uint64_t kind = below(20);
    if (kind < 6 || (isStringing && !oneIn(3))) return objectClick(scene);
    if (kind < 10) return mouseLine(scene);
    if (kind < 15) return timeLine(scene);
    if (kind < 18) return keyLine();
    return viewLine();
}

QByteArray RandomScriptGenerator::toothKey()
{
    using kelo::TreatmentNote;
    const auto keys =
        oneIn(2) ? TreatmentNote::upperToothNameKeys() : TreatmentNote::lowerToothNameKeys();
    return QByteArray::fromStdString(oneOf(keys));
}

QByteArray RandomScriptGenerator::objectClick(const RandomScriptScene &scene)
{
    QByteArray line = "click ";
    const auto &sequence = scene.view().bracketSequence();
    if (sequence && oneIn(2)) { // mostly the first member, which closes the elastic
        const std::string &key = oneIn(3) ? oneOf(*sequence) : sequence->front();
        line += key.back() == 'l' ? "button " : "bracket ";
        line += QByteArray::fromStdString(key);
        line += suffixes();
        return line;
    }
    const std::uint64_t kind = below(10);
    if (kind < 3) {
        line += "tooth ";
        line += toothKey();
    } else if (kind < 5) {
        line += "button ";
        line += toothKey();
        line += 'l';
    } else if (kind < 7) {
        const auto count = scene.document().elasticModels().size();
        line += "elastic ";
        line += number(static_cast<double>(below(count + 1)));
    } else {
        line += "bracket ";
        line += toothKey();
    }
    line += suffixes();
    return line;
}

QByteArray RandomScriptGenerator::mouseLine(const RandomScriptScene &scene)
{
    QByteArray line;
    switch (below(8)) {
    case 0:
    case 1:
        line = oneIn(3) ? "press right " : "press left ";
        line += point(scene);
        line += suffixes();
        return line;
    case 2:
    case 3:
        line = "click ";
        line += point(scene);
        line += suffixes();
        return line;
    case 4:
    case 5: {
        static const double deltas[] = {0.0, 1.0, -1.0, 2.5, -3.0, 0.1, 10.0, -20.0, 1e6};
        line = "scroll ";
        line += number(oneOf(deltas)) + ' ';
        line += number(oneOf(deltas));
        if (oneIn(2)) line += ' ' + point(scene);
        return line;
    }
    case 6:
        return oneIn(4) ? "click tool print" : "click tool bracket";
    default:
        return "click tool elastics";
    }
}

QByteArray RandomScriptGenerator::timeLine(const RandomScriptScene &scene)
{
    static const char *const dates[] = {"2026-11-20", "2026-11-19", "2026-12-01", "2024-02-29"};
    switch (below(13)) {
    case 12:
        return "wait 0"; // what real time brings would not be the same twice
    case 0:
        // A menu that is open keeps the window's date from being changed.
        if (scene.openMenu()) return "dismiss";
        return oneIn(2) ? QByteArray("date today") : "date " + QByteArray(oneOf(dates));
    case 1:
        return oneIn(3) ? "approve " + QByteArray(oneOf(dates)) : QByteArray("approve none");
    case 2: {
        static const double intervals[] = {-1.0, 0.0, 0.5, 3.0, 1e4};
        return "repeat-interval " + number(oneOf(intervals));
    }
    default: {
        static const double spans[] = {0.0, 0.01, 0.1, 0.25, 0.5, 1.0, 3.0};
        // While clicks repeat the last action mostly only a little, so that some do.
        const bool isRepeating = scene.view().repeatActionTimerIsRunning();
        return "advance " + number(isRepeating && !oneIn(4) ? 0.1 : oneOf(spans));
    }
    }
}

QByteArray RandomScriptGenerator::keyLine()
{
    static const char *const keys[] = {"up", "down",   "left", "right", "left", "right",
                                       "0",  "escape", "menu", "menu",  "x"};
    if (oneIn(3)) return "modifiers" + modifiers(2);
    QByteArray line = "key ";
    line += oneOf(keys);
    line += modifiers(8);
    return line;
}

QByteArray RandomScriptGenerator::viewLine()
{
    switch (below(8)) {
    case 0:
    case 1: {
        static const double angles[] = {0.0,  5.0,   10.0,  21.9, 30.0,
                                        45.0, -15.0, -40.0, 90.0, 720.0};
        return "mouth " + number(oneOf(angles));
    }
    case 2:
    case 3: {
        // Home, or about axes in any direction, without a length too.
        if (oneIn(2)) return "rotation 90 -1 0 0";
        QByteArray line = "rotation " + number(static_cast<double>(below(721)) - 360.0);
        for (int axis = 0; axis < 3; ++axis)
            line += ' ' + number(static_cast<double>(below(5)) - 2.0);
        return line;
    }
    case 4: {
        static const char *const sizes[] = {"120 90", "90 120", "160 60", "60 160",
                                            "121 91", "1 1",    "300 2"};
        return "resize " + QByteArray(oneOf(sizes));
    }
    case 5: {
        static const char *const boxes[] = {"fit", "-40 40 -30 30", "-1 1 -1 1", "0 100 5 10"};
        return oneIn(2) ? QByteArray("zoom fit") : "zoom " + QByteArray(oneOf(boxes));
    }
    case 6: {
        static const char *const parts[] = {"upper-arch", "lower-arch", "gums",
                                            "brackets",   "buttons",    "elastics"};
        // What is hidden comes back sooner than it goes.
        QByteArray line = oneIn(3) ? "hide " : "show ";
        line += oneOf(parts);
        return line;
    }
    default:
        return oneIn(2) ? "fullscreen off" : "fullscreen on";
    }
}

QByteArray RandomScriptGenerator::point(const RandomScriptScene &scene)
{
    const kelo::Size size = scene.view().bounds().size;
    // A little outside too; drags go there.
    const auto coordinate = [this](double length) {
        const auto halves = static_cast<std::uint64_t>(2.0 * length) + 20;
        return number(static_cast<double>(below(halves)) / 2.0 - 5.0);
    };
    QByteArray text = coordinate(size.width) + ' ';
    text += coordinate(size.height);
    return text;
}

QByteArray RandomScriptGenerator::modifiers(std::uint64_t oneOutOf)
{
    QByteArray text;
    if (!oneIn(oneOutOf)) return text;
    if (!oneIn(4)) text += " control";
    for (const char *name : {" shift", " option", " command"})
        if (oneIn(5)) text += name;
    return text;
}

QByteArray RandomScriptGenerator::suffixes()
{
    QByteArray text;
    if (oneIn(15)) text += oneIn(3) ? " clicks 3" : " clicks 2";
    text += modifiers(8);
    return text;
}

} // namespace viewer::test
