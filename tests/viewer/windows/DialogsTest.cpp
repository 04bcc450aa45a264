// The dialogs of the viewer, on a display.

#include "tests/viewer/support/PreferencesFixture.h"
#include "viewer/settings/Theme.h"
#include "viewer/windows/KeysDialog.h"
#include "viewer/windows/NewPatientDialog.h"
#include "viewer/windows/PatientsDialog.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using namespace viewer;

TreatmentRecord recordOf(const char *name, const char *number)
{
    TreatmentRecord record;
    record.patient = {name, number, QDate(2011, 4, 2)};
    NoteRecord note;
    note.date = QDate(2026, 3, 5);
    record.notes = {note};
    return record;
}

class Patients : public testing::Test
{
protected:
    Patients()
    {
        first = store->addTreatment(recordOf("Zoe Young", "Z-1")).value();
        second = store->addTreatment(recordOf("Adam Old", "A-2")).value();
    }
    QTableView &table(const PatientsDialog &dialog) const
    {
        return *dialog.findChild<QTableView *>();
    }
    static QPushButton *button(const QDialog &dialog, const QString &text)
    {
        for (auto *one : dialog.findChildren<QPushButton *>()) {
            if (one->text() == text) return one;
        }
        return nullptr;
    }

    std::shared_ptr<TreatmentStore> store = TreatmentStore::open(":memory:").value();
    qint64 first = 0, second = 0;
};

TEST_F(Patients, areListedByNameWithTheirNotesAndTheFirstIsChosen)
{
    PatientsDialog dialog(*store);
    const auto *model = table(dialog).model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(0, 0).data(), "Adam Old");
    EXPECT_EQ(model->index(0, 1).data(), "A-2");
    EXPECT_EQ(model->index(0, 3).data(), "1");
    EXPECT_EQ(model->index(0, 4).data(),
              QLocale().toString(QDate(2026, 3, 5), QLocale::ShortFormat));
    EXPECT_EQ(dialog.treatment(), std::nullopt);
    button(dialog, "&Open")->click();
    EXPECT_EQ(dialog.treatment(), second);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(Patients, aSearchLeavesThoseThatFitAndReturnOpensTheFirst)
{
    PatientsDialog dialog(*store);
    dialog.findChild<QLineEdit *>()->setText("z-1");
    ASSERT_EQ(table(dialog).model()->rowCount(), 1);
    EXPECT_EQ(table(dialog).model()->index(0, 0).data(), "Zoe Young");
    button(dialog, "&Open")->click();
    EXPECT_EQ(dialog.treatment(), first);
}

TEST_F(Patients, whereNobodyFitsNothingCanBeOpened)
{
    PatientsDialog dialog(*store);
    dialog.findChild<QLineEdit *>()->setText("nobody");
    EXPECT_FALSE(button(dialog, "&Open")->isEnabled());
}

TEST(NewPatient, needsANameAndMayHaveADateOfBirth)
{
    NewPatientDialog dialog({});
    auto *accept = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    const auto fields = dialog.findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(fields.size(), 2);
    EXPECT_FALSE(accept->isEnabled());
    fields[0]->setText("   ");
    EXPECT_FALSE(accept->isEnabled());
    fields[0]->setText(" New Patient ");
    fields[1]->setText("N-3");
    EXPECT_TRUE(accept->isEnabled());
    EXPECT_EQ(dialog.patient(), (PatientRecord{"New Patient", "N-3", std::nullopt}));
    auto *birth = dialog.findChild<QDateEdit *>();
    EXPECT_FALSE(birth->isEnabled());
    dialog.findChild<QCheckBox *>()->setChecked(true);
    birth->setDate(QDate(2012, 5, 6));
    EXPECT_EQ(dialog.patient().birthDate, QDate(2012, 5, 6));
}

TEST(NewPatient, takesNoLongerTextsThanAreReadFromAFile)
{
    NewPatientDialog dialog({});
    for (QLineEdit *field :
         dialog.findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly)) {
        field->clear();
        field->insert(QString(1001, 'x'));
    }
    EXPECT_EQ(dialog.patient().name, QString(1000, 'x'));
    EXPECT_EQ(dialog.patient().identifier, QString(1000, 'x'));
}

TEST(NewPatient, aNumberThatAnotherPatientHasIsNotTaken)
{
    NewPatientDialog dialog({"A-1", ""});
    auto *accept = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    const auto fields = dialog.findChildren<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    const auto says = [&dialog](const QString &text) {
        const auto labels = dialog.findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(),
                           [&text](const QLabel *label) { return label->text() == text; });
    };
    fields[0]->setText("New Patient");
    fields[1]->setText(" a-1 ");
    EXPECT_FALSE(accept->isEnabled());
    EXPECT_TRUE(says("Another patient has this number already."));
    fields[1]->setText("");
    EXPECT_TRUE(accept->isEnabled()) << "several patients may have none";
    EXPECT_FALSE(says("Another patient has this number already."));
}

TEST(Keys, ofTheMenusAreListedUnderTheirMenuWithoutMnemonics)
{
    QMainWindow window;
    QMenu *file = window.menuBar()->addMenu("&File");
    file->addAction("&Open && Read…")->setShortcut(QKeySequence("Ctrl+O"));
    file->addAction("Without a key");
    QMenu *inner = file->addMenu("&More");
    inner->addAction("&Less")->setShortcut(QKeySequence("F9"));
    const auto rows = menuKeyRows(window);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].where, "File");
    EXPECT_EQ(rows[0].keys, "Ctrl+O");
    EXPECT_EQ(rows[0].effect, "Open & Read…");
    EXPECT_EQ(rows[1].where, "File \u203A More");
    EXPECT_EQ(rows[1].effect, "Less");
}

TEST(Keys, areFoundByWhatTheyDo)
{
    QMainWindow window;
    KeysDialog dialog(window);
    const auto *table = dialog.findChild<QTableView *>();
    EXPECT_EQ(table->model()->rowCount(), viewKeyRows().size());
    dialog.findChild<QLineEdit *>()->setText("45 degrees");
    ASSERT_EQ(table->model()->rowCount(), 1);
    EXPECT_EQ(table->model()->index(0, 1).data(), "Left, Right");
}

/// The contrast of two colours as accessibility guidelines define it, 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &color) {
        const auto linear = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
               0.0722 * linear(color.blueF());
    };
    const double lighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Themes, textsCanBeReadInBoth)
{
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
            {QPalette::WindowText, QPalette::Window},
            {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},
            {QPalette::ButtonText, QPalette::Button},
            {QPalette::HighlightedText, QPalette::Highlight},
            {QPalette::Link, QPalette::Base}};
        for (const auto &[text, ground] : pairs)
            EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5);
    }
}

TEST(Themes, theApplicationFollowsTheChoiceAndGoesBackToTheDesktop)
{
    const viewer::test::PreferencesOfTheTest settings;
    const QPalette desktop = QApplication::palette();
    followThemePreference();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), desktop.color(QPalette::Window));
    Preferences::preferences().setTheme(Theme::Dark);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window),
              darkPalette().color(QPalette::Window));
    Preferences::preferences().setTheme(Theme::Light);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window),
              lightPalette().color(QPalette::Window));
    Preferences::preferences().setTheme(Theme::AsDesktop);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), desktop.color(QPalette::Window));
}

} // namespace
