// The menus of views on Wayland: a compositor that is a window of an X display, so that the pointer
// and the keys go through it as those of its user would.

#include "tests/support/WindowTest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

using namespace kelo::test;

namespace {

/// Everything that a program has said, in lines.
class Program
{
public:
    ~Program()
    {
        if (process.state() == QProcess::NotRunning) return;
        process.terminate();
        if (!process.waitForFinished(5000)) process.kill();
        process.waitForFinished();
    }
    QStringList lines()
    {
        said += process.readAllStandardOutput();
        return QString::fromUtf8(said).split('\n', Qt::SkipEmptyParts);
    }
    int count(const QString &start)
    {
        const QStringList all = lines();
        return static_cast<int>(std::count_if(
            all.begin(), all.end(), [&](const QString &line) { return line.startsWith(start); }));
    }
    /// Whether so many lines that start like this come.
    bool says(const QString &start, int times = 1, int milliseconds = 20000)
    {
        return waitUntil([&] { return count(start) >= times; }, milliseconds);
    }
    /// The numbers of the last line that starts like this.
    QList<int> numbers(const QString &start)
    {
        QList<int> found;
        for (const QString &line : lines()) {
            if (!line.startsWith(start)) continue;
            found.clear();
            for (const QString &word : line.mid(start.size()).split(' ', Qt::SkipEmptyParts))
                found.append(word.toInt());
        }
        return found;
    }

    QProcess process;

private:
    QByteArray said;
};

constexpr int screenWidth = 800;
constexpr int screenHeight = 600;
constexpr QRect window(0, 0, 500, 400); ///< the view's, which it fills

class MenuWayland : public testing::Test
{
protected:
    void SetUp() override
    {
        environment.insert("XDG_RUNTIME_DIR", folder.path());
        environment.insert("ASAN_OPTIONS", "detect_leaks=0"); // drivers are unloaded at the end
        startDisplay();
        startCompositor();
        view.process.setProcessEnvironment(environment);
        view.process.start(KELO_WAYLAND_VIEW, {});
        ASSERT_TRUE(view.process.waitForStarted());
        ASSERT_TRUE(findView()) << view.process.readAllStandardError().toStdString();
    }

    void startDisplay()
    {
        display.process.start("Xvfb",
                              {"-displayfd", "1", "-nolisten", "tcp", "-screen", "0",
                               QStringLiteral("%1x%2x24").arg(screenWidth).arg(screenHeight)});
        ASSERT_TRUE(waitUntil([&] { return !display.lines().isEmpty(); }, 20000));
        environment.insert("DISPLAY", ':' + display.lines().first());
    }
    void startCompositor()
    {
        QFile settings(folder.filePath("weston.ini"));
        ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
        settings.write("[core]\nidle-time=0\n[shell]\npanel-position=none\nlocking=false\n"
                       "animation=none\nstartup-animation=none\nclose-animation=none\n");
        settings.close();
        compositor.process.setProcessEnvironment(environment);
        compositor.process.setProcessChannelMode(QProcess::MergedChannels);
        compositor.process.start("weston",
                                 {"--config=" + settings.fileName(), "--backend=x11-backend.so",
                                  "--use-pixman", "--socket=views",
                                  QStringLiteral("--width=%1").arg(screenWidth),
                                  QStringLiteral("--height=%1").arg(screenHeight)});
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder.filePath("views")); }, 20000))
            << compositor.lines().join('\n').toStdString();
        environment.insert("WAYLAND_DISPLAY", "views");
        environment.insert("QT_QPA_PLATFORM", "wayland");
    }
    void input(const QStringList &arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start("xdotool", arguments);
        EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0);
    }
    void movePointer(const QPoint &point) const
    {
        input({"mousemove", QString::number(point.x()), QString::number(point.y())});
    }
    /// Where the compositor has put the view. It covers the middle of the screen, being larger than
    /// a half of it in both directions.
    bool findView()
    {
        const QPoint middle(screenWidth / 2, screenHeight / 2);
        return waitUntil(
            [&] {
                // Coming in is no move yet.
                movePointer({1, 1});
                movePointer(middle - QPoint(1, 1));
                movePointer(middle);
                if (!view.says("at", view.count("at") + 1, 500)) return false;
                const QList<int> place = view.numbers("at");
                if (place.size() != 2) return false;
                origin = middle - QPoint(place.at(0), place.at(1));
                return true;
            },
            30000);
    }
    QPoint onScreen(const QPoint &pointInView) const { return origin + pointInView; }
    /// Where the menu has come up that was opened last, in the view's points.
    QRect placeOfMenu()
    {
        const QList<int> place = view.numbers("menu");
        if (place.size() != 4) return {};
        return {QPoint(place.at(0), place.at(1)), QPoint(place.at(2), place.at(3))};
    }
    /// A click in the view's middle by a hand that wobbles.
    QRect openMenu()
    {
        movePointer(onScreen({250, 200}));
        input({"mousedown", "1"});
        EXPECT_TRUE(view.says("menu"));
        input({"mousemove_relative", "6", "6", "mouseup", "1"});
        EXPECT_TRUE(view.says("released"));
        return placeOfMenu();
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    Program display;
    Program compositor;
    Program view;
    QPoint origin;
};

} // namespace

TEST_F(MenuWayland, theReleaseChoosesNothingAndEscapeClosesTheMenu)
{
    const QRect place = openMenu();
    const QList<int> pressed = view.numbers("press");
    ASSERT_EQ(pressed.size(), 2);
    EXPECT_FALSE(place.contains(pressed.at(0), pressed.at(1))) << "the pointer";
    EXPECT_TRUE(window.contains(place)) << "which is on the screen";
    EXPECT_EQ(view.count("closed"), 0);
    input({"key", "Escape"});
    EXPECT_TRUE(view.says("closed"));
    EXPECT_EQ(view.count("key"), 0);
    EXPECT_EQ(view.count("chosen"), 0);
}

TEST_F(MenuWayland, aClickElsewhereInTheViewClosesTheMenuAndTurnsNothing)
{
    openMenu();
    movePointer(onScreen({40, 60}));
    input({"mousedown", "1"});
    EXPECT_TRUE(view.says("closed"));
    movePointer(onScreen({140, 60}));
    input({"mouseup", "1"});
    EXPECT_TRUE(view.says("released", 2));
    EXPECT_EQ(view.count("press"), 1);
    EXPECT_EQ(view.count("drag"), 0);
    EXPECT_EQ(view.count("chosen"), 0);
}

TEST_F(MenuWayland, aClickOnARowChoosesItAndOneOutsideOfTheWindowNothing)
{
    QRect place = openMenu();
    // The rows are as high as each other: 40 of them, of which some are seen.
    movePointer(onScreen(place.topLeft() + QPoint(30, 10)));
    input({"click", "1"});
    EXPECT_TRUE(view.says("chosen row 0"));
    EXPECT_TRUE(view.says("closed"));
    movePointer(onScreen({250, 200}));
    input({"click", "1"});
    EXPECT_TRUE(view.says("menu", 2));
    movePointer(origin.x() > 20 ? QPoint(5, 300) : QPoint(795, 300));
    input({"click", "1"});
    EXPECT_TRUE(view.says("closed", 2));
    EXPECT_EQ(view.count("chosen"), 1);
}

TEST_F(MenuWayland, theKeysReachTheLastRowWhichWasScrolledAway)
{
    openMenu();
    movePointer(onScreen({40, 60})); // off the row that it had come over
    input({"key", "Up", "Return"});
    EXPECT_TRUE(view.says("closed"));
    EXPECT_EQ(view.count("chosen row 39"), 1) << view.lines().join('\n').toStdString();
    EXPECT_EQ(view.count("key"), 0);
}

TEST_F(MenuWayland, aSubmenuStaysInsideOfTheWindowToo)
{
    const QRect place = openMenu();
    movePointer(onScreen({40, 60}));
    input({"key", "Down", "Down", "Right"});
    ASSERT_TRUE(view.says("menu", 2));
    const QRect inner = placeOfMenu();
    EXPECT_TRUE(window.contains(inner));
    EXPECT_FALSE(inner.intersects(place)) << "it is beside its menu";
    movePointer(onScreen(inner.topLeft() + QPoint(30, 10)));
    input({"click", "1"});
    EXPECT_TRUE(view.says("closed"));
    EXPECT_EQ(view.count("chosen inner row 0"), 1);
}
