#include "base/Assertion.h"
#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"
#include "platform/time/NotificationCenter.h"
#include "tests/document/DocumentFixture.h"
#include "tests/models/OBJReaderMesh.h"
#include "tests/support/CapturedOutput.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace kelo {
namespace {

using test::emptyModel;
using test::emptyModels;
using test::Keys;
using test::TemporaryFile;
using Calls = std::vector<std::string>;

class DXDocumentModelTest : public test::DocumentFixture
{};

TEST_F(DXDocumentModelTest, hidingAToothBySavedStateLeavesItsBracketsOwnVisibility)
{
    document->setToothVisibilities({{"8", false}});
    EXPECT_EQ(document->toothVisibilities().at("8"), false);
    EXPECT_EQ(document->bracketVisibilities().at("8"), true);
    EXPECT_FALSE(bracket("8")->hiddenPrimary());
    EXPECT_TRUE(bracket("8")->hiddenSecondary()) << "so it is not drawn";
    EXPECT_TRUE(button("8l")->hiddenSecondary());
    EXPECT_FALSE(button("8l")->hiddenPrimary());
    EXPECT_EQ(document->checkSanity(), Calls());
}

TEST_F(DXDocumentModelTest, keysThatAreNotGivenStayAsTheyAre)
{
    document->setToothVisibilities({{"8", false}, {"9", false}});
    document->setToothVisibilities({{"8", true}});
    EXPECT_TRUE(document->toothVisibilities().at("8"));
    EXPECT_FALSE(document->toothVisibilities().at("9"));
    EXPECT_FALSE(bracket("8")->hiddenSecondary());
    EXPECT_TRUE(bracket("9")->hiddenSecondary());
}

TEST_F(DXDocumentModelTest, savedBracketAndButtonVisibilitiesSetTheirOwnFlagOnly)
{
    document->setBracketVisibilities({{"8", false}});
    document->setButtonVisibilities({{"9l", false}});
    EXPECT_TRUE(bracket("8")->hiddenPrimary());
    EXPECT_FALSE(bracket("8")->hiddenSecondary());
    EXPECT_FALSE(button("8l")->hiddenPrimary());
    EXPECT_TRUE(button("9l")->hiddenPrimary());
    EXPECT_FALSE(button("9l")->hiddenSecondary());
    EXPECT_FALSE(document->bracketVisibilities().at("8"));
    EXPECT_FALSE(document->buttonVisibilities().at("9l"));
    EXPECT_EQ(document->bracketVisibilities().size(), 28u);
    EXPECT_EQ(document->buttonVisibilities().size(), 28u);
    EXPECT_EQ(document->toothVisibilities().size(), 28u);
}

TEST_F(DXDocumentModelTest, restoringVisibilitiesTellsNobodyAndTouchesNoElastic)
{
    const auto elastic = place({"8", "9", "8l"});
    document->setToothVisibilities({{"8", false}});
    document->setBracketVisibilities({{"8", false}});
    document->setButtonVisibilities({{"8l", false}});
    clock->advance(10.0);
    EXPECT_EQ(delegate.calls, Calls());
    EXPECT_TRUE(document->pendingBracketVisibilityUpdates().empty());
    EXPECT_TRUE(document->pendingButtonVisibilityUpdates().empty());
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9", "8l"}));
}

TEST_F(DXDocumentModelTest, visibilitiesOfUnknownKeysArePassedOver)
{
    document->setToothVisibilities({{"99", false}});
    document->setBracketVisibilities({{"99", false}});
    document->setButtonVisibilities({{"99l", false}});
    EXPECT_FALSE(document->toothVisibilities().contains("99"));
    EXPECT_EQ(document->checkSanity(), Calls());
}

TEST_F(DXDocumentModelTest, aToothToggledTwiceBringsNoElasticBack)
{
    const auto shortened = place({"8", "9", "24"});
    const auto removed = place({"8l", "9l"});
    document->toggleVisibilityOfTooth("8");
    EXPECT_TRUE(tooth("8")->hiddenPrimary());
    EXPECT_TRUE(bracket("8")->hiddenSecondary());
    EXPECT_TRUE(button("8l")->hiddenSecondary());
    document->toggleVisibilityOfTooth("8");
    EXPECT_FALSE(tooth("8")->hiddenPrimary());
    EXPECT_FALSE(bracket("8")->hiddenSecondary());
    EXPECT_FALSE(button("8l")->hiddenSecondary());
    EXPECT_EQ(shortened->bracketSequence(), (Keys{"9", "24"}));
    EXPECT_EQ(document->elasticModels(), (DXDocumentModel::ElasticModels{shortened}));
    EXPECT_EQ(delegate.takeCalls(),
              (Calls{"tooth 8 hidden", "refactored 8", "refactored 8l", "tooth 8 visible"}));
}

TEST_F(DXDocumentModelTest, aToothToggleAccumulatesNoUpdate)
{
    document->toggleVisibilityOfTooth("8");
    clock->advance(10.0);
    EXPECT_EQ(delegate.takeCalls(), Calls{"tooth 8 hidden"});
    EXPECT_TRUE(document->pendingBracketVisibilityUpdates().empty());
    EXPECT_TRUE(document->pendingButtonVisibilityUpdates().empty());
}

TEST_F(DXDocumentModelTest, hidingABracketRefactorsElasticsAndShowingDoesNot)
{
    bracket("8")->setHiddenPrimary(true);
    const auto elastic = place({"8", "9", "10"});
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket 8 visible"});
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"8", "9", "10"}));
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket 8 hidden", "refactored 8"}));
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"9", "10"}));
}

TEST_F(DXDocumentModelTest, hidingAButtonRefactorsElasticsAndShowingDoesNot)
{
    const auto elastic = place({"8l", "9", "10"});
    document->toggleVisibilityOfButton("8l");
    EXPECT_EQ(delegate.takeCalls(), (Calls{"button 8l hidden", "refactored 8l"}));
    EXPECT_EQ(elastic->bracketSequence(), (Keys{"9", "10"}));
    document->toggleVisibilityOfButton("8l");
    EXPECT_EQ(delegate.takeCalls(), Calls{"button 8l visible"});
    EXPECT_EQ(document->pendingButtonVisibilityUpdates(),
              (DXDocumentModel::Visibilities{{"8l", true}}));
}

TEST_F(DXDocumentModelTest, aToggleOfAKeyWithoutAModelIsOnlyTold)
{
    document->toggleVisibilityOfBracket("99");
    document->toggleVisibilityOfButton("99l");
    document->toggleVisibilityOfTooth("99");
    EXPECT_EQ(delegate.takeCalls(),
              (Calls{"bracket 99 visible", "button 99l visible", "tooth 99 visible"}));
    EXPECT_EQ(document->bracketVisibilityUpdates(), (DXDocumentModel::Visibilities{{"99", true}}));
    EXPECT_EQ(document->buttonVisibilityUpdates(), (DXDocumentModel::Visibilities{{"99l", true}}));
    EXPECT_FALSE(document->bracketModels().contains("99"));
}

TEST_F(DXDocumentModelTest, everyToggleIsAnnouncedByItsMeshes)
{
    int changes = 0;
    NotificationCenter::defaultCenter().addObserver(
        &changes, [&](const Notification &) { ++changes; }, "modelChangedNotification");
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(changes, 1);
    document->toggleVisibilityOfTooth("8");
    EXPECT_EQ(changes, 4) << "the tooth, its bracket, its button";
    NotificationCenter::defaultCenter().removeObserver(&changes);
}

TEST_F(DXDocumentModelTest, theUpperModelsOf14TeethAre43AndTheGumIsTheFirst)
{
    const auto upper = document->upperModels();
    ASSERT_EQ(upper.size(), 43u);
    EXPECT_EQ(upper[0], document->upperGumModel());
    EXPECT_EQ(upper[1], tooth("2"));
    EXPECT_EQ(upper[2], bracket("2"));
    EXPECT_EQ(upper[3], button("2l"));
    EXPECT_EQ(upper[40], tooth("15"));
    EXPECT_EQ(upper[41], bracket("15"));
    EXPECT_EQ(upper[42], button("15l"));
    const auto lower = document->lowerModels();
    ASSERT_EQ(lower.size(), 43u);
    EXPECT_EQ(lower[0], document->lowerGumModel());
    EXPECT_EQ(lower[1], tooth("18"));
    EXPECT_EQ(lower[42], button("31l"));
}

TEST_F(DXDocumentModelTest, allModelsAreTeethBracketsButtonsAndTheGumsLast)
{
    const auto models = document->models();
    ASSERT_EQ(models.size(), 3u * 28u + 2u);
    EXPECT_EQ(models[0], tooth("2"));
    EXPECT_EQ(models[27], tooth("31"));
    EXPECT_EQ(models[28], bracket("2"));
    EXPECT_EQ(models[56], button("2l"));
    EXPECT_EQ(models[83], button("31l"));
    EXPECT_EQ(models[84], document->upperGumModel());
    EXPECT_EQ(models[85], document->lowerGumModel());
}

TEST_F(DXDocumentModelTest, hiddenModelsAreInTheLists)
{
    document->setToothVisibilities({{"2", false}});
    EXPECT_EQ(document->upperModels().size(), 43u);
    EXPECT_EQ(document->models().size(), 86u);
}

TEST_F(DXDocumentModelTest, aListThatNamesAMissingModelIsRefusedByName)
{
    const auto expectRefusal = [&](auto list, const char *message) {
        try {
            (void)list();
            ADD_FAILURE() << "no refusal: " << message;
        } catch (const ModelNotLoaded &error) {
            EXPECT_STREQ(error.what(), message);
        }
    };
    const auto upper = [&] { return document->upperModels(); };
    const auto lower = [&] { return document->lowerModels(); };
    const auto all = [&] { return document->models(); };

    auto buttons = document->buttonModels();
    buttons.erase("31l");
    document->setButtonModels(buttons);
    expectRefusal(lower, "The lower models need the button \"31l\", which is not loaded");
    EXPECT_EQ(document->upperModels().size(), 43u) << "the other jaw is complete";
    auto brackets = document->bracketModels();
    brackets.erase("8");
    document->setBracketModels(brackets);
    expectRefusal(upper, "The upper models need the bracket \"8\", which is not loaded");
    auto teeth = document->toothModels();
    teeth.erase("8");
    document->setToothModels(teeth);
    expectRefusal(upper, "The upper models need the tooth \"8\", which is not loaded");
    document->setLowerGumModel(nullptr);
    expectRefusal(lower, "The lower models need the lower gum, which is not loaded");
    expectRefusal(all, "The models need the lower gum, which is not loaded");
    document->setUpperGumModel(nullptr);
    expectRefusal(upper, "The upper models need the upper gum, which is not loaded");
    expectRefusal(all, "The models need the upper gum, which is not loaded");
}

TEST_F(DXDocumentModelTest, theLoadedListsLeaveOutWhatIsNotLoaded)
{
    EXPECT_EQ(document->loadedUpperModels(), document->upperModels());
    EXPECT_EQ(document->loadedLowerModels(), document->lowerModels());
    EXPECT_EQ(document->loadedModels(), document->models());

    auto expected = document->upperModels();
    auto teeth = document->toothModels();
    auto brackets = document->bracketModels();
    auto buttons = document->buttonModels();
    teeth.erase("3");
    brackets.erase("3");
    buttons.erase("3l");
    brackets.erase("8");
    document->setToothModels(teeth);
    document->setBracketModels(brackets);
    document->setButtonModels(buttons);
    document->setUpperGumModel(nullptr);
    // In the upper list the gum is first, then three models a tooth, from "2" on.
    expected.erase(expected.begin() + 1 + 3 * 6 + 1);
    expected.erase(expected.begin() + 1 + 3, expected.begin() + 1 + 6);
    expected.erase(expected.begin());
    EXPECT_EQ(document->loadedUpperModels(), expected);
    EXPECT_EQ(document->loadedUpperModels().size(), 43u - 5u);
    EXPECT_EQ(document->loadedLowerModels().size(), 43u);
    EXPECT_EQ(document->loadedModels().size(), 86u - 5u);
    EXPECT_EQ(document->loadedModels().back(), document->lowerGumModel());
    EXPECT_TRUE(DXDocumentModel().loadedModels().empty());
    EXPECT_TRUE(DXDocumentModel().loadedUpperModels().empty());
}

TEST_F(DXDocumentModelTest, everyButtonGetsTheExtendedHitbox)
{
    for (const auto &[key, model] : document->buttonModels())
        EXPECT_TRUE(model->extendedHitbox()) << key;
    for (const auto &[key, model] : document->bracketModels())
        EXPECT_FALSE(model->extendedHitbox()) << key;
}

TEST_F(DXDocumentModelTest, aDictionaryWithANullModelIsRefusedAndTheOldOneStays)
{
    auto teeth = document->toothModels();
    teeth["8"] = nullptr;
    EXPECT_THROW(document->setToothModels(teeth), AssertionFailure);
    EXPECT_THROW(document->setBracketModels(teeth), AssertionFailure);
    EXPECT_THROW(document->setButtonModels(teeth), AssertionFailure);
    EXPECT_TRUE(tooth("8"));
}

TEST_F(DXDocumentModelTest, settersAnnounceNothing)
{
    document->setToothModels(emptyModels({"8"}));
    document->setUpperGumModel(emptyModel());
    document->setAvailableElasticsConfigTypes({std::make_shared<ElasticsConfigType>()});
    EXPECT_EQ(delegate.calls, Calls());
    EXPECT_EQ(document->availableElasticsConfigTypes().size(), 1u);
}

TEST(DXDocumentModel, aNewModelIsEmptyAndWaits3Seconds)
{
    const DXDocumentModel document;
    EXPECT_EQ(document.updateAccumulationTime(), 3.0);
    EXPECT_EQ(document.delegate(), nullptr);
    EXPECT_EQ(document.upperGumModel(), nullptr);
    EXPECT_TRUE(document.toothModels().empty());
    EXPECT_TRUE(document.availableBracketColorTypes().empty());
    EXPECT_TRUE(document.elasticModels().empty());
    EXPECT_TRUE(document.bracketColorsTypeIDs().empty());
    EXPECT_TRUE(document.pendingBracketColorTypeIDUpdates().empty());
}

/// A bundle with the meshes of tooth 8 and of the gums.
class DXDocumentModelLoading : public test::DocumentFixture
{
protected:
    DXDocumentModelLoading()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "kelo-document-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
        folder_ = pattern;
        std::ofstream(folder_ / "bundle-identifier") << keloOpenGLBundleKey << '\n';
        for (const char *name : {"_tooth_8", "_tooth_9", "bracket_8", "button_8", "_upper_gums"})
            std::ofstream(folder_ / (std::string(name) + ".obj"))
                << "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
        ResourceBundle::setSearchFolder(folder_.string());
    }
    ~DXDocumentModelLoading() override
    {
        ResourceBundle::setSearchFolder("");
        std::filesystem::remove_all(folder_);
    }

private:
    std::filesystem::path folder_;
};

TEST_F(DXDocumentModelLoading, loadingReturnsWhatCouldNotBeLoadedAndLoadsTheRest)
{
    const TemporaryFile good("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const TemporaryFile bad("v 0 0 0\nf 1 1 2\n");
    const DXDocumentModel::Paths teeth{{"8", good.path}, {"9", bad.path}};
    const DXDocumentModel::Paths buttons{{"8l", good.path}, {"9l", bad.path}};
    const char *reason = "vertex number 2 is out of range: the mesh has 1 vertex";
    MeshFailures ofTeeth, ofBrackets, ofButtons, ofGums;
    const std::string messages = test::standardErrorOf([&] {
        ofTeeth = document->loadToothModelFiles(teeth);
        ofBrackets = document->loadBracketModelFiles(teeth);
        ofButtons = document->loadButtonModelFiles(buttons);
        ofGums = document->loadUpperAndLowerGumModels();
    });
    EXPECT_EQ(ofTeeth, (MeshFailures{{"9", bad.path, 2, reason}}));
    EXPECT_EQ(ofBrackets, (MeshFailures{{"9", bad.path, 2, reason}}));
    EXPECT_EQ(ofButtons, (MeshFailures{{"9l", bad.path, 2, reason}}));
    EXPECT_EQ(ofGums,
              (MeshFailures{{"lower gums", "_lower_gums.obj", 0, "the resource is missing"}}));
    EXPECT_EQ(document->loadedModels().size(), 4u);
    EXPECT_EQ(std::count(messages.begin(), messages.end(), '\n'), 3 * 2 + 1) << messages;
}

TEST_F(DXDocumentModelLoading, theMeshesOfTheGivenKeysReplaceWhatWasThere)
{
    document->loadToothModelFilesForToothNameKeys({"8", "9"});
    document->loadBracketModelFilesForToothNameKeys({"8"});
    document->loadButtonModelFilesForButtonNameKeys({"8l"});
    ASSERT_EQ(document->toothModels().size(), 2u);
    EXPECT_EQ(tooth("8")->vertexCount(), 3u);
    EXPECT_EQ(tooth("8")->material(), tooth("9")->material());
    ASSERT_EQ(document->bracketModels().size(), 1u);
    ASSERT_EQ(document->buttonModels().size(), 1u);
    EXPECT_TRUE(button("8l")->extendedHitbox());
}

TEST_F(DXDocumentModelLoading, gumsThatCannotBeLoadedAreSaidAndMissing)
{
    EXPECT_EQ(test::standardErrorOf([&] { document->loadUpperAndLowerGumModels(); }),
              "Error: Couldn't load \"_lower_gums.obj\" as a model file\n");
    ASSERT_TRUE(document->upperGumModel());
    EXPECT_EQ(document->upperGumModel()->vertexCount(), 3u);
    EXPECT_EQ(document->lowerGumModel(), nullptr);
}

TEST_F(DXDocumentModelLoading, theHostIsToldOfTheProgressAndMayLetGoOfTheDocument)
{
    std::vector<std::size_t> done;
    document->loadingProgress = [&](std::size_t doneCount, std::size_t fileCount) {
        EXPECT_EQ(fileCount, 2u);
        done.push_back(doneCount);
        document.reset();
    };
    document->loadToothModelFilesForToothNameKeys({"8", "9"});
    EXPECT_EQ(done, (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(document, nullptr);
}

} // namespace
} // namespace kelo
