#include "viewer/view/SceneMaterials.h"

#include "tests/support/FileWrites.h"
#include "tests/viewer/support/ScriptFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

namespace {

using namespace viewer;
using kelo::Color;

class SceneMaterialsOfTheSample : public viewer::test::ScriptFixture
{
protected:
    SceneMaterialsOfTheSample()
        : before(kelo::UserDefaults::setStandardUserDefaults(kelo::UserDefaults::inMemory()))
    {}
    ~SceneMaterialsOfTheSample() override
    {
        kelo::UserDefaults::setStandardUserDefaults(std::move(before));
    }

    const kelo::HVOGLMaterial &ofTooth(const char *key) const
    {
        return *document().toothModels().at(key)->material();
    }
    const kelo::HVOGLMaterial &ofBracket(const char *key) const
    {
        return *document().bracketModels().at(key)->material();
    }

    std::unique_ptr<kelo::UserDefaults> before;
    SceneMaterials materials{treatment->document()};
    const Color ivory{1.0, 0.95, 0.85, 1.0};
};

TEST_F(SceneMaterialsOfTheSample, everyPartLooksAsItIsLoadedUntilItIsChanged)
{
    for (const auto &[part, loaded] :
         {std::pair{MaterialPart::Teeth, document().toothModels().at("8")},
          {MaterialPart::Gums, document().upperGumModel()},
          {MaterialPart::Brackets, document().bracketModels().at("8")},
          {MaterialPart::Buttons, document().buttonModels().at("8l")}}) {
        const auto &keys = kelo::HVOGLMaterial::parameterNames();
        EXPECT_EQ(materials.material(part).dictionaryWithValuesForKeys(keys),
                  loaded->material()->dictionaryWithValuesForKeys(keys));
        // Made from the part's own colour and shininess, it is the same again.
        const auto made = materialOfPart(part, *loaded->material()->generalColor(),
                                         loaded->material()->shininess());
        EXPECT_EQ(made->dictionaryWithValuesForKeys(keys),
                  loaded->material()->dictionaryWithValuesForKeys(keys));
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, aColourIsThatOfEveryMeshOfThePartAndOfNoOther)
{
    materials.setColor(MaterialPart::Teeth, ivory);
    for (const auto &[key, tooth] : document().toothModels())
        EXPECT_EQ(tooth->material()->color(), ivory) << key;
    EXPECT_EQ(ofBracket("8").color(), Color::whiteColor());
    EXPECT_EQ(document().upperGumModel()->material()->color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, aBracketWithAColourOfItsOwnKeepsItAndTakesTheShininess)
{
    treatment->document()->bracket_setColorWithBracketColorTypeID("8", 5);
    const auto own = ofBracket("8").color();
    ASSERT_NE(own, Color::whiteColor());
    materials.setColor(MaterialPart::Brackets, ivory);
    materials.setShininess(MaterialPart::Brackets, 90.0);
    EXPECT_EQ(ofBracket("8").color(), own);
    EXPECT_EQ(ofBracket("8").shininess(), 90.0);
    EXPECT_EQ(ofBracket("9").color(), ivory);
    EXPECT_EQ(ofBracket("9").shininess(), 90.0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, aBracketWhoseColourIsTakenAwayIsLikeTheOthersAgain)
{
    materials.setColor(MaterialPart::Brackets, ivory);
    treatment->document()->bracket_setColorWithBracketColorTypeID("8", 5);
    treatment->document()->bracket_setColorWithBracketColorTypeID("8", std::nullopt);
    materials.apply();
    EXPECT_EQ(ofBracket("8").color(), ivory);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, theBracketThatAnElasticIsStrungFromStaysMarked)
{
    materials.setColor(MaterialPart::Brackets, ivory);
    treatment->document()->bracket_setColorWithBracketColorTypeID("8", 5);
    play("click bracket 6\nmenu \"Start New Elastic\" > \"1/4\\\" 3.5 oz\"");
    const auto mark = document().bracketModels().at("6")->material();
    ASSERT_NE(mark, document().bracketModels().at("9")->material());
    treatment->document()->bracket_setColorWithBracketColorTypeID("8", std::nullopt);
    materials.apply("6");
    EXPECT_EQ(ofBracket("8").color(), ivory);
    EXPECT_EQ(document().bracketModels().at("6")->material(), mark);
    // What the document paints over the mark is like the others.
    treatment->document()->bracket_setColorWithBracketColorTypeID("6", std::nullopt);
    materials.apply("6");
    EXPECT_EQ(ofBracket("6").color(), ivory);
    play("key escape");
    EXPECT_EQ(ofBracket("6").color(), ivory);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, defaultsAreKeptForEachPart)
{
    EXPECT_FALSE(materials.hasDefaults(MaterialPart::Teeth));
    materials.setColor(MaterialPart::Teeth, ivory);
    materials.setShininess(MaterialPart::Teeth, 7.0);
    materials.saveDefaults(MaterialPart::Teeth);
    EXPECT_TRUE(materials.hasDefaults(MaterialPart::Teeth));
    EXPECT_FALSE(materials.hasDefaults(MaterialPart::Gums));

    SceneMaterials next(treatment->document());
    next.restoreAllSaved();
    EXPECT_EQ(next.material(MaterialPart::Teeth).color(), ivory);
    EXPECT_EQ(next.material(MaterialPart::Teeth).shininess(), 7.0);
    EXPECT_EQ(next.material(MaterialPart::Gums).color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_EQ(ofTooth("3").color(), ivory);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, savingAPartsDefaultsIsOneWriteToTheDisk)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    const QString organization = QCoreApplication::organizationName();
    QCoreApplication::setOrganizationName(QStringLiteral("Practice"));
    ASSERT_TRUE(QDir(folder.path()).mkpath("Practice"));
    auto inMemory = kelo::UserDefaults::setStandardUserDefaults(nullptr);
    kelo::test::FileWrites writes(folder.filePath("Practice").toStdString());
    materials.saveDefaults(MaterialPart::Teeth);
    EXPECT_EQ(writes.countOf(QCoreApplication::applicationName().toStdString() + ".conf"), 1);
    EXPECT_TRUE(materials.hasDefaults(MaterialPart::Teeth));
    kelo::UserDefaults::setStandardUserDefaults(std::move(inMemory));
    QCoreApplication::setOrganizationName(organization);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, theFactorySettingComesBackWhateverWasSaved)
{
    materials.setColor(MaterialPart::Gums, ivory);
    materials.saveDefaults(MaterialPart::Gums);
    materials.restoreFactoryDefaults(MaterialPart::Gums);
    EXPECT_EQ(materials.material(MaterialPart::Gums).color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_EQ(materials.material(MaterialPart::Gums).shininess(), 16.0);
    materials.restoreDefaults(MaterialPart::Gums);
    EXPECT_EQ(materials.material(MaterialPart::Gums).color(), ivory);
    EXPECT_NO_GL_ERROR();
}

TEST_F(SceneMaterialsOfTheSample, restoringWhatWasNeverSavedGivesTheFactorySetting)
{
    materials.setColor(MaterialPart::Gums, ivory);
    materials.restoreDefaults(MaterialPart::Gums);
    EXPECT_EQ(materials.material(MaterialPart::Gums).color(), Color(0.75, 0.375, 0.5, 1.0));
    EXPECT_EQ(materials.material(MaterialPart::Gums).shininess(), 16.0);
    EXPECT_NO_GL_ERROR();
}

} // namespace
