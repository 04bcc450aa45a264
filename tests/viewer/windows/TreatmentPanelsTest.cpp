// The option panels and the sheet of a treatment's window, on a display.

#include "tests/viewer/support/TreatmentWindowFixture.h"
#include "viewer/windows/ToothChart.h"

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace {

using namespace viewer;
using namespace viewer::test;

class TreatmentPanels : public TreatmentWindows
{
protected:
    static QToolButton *toolIn(kelo::WindowController &panel, const QString &name)
    {
        for (auto *tool : panel.window()->findChildren<QToolButton *>()) {
            if (tool->accessibleName() == name) return tool;
        }
        return nullptr;
    }
    /// A pixel of the icon as the tool shows it, beside the line across a bracket.
    static QRgb middleOf(const QToolButton &tool)
    {
        const QImage picture =
            tool.icon()
                .pixmap(tool.iconSize(), tool.isEnabled() ? QIcon::Normal : QIcon::Disabled)
                .toImage();
        return picture.pixel(picture.width() / 2, picture.height() / 3);
    }
};

TEST_F(TreatmentPanels, aTreatmentOpenedAgainComesForwardWithoutItsPanels)
{
    TreatmentDocument &document = open();
    action(document, "Tooth Chart")->trigger();
    action(document, "Close All Panels")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    windowOf(document).showMinimized();
    all->openStored(document.treatment()->treatmentID(), nullptr);
    EXPECT_TRUE(windowOf(document).isVisible());
    EXPECT_FALSE(windowOf(document).isMinimized());
    EXPECT_FALSE(panel->window()->isVisible());
}

TEST_F(TreatmentPanels, theToothChartChangesTheTreatmentAndOnlyLooksAtApprovedOnes)
{
    TreatmentDocument &document = open();
    action(document, "Tooth Chart")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    ASSERT_NE(panel, nullptr);
    auto *chart = panel->window()->findChild<ToothChart *>();
    QToolButton *bracket = nullptr;
    for (auto *button : chart->findChildren<QToolButton *>()) {
        if (button->accessibleName() == "Bracket 8: no colour") bracket = button;
    }
    ASSERT_NE(bracket, nullptr);
    EXPECT_TRUE(bracket->isChecked());
    bracket->click();
    EXPECT_FALSE(bracketIsPlaced(document, "8"));
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: not placed");
    action(document, "Approved")->trigger();
    EXPECT_FALSE(bracket->isEnabled());
    action(document, "Approved")->trigger();
    EXPECT_TRUE(bracket->isEnabled());
    emit bracket->menu()->aboutToShow();
    QAction *lightBlue = nullptr;
    for (QAction *color : bracket->menu()->actions()) {
        if (color->text() == "Light blue") lightBlue = color;
    }
    ASSERT_NE(lightBlue, nullptr);
    lightBlue->trigger();
    EXPECT_TRUE(bracketIsPlaced(document, "8")) << "a colour is chosen to be seen";
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: Light blue");
    // It closes with the other panels, and with its document.
    action(document, "Materials")->trigger();
    auto *materials = document.existingWindowControllerForWindowNibName("Materials");
    EXPECT_TRUE(materials->window()->isVisible());
    action(document, "Close All Panels")->trigger();
    EXPECT_FALSE(panel->window()->isVisible());
    EXPECT_FALSE(materials->window()->isVisible());
    action(document, "Tooth Chart")->trigger();
    EXPECT_EQ(document.existingWindowControllerForWindowNibName("ToothChart"), panel);
    EXPECT_TRUE(document.mainWindow()->close());
    EXPECT_FALSE(panel->window()->isVisible());
    waitForClosed();
}

TEST_F(TreatmentPanels, aToothThatIsOutHasNeitherBracketNorButtonInTheChart)
{
    TreatmentDocument &document = open();
    kelo::DXDocumentModel &model = *document.treatment()->document();
    model.bracket_setColorWithBracketColorTypeID("8", 5);
    action(document, "Tooth Chart")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    QToolButton *const bracket = toolIn(*panel, "Bracket 8: Light blue");
    QToolButton *const button = toolIn(*panel, "Lingual button 8");
    QToolButton *const tooth = toolIn(*panel, "Tooth 8");
    ASSERT_TRUE(bracket && button && tooth);
    const QRgb colored = middleOf(*bracket);
    EXPECT_EQ(qAlpha(colored), 255);
    tooth->click();
    EXPECT_EQ(tooth->accessibleName(), "Tooth 8: missing");
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: the tooth is missing");
    EXPECT_EQ(button->accessibleName(), "Lingual button 8: the tooth is missing");
    EXPECT_EQ(qAlpha(middleOf(*bracket)), 0) << "an outline only";
    for (const QToolButton *tool : {bracket, button}) {
        EXPECT_FALSE(tool->isChecked());
        EXPECT_FALSE(tool->isEnabled());
    }
    EXPECT_TRUE(tooth->isEnabled());
    tooth->click();
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: Light blue");
    EXPECT_EQ(middleOf(*bracket), colored);
    EXPECT_TRUE(bracket->isEnabled());
    EXPECT_TRUE(button->isChecked());
}

TEST_F(TreatmentPanels, theChartShowsWhatAnybodyChanges)
{
    TreatmentDocument &document = open();
    kelo::DXDocumentModel &model = *document.treatment()->document();
    action(document, "Tooth Chart")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    QToolButton *const bracket = toolIn(*panel, "Bracket 8: no colour");
    ASSERT_NE(bracket, nullptr);
    model.bracket_setColorWithBracketColorTypeID("8", 5);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: Light blue");
    action(document, "Undo Colour bracket on 8, light blue")->trigger();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: no colour");
    // Out of sight it need not follow; when it is shown again, it has.
    panel->window()->close();
    model.toggleVisibilityOfBracket("8");
    QCoreApplication::sendPostedEvents();
    panel->window()->show();
    EXPECT_EQ(bracket->accessibleName(), "Bracket 8: not placed");
}

TEST_F(TreatmentPanels, theChartOfAnApprovedNoteKeepsItsColours)
{
    TreatmentDocument &document = open();
    document.treatment()->document()->bracket_setColorWithBracketColorTypeID("8", 5);
    action(document, "Tooth Chart")->trigger();
    auto *panel = document.existingWindowControllerForWindowNibName("ToothChart");
    QToolButton *const bracket = toolIn(*panel, "Bracket 8: Light blue");
    ASSERT_NE(bracket, nullptr);
    const QRgb colored = middleOf(*bracket);
    EXPECT_NE(qRed(colored), qBlue(colored)) << "or grey would be the same";
    action(document, "Approved")->trigger();
    EXPECT_FALSE(bracket->isEnabled());
    EXPECT_EQ(middleOf(*bracket), colored);
}

TEST_F(TreatmentPanels, aPanelsFrameIsFivePointsBesideTheWindowAndSixBelow)
{
    TreatmentDocument &document = open();
    // The window manager reports the frame.
    ASSERT_TRUE(waitUntil([&] {
        return windowOf(document).frameGeometry().top() != windowOf(document).geometry().top();
    }));
    windowOf(document).move(50, 80);
    ASSERT_TRUE(waitUntil([&] { return windowOf(document).pos() == QPoint(50, 80); }));
    for (int showing = 1; showing <= 2; ++showing) {
        action(document, "Materials")->trigger();
        QWidget *const panel =
            document.existingWindowControllerForWindowNibName("Materials")->window();
        ASSERT_TRUE(waitUntil([panel] { return panel->frameGeometry() != panel->geometry(); }));
        EXPECT_TRUE(displayIsSettled());
        const QRect mother = windowOf(document).frameGeometry();
        EXPECT_EQ(panel->frameGeometry().topLeft(), mother.topRight() + QPoint(6, 6))
            << "showing " << showing;
        panel->close();
    }
}

TEST_F(TreatmentPanels, aPanelHasTheKeysOfTheWindowsMenusAndEscapeClosesIt)
{
    TreatmentDocument &document = open();
    document.treatment()->document()->toggleVisibilityOfBracket("8");
    action(document, "Tooth Chart")->trigger();
    QWidget *const panel =
        document.existingWindowControllerForWindowNibName("ToothChart")->window();
    ASSERT_TRUE(waitUntil([panel] { return panel->isActiveWindow(); }));
    ASSERT_TRUE(
        waitUntil([&] { return action(document, "Undo Remove bracket from 8") != nullptr; }));
    kelo::test::xdotool({"key", "ctrl+z"});
    EXPECT_TRUE(waitUntil([&] { return bracketIsPlaced(document, "8"); }));
    kelo::test::xdotool({"key", "F3"});
    ASSERT_TRUE(waitUntil(
        [&] { return document.existingWindowControllerForWindowNibName("Materials") != nullptr; }));
    QWidget *const materials =
        document.existingWindowControllerForWindowNibName("Materials")->window();
    ASSERT_TRUE(waitUntil([&] { return materials->isActiveWindow(); }));
    kelo::test::xdotool({"key", "Escape"});
    EXPECT_TRUE(waitUntil([&] { return !materials->isVisible(); }));
    EXPECT_TRUE(panel->isVisible());
    panel->activateWindow();
    ASSERT_TRUE(waitUntil([panel] { return panel->isActiveWindow(); }));
    kelo::test::xdotool({"key", "ctrl+w"});
    EXPECT_TRUE(waitUntil([&] { return !panel->isVisible(); }));
    EXPECT_FALSE(document.isClosed());
}

/// Names an elastic in the sheet that the view asks for.
void nameElastic(TreatmentDocument &document, std::size_t index, const QString &name)
{
    document.mainWindow()
        ->view()
        .delegate()
        ->launchElasticsConfigAssociationSheetWithElasticModel_namingAction(
            document.treatment()->document()->elasticModels()[index], 0);
    auto *sheet = document.existingWindowControllerForWindowNibName("ElasticName");
    sheet->window()->findChild<QLineEdit *>()->setText(name);
    qobject_cast<QDialog *>(sheet->window())->accept();
}

/// The log after two elastics were named, and both steps undone and redone.
void expectLogOfNaming(const std::vector<StoredChange> &changes, const std::string &nameBefore)
{
    ASSERT_GE(changes.size(), 6u);
    const auto &last = changes.back();
    EXPECT_EQ(last.what, "elastic renamed");
    EXPECT_EQ(last.key, "6,30");
    EXPECT_EQ(last.oldValue, QString::fromStdString(nameBefore));
    EXPECT_EQ(last.newValue, "Our Class II");
    const auto count = [&changes](const QString &what) {
        return std::count_if(changes.begin(), changes.end(),
                             [&what](const StoredChange &change) { return change.what == what; });
    };
    EXPECT_EQ(count("elastic renamed"), 3);
    EXPECT_EQ(count("elastic named"), 3);
    EXPECT_EQ(count("elastic placed"), 0);
    EXPECT_EQ(count("elastic removed"), 0);
}

TEST_F(TreatmentPanels, namingAnElasticIsAStepThatTheDatabaseAndTheLogFollow)
{
    TreatmentDocument &document = open();
    OpenedTreatment &treatment = *document.treatment();
    const auto &elastics = treatment.document()->elasticModels();
    const auto label = [&](std::size_t index) {
        const auto type = elastics[index]->elasticsConfigType();
        return type ? type->typeLabel : std::string("none");
    };
    const auto storedNames = [&] {
        std::vector<std::string> names;
        for (const auto &type : all->store().value()->namedElastics().value())
            names.push_back(type.typeLabel);
        return names;
    };
    using Names = std::vector<std::string>;
    const std::string before = label(0);
    const auto offered = treatment.document()->availableElasticsConfigTypes().size();

    nameElastic(document, 2, " My box "); // has no name in the sample
    nameElastic(document, 0, "Our Class II");
    EXPECT_EQ(storedNames(), (Names{"Our Class II", "My box"}));
    QAction *const undo =
        action(document, "Undo Rename elastic 6 \u2013 30, from Class II right to Our Class II");
    ASSERT_NE(undo, nullptr);
    undo->trigger();
    EXPECT_EQ(label(0), before);
    EXPECT_EQ(storedNames(), (Names{before, "My box"}));
    EXPECT_EQ(undo->text(), "&Undo Name elastic 13 \u2013 14 \u2013 19 \u2013 20, My box");
    undo->trigger();
    EXPECT_EQ(label(2), "none");
    EXPECT_EQ(treatment.document()->availableElasticsConfigTypes().size(), offered);
    EXPECT_EQ(storedNames(), Names{before});
    QAction *const redo =
        action(document, "Redo Name elastic 13 \u2013 14 \u2013 19 \u2013 20, My box");
    ASSERT_NE(redo, nullptr);
    redo->trigger();
    redo->trigger();
    EXPECT_EQ(label(0), "Our Class II");
    EXPECT_EQ(label(2), "My box");
    EXPECT_EQ(storedNames(), (Names{"Our Class II", "My box"}));

    expectLogOfNaming(treatment.changes().value(), before);
}

} // namespace
