#include "keloOpenGL/editing/BracketChanges.h"

#include "keloModel/BracketColorType.h"
#include "tests/document/DocumentFixture.h"

#include <algorithm>

namespace {

using namespace kelo;
using namespace kelo::test;

class BracketChanges : public DocumentFixture
{
protected:
    BracketChanges()
    {
        for (const long typeID : {3L, noBracketColorTypeID}) {
            auto type = std::make_shared<BracketColorType>();
            type->typeID = typeID;
            types[typeID] = type;
        }
        document->setAvailableBracketColorTypes(types);
        for (const auto &[key, model] : document->bracketModels())
            model->setHiddenPrimary(true);
        delegate.takeCalls();
    }
    bool isShown(const std::string &key) const
    {
        return !bracket(key)->hiddenPrimary() && !bracket(key)->hiddenSecondary();
    }
    std::size_t shownCount() const
    {
        const auto &all = document->bracketModels();
        return static_cast<std::size_t>(std::count_if(
            all.begin(), all.end(), [this](const auto &entry) { return isShown(entry.first); }));
    }
    void carryOut(ToothOperation operation, const std::string &tooth,
                  std::optional<long> colorTypeID = std::nullopt)
    {
        kelo::carryOut({operation, tooth, colorTypeID}, *document);
    }

    DXDocumentModel::BracketColorTypes types;
};

TEST_F(BracketChanges, eachOperationChangesItsModelAlone)
{
    carryOut(ToothOperation::None, "8");
    EXPECT_EQ(delegate.takeCalls(), std::vector<std::string>());
    carryOut(ToothOperation::ShowAndColorBracket, "8", 3);
    EXPECT_TRUE(isShown("8"));
    EXPECT_EQ(shownCount(), 1u);
    carryOut(ToothOperation::ColorAndToggleBracket, "9", 3);
    EXPECT_TRUE(isShown("9"));
    carryOut(ToothOperation::RemoveColorAndToggleBracket, "9");
    carryOut(ToothOperation::ToggleAndRemoveColorOfBracket, "8");
    EXPECT_EQ(shownCount(), 0u);
    const bool buttonWasHidden = button("8l")->hiddenPrimary();
    carryOut(ToothOperation::ToggleButton, "8");
    EXPECT_NE(button("8l")->hiddenPrimary(), buttonWasHidden);
    carryOut(ToothOperation::ToggleTooth, "8");
    EXPECT_TRUE(tooth("8")->hiddenPrimary());
}

TEST_F(BracketChanges, theRepeatTargetHasTheFlagsOfAllThreeModels)
{
    bracket("8")->setHiddenPrimary(false);
    button("8l")->setHiddenPrimary(true);
    tooth("8")->setHiddenSecondary(true);
    const RepeatTarget target = repeatTarget(*document, "8");
    EXPECT_FALSE(target.bracket.primary);
    EXPECT_TRUE(target.button.primary);
    EXPECT_TRUE(target.tooth.secondary);
    EXPECT_FALSE(target.isLastClickedTooth);
    EXPECT_FALSE(repeatTarget(*document, "99").bracket.primary) << "what is missing is shown";
}

TEST_F(BracketChanges, placingAllLeavesOutThoseWhoseToothIsNotThere)
{
    const std::size_t all = document->bracketModels().size();
    bracket("9")->setHiddenSecondary(true);
    placeAllBrackets(*document, 3);
    EXPECT_EQ(shownCount(), all - 1);
    EXPECT_TRUE(bracket("9")->hiddenPrimary());
}

TEST_F(BracketChanges, colouringAllShowsNone)
{
    colorAllBrackets(*document, 3);
    EXPECT_EQ(shownCount(), 0u);
}

TEST_F(BracketChanges, removingAllHidesThosePlacedWhateverTheirTooth)
{
    placeAllBrackets(*document, 3);
    bracket("9")->setHiddenSecondary(true);
    removeAllBrackets(*document);
    for (const auto &[key, model] : document->bracketModels())
        EXPECT_TRUE(model->hiddenPrimary()) << key;
}

TEST_F(BracketChanges, aHostThatClearsTheDocumentMeanwhileEndsTheChange)
{
    int calls = 0;
    delegate.bracket_visibilityDidChange = [&](const std::string &, bool) {
        ++calls;
        document->setBracketModels({});
    };
    placeAllBrackets(*document, 3);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(document->bracketModels().empty());
}

} // namespace
