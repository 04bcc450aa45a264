// Notes by date: today's can be edited, earlier ones are read-only, and the log has every change.

#include "tests/viewer/support/ScriptFixture.h"
#include "viewer/text/DateText.h"
#include "viewer/windows/ChangeLogDialog.h"
#include "viewer/windows/DateBar.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>

namespace {

using namespace viewer;

const QByteArray twoNotes = R"({
  "format": "treatment", "version": 1,
  "patient": {"name": "A Patient", "id": "P-7", "birthDate": "2011-04-02"},
  "currentDate": "2026-11-20",
  "notes": [
    {"date": "2026-09-01", "bracketVisibilities": {"8": true}},
    {"date": "2026-10-05", "bracketVisibilities": {"8": true, "9": true},
     "elastics": [{"elasticsConfigTypeID": null, "elasticsSizeTypeID": 10,
                   "bracketSequence": ["8", "9"]}]},
    {"date": "2027-01-01", "bracketVisibilities": {}}
  ]
})";

TEST(DateTexts, haveFourDigitsOfTheYearInEveryLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(shortDate(QDate(1911, 4, 2)), "02.04.1911");
    EXPECT_EQ(shortDateTime(QDateTime(QDate(2026, 11, 21), QTime(9, 5))), "21.11.2026 09:05");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(shortDate(QDate(2011, 4, 2)), "4/2/2011");
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    EXPECT_EQ(shortDate(QDate(2011, 4, 2)), "2/4/2011");
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(shortDate(QDate(2011, 4, 2)), "2 Apr 2011");
    QLocale::setDefault(before);
}

class WorkByDate : public testing::Test
{
protected:
    WorkByDate()
    {
        QFile file(folder.filePath("patient.json"));
        if (file.open(QIODevice::WriteOnly)) file.write(twoNotes);
        file.close();
        view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {400.0, 300.0}});
        CommandLine commandLine;
        commandLine.headless = true;
        commandLine.file = file.fileName();
        treatment = std::make_unique<OpenedTreatment>(commandLine);
        treatment->showIn(*view);
    }
    ~WorkByDate() override
    {
        view.reset();
        treatment.reset();
    }

    bool isShown(const char *key) const
    {
        return treatment->document()->bracketVisibilities().at(key);
    }

    const QDate september{2026, 9, 1};
    const QDate october{2026, 10, 5};
    const QDate today{2026, 11, 20};
    QTemporaryDir folder;
    kelo::test::TestSurface surface{kelo::SurfaceKind::Surfaceless};
    kelo::test::TestClock clock;
    std::shared_ptr<kelo::DXOpenGL> view;
    std::unique_ptr<OpenedTreatment> treatment;
};

TEST_F(WorkByDate, theDatesAreThoseOfTheNotesBeforeTodayAndToday)
{
    EXPECT_EQ(treatment->dates(), (std::vector{september, october, today}));
    EXPECT_EQ(treatment->today(), today);
}

TEST_F(WorkByDate, aNewDayStartsFromTheLastNote)
{
    EXPECT_TRUE(isShown("8"));
    EXPECT_TRUE(isShown("9"));
    EXPECT_EQ(treatment->document()->elasticModels().size(), 1u);
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_NO_GL_ERROR();
}

TEST_F(WorkByDate, anEarlierNoteIsLookedAtWithItsDateAndWithoutTools)
{
    EXPECT_EQ(treatment->showDate(*view, september), QStringList());
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_EQ(view->displayedDate().date(), september);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::rotateMode);
    EXPECT_TRUE(isShown("8"));
    EXPECT_FALSE(isShown("9"));
    EXPECT_TRUE(treatment->document()->elasticModels().empty());
    treatment->showDate(*view, today);
    EXPECT_TRUE(isShown("9"));
    EXPECT_TRUE(view->mouseModeIsElastics());
    EXPECT_NO_GL_ERROR();
}

TEST_F(WorkByDate, whatWasDoneTodayIsThereAgainAfterLookingBack)
{
    treatment->document()->toggleVisibilityOfBracket("9"); // and with it the elastic
    treatment->showDate(*view, october);
    EXPECT_TRUE(isShown("9"));
    EXPECT_EQ(treatment->document()->elasticModels().size(), 1u);
    treatment->showDate(*view, today);
    EXPECT_FALSE(isShown("9"));
    EXPECT_TRUE(treatment->document()->elasticModels().empty());
    EXPECT_NO_GL_ERROR();
}

TEST_F(WorkByDate, anApprovedNoteIsOnlyLookedAtUntilTheApprovalIsTakenBack)
{
    treatment->setApproved(*view, true);
    EXPECT_EQ(treatment->session().approvedDate(), today);
    EXPECT_EQ(view->approvedDate().date(), today);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::rotateMode);
    treatment->showDate(*view, september);
    EXPECT_EQ(treatment->session().approvedDate(), std::nullopt);
    treatment->showDate(*view, today);
    EXPECT_EQ(view->approvedDate().date(), today);
    EXPECT_EQ(view->mouseMode(), kelo::DXOpenGL::rotateMode);
    treatment->setApproved(*view, false);
    EXPECT_FALSE(view->approvedDate().isValid());
    EXPECT_TRUE(view->mouseModeIsElastics());
    EXPECT_NO_GL_ERROR();
}

TEST_F(WorkByDate, theLogTellsWhatWasDoneInWordsThatPeopleRead)
{
    auto &document = *treatment->document();
    const auto size = treatment->changes().value().size();
    document.toggleVisibilityOfTooth("5");
    document.bracket_setColorWithBracketColorTypeID("8", 6);
    treatment->setApproved(*view, true);
    const auto changes = treatment->changes().value();
    ASSERT_GT(changes.size(), size);
    QStringList lines;
    for (std::size_t i = size; i < changes.size(); ++i) {
        const QStringList columns = changeColumns(changes[i], document, ToothNotation::FDI);
        ASSERT_EQ(columns.size(), 6);
        EXPECT_EQ(columns[1], QLocale().toString(today, QLocale::ShortFormat));
        lines << columns.mid(2).join('|');
    }
    const QString todayText = QLocale().toString(today, QLocale::ShortFormat);
    EXPECT_EQ(lines, (QStringList{
                         "Note begun|" + QLocale().toString(october, QLocale::ShortFormat) + "||" +
                             todayText,
                         "Tooth|14|shown|hidden",
                         "Bracket colour|11|none|Electric blue",
                         "Approval||not approved|" + todayText,
                     }));
    EXPECT_NO_GL_ERROR();
}

TEST_F(WorkByDate, theLogTellsOfEveryElasticWhatItWasAndIs)
{
    auto &document = *treatment->document();
    const auto &sizes = document.availableElasticsSizeTypes();
    const auto first = document.elasticModels().front(); // 8 to 9, in the file's size
    const std::string teeth = "8 \u2013 9", added = "6 \u2013 27 \u2013 30 lingual";
    for (const char *key : {"6", "27"})
        document.toggleVisibilityOfBracket(key);
    document.toggleVisibilityOfButton("30l");
    const auto size = treatment->changes().value().size();
    document.elasticModel_setElasticsSizeType(first, sizes.at(7));
    const auto named = document.availableElasticsConfigTypes().front();
    document.placeElasticModel(std::make_shared<kelo::ElasticModel>(
        named, sizes.at(11), std::vector<std::string>{"6", "27", "30l"}));
    document.toggleVisibilityOfBracket("27");
    document.removeElasticModel(first);
    QStringList lines;
    const auto changes = treatment->changes().value();
    for (std::size_t i = size; i < changes.size(); ++i) {
        if (changes[i].what.startsWith("elastic"))
            lines << changeColumns(changes[i], document, ToothNotation::Universal).mid(2).join('|');
    }
    const auto line = [](const std::string &text) { return QString::fromStdString(text); };
    const std::string ten = sizes.at(10)->typeLabel, seven = sizes.at(7)->typeLabel,
                      eleven = sizes.at(11)->typeLabel, name = named->typeLabel;
    EXPECT_EQ(
        lines,
        (QStringList{
            line("Elastic size|" + teeth + "|" + teeth + ", " + ten + "|" + teeth + ", " + seven),
            line("Elastic placed|" + added + "||" + added + ", " + eleven + ", " + name),
            line("Elastics shortened|27|" + added + ", " + eleven + ", " + name +
                 "|6 \u2013 30 lingual, " + eleven + ", " + name),
            line("Elastic removed|" + teeth + "|" + teeth + ", " + seven + "|"),
        }));
}

TEST_F(WorkByDate, theListOfChangesIsNewestFirstAndCanBeSearched)
{
    treatment->document()->toggleVisibilityOfTooth("5");
    treatment->document()->toggleVisibilityOfTooth("4");
    ChangeLogDialog dialog(treatment->changes().value(), *treatment->document(),
                           ToothNotation::Universal);
    const auto *table = dialog.findChild<QTableView *>();
    ASSERT_NE(table, nullptr);
    const auto *model = table->model();
    const int all = model->rowCount();
    ASSERT_GE(all, 3);
    EXPECT_EQ(model->index(0, 3).data().toString(), "4");
    EXPECT_EQ(model->index(1, 3).data().toString(), "5");
    auto *search = dialog.findChild<QLineEdit *>();
    search->setText("tooth");
    EXPECT_EQ(model->rowCount(), 2);
    search->setText("no such change");
    EXPECT_EQ(model->rowCount(), 0);
    search->clear();
    EXPECT_EQ(model->rowCount(), all);
}

TEST_F(WorkByDate, theDateBarHasATabForEveryDateAndTellsTheOneThatIsChosen)
{
    DateBar bar;
    std::vector<QDate> chosen;
    QObject::connect(&bar, &DateBar::dateChosen,
                     [&chosen](const QDate &date) { chosen.push_back(date); });
    bar.setDates({september, october, today}, today);
    auto *tabs = bar.findChild<QTabBar *>();
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), QLocale().toString(september, QLocale::ShortFormat));
    EXPECT_EQ(tabs->tabText(2), "Today");
    EXPECT_EQ(tabs->currentIndex(), 2);
    bar.setCurrentDate(october);
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_TRUE(chosen.empty()) << "only the user's choice is told";
    tabs->setCurrentIndex(0);
    EXPECT_EQ(chosen, std::vector{september});
}

TEST_F(WorkByDate, theDateBarApprovesAndTakesTheApprovalBack)
{
    DateBar bar;
    std::vector<bool> chosen;
    QObject::connect(&bar, &DateBar::approvalChosen,
                     [&chosen](bool isApproved) { chosen.push_back(isApproved); });
    auto *button = bar.findChild<QPushButton *>();
    EXPECT_EQ(button->text(), "Approve");
    button->click();
    EXPECT_EQ(chosen, std::vector{true});
    bar.setApproval(today);
    EXPECT_EQ(button->text(), "Approved " + QLocale().toString(today, QLocale::ShortFormat));
    EXPECT_TRUE(button->isChecked());
    button->click();
    EXPECT_EQ(chosen, (std::vector{true, false}));
}

} // namespace
