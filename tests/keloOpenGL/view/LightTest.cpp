#include "keloOpenGL/view/Light.h"

#include <gtest/gtest.h>

using kelo::AngleAndAxis;
using kelo::Color;
using kelo::Light;

TEST(Light, theUsualOneIsGreyWithWhiteHighlightsAndUnturned)
{
    const Light light = Light::usual();
    EXPECT_EQ(light.ambientColor, (Color{0.2, 0.2, 0.2, 1.0}));
    EXPECT_EQ(light.diffuseColor, (Color{0.62, 0.62, 0.62, 1.0}));
    EXPECT_EQ(light.specularColor, (Color{1.0, 1.0, 1.0, 1.0}));
    EXPECT_EQ(light.rotation, AngleAndAxis());
    EXPECT_TRUE(light.hasAllColors());
}

TEST(Light, aLightWithoutOneOfItsColoursIsNotComplete)
{
    EXPECT_FALSE(Light().hasAllColors());
    for (auto color : {&Light::ambientColor, &Light::diffuseColor, &Light::specularColor}) {
        Light light = Light::usual();
        (light.*color).reset();
        EXPECT_FALSE(light.hasAllColors());
        light.*color = Color::blackColor();
        EXPECT_TRUE(light.hasAllColors());
    }
}

TEST(Light, takingColoursLeavesTheRotation)
{
    Light light;
    light.rotation = {20.0f, 1.0f, 1.0f, 1.0f};
    light.takeColors(Light::usual());
    EXPECT_EQ(light.rotation, (AngleAndAxis{20.0f, 1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(light.diffuseColor, Light::usual().diffuseColor);
    light.takeColors(Light());
    EXPECT_FALSE(light.ambientColor || light.diffuseColor || light.specularColor);
}
