#include "viewer/settings/Preferences.h"

#include "tests/viewer/support/PreferencesFixture.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

using namespace viewer;

class PreferencesOfAUser : public testing::Test
{
protected:
    PreferencesOfAUser()
    {
        QObject::connect(&all, &Preferences::changed, &receiver, [this] { ++changes; });
    }
    QString file(const QString &name)
    {
        QFile made(folder.filePath(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        return made.fileName();
    }

    viewer::test::PreferencesOfTheTest settings;
    QTemporaryDir folder;
    Preferences &all = Preferences::preferences();
    QObject receiver;
    int changes = 0;
};

TEST_F(PreferencesOfAUser, atFirstTeethAreUniversalAndColoursTheDesktops)
{
    EXPECT_EQ(all.notation(), ToothNotation::Universal);
    EXPECT_FALSE(all.showsToothNumbers());
    EXPECT_EQ(all.theme(), Theme::AsDesktop);
    EXPECT_TRUE(all.recentFiles().isEmpty());
    EXPECT_TRUE(all.windowGeometry().isEmpty());
}

TEST_F(PreferencesOfAUser, aChoiceIsToldOnceAndThereAfterwards)
{
    all.setNotation(ToothNotation::FDI);
    all.setShowsToothNumbers(true);
    all.setTheme(Theme::Dark);
    EXPECT_EQ(changes, 3);
    all.setTheme(Theme::Dark);
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(all.notation(), ToothNotation::FDI);
    EXPECT_TRUE(all.showsToothNumbers());
    EXPECT_EQ(all.theme(), Theme::Dark);
}

TEST_F(PreferencesOfAUser, theFileOpenedLastIsTheFirstOfTenAndOnlyOnce)
{
    for (int i = 0; i < 11; ++i)
        all.addRecentFile(file(QString("%1.json").arg(i)));
    EXPECT_EQ(all.recentFiles().size(), 10);
    EXPECT_EQ(all.recentFiles().front(), folder.filePath("10.json"));
    all.addRecentFile(folder.filePath("5.json"));
    EXPECT_EQ(all.recentFiles().size(), 10);
    EXPECT_EQ(all.recentFiles().front(), folder.filePath("5.json"));
    all.clearRecentFiles();
    EXPECT_TRUE(all.recentFiles().isEmpty());
}

TEST_F(PreferencesOfAUser, aFileThatIsGoneIsNotListed)
{
    all.addRecentFile(file("here.json"));
    all.addRecentFile(file("gone.json"));
    ASSERT_TRUE(QFile::remove(folder.filePath("gone.json")));
    EXPECT_EQ(all.recentFiles(), QStringList(folder.filePath("here.json")));
}

} // namespace
