#include "tests/support/GLTest.h"
#include "tests/viewer/script/RandomScriptCampaign.h"
#include "tests/viewer/support/RunProgram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <set>
#include <string>

namespace viewer::test {
namespace {

/// A process of its own, so that what is counted for a whole process begins anew.
QByteArray stateFromProgram(const QStringList &arguments)
{
    QProcess process;
    process.start(KELO_RANDOM_SCRIPTS_PROGRAM, arguments);
    if (!process.waitForFinished(120000)) return {};
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

/// The scenes, and with them the contexts, are gone when these tests end; complaintAbout asks
/// OpenGL for errors after every event.
class RandomScriptTest : public testing::Test
{
protected:
    RandomScriptTest() { writeRandomScriptScene(folder.path()); }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QTemporaryDir folder;
};

TEST_F(RandomScriptTest, theSameSeedTwiceGivesTheSameStateByteForByte)
{
    for (const char *seed : {"1", "77", "4711"}) {
        const QByteArray first = stateFromProgram({"state", seed});
        ASSERT_GT(first.size(), 1000);
        EXPECT_EQ(first, stateFromProgram({"state", seed})) << seed;
    }
}

TEST_F(RandomScriptTest, anotherSeedGivesAnotherScript)
{
    const auto lines = [this](std::uint64_t seed) {
        return playRandomScript(folder.path(), seed, 20, complaintAbout).lines;
    };
    EXPECT_EQ(lines(1), lines(1));
    EXPECT_NE(lines(1), lines(2));
}

TEST_F(RandomScriptTest, theViewerPlaysAWrittenScriptToTheSameStateByteForByte)
{
    for (const std::uint64_t seed : {3u, 1234u}) {
        const PlayedScript played = playRandomScript(folder.path(), seed, 200, complaintAbout);
        ASSERT_EQ(played.lines.size(), 200);
        const QString script = write("written.script", scriptText(played.lines, "Seed"));
        const Ended viewer =
            run({"--headless", "--size", "120x90", "--meshes", folder.path(), "--play", script,
                 "--state", "-", folder.filePath("treatment.json")});
        EXPECT_EQ(viewer.status, 0) << viewer.errors.toStdString();
        EXPECT_EQ(viewer.output, stateFromProgram({"state", QString::number(seed)})) << seed;
        EXPECT_EQ(viewer.output, stateFromProgram({"play", script})) << seed;
    }
}

/// What a line of a script does, by the words that matter: "press", "press left".
std::set<std::string> verbsOf(const QByteArray &line)
{
    const QByteArrayList words = line.split(' ');
    std::set<std::string> verbs{words[0].toStdString()};
    const bool isNamed = words[0] == "click" && std::isalpha(words[1][0]);
    if (isNamed || words[0] == "press") verbs.insert((words[0] + ' ' + words[1]).toStdString());
    if (words[0] == "click" && words[1] == "tool") verbs.insert(("tool " + words[2]).toStdString());
    if (words[0] == "key" || words[0] == "fullscreen")
        verbs.insert((words[0] + ' ' + words[1]).toStdString());
    for (const char *modifier : {"control", "shift", "option", "command"}) {
        if (words[0] == "modifiers" && words.contains(modifier))
            verbs.insert(std::string("modifiers ") + modifier);
    }
    return verbs;
}

const char *const everyVerb[] = {"press left",
                                 "press right",
                                 "drag",
                                 "release",
                                 "click",
                                 "click tooth",
                                 "click bracket",
                                 "click button",
                                 "click elastic",
                                 "tool elastics",
                                 "tool bracket",
                                 "tool print",
                                 "scroll",
                                 "key",
                                 "modifiers",
                                 "menu",
                                 "dismiss",
                                 "date",
                                 "approve",
                                 "advance",
                                 "repeat-interval",
                                 "mouth",
                                 "rotation",
                                 "resize",
                                 "fullscreen on",
                                 "fullscreen off",
                                 "zoom",
                                 "hide",
                                 "show",
                                 "wait",
                                 "key up",
                                 "key down",
                                 "key left",
                                 "key right",
                                 "key escape",
                                 "key menu",
                                 "key 0",
                                 "key x",
                                 "modifiers control",
                                 "modifiers shift",
                                 "modifiers option",
                                 "modifiers command"};

const char *const everyAction[] = {"bracketColorMenuItemSelected:",
                                   "placeBracketSelected:",
                                   "removeBracketSelected:",
                                   "placeButtonSelected:",
                                   "removeButtonSelected:",
                                   "placeToothSelected:",
                                   "removeToothSelected:",
                                   "placeAllBracketsSelected:",
                                   "markAllBracketsSelected:",
                                   "removeAllBracketsSelected:",
                                   "startElasticColorMenuItemSelected:",
                                   "placeSelectedElasticsConfigType:",
                                   "updateElasticColorMenuItemSelected:",
                                   "markAllElasticsSelected:",
                                   "removeElasticSelected:",
                                   "removeAllElasticsSelected:",
                                   "nameSelectedElasticsModel:"};

TEST_F(RandomScriptTest, someScriptsUseEveryCommandAndEveryRowOfTheMenus)
{
    std::set<std::string> verbs, actions;
    int mostElastics = 0;
    int alertCount = 0;
    for (std::uint64_t seed = 1; seed <= 25; ++seed) {
        const PlayedScript played = playRandomScript(folder.path(), seed, 200, complaintAbout);
        for (const QByteArray &line : played.lines)
            verbs.merge(verbsOf(line));
        actions.insert(played.chosenActions.begin(), played.chosenActions.end());
        mostElastics = std::max(mostElastics, played.mostElastics);
        alertCount += played.alertCount;
    }
    for (const char *verb : everyVerb)
        EXPECT_TRUE(verbs.contains(verb)) << verb;
    for (const char *action : everyAction)
        EXPECT_TRUE(actions.contains(action)) << action;
    EXPECT_GE(mostElastics, 6);
    EXPECT_GE(alertCount, 1) << "an elastic whose tooth is missing was asked for";
}

TEST_F(RandomScriptTest, aComplaintIsMinimisedIntoTheFileThatTheMessageNames)
{
    // The treatment is well, the oracle is not: it takes an elastic that was strung for a fault.
    // The treatment begins with one that has no configuration.
    Campaign campaign;
    campaign.sceneFolder = folder.path();
    campaign.failureFolder = folder.filePath("failures");
    campaign.oracle = [](RandomScriptScene &scene) {
        const auto &elastics = scene.document().elasticModels();
        const auto count = std::count_if(elastics.begin(), elastics.end(), [](const auto &one) {
            return one->elasticsConfigType() == nullptr;
        });
        return count > 1 ? QStringLiteral("an elastic was strung") : QString();
    };
    QString complaint;
    for (std::uint64_t seed = 1; complaint.isEmpty() && seed <= 100; ++seed)
        complaint = campaign.play(seed, 1);
    const QStringList told = complaint.split('\n');
    ASSERT_EQ(told.size(), 2) << complaint.toStdString();
    EXPECT_TRUE(told[0].endsWith(": an elastic was strung"));

    const QByteArrayList lines = scriptLines(contentOf(told[1]));
    // A click opens the menu, the menu begins the elastic, one click adds to it, one closes it.
    EXPECT_GE(lines.size(), 3);
    EXPECT_LE(lines.size(), 6) << lines.join('\n').toStdString();
    EXPECT_FALSE(playLines(folder.path(), lines, campaign.oracle).complaint.isEmpty());
    for (qsizetype left = 0; left < lines.size(); ++left) {
        QByteArrayList fewer = lines;
        fewer.removeAt(left);
        EXPECT_TRUE(playLines(folder.path(), fewer, campaign.oracle).complaint.isEmpty())
            << "without " << lines[left].toStdString();
    }
}

TEST_F(RandomScriptTest, whatTheViewThrowsIsAComplaint)
{
    RandomScriptScene scene(folder.path());
    EXPECT_EQ(complaintAbout(scene), QString());
    kelo::RunLoop::main().performSoon([] { throw std::runtime_error("a fault"); });
    EXPECT_TRUE(scene.play("advance 1"));
    EXPECT_EQ(complaintAbout(scene), QString("thrown: a fault"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, anOpenGLErrorAndAnInsaneDocumentAreComplaints)
{
    RandomScriptScene scene(folder.path());
    glEnable(0xFFFF);
    EXPECT_TRUE(complaintAbout(scene).startsWith("pending OpenGL errors:"));
    EXPECT_EQ(complaintAbout(scene), QString());
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    EXPECT_EQ(complaintAbout(scene), QString("the model-view stack is 2 deep"));
    glPopMatrix();
    scene.document().bracketModels().at("8")->setHiddenSecondary(true);
    EXPECT_EQ(complaintAbout(scene),
              QString("The bracket \"8\" does not hide and show with its tooth"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, aChangeThatTheStoreWasNotToldOfIsAComplaint)
{
    RandomScriptScene scene(folder.path());
    EXPECT_EQ(complaintAboutStorage(scene), QString());
    scene.document().toggleVisibilityOfTooth("9");
    scene.document().bracket_setColorWithBracketColorTypeID("8", 5);
    EXPECT_EQ(complaintAboutStorage(scene), QString());
    scene.document().setToothVisibilities({{"9", true}});
    EXPECT_EQ(complaintAboutStorage(scene), QString("the stored teeth are others"));
    scene.document().setToothVisibilities({{"9", false}});
    scene.document().setBracketColorTypeIDs({{"8", 6}});
    EXPECT_EQ(complaintAboutStorage(scene), QString("the stored colours are others"));
    scene.document().setBracketColorTypeIDs({{"8", 5}});
    scene.document().setElasticModels({});
    EXPECT_EQ(complaintAboutStorage(scene), QString("the stored elastics are others"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, aHighlightAndAnElasticOverWhatIsHiddenAreComplaints)
{
    RandomScriptScene scene(folder.path());
    auto &bracket = *scene.document().bracketModels().at("8");
    const auto material = bracket.material();
    bracket.setMaterial(kelo::HVOGLMaterial::materialWithColor_shininess(material->color(), 2.0));
    EXPECT_EQ(complaintAbout(scene), QString("bracket 8 is highlighted"));
    bracket.setMaterial(kelo::HVOGLMaterial::materialWithColor(kelo::Color::blackColor()));
    EXPECT_EQ(complaintAbout(scene),
              QString("bracket 8 has another colour than the document says"));
    bracket.setMaterial(material);
    scene.document().bracketModels().at("6")->setHiddenPrimary(true);
    EXPECT_TRUE(complaintAbout(scene).endsWith(" runs over 6, which is hidden"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, anElasticNotStrungFromTheFirstClickIsAComplaint)
{
    RandomScriptScene scene(folder.path());
    ASSERT_TRUE(scene.play("click bracket 6"));
    ASSERT_TRUE(scene.play("menu \"Start New Elastic\" > \"1/4\\\" 2 oz\""));
    EXPECT_EQ(complaintAbout(scene), QString());
    scene.view().setFirstClickedToothName("11");
    EXPECT_EQ(complaintAbout(scene),
              QString("an elastic is being strung from 6, but 11 was clicked first"));
    scene.view().setFirstClickedToothName("6");
    EXPECT_EQ(complaintAbout(scene), QString());
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, aModeWithoutControlAndATurnWithoutButtonAreComplaints)
{
    RandomScriptScene scene(folder.path());
    kelo::Event press;
    press.type = kelo::EventType::LeftMouseDown;
    press.locationInWindow = {1.0, 90.0}; // nothing is there
    scene.view().sendEvent(press);
    ASSERT_TRUE(scene.view().isRotating());
    EXPECT_EQ(complaintAbout(scene), QString("the jaws are being turned with no button held"));
    press.type = kelo::EventType::LeftMouseUp;
    scene.view().sendEvent(press);
    EXPECT_EQ(complaintAbout(scene), QString());
    scene.view().setTemporaryMouseMode(kelo::DXOpenGL::colorMode);
    EXPECT_EQ(complaintAbout(scene), QString("the mode 5 is temporary without a reason"));
    EXPECT_TRUE(scene.play("modifiers control"));
    EXPECT_EQ(complaintAbout(scene), QString()) << "Control is held";
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, elasticsOverTooLittleOrTwiceOneMemberAreComplaints)
{
    RandomScriptScene scene(folder.path());
    const auto show = [&scene](const std::vector<std::string> &sequence) {
        scene.document().setElasticModels({std::make_shared<kelo::ElasticModel>(
            nullptr, scene.document().availableElasticsSizeTypes().at(1), sequence)});
        return complaintAbout(scene);
    };
    EXPECT_EQ(show({"6", "30"}), QString());
    EXPECT_EQ(show({"6", "30", "30"}), QString("elastic 0 was placed over 30 twice in a row"));
    ASSERT_TRUE(scene.play("advance 0"));
    EXPECT_EQ(complaintAbout(scene), QString()) << "it was there before the last line";
    EXPECT_EQ(show({"6"}), QString("elastic 0 runs over less than two members"));
    EXPECT_EQ(show({"6", "8"}), QString("elastic 0 runs over 8, which is hidden"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, aButtonThatKeepsAnotherMaterialIsAComplaint)
{
    RandomScriptScene scene(folder.path());
    auto &button = *scene.document().buttonModels().at("3l");
    const auto material = button.material();
    button.setMaterial(kelo::HVOGLMaterial::materialWithColor(kelo::Color::whiteColor()));
    EXPECT_EQ(complaintAbout(scene), QString("button 3l has another material than before"));
    button.setMaterial(material);
    EXPECT_EQ(complaintAbout(scene), QString());
    EXPECT_NO_GL_ERROR();
}

TEST_F(RandomScriptTest, aMinimisedScriptFailsWithTheSameKindOfComplaint)
{
    // Two faults: an open mouth, and a turned head, which is checked first.
    Campaign campaign;
    campaign.sceneFolder = folder.path();
    campaign.failureFolder = folder.filePath("failures");
    campaign.oracle = [](RandomScriptScene &scene) {
        if (scene.view().mouthOpenAngle() == 0.0f) return QString();
        return scene.view().worldRotation()[0] == 90.0f ? QStringLiteral("open and in front")
                                                        : QStringLiteral("open and turned");
    };
    int turnedCount = 0;
    for (std::uint64_t seed = 1; turnedCount < 2 && seed <= 60; ++seed) {
        const PlayedScript whole = playRandomScript(folder.path(), seed, 200, campaign.oracle);
        if (whole.complaint != QStringLiteral("open and turned")) continue;
        ++turnedCount;
        const QStringList told = campaign.play(seed, 1).split('\n');
        ASSERT_EQ(told.size(), 2);
        EXPECT_EQ(told[0], QStringLiteral("Seed %1: open and turned").arg(seed));
        const QByteArrayList lines = scriptLines(contentOf(told[1]));
        EXPECT_EQ(playLines(folder.path(), lines, campaign.oracle).complaint,
                  QString("open and turned"));
    }
    EXPECT_EQ(turnedCount, 2);
}

TEST(RandomScriptMinimiser, complaintsThatDifferInNumbersAndKeysOnlyAreOfOneKind)
{
    EXPECT_EQ(kindOfComplaint("elastic 12 runs over 8l, which is hidden"),
              QString("elastic # runs over #, which is hidden"));
    EXPECT_EQ(kindOfComplaint("bracket 8 is highlighted"),
              kindOfComplaint("bracket 31 is highlighted"));
    EXPECT_NE(kindOfComplaint("bracket 8 is highlighted"),
              kindOfComplaint("button 8 is highlighted"));
}

TEST(RandomScriptMinimiser, twoLinesThatFailTogetherAreAllThatIsLeft)
{
    QByteArrayList lines;
    for (int i = 0; i < 200; ++i)
        lines << QByteArray::number(i);
    int callCount = 0;
    const QByteArrayList found = minimised(lines, [&callCount](const QByteArrayList &candidate) {
        ++callCount;
        return candidate.contains("17") && candidate.contains("143");
    });
    EXPECT_EQ(found, (QByteArrayList{"17", "143"}));
    EXPECT_LT(callCount, 100);
}

TEST(RandomScriptMinimiser, linesThatDoNotFailStayAsTheyAre)
{
    const QByteArrayList lines{"mouth 10", "advance 1"};
    EXPECT_EQ(minimised(lines, [](const QByteArrayList &) { return false; }), lines);
}

TEST(RandomScriptMinimiser, whatAlwaysFailsIsLeftWithoutALine)
{
    const QByteArrayList lines{"mouth 10", "advance 1", "dismiss"};
    EXPECT_EQ(minimised(lines, [](const QByteArrayList &) { return true; }), QByteArrayList());
}

TEST(RandomScriptMinimiser, aWrittenScriptReadsBackWithoutItsComment)
{
    const QByteArrayList lines{"menu \"1/4\\\" 2 oz\"", "advance 1"};
    EXPECT_EQ(scriptLines(scriptText(lines, "Seed 3: a\nfault")), lines);
    EXPECT_EQ(scriptText({"dismiss"}, "Seed 3: a\nfault"),
              QByteArray("# Seed 3: a\n# fault\ndismiss\n"));
}

TEST_F(RandomScriptTest, theKeptScriptsPlayToTheirEndWithoutAComplaint)
{
    const QDir kept(KELO_KEPT_SCRIPTS);
    const QStringList names = kept.entryList({"*.script"}, QDir::Files, QDir::Name);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        const QByteArrayList lines = scriptLines(contentOf(kept.filePath(name)));
        const PlayedScript played = playLines(folder.path(), lines, complaintAbout);
        EXPECT_EQ(played.complaint.toStdString(), "") << name.toStdString();
        EXPECT_EQ(played.lines, lines) << name.toStdString() << ": a line cannot be played";
    }
}

} // namespace
} // namespace viewer::test
