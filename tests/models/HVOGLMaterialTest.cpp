#include "models/HVOGLMaterial.h"

#include "models/UserDefaultsColor.h"
#include "tests/support/FileWrites.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <stdexcept>
#include <utility>

namespace kelo {
namespace {

using OptionalColor = HVOGLMaterial::OptionalColor;

const Color teal(0.2, 0.4, 0.6, 1.0);
/// 0.3 of the colour above and 0.7 of black, of white; by hand.
const Color tealTowardBlack(0.06, 0.12, 0.18, 1.0);
const Color tealTowardWhite(0.76, 0.82, 0.88, 1.0);

void expectNear(const OptionalColor &color, const Color &expected)
{
    ASSERT_TRUE(color.has_value());
    EXPECT_NEAR(color->red, expected.red, 1e-15);
    EXPECT_NEAR(color->green, expected.green, 1e-15);
    EXPECT_NEAR(color->blue, expected.blue, 1e-15);
    EXPECT_NEAR(color->alpha, expected.alpha, 1e-15);
}

/// A material whose ten parameters are all different.
HVOGLMaterial materialOfTenDifferentParameters()
{
    HVOGLMaterial material;
    double grey = 0.0;
    for (const std::string &key : HVOGLMaterial::colorNames())
        material.setValue_forKey(OptionalColor(Color::calibratedWhite(grey += 0.0625, 1.0)), key);
    material.setShininess(7.5);
    return material;
}

TEST(HVOGLMaterial, theNineColorKeysStandInTheirOrder)
{
    EXPECT_EQ(
        HVOGLMaterial::colorNames(),
        (std::vector<std::string>{"color", "frontDiffuseColor", "backDiffuseColor",
                                  "frontAmbientColor", "backAmbientColor", "frontSpecularColor",
                                  "backSpecularColor", "frontEmissionColor", "backEmissionColor"}));
}

TEST(HVOGLMaterial, theParameterKeysAreTheColorKeysAndTheShininess)
{
    std::vector<std::string> expected = HVOGLMaterial::colorNames();
    expected.push_back("shininess");
    EXPECT_EQ(HVOGLMaterial::parameterNames(), expected);
}

TEST(HVOGLMaterial, aNewMaterialIsWhiteWithShininess32)
{
    const auto material = HVOGLMaterial::material();
    EXPECT_EQ(material->color(), Color::whiteColor());
    EXPECT_EQ(material->generalColor(), Color::whiteColor());
    expectNear(material->frontAmbientColor(), Color(0.3, 0.3, 0.3, 1.0));
    expectNear(material->frontSpecularColor(), Color::whiteColor());
    EXPECT_EQ(material->frontEmissionColor(), Color::blackColor());
    EXPECT_EQ(material->shininess(), 32.0);
    EXPECT_EQ(material->_index(), 0);
}

TEST(HVOGLMaterial, theGeneralColorDerivesTheNineColorsAndLeavesTheShininess)
{
    HVOGLMaterial material;
    material.setShininess(5.0);
    material.setGeneralColor(teal);
    EXPECT_EQ(material.color(), teal);
    expectNear(material.frontAmbientColor(), tealTowardBlack);
    expectNear(material.backAmbientColor(), tealTowardBlack);
    EXPECT_EQ(material.frontDiffuseColor(), teal);
    EXPECT_EQ(material.backDiffuseColor(), teal);
    expectNear(material.frontSpecularColor(), tealTowardWhite);
    expectNear(material.backSpecularColor(), tealTowardWhite);
    EXPECT_EQ(material.frontEmissionColor(), Color::blackColor());
    EXPECT_EQ(material.backEmissionColor(), Color::blackColor());
    EXPECT_EQ(material.shininess(), 5.0);
}

TEST(HVOGLMaterial, theGeneralColorMayBeOneOfItsOwn)
{
    HVOGLMaterial material = materialOfTenDifferentParameters();
    const Color specular = material.frontSpecularColor().value();
    material.setGeneralColor(material.frontSpecularColor());
    EXPECT_EQ(material.color(), specular);
    EXPECT_EQ(material.backDiffuseColor(), specular);
}

TEST(HVOGLMaterial, theFactoriesTakeColorAndShininess)
{
    EXPECT_EQ(HVOGLMaterial::materialWithColor(teal)->generalColor(), teal);
    EXPECT_EQ(HVOGLMaterial::materialWithColor(teal)->shininess(), 32.0);
    const auto shiny = HVOGLMaterial::materialWithColor_shininess(teal, 16.0);
    EXPECT_EQ(shiny->generalColor(), teal);
    EXPECT_EQ(shiny->shininess(), 16.0);
}

TEST(HVOGLMaterial, setColorAloneLeavesTheGeneralColorAsItWas)
{
    HVOGLMaterial material(teal);
    material.setColor(Color(1.0, 0.0, 0.0));
    EXPECT_EQ(material.color(), Color(1.0, 0.0, 0.0));
    EXPECT_EQ(material.generalColor(), teal);
    EXPECT_EQ(material.frontDiffuseColor(), teal);
}

TEST(HVOGLMaterial, settingOneColorChangesThatOneOnly)
{
    for (const std::string &key : HVOGLMaterial::colorNames()) {
        HVOGLMaterial material = materialOfTenDifferentParameters();
        const auto before = material.dictionaryWithValuesForKeys(HVOGLMaterial::parameterNames());
        const OptionalColor red = Color(1.0, 0.0, 0.0);
        material.setValue_forKey(red, key);
        for (const auto &[name, value] : before)
            EXPECT_EQ(material.valueForKey(name), name == key ? HVOGLMaterial::Value(red) : value)
                << key << " was set, " << name << " was asked";
    }
}

TEST(HVOGLMaterial, everyKeyNamesTheAccessorsOfItsName)
{
    HVOGLMaterial material;
    const auto grey = [](double white) {
        return OptionalColor(Color::calibratedWhite(white, 1.0));
    };
    material.setColor(grey(0.1));
    material.setFrontDiffuseColor(grey(0.2));
    material.setBackDiffuseColor(grey(0.3));
    material.setFrontAmbientColor(grey(0.4));
    material.setBackAmbientColor(grey(0.5));
    material.setFrontSpecularColor(grey(0.6));
    material.setBackSpecularColor(grey(0.7));
    material.setFrontEmissionColor(grey(0.8));
    material.setBackEmissionColor(grey(0.9));
    material.setShininess(11.0);
    double white = 0.0;
    const OptionalColor read[]{material.color(),
                               material.frontDiffuseColor(),
                               material.backDiffuseColor(),
                               material.frontAmbientColor(),
                               material.backAmbientColor(),
                               material.frontSpecularColor(),
                               material.backSpecularColor(),
                               material.frontEmissionColor(),
                               material.backEmissionColor()};
    const OptionalColor *next = read;
    for (const std::string &key : HVOGLMaterial::colorNames()) {
        white += 0.1;
        EXPECT_NEAR((*next)->red, white, 1e-12) << key;
        EXPECT_EQ(std::get<OptionalColor>(material.valueForKey(key)), *next++) << key;
    }
    EXPECT_EQ(std::get<double>(material.valueForKey("shininess")), 11.0);
}

TEST(HVOGLMaterial, anUnknownKeyOrAValueOfTheWrongKindIsRefused)
{
    struct Case
    {
        const char *key;
        HVOGLMaterial::Value value;
        const char *message;
    };
    const Case cases[]{
        {"colour", OptionalColor(teal), "A material has no value for the key \"colour\""},
        {"shininess", OptionalColor(teal), "A material's shininess is a number"},
        {"backAmbientColor", 1.0, "A material's backAmbientColor is a colour"},
    };
    HVOGLMaterial material;
    for (const Case &each : cases) {
        try {
            material.setValue_forKey(each.value, each.key);
            ADD_FAILURE() << each.key << " was taken";
        } catch (const std::invalid_argument &error) {
            EXPECT_STREQ(error.what(), each.message);
        }
    }
    EXPECT_THROW((void)material.valueForKey(""), std::invalid_argument);
}

TEST(HVOGLMaterial, takingValuesCopiesAllTenParametersWithoutDerivingAny)
{
    const HVOGLMaterial other = materialOfTenDifferentParameters();
    HVOGLMaterial material(teal, 3.0);
    material.setIndex(9);
    material.takeValuesFrom(other);
    for (const std::string &key : HVOGLMaterial::parameterNames())
        EXPECT_EQ(material.valueForKey(key), other.valueForKey(key)) << key;
    EXPECT_EQ(material._index(), 9);
}

TEST(HVOGLMaterial, materialsOfTheSameColorAreEqualAndHashAlike)
{
    HVOGLMaterial one(teal, 1.0);
    HVOGLMaterial other(teal, 2.0);
    other.setFrontSpecularColor(Color::blackColor());
    other.setBackEmissionColor(std::nullopt);
    EXPECT_TRUE(one.isEqual(other));
    EXPECT_EQ(one, other);
    EXPECT_EQ(one.hash(), other.hash());
}

TEST(HVOGLMaterial, materialsOfDifferentColorsAreNotEqual)
{
    HVOGLMaterial one(teal);
    HVOGLMaterial other(teal);
    other.setColor(Color::whiteColor());
    EXPECT_FALSE(one.isEqual(other));
    other.setColor(std::nullopt);
    EXPECT_FALSE(one.isEqual(other));
}

TEST(HVOGLMaterial, noColorLeavesAllButTheEmissionsAbsent)
{
    const HVOGLMaterial material{std::nullopt};
    EXPECT_EQ(material.color(), std::nullopt);
    EXPECT_EQ(material.frontAmbientColor(), std::nullopt);
    EXPECT_EQ(material.backDiffuseColor(), std::nullopt);
    EXPECT_EQ(material.backSpecularColor(), std::nullopt);
    EXPECT_EQ(material.frontEmissionColor(), Color::blackColor());
    EXPECT_EQ(material.backEmissionColor(), Color::blackColor());
}

class HVOGLMaterialDefaults : public testing::Test
{
protected:
    HVOGLMaterialDefaults()
        : before_(UserDefaults::setStandardUserDefaults(UserDefaults::inMemory()))
    {}
    ~HVOGLMaterialDefaults() override { UserDefaults::setStandardUserDefaults(std::move(before_)); }

    static UserDefaults &defaults() { return UserDefaults::standardUserDefaults(); }

private:
    std::unique_ptr<UserDefaults> before_;
};

TEST_F(HVOGLMaterialDefaults, colorsAndShininessAreStoredUnderTheirKeys)
{
    const HVOGLMaterial material = materialOfTenDifferentParameters();
    material.saveDefaults();
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model color"), material.color());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model frontDiffuseColor"),
              material.frontDiffuseColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model backDiffuseColor"),
              material.backDiffuseColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model frontAmbientColor"),
              material.frontAmbientColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model backAmbientColor"),
              material.backAmbientColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model frontSpecularColor"),
              material.frontSpecularColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model backSpecularColor"),
              material.backSpecularColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model frontEmissionColor"),
              material.frontEmissionColor());
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model backEmissionColor"),
              material.backEmissionColor());
    EXPECT_EQ(defaults().floatForKey("Model shininess"), 7.5f);
}

TEST_F(HVOGLMaterialDefaults, savingThemIsOneWriteToTheDisk)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    ASSERT_TRUE(QDir(folder.path()).mkpath("keloOpenGL"));
    auto before = UserDefaults::setStandardUserDefaults(nullptr);
    test::FileWrites writes(folder.filePath("keloOpenGL").toStdString());
    materialOfTenDifferentParameters().saveDefaults();
    EXPECT_EQ(writes.countOf("keloOpenGL.conf"), 1);
    EXPECT_EQ(defaults().floatForKey("Model shininess"), 7.5f);
    UserDefaults::setStandardUserDefaults(std::move(before));
}

TEST_F(HVOGLMaterialDefaults, whatWasSavedIsRestored)
{
    const HVOGLMaterial saved = materialOfTenDifferentParameters();
    saved.saveDefaults();
    HVOGLMaterial material;
    material.restoreDefaults();
    for (const std::string &key : HVOGLMaterial::parameterNames())
        EXPECT_EQ(material.valueForKey(key), saved.valueForKey(key)) << key;
}

TEST_F(HVOGLMaterialDefaults, theShininessIsStoredInSinglePrecision)
{
    HVOGLMaterial material;
    material.setShininess(0.1);
    material.saveDefaults();
    material.restoreDefaults();
    EXPECT_EQ(material.shininess(), static_cast<double>(0.1f));
}

TEST_F(HVOGLMaterialDefaults, restoringWithNothingStoredKeepsTheColorsAndSetsShininess32)
{
    HVOGLMaterial material = materialOfTenDifferentParameters();
    const HVOGLMaterial before = material;
    material.restoreDefaults();
    for (const std::string &key : HVOGLMaterial::colorNames())
        EXPECT_EQ(material.valueForKey(key), before.valueForKey(key)) << key;
    EXPECT_EQ(material.shininess(), 32.0);
}

TEST_F(HVOGLMaterialDefaults, aStoredShininessOfZeroComesBackAs32)
{
    HVOGLMaterial material;
    material.setShininess(0.0);
    material.saveDefaults();
    material.restoreDefaults();
    EXPECT_EQ(material.shininess(), 32.0);
}

TEST_F(HVOGLMaterialDefaults, theStoredColorKeySetsTheNominalColorOnly)
{
    UserDefaults_setColor_forKey(defaults(), Color(1.0, 0.0, 0.0), "Model color");
    HVOGLMaterial material(teal);
    material.restoreDefaults();
    EXPECT_EQ(material.color(), Color(1.0, 0.0, 0.0));
    EXPECT_EQ(material.generalColor(), teal);
}

TEST_F(HVOGLMaterialDefaults, malformedBytesInTheDefaultsLeaveTheColor)
{
    defaults().setData_forKey({1, 2, 3}, "Model color");
    HVOGLMaterial material(teal);
    material.restoreDefaults();
    EXPECT_EQ(material.color(), teal);
}

TEST_F(HVOGLMaterialDefaults, theFactoryDefaultsAreWhiteWithShininess32AndReadNothing)
{
    UserDefaults_setColor_forKey(defaults(), teal, "Model color");
    HVOGLMaterial material(teal, 5.0);
    material.restoreFactoryDefaults();
    EXPECT_EQ(material.color(), Color::whiteColor());
    EXPECT_EQ(material.generalColor(), Color::whiteColor());
    EXPECT_EQ(material.shininess(), 32.0);
    EXPECT_EQ(UserDefaults_colorForKey(defaults(), "Model color"), teal);
}

} // namespace
} // namespace kelo
