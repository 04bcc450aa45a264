#include "keloModel/NameKey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace kelo {
namespace {

TEST(NameKey, keysAreWalkedInTheirNaturalOrder)
{
    NameKeyDictionary<int> dictionary;
    for (const char *key : {"9", "31", "8l", "15", "8", "2", "18", "10", "3"})
        dictionary[key] = 0;
    std::vector<std::string> keys;
    for (const auto &[key, value] : dictionary)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"2", "3", "8", "8l", "9", "10", "15", "18", "31"}));
}

TEST(NameKey, theNumberIsReadUpToTheFirstOtherCharacter)
{
    EXPECT_EQ(integerValueOfNameKey("8"), 8);
    EXPECT_EQ(integerValueOfNameKey("8l"), 8);
    EXPECT_EQ(integerValueOfNameKey("31l"), 31);
    EXPECT_EQ(integerValueOfNameKey(" \t12"), 12);
    EXPECT_EQ(integerValueOfNameKey("+7"), 7);
    EXPECT_EQ(integerValueOfNameKey("-7"), -7);
}

TEST(NameKey, aKeyWithoutANumberCountsAsZero)
{
    for (const char *key : {"", " ", "l", "x8", "-", "+"})
        EXPECT_EQ(integerValueOfNameKey(key), 0) << '"' << key << '"';
}

TEST(NameKey, aNumberBeyondTheRangeIsHeldAtItsLimit)
{
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    EXPECT_EQ(integerValueOfNameKey("2147483647"), highest);
    EXPECT_EQ(integerValueOfNameKey("2147483648"), highest);
    EXPECT_EQ(integerValueOfNameKey("-2147483648"), lowest);
    EXPECT_EQ(integerValueOfNameKey("-2147483649"), lowest);
    EXPECT_EQ(integerValueOfNameKey(std::string(100, '9')), highest);
    EXPECT_EQ(integerValueOfNameKey("-" + std::string(100, '9')), lowest);
}

TEST(NameKey, aKeyThatHoldsTheLetterLIsAButtonKey)
{
    EXPECT_TRUE(isButtonKey("8l"));
    EXPECT_TRUE(isButtonKey("l8"));
    EXPECT_FALSE(isButtonKey("8"));
    EXPECT_FALSE(isButtonKey(""));
}

TEST(NameKey, aButtonKeyWithoutItsLetterIsTheToothKey)
{
    EXPECT_EQ(toothKeyOfNameKey("8l"), "8");
    EXPECT_EQ(toothKeyOfNameKey("31l"), "31");
    EXPECT_EQ(toothKeyOfNameKey("8"), "8");
}

TEST(NameKey, aToothKeyFollowedByTheLetterIsItsButtonsKey)
{
    EXPECT_EQ(buttonKeyOfToothKey("8"), "8l");
    EXPECT_EQ(toothKeyOfNameKey(buttonKeyOfToothKey("31")), "31");
}

TEST(NameKey, numbersUpToSixteenBelongToTheUpperArch)
{
    EXPECT_TRUE(isUpperArchKey("1"));
    EXPECT_TRUE(isUpperArchKey("16"));
    EXPECT_TRUE(isUpperArchKey("8l"));
    EXPECT_FALSE(isUpperArchKey("17"));
    EXPECT_FALSE(isUpperArchKey("31l"));
    EXPECT_FALSE(isUpperArchKey(""));
}

TEST(NameKey, differentKeysOfOneNumberAreBothKept)
{
    NameKeyDictionary<int> dictionary{{"8", 1}, {"08", 2}, {"8l", 3}};
    EXPECT_EQ(dictionary.size(), 3u);
    EXPECT_EQ(dictionary.at("08"), 2);
}

TEST(NameKey, theOrderIsStrictOnAnyTexts)
{
    const std::vector<std::string> keys{"", "l", "-1", "8", "8l", "08", "x", "9999999999", "-"};
    const NameKeyLess less;
    for (const std::string &a : keys) {
        for (const std::string &b : keys) {
            EXPECT_EQ(less(a, b) + less(b, a), a == b ? 0 : 1) << a << " and " << b;
            for (const std::string &c : keys) {
                if (less(a, b) && less(b, c)) {
                    EXPECT_TRUE(less(a, c)) << a << ' ' << b << ' ' << c;
                }
            }
        }
    }
}

} // namespace
} // namespace kelo
