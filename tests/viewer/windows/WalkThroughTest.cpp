// The whole application as its user has it, with a real pointer and a real keyboard: a new
// patient's first visit, and the next start of the program. With KELO_KEEP_PICTURES set to a
// folder, pictures of the screen are kept there.

#include "tests/support/GLTest.h"
#include "tests/support/WindowTest.h"
#include "tests/viewer/support/PreferencesFixture.h"
#include "viewer/script/PickPoints.h"
#include "viewer/treatment/OpenedTreatment.h"
#include "viewer/windows/InterfaceFiles.h"
#include "viewer/windows/OpenTreatments.h"
#include "viewer/windows/TreatmentWindow.h"

#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QTimer>

#include <cstdlib>

namespace {

using namespace viewer;
using kelo::test::letPass;
using kelo::test::waitUntil;
using kelo::test::xdotool;

const QDate firstVisit = QDate::currentDate().addDays(-35);

class WalkThrough : public testing::Test
{
protected:
    WalkThrough()
    {
        kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Window);
        addViewerInterfaceFiles();
        commandLine.database = folder.filePath("treatments.sqlite");
        commandLine.size = {960.0, 640.0};
        commandLine.isSizeGiven = true;
    }
    ~WalkThrough() override
    {
        all.reset();
        kelo::removeInterfaceFileFolders();
        kelo::OpenGLView::setSurfaceKind(kelo::SurfaceKind::Automatic);
    }

    /// A patient who comes for the second time: nothing was placed at the first visit.
    void takePatientIn()
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
        letPass(300);
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
    /// Clicks at a point of the view and goes on when the view has handled it.
    void clickInView(const kelo::Point &point)
    {
        const double height = view().bounds().size.height;
        clickAt(view().window()->mapToGlobal(QPointF(point.x, height - 1.0 - point.y).toPoint()));
        letPass(150);
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
    /// Once a context menu is open: keeps a picture, then clicks the rows one after the other, the
    /// last one in the submenus of those before.
    void chooseFromNextMenu(QStringList titles, const QString &pictureName)
    {
        QTimer::singleShot(100, &receiver, [this, titles, pictureName] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu) {
                chooseFromNextMenu(titles, pictureName);
                return;
            }
            chooseFrom(*menu, titles, pictureName);
        });
    }
    void chooseFrom(QMenu &menu, QStringList titles, const QString &pictureName)
    {
        const QString title = titles.takeFirst();
        for (QAction *row : menu.actions()) {
            if (row->text().trimmed() != title || !row->isEnabled()) continue;
            const QPoint middle = menu.mapToGlobal(menu.actionGeometry(row).center());
            xdotool({"mousemove", QString::number(middle.x()), QString::number(middle.y())});
            if (!titles.isEmpty()) {
                clickAt(middle);
                QTimer::singleShot(400, &receiver, [this, row, titles, pictureName] {
                    chooseFrom(*row->menu(), titles, pictureName);
                });
                return;
            }
            QTimer::singleShot(200, &receiver, [this, middle, pictureName] {
                keepPicture(pictureName);
                clickAt(middle);
            });
            chosen << title;
            return;
        }
        ADD_FAILURE() << "there is no row " << title.toStdString();
        menu.close();
    }
    /// Types into the dialog that opens next.
    void answerNextDialog(const QString &text)
    {
        QTimer::singleShot(400, &receiver, [this, text] {
            if (!QApplication::activeModalWidget()) {
                answerNextDialog(text);
                return;
            }
            xdotool({"type", "--delay", "5", text});
            QTimer::singleShot(400, &receiver, [] { xdotool({"key", "Return"}); });
        });
    }
    void keepPicture(const QString &name) const
    {
        const char *kept = std::getenv("KELO_KEEP_PICTURES");
        if (!kept || name.isEmpty()) return;
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
    std::vector<std::vector<std::string>> elastics() const
    {
        std::vector<std::vector<std::string>> sequences;
        for (const auto &elastic : model().elasticModels())
            sequences.push_back(elastic->bracketSequence());
        return sequences;
    }

    viewer::test::PreferencesOfTheTest settings;
    QTemporaryDir folder;
    CommandLine commandLine;
    std::unique_ptr<OpenTreatments> all;
    TreatmentDocument *document = nullptr;
    QObject receiver;
    QStringList chosen;
};

TEST_F(WalkThrough, aVisitFromOpeningToQuittingAndTheNextStartFindsEverything)
{
    using Sequences = std::vector<std::vector<std::string>>;
    takePatientIn();
    start();
    ASSERT_EQ(window().windowTitle(), "Walk Through (W-1) - Treatment viewer");
    keepPicture("1-opened");

    // Place a bracket in a colour, then the same on the neighbours by clicks alone.
    clickInView(middleOf(view().bracketColorToolRect()));
    ASSERT_TRUE(view().mouseModeIsBracketColor());
    chooseFromNextMenu({"Light blue"}, "2-bracket-menu");
    clickInView(pointOf(model().toothModels(), "8"));
    ASSERT_TRUE(waitUntil([this] { return colorOf("8") == 5; }));
    for (const char *key : {"7", "6", "9", "10", "11"})
        clickInView(pointOf(model().toothModels(), key));
    for (const char *key : {"6", "7", "8", "9", "10", "11"}) {
        EXPECT_EQ(colorOf(key), 5) << key;
        EXPECT_FALSE(model().bracketModels().at(key)->hiddenPrimary()) << key;
    }
    // The lower molar that the elastic is to go to.
    xdotool({"key", "Right"});
    letPass(700);
    ASSERT_TRUE(waitUntil([this] { return !view().repeatActionTimerIsRunning(); }));
    chooseFromNextMenu({"Silver"}, {});
    clickInView(pointOf(model().toothModels(), "30"));
    ASSERT_TRUE(waitUntil([this] { return colorOf("30").has_value(); }));
    ASSERT_TRUE(waitUntil([this] { return !view().repeatActionTimerIsRunning(); }));
    keepPicture("3-brackets");

    // String a Class II: its menu on the canine, the molar, and the canine again.
    clickInView(middleOf(view().elasticsToolRect()));
    ASSERT_TRUE(view().mouseModeIsElastics());
    chooseFromNextMenu({"Start New Elastic", "1/4\" 3.5 oz"}, "4-elastic-menu");
    clickInView(pointOf(model().bracketModels(), "6"));
    ASSERT_TRUE(waitUntil([this] { return view().bracketSequence().has_value(); }));
    letPass(300);
    clickInView(pointOf(model().bracketModels(), "30"));
    clickInView(pointOf(model().bracketModels(), "6"));
    ASSERT_TRUE(waitUntil([&] { return elastics() == Sequences{{"6", "30"}}; }));
    keepPicture("5-class-ii");

    // Undo and redo.
    xdotool({"key", "ctrl+z"});
    EXPECT_TRUE(waitUntil([this] { return elastics().empty(); }));
    xdotool({"key", "ctrl+shift+z"});
    EXPECT_TRUE(waitUntil([&] { return elastics() == Sequences{{"6", "30"}}; }));

    // The page as PDF.
    const QString page = folder.filePath("page.pdf");
    answerNextDialog(page);
    xdotool({"key", "alt+f"});
    letPass(300);
    xdotool({"key", "d"});
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(page); }, 15000));
    QFile pdf(page);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");

    // The first visit, and back.
    ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));
    xdotool({"key", "ctrl+Page_Up"});
    ASSERT_TRUE(waitUntil([this] { return !view().displayedDateIsToday(); }));
    EXPECT_TRUE(elastics().empty());
    EXPECT_EQ(view().displayedDate().date(), firstVisit);
    letPass(300);
    keepPicture("6-first-visit");
    xdotool({"key", "ctrl+Page_Down"});
    ASSERT_TRUE(waitUntil([this] { return view().displayedDateIsToday(); }));
    EXPECT_EQ(elastics(), (Sequences{{"6", "30"}}));

    // Tooth numbers and the chart beside the window.
    xdotool({"key", "ctrl+1"});
    xdotool({"key", "ctrl+l"});
    xdotool({"key", "F2"});
    EXPECT_TRUE(waitUntil([this] { return view().toothLabels().size() == 28; }));
    letPass(900);
    keepPicture("7-numbers-and-chart");
    ASSERT_TRUE(window().isVisible());
    window().activateWindow();
    ASSERT_TRUE(waitUntil([this] { return window().isActiveWindow(); }));

    // Quit, and start again.
    xdotool({"key", "ctrl+q"});
    ASSERT_TRUE(waitUntil([this] { return all->documents().empty(); }));
    start();
    EXPECT_EQ(elastics(), (Sequences{{"6", "30"}}));
    for (const char *key : {"6", "7", "8", "9", "10", "11"})
        EXPECT_EQ(colorOf(key), 5) << key;
    EXPECT_EQ(view().toothLabels().size(), 28u);
    keepPicture("8-started-again");
    EXPECT_NO_GL_ERROR();
}

} // namespace
