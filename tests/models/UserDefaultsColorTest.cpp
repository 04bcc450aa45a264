#include "models/UserDefaultsColor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace kelo {
namespace {

class UserDefaultsColor : public testing::Test
{
protected:
    std::unique_ptr<UserDefaults> defaults = UserDefaults::inMemory();
};

TEST_F(UserDefaultsColor, aStoredColorComesBackExactly)
{
    const Color color(0.1, 1.0 / 3.0, -0.25, 1e-300);
    UserDefaults_setColor_forKey(*defaults, color, "key");
    EXPECT_EQ(UserDefaults_colorForKey(*defaults, "key"), color);
}

TEST_F(UserDefaultsColor, nothingStoredGivesNoColor)
{
    EXPECT_EQ(UserDefaults_colorForKey(*defaults, "key"), std::nullopt);
}

TEST_F(UserDefaultsColor, theBytesAreFourLettersAndFourLittleEndianDoubles)
{
    UserDefaults_setColor_forKey(*defaults, Color(1.0, 0.5, -2.0, 0.0), "key");
    const UserDefaults::Bytes expected{
        'R', 'G', 'B', 'A',                   //
        0,   0,   0,   0,   0, 0, 0xF0, 0x3F, // 1.0
        0,   0,   0,   0,   0, 0, 0xE0, 0x3F, // 0.5
        0,   0,   0,   0,   0, 0, 0x00, 0xC0, // -2.0
        0,   0,   0,   0,   0, 0, 0x00, 0x00, // 0.0
    };
    EXPECT_EQ(defaults->dataForKey("key"), expected);
}

TEST_F(UserDefaultsColor, storingNoColorTakesTheOldOneAway)
{
    UserDefaults_setColor_forKey(*defaults, Color::whiteColor(), "key");
    UserDefaults_setColor_forKey(*defaults, std::nullopt, "key");
    EXPECT_EQ(defaults->dataForKey("key"), std::nullopt);
}

TEST_F(UserDefaultsColor, malformedBytesGiveNoColor)
{
    UserDefaults_setColor_forKey(*defaults, Color::whiteColor(), "good");
    const UserDefaults::Bytes good = defaults->dataForKey("good").value();
    ASSERT_EQ(good.size(), 36u);

    const auto read = [&](const UserDefaults::Bytes &bytes) {
        defaults->setData_forKey(bytes, "key");
        return UserDefaults_colorForKey(*defaults, "key");
    };
    ASSERT_EQ(read(good), Color::whiteColor());
    EXPECT_EQ(read({}), std::nullopt);
    UserDefaults::Bytes bytes = good;
    bytes.pop_back();
    EXPECT_EQ(read(bytes), std::nullopt) << "one byte short";
    bytes = good;
    bytes.push_back(0);
    EXPECT_EQ(read(bytes), std::nullopt) << "one byte long";
    bytes = good;
    bytes[0] = 'r';
    EXPECT_EQ(read(bytes), std::nullopt) << "other leading letters";
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        UserDefaults_setColor_forKey(*defaults, Color(0.0, 0.0, 0.0, bad), "key");
        EXPECT_EQ(UserDefaults_colorForKey(*defaults, "key"), std::nullopt) << bad;
    }
}

TEST_F(UserDefaultsColor, aTextUnderTheKeyIsNoColor)
{
    defaults->setString_forKey("RGBA", "key");
    EXPECT_EQ(UserDefaults_colorForKey(*defaults, "key"), std::nullopt);
}

} // namespace
} // namespace kelo
