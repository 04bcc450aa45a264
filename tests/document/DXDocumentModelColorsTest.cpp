#include "tests/document/DocumentFixture.h"
#include "tests/support/CapturedOutput.h"

namespace kelo {
namespace {

using test::standardErrorOf;
using Calls = std::vector<std::string>;
using Colors = DXDocumentModel::ColorTypeIDs;
using Visibilities = DXDocumentModel::Visibilities;

const Color red(1.0, 0.0, 0.0, 1.0);
const Color green(0.0, 0.5, 0.0, 1.0);

/// The catalogue {1 red, 2 green}.
class DXDocumentModelColors : public test::DocumentFixture
{
protected:
    DXDocumentModelColors()
    {
        DXDocumentModel::BracketColorTypes types;
        types[2] = type(2, green);
        types[1] = type(1, red);
        document->setAvailableBracketColorTypes(types);
    }

    static std::shared_ptr<BracketColorType> type(long typeID, const Color &color)
    {
        const auto made = std::make_shared<BracketColorType>();
        made->typeID = typeID;
        made->bracketColor = {color.red, color.green, color.blue, color.alpha};
        return made;
    }

    std::optional<Color> colorOf(const std::string &key) const
    {
        return bracket(key)->material()->color();
    }
};

TEST_F(DXDocumentModelColors, restoringPaintsTheBracketsAndTellsNobody)
{
    document->setBracketColorTypeIDs({{"8", 1}, {"9", 2}, {"10", std::nullopt}});
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"8", 1}, {"9", 2}}));
    EXPECT_EQ(colorOf("8"), red);
    EXPECT_EQ(colorOf("9"), green);
    EXPECT_EQ(colorOf("10"), Color::whiteColor());
    EXPECT_EQ(bracket("8")->material()->frontAmbientColor(), Color::blackColor());
    EXPECT_EQ(bracket("8")->material()->frontSpecularColor(), Color::whiteColor());
    clock->advance(10.0);
    EXPECT_EQ(delegate.calls, Calls());
    EXPECT_TRUE(document->bracketColorTypeIDUpdates().empty());
}

TEST_F(DXDocumentModelColors, restoringReplacesAllEntries)
{
    document->setBracketColorTypeIDs({{"8", 1}, {"9", 2}});
    document->setBracketColorTypeIDs({{"10", 1}});
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"10", 1}}));
}

TEST_F(DXDocumentModelColors, theColorsThatADocumentGivesCanBeRestored)
{
    document->setBracketColorTypeIDs({{"8", 1}, {"9", 2}});
    const Colors saved = document->bracketColorsTypeIDs();
    document->setBracketColorTypeIDs({{"10", 1}});
    document->setBracketColorTypeIDs(saved);
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"8", 1}, {"9", 2}}));
    EXPECT_EQ(colorOf("9"), green);
    // The document's own, which it replaces meanwhile.
    document->setBracketColorTypeIDs(document->bracketColorsTypeIDs());
    EXPECT_EQ(document->bracketColorsTypeIDs(), saved);
}

TEST_F(DXDocumentModelColors, aRestoredColorThatIsNotAvailableIsSaidAndLeavesItsBracket)
{
    document->setBracketColorTypeIDs({{"8", 1}});
    const auto before = bracket("8")->material();
    EXPECT_EQ(standardErrorOf([&] {
                  document->setBracketColorTypeIDs({{"8", 7}, {"9", 2}});
              }),
              "Error: Specified color \"7\" for bracket 8 is not in the list of available colors "
              "(1, 2)\n");
    EXPECT_EQ(bracket("8")->material(), before);
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"9", 2}})) << "the next key went on";
}

TEST_F(DXDocumentModelColors, aTypeWithoutAColorIsNotAvailableEither)
{
    auto types = document->availableBracketColorTypes();
    types[3] = std::make_shared<BracketColorType>();
    document->setAvailableBracketColorTypes(types);
    EXPECT_EQ(standardErrorOf([&] {
                  document->setBracketColorTypeIDs({{"8", 3}});
              }),
              "Error: Specified color \"3\" for bracket 8 is not in the list of available colors "
              "(1, 2, 3)\n");
}

TEST_F(DXDocumentModelColors, anEmptyCatalogueHasNoColorsToName)
{
    document->setAvailableBracketColorTypes({});
    EXPECT_EQ(standardErrorOf([&] {
                  document->setBracketColorTypeIDs({{"8", 4999}});
              }),
              "Error: Specified color \"4999\" for bracket 8 is not in the list of available "
              "colors ()\n");
}

TEST_F(DXDocumentModelColors, aRestoredColorOfABracketWithoutAModelIsKept)
{
    document->setBracketColorTypeIDs({{"99", 1}});
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"99", 1}}));
}

TEST_F(DXDocumentModelColors, settingAColorStoresPaintsAndAccumulatesIt)
{
    document->bracket_setColorWithBracketColorTypeID("8", 2);
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"8", 2}}));
    EXPECT_EQ(colorOf("8"), green);
    EXPECT_EQ(document->bracketColorTypeIDUpdates(), (Colors{{"8", 2}}));
}

TEST_F(DXDocumentModelColors, takingAColorAwayRecords4999AndRemovesTheEntry)
{
    document->bracket_setColorWithBracketColorTypeID("8", 2);
    document->bracket_setColorWithBracketColorTypeID("8", std::nullopt);
    EXPECT_TRUE(document->bracketColorsTypeIDs().empty());
    EXPECT_EQ(colorOf("8"), Color::whiteColor());
    EXPECT_EQ(document->bracketColorTypeIDUpdates(), (Colors{{"8", 4999}}));
}

TEST_F(DXDocumentModelColors, aSetColorThatIsNotAvailableIsStoredAndPaintedAsNoColor)
{
    EXPECT_EQ(standardErrorOf([&] { document->bracket_setColorWithBracketColorTypeID("8", 4999); }),
              "");
    EXPECT_EQ(document->bracketColorsTypeIDs(), (Colors{{"8", 4999}}));
    EXPECT_EQ(colorOf("8"), std::nullopt);
    EXPECT_EQ(bracket("8")->material()->frontSpecularColor(), Color::whiteColor());
    EXPECT_EQ(document->bracketColorTypeIDUpdates(), (Colors{{"8", 4999}}));
}

TEST_F(DXDocumentModelColors, coloringAHiddenBracketShowsItAndItsToothFirst)
{
    document->setToothVisibilities({{"8", false}});
    document->setBracketVisibilities({{"8", false}});
    document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", 1);
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket 8 visible", "tooth 8 visible"}));
    EXPECT_FALSE(bracket("8")->hiddenPrimary());
    EXPECT_FALSE(bracket("8")->hiddenSecondary());
    EXPECT_FALSE(tooth("8")->hiddenPrimary());
    EXPECT_EQ(colorOf("8"), red);
    EXPECT_EQ(document->bracketVisibilityUpdates(), (Visibilities{{"8", true}}));
    EXPECT_EQ(document->bracketColorTypeIDUpdates(), (Colors{{"8", 1}}));
}

TEST_F(DXDocumentModelColors, coloringAVisibleBracketTogglesNothing)
{
    document->bracket_makeVisibleAndSetColorWithBracketColorTypeID("8", 1);
    EXPECT_EQ(delegate.takeCalls(), Calls());
    EXPECT_TRUE(document->bracketVisibilityUpdates().empty());
    EXPECT_EQ(colorOf("8"), red);
}

TEST_F(DXDocumentModelColors, threeTogglesWithin3SecondsAreOfferedOnce3SecondsAfterTheLast)
{
    document->toggleVisibilityOfBracket("8");
    clock->advance(1.0);
    document->toggleVisibilityOfBracket("9");
    clock->advance(1.5);
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(delegate.takeCalls(),
              (Calls{"bracket 8 hidden", "bracket 9 hidden", "bracket 8 visible"}));
    clock->advance(2.99);
    EXPECT_EQ(delegate.takeCalls(), Calls());
    clock->advance(0.02);
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket updates"});
    clock->advance(100.0);
    EXPECT_EQ(delegate.takeCalls(), Calls());
    EXPECT_EQ(document->bracketVisibilityUpdates(), (Visibilities{{"8", true}, {"9", false}}))
        << "the latest of each key";
}

TEST_F(DXDocumentModelColors, theOfferWaitsWhileAButtonIsHeldOrAMenuIsOpen)
{
    document->toggleVisibilityOfBracket("8");
    delegate.calls.clear();
    {
        const RunLoop::ModeScope tracking(*clock, RunLoopMode::EventTracking);
        clock->advance(10.0);
        EXPECT_EQ(delegate.takeCalls(), Calls());
        EXPECT_EQ(document->pendingBracketVisibilityUpdates(), (Visibilities{{"8", false}}));
    }
    clock->advance(0.0);
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket updates"});
}

TEST_F(DXDocumentModelColors, takingUpdatesTwiceGivesThemAndThenNothing)
{
    document->bracket_setColorWithBracketColorTypeID("8", 1);
    EXPECT_EQ(document->pendingBracketColorTypeIDUpdates(), (Colors{{"8", 1}}));
    EXPECT_EQ(document->bracketColorTypeIDUpdates(), (Colors{{"8", 1}}));
    EXPECT_TRUE(document->bracketColorTypeIDUpdates().empty());
    document->toggleVisibilityOfBracket("8");
    EXPECT_EQ(document->bracketVisibilityUpdates(), (Visibilities{{"8", false}}));
    EXPECT_TRUE(document->bracketVisibilityUpdates().empty());
    document->toggleVisibilityOfButton("8l");
    EXPECT_EQ(document->buttonVisibilityUpdates(), (Visibilities{{"8l", false}}));
    EXPECT_TRUE(document->buttonVisibilityUpdates().empty());
}

TEST_F(DXDocumentModelColors, aBurstOfButtonChangesOffersButtonUpdatesOnly)
{
    document->toggleVisibilityOfButton("8l");
    delegate.calls.clear();
    clock->advance(3.1);
    EXPECT_EQ(delegate.takeCalls(), Calls{"button updates"});
}

TEST_F(DXDocumentModelColors, aBurstOfBothOffersBracketsAndThenButtons)
{
    document->toggleVisibilityOfButton("8l");
    document->bracket_setColorWithBracketColorTypeID("8", 1);
    delegate.calls.clear();
    clock->advance(3.1);
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket updates", "button updates"}));
}

TEST_F(DXDocumentModelColors, whatIsNotTakenIsOfferedAgainAfterTheNextBurst)
{
    document->toggleVisibilityOfBracket("8");
    clock->advance(3.1);
    document->toggleVisibilityOfButton("9l");
    delegate.calls.clear();
    clock->advance(3.1);
    EXPECT_EQ(delegate.takeCalls(), (Calls{"bracket updates", "button updates"}));
    EXPECT_EQ(document->bracketVisibilityUpdates(), (Visibilities{{"8", false}}));
}

TEST_F(DXDocumentModelColors, updatesThatWereTakenEarlyAreNotOffered)
{
    document->toggleVisibilityOfBracket("8");
    (void)document->bracketVisibilityUpdates();
    delegate.calls.clear();
    clock->advance(3.1);
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelColors, theQuietTimeCanBeChanged)
{
    document->setUpdateAccumulationTime(0.5);
    EXPECT_EQ(document->updateAccumulationTime(), 0.5);
    document->bracket_setColorWithBracketColorTypeID("8", 1);
    clock->advance(0.4);
    EXPECT_EQ(delegate.takeCalls(), Calls());
    clock->advance(0.2);
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket updates"});
}

TEST_F(DXDocumentModelColors, flushingOffersThePendingUpdatesAtOnceAndOnlyOnce)
{
    document->bracket_setColorWithBracketColorTypeID("8", 1);
    document->flushOutstandingUpdates();
    EXPECT_EQ(delegate.takeCalls(), Calls{"bracket updates"});
    document->flushOutstandingUpdates();
    clock->advance(10.0);
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelColors, flushingWithNothingPendingDoesNothing)
{
    document->flushOutstandingUpdates();
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelColors, theUpdatesOfAClosedDocumentAreDropped)
{
    document->toggleVisibilityOfBracket("8");
    delegate.calls.clear();
    document.reset();
    clock->advance(10.0);
    EXPECT_EQ(delegate.takeCalls(), Calls());
}

TEST_F(DXDocumentModelColors, aDelegateThatHasNoOperationsIsPassedOver)
{
    DXDocumentModelDelegate silent;
    document->setDelegate(&silent);
    document->toggleVisibilityOfTooth("8");
    document->toggleVisibilityOfBracket("8");
    document->toggleVisibilityOfButton("8l");
    clock->advance(10.0);
    document->setDelegate(nullptr);
    document->toggleVisibilityOfBracket("8");
    clock->advance(10.0);
    EXPECT_EQ(document->bracketVisibilityUpdates(), (Visibilities{{"8", true}}));
}

} // namespace
} // namespace kelo
