#include "keloOpenGL/menus/ToothNaming.h"

#include <gtest/gtest.h>

namespace {

using kelo::ToothNaming;

TEST(ToothNames, areTheKeysUntilAHostNamesTeethInItsWay)
{
    EXPECT_EQ(ToothNaming::nameOf("8"), "8");
    EXPECT_FALSE(ToothNaming::setNaming([](const std::string &key) { return "tooth " + key; }));
    EXPECT_EQ(ToothNaming::nameOf("8"), "tooth 8");
    EXPECT_EQ(ToothNaming::setNaming({})("9"), "tooth 9");
    EXPECT_EQ(ToothNaming::nameOf("8"), "8");
}

TEST(ToothNames, aNamingMayReplaceItselfWhileItIsAsked)
{
    ToothNaming::setNaming([](const std::string &key) {
        const std::string mine = key + "!";
        ToothNaming::setNaming({});
        return mine;
    });
    EXPECT_EQ(ToothNaming::nameOf("8"), "8!");
    EXPECT_EQ(ToothNaming::nameOf("8"), "8");
}

} // namespace
