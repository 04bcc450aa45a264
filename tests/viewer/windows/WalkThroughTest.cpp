// The whole application as its user has it, with a real pointer and a real keyboard: a new
// patient's first visit, and the next start of the program. With KELO_KEEP_PICTURES set to a
// folder, pictures of the screen are kept there.

#include "tests/support/GLTest.h"
#include "tests/support/PointerSteps.h"
#include "tests/support/TestSurface.h"
#include "tests/support/WindowTest.h"
#include "tests/viewer/support/PreferencesFixture.h"
#include "viewer/script/PickPoints.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>

#include <cstdlib>

namespace {

using namespace viewer;
using kelo::test::atOnce;
using kelo::test::displayIsSettled;
using kelo::test::openMenu;
using kelo::test::Step;
using kelo::test::waitUntil;
using kelo::test::xdotool;

using Sequences = std::vector<std::vector<std::string>>;

const QDate firstVisit = QDate::currentDate().addDays(-35);

class WalkThrough : public testing::Test
{
protected:
    WalkThrough()
    {
        addViewerInterfaceFiles();
        commandLine.database = folder.filePath("treatments.sqlite");
        commandLine.size = {960.0, 640.0};
        commandLine.isSizeGiven = true;
    }
    ~WalkThrough() override
    {
        all.reset();
        kelo::removeInterfaceFileFolders();
    }

    /// A patient who comes for the second time: nothing was placed at the first visit.
    void addPatient()
    {
        TreatmentRecord record;
        record.patient = {"Walk Through", "W-1", QDate(2012, 5, 6)};
        NoteRecord note;
        note.date = firstVisit;
        record.notes = {note};
        const auto store = TreatmentStore::open(commandLine.database).value();
        ASSERT_TRUE(store->addTreatment(record));
    }
    void start()
    {
        all = std::make_unique<OpenTreatments>(commandLine);
        document = &all->openFirst();
        ASSERT_TRUE(waitUntil([this] { return view().isExposed(); }));
        ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));
        ASSERT_TRUE(displayIsSettled());
    }

    kelo::DXOpenGL &view() const { return document->mainWindow()->view(); }
    kelo::DXDocumentModel &model() const { return *document->treatment()->document(); }
    QMainWindow &window() const
    {
        return *qobject_cast<QMainWindow *>(document->windowControllers().front()->window());
    }

    static void clickAt(const QPoint &onScreen)
    {
        xdotool({"mousemove", QString::number(onScreen.x()), QString::number(onScreen.y()), "click",
                 "1"});
    }
    QPoint onScreen(const kelo::Point &point) const
    {
        const double height = view().bounds().size.height;
        return view().window()->mapToGlobal(QPointF(point.x, height - 1.0 - point.y).toPoint());
    }
    /// Clicks at a point of the view and goes on when the view has handled it.
    void clickInView(const kelo::Point &point)
    {
        clickAt(onScreen(point));
        EXPECT_TRUE(displayIsSettled());
    }
    kelo::Point pointOf(const kelo::DXDocumentModel::Models &models, const std::string &key) const
    {
        const auto point =
            clickablePoint(view(), static_cast<std::uint32_t>(models.at(key)->uniqueID()));
        EXPECT_TRUE(point) << key;
        return point.value_or(kelo::Point{});
    }
    kelo::Point middleOf(const kelo::Rect &overlayRect) const
    {
        const kelo::Rect rect = overlayRectInView(overlayRect, view());
        return {rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
    }
    /// The row of the menu in front that has this title and can be chosen, or null.
    static QAction *rowWithTitle(const QString &title)
    {
        if (!openMenu()) return nullptr;
        for (QAction *row : openMenu()->actions()) {
            if (row->text().trimmed() == title && row->isEnabled()) return row;
        }
        return nullptr;
    }
    /// Clicks at a point of the view where a menu opens, then at its rows one after the other, the
    /// last one in the submenus of those before; keeps a picture before that.
    void clickAndChoose(const kelo::Point &point, const QStringList &titles,
                        const QString &pictureName = {})
    {
        std::vector<Step> steps{{atOnce, [=, this] { clickAt(onScreen(point)); }}};
        for (const QString &title : titles) {
            const bool isLast = title == titles.back();
            steps.push_back({[=] { return rowWithTitle(title) != nullptr; },
                             [=] {
                                 const QRect row = openMenu()->actionGeometry(rowWithTitle(title));
                                 kelo::test::movePointer(openMenu()->mapToGlobal(row.center()));
                             }});
            steps.push_back(
                {[=] { return openMenu() && openMenu()->activeAction() == rowWithTitle(title); },
                 [=, this] {
                     if (isLast) keepPicture(pictureName);
                     xdotool({"click", "1"});
                 }});
        }
        EXPECT_TRUE(kelo::test::goThrough(steps, [] {
            return QApplication::activePopupWidget() == nullptr;
        })) << titles.join(", ").toStdString();
        EXPECT_TRUE(displayIsSettled());
    }
    /// The line in which a dialog that is open has the keyboard, or null.
    static QLineEdit *lineOfDialog()
    {
        const QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || !dialog->isActiveWindow()) return nullptr;
        return qobject_cast<QLineEdit *>(dialog->focusWidget());
    }
    void placeBrackets();
    void stringClassII();
    void undoAndRedo();
    void savePageAsPDF();
    void lookAtFirstVisit();
    void showNumbersAndChart();
    void quitAndStartAgain();

    void keepPicture(const QString &name) const
    {
        const char *kept = std::getenv("KELO_KEEP_PICTURES");
        if (!kept || name.isEmpty()) return;
        EXPECT_TRUE(displayIsSettled());
        EXPECT_TRUE(waitUntil([this] { return !view().needsDisplay(); }));
        QRect place;
        for (const QWidget *widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible()) place |= widget->frameGeometry();
        }
        const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        EXPECT_TRUE(screen.copy(place & screen.rect())
                        .save(QString::fromLocal8Bit(kept) + "/walk-" + name + ".png"));
    }

    std::optional<long> colorOf(const std::string &key) const
    {
        const auto &colors = model().bracketColorsTypeIDs();
        const auto found = colors.find(key);
        return found == colors.end() ? std::nullopt : std::optional(found->second);
    }
    Sequences elastics() const
    {
        Sequences sequences;
        for (const auto &elastic : model().elasticModels())
            sequences.push_back(elastic->bracketSequence());
        return sequences;
    }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Window};
    viewer::test::PreferencesOfTheTest settings;
    QTemporaryDir folder;
    CommandLine commandLine;
    std::unique_ptr<OpenTreatments> all;
    TreatmentDocument *document = nullptr;
};

/// Places a bracket in a colour, then the same on the neighbours by clicks alone.
void WalkThrough::placeBrackets()
{
    clickInView(middleOf(view().bracketColorToolRect()));
    ASSERT_TRUE(view().mouseModeIsBracketColor());
    clickAndChoose(pointOf(model().toothModels(), "8"), {"Light blue"}, "2-bracket-menu");
    ASSERT_TRUE(waitUntil([this] { return colorOf("8") == 5; }));
    for (const char *key : {"7", "6", "9", "10", "11"})
        clickInView(pointOf(model().toothModels(), key));
    for (const char *key : {"6", "7", "8", "9", "10", "11"}) {
        EXPECT_EQ(colorOf(key), 5) << key;
        EXPECT_FALSE(model().bracketModels().at(key)->hiddenPrimary()) << key;
    }
    // The lower molar that the elastic is to go to, seen from the side.
    const auto fromTheFront = view().worldRotation();
    xdotool({"key", "Right"});
    ASSERT_TRUE(waitUntil([&] {
        return view().worldRotation() != fromTheFront && !view().animationTimerIsRunning();
    }));
    ASSERT_TRUE(waitUntil([this] { return !view().repeatActionTimerIsRunning(); }));
    clickAndChoose(pointOf(model().toothModels(), "30"), {"Silver"});
    ASSERT_TRUE(waitUntil([this] { return colorOf("30").has_value(); }));
    ASSERT_TRUE(waitUntil([this] { return !view().repeatActionTimerIsRunning(); }));
    keepPicture("3-brackets");
}

/// Strings a Class II: its menu on the canine, the molar, and the canine again.
void WalkThrough::stringClassII()
{
    clickInView(middleOf(view().elasticsToolRect()));
    ASSERT_TRUE(view().mouseModeIsElastics());
    clickAndChoose(pointOf(model().bracketModels(), "6"), {"Start New Elastic", "1/4\" 3.5 oz"},
                   "4-elastic-menu");
    ASSERT_TRUE(waitUntil([this] { return view().bracketSequence().has_value(); }));
    clickInView(pointOf(model().bracketModels(), "30"));
    clickInView(pointOf(model().bracketModels(), "6"));
    ASSERT_TRUE(waitUntil([this] { return elastics() == Sequences{{"6", "30"}}; }));
    keepPicture("5-class-ii");
}

void WalkThrough::undoAndRedo()
{
    xdotool({"key", "ctrl+z"});
    EXPECT_TRUE(waitUntil([this] { return elastics().empty(); }));
    xdotool({"key", "ctrl+shift+z"});
    EXPECT_TRUE(waitUntil([this] { return elastics() == Sequences{{"6", "30"}}; }));
}

void WalkThrough::savePageAsPDF()
{
    const QString page = folder.filePath("page.pdf");
    const auto press = [](const char *key) { return [key] { xdotool({"key", key}); }; };
    const std::vector<Step> steps{
        {atOnce, press("alt+f")},
        {[] { return openMenu() != nullptr; }, press("d")},
        {[] { return lineOfDialog() != nullptr; },
         [&] {
             xdotool({"type", "--delay", "5", page});
         }},
        {[&] { return lineOfDialog() && lineOfDialog()->text() == page; }, press("Return")},
    };
    ASSERT_TRUE(kelo::test::goThrough(steps, [&] { return QFile::exists(page); }));
    QFile pdf(page);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
}

/// Shows the first visit, and goes back.
void WalkThrough::lookAtFirstVisit()
{
    ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));
    xdotool({"key", "ctrl+Page_Up"});
    ASSERT_TRUE(waitUntil([this] { return !view().displayedDateIsToday(); }));
    EXPECT_TRUE(elastics().empty());
    EXPECT_EQ(view().displayedDate().date(), firstVisit);
    keepPicture("6-first-visit");
    xdotool({"key", "ctrl+Page_Down"});
    ASSERT_TRUE(waitUntil([this] { return view().displayedDateIsToday(); }));
    EXPECT_EQ(elastics(), (Sequences{{"6", "30"}}));
}

/// Shows the tooth numbers, and the chart beside the window.
void WalkThrough::showNumbersAndChart()
{
    xdotool({"key", "ctrl+1"});
    xdotool({"key", "ctrl+l"});
    xdotool({"key", "F2"});
    EXPECT_TRUE(waitUntil([this] { return view().toothLabels().size() == 28; }));
    ASSERT_TRUE(waitUntil([this] {
        auto *chart = document->existingWindowControllerForWindowNibName("ToothChart");
        return chart && chart->window()->isActiveWindow() && !view().animationTimerIsRunning();
    }));
    keepPicture("7-numbers-and-chart");
    ASSERT_TRUE(displayIsSettled());
    ASSERT_TRUE(window().isVisible());
    window().activateWindow();
    ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));
}

void WalkThrough::quitAndStartAgain()
{
    xdotool({"key", "ctrl+q"});
    ASSERT_TRUE(waitUntil([this] { return all->documents().empty(); }));
    start();
    EXPECT_EQ(elastics(), (Sequences{{"6", "30"}}));
    for (const char *key : {"6", "7", "8", "9", "10", "11"})
        EXPECT_EQ(colorOf(key), 5) << key;
    EXPECT_EQ(view().toothLabels().size(), 28u);
    keepPicture("8-started-again");
}

TEST_F(WalkThrough, aVisitFromOpeningToQuittingAndTheNextStartFindsEverything)
{
    addPatient();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_EQ(window().windowTitle(), "Walk Through (W-1) - Treatment viewer");
    keepPicture("1-opened");
    ASSERT_NO_FATAL_FAILURE(placeBrackets());
    ASSERT_NO_FATAL_FAILURE(stringClassII());
    undoAndRedo();
    ASSERT_NO_FATAL_FAILURE(savePageAsPDF());
    ASSERT_NO_FATAL_FAILURE(lookAtFirstVisit());
    ASSERT_NO_FATAL_FAILURE(showNumbersAndChart());
    ASSERT_NO_FATAL_FAILURE(quitAndStartAgain());
    EXPECT_NO_GL_ERROR();
}

} // namespace
