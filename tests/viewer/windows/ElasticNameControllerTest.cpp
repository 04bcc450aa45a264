#include "viewer/windows/ElasticNameController.h"

#include "viewer/windows/InterfaceFiles.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

using namespace viewer;

class ElasticNaming : public testing::Test
{
protected:
    ElasticNaming()
    {
        addViewerInterfaceFiles();
        controller.setMainWindow(&mainWindow);
        controller.ask({"Name Elastic", "Name:", "Box",
                        [](const QString &name) {
                            return name == "taken" || name.isEmpty() ? QString("No.") : QString();
                        },
                        [this](const QString &name) { answers << name; }});
        line = controller.window()->findChild<QLineEdit *>();
        accept = controller.window()->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    }
    ~ElasticNaming() override { kelo::removeInterfaceFileFolders(); }

    QWidget mainWindow;
    ElasticNameController controller;
    QStringList answers;
    QLineEdit *line = nullptr;
    QPushButton *accept = nullptr;
};

TEST_F(ElasticNaming, onlyANameThatCanBeHadIsTaken)
{
    EXPECT_EQ(line->text(), "Box");
    EXPECT_TRUE(accept->isEnabled());
    line->setText("taken");
    EXPECT_FALSE(accept->isEnabled());
    EXPECT_EQ(controller.window()->findChild<QLabel *>("reason")->text(), "No.");
    line->clear();
    EXPECT_FALSE(accept->isEnabled());
    line->setText("Other");
    EXPECT_TRUE(accept->isEnabled());
    accept->click();
    EXPECT_EQ(answers, QStringList("Other"));
    EXPECT_FALSE(controller.window()->isVisible());
}

TEST_F(ElasticNaming, aSheetThatIsCancelledAnswersNothingAndAsksAgain)
{
    line->setText("Other");
    controller.window()->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
    EXPECT_EQ(answers, QStringList());
    EXPECT_FALSE(controller.window()->isVisible());
    controller.ask({"Rename Elastic", "Again:", "Second", [](const QString &) { return QString(); },
                    [this](const QString &name) { answers << name; }});
    EXPECT_TRUE(controller.window()->isVisible());
    EXPECT_EQ(line->text(), "Second");
    accept->click();
    EXPECT_EQ(answers, QStringList("Second"));
}

} // namespace
