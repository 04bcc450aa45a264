#include "document/BracketPaint.h"

#include "tests/document/DocumentFixture.h"
#include "tests/support/CapturedOutput.h"

#include <array>

namespace kelo {
namespace {

using Colors = NameKeyDictionary<long>;

const Color redPaint(1.0, 0.0, 0.0, 1.0);

/// Two brackets, the type 1 (red) and the type 2, which has no colour.
class BracketPaintTest : public testing::Test
{
protected:
    BracketPaintTest()
    {
        BracketPaint::TypesByID types;
        for (const long typeID : {1, 2}) {
            types[typeID] = std::make_shared<BracketColorType>();
            types[typeID]->typeID = typeID;
        }
        types[1]->bracketColor = std::array<double, 4>{1, 0, 0, 1};
        paint.setAvailableTypes(types);
    }

    std::optional<Color> colorOf(const std::string &key) const
    {
        return brackets.at(key)->material()->color();
    }

    ModelDictionary brackets = test::emptyModels({"8", "9"});
    BracketPaint paint;
};

TEST_F(BracketPaintTest, aChosenTypeIsKeptAndPainted)
{
    paint.choose(brackets, "8", 1);
    EXPECT_EQ(paint.typeIDs(), (Colors{{"8", 1}}));
    EXPECT_EQ(colorOf("8"), redPaint);
    paint.choose(brackets, "8", std::nullopt);
    EXPECT_EQ(paint.typeIDs(), Colors());
    EXPECT_EQ(colorOf("8"), Color::whiteColor());
}

TEST_F(BracketPaintTest, aChosenTypeThatIsNotAvailableIsKeptWithoutColour)
{
    paint.choose(brackets, "8", 7);
    paint.choose(brackets, "10", 1);
    EXPECT_EQ(paint.typeIDs(), (Colors{{"8", 7}, {"10", 1}}));
    EXPECT_EQ(colorOf("8"), std::nullopt);
}

TEST_F(BracketPaintTest, restoringReplacesAllEntries)
{
    paint.choose(brackets, "9", 1);
    paint.restore(brackets, {{"8", 1}, {"10", 1}});
    EXPECT_EQ(paint.typeIDs(), (Colors{{"8", 1}, {"10", 1}}));
    EXPECT_EQ(colorOf("8"), redPaint);
    EXPECT_EQ(colorOf("9"), redPaint) << "what is not in the dictionary keeps its material";
    paint.restore(brackets, {{"8", std::nullopt}});
    EXPECT_EQ(paint.typeIDs(), Colors());
    EXPECT_EQ(colorOf("8"), Color::whiteColor());
}

TEST_F(BracketPaintTest, whatCannotBeRestoredIsReported)
{
    paint.choose(brackets, "8", 1);
    const std::string text = test::standardErrorOf([&] {
        paint.restore(brackets, {{"8", 7}, {"9", 2}});
    });
    EXPECT_EQ(text, "Error: Specified color \"7\" for bracket 8 is not in the list of available "
                    "colors (1, 2)\n"
                    "Error: Specified color \"2\" for bracket 9 is not in the list of available "
                    "colors (1, 2)\n");
    EXPECT_EQ(paint.typeIDs(), Colors());
    EXPECT_EQ(colorOf("8"), redPaint);
}

} // namespace
} // namespace kelo
