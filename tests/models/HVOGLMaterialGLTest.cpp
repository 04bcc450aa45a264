#include "tests/models/GLFixture.h"

#include "models/HVOGLMaterial.h"
#include "models/ToothModelLoader.h"

namespace kelo {
namespace {

using Floats = std::array<float, 4>;

class HVOGLMaterialGL : public test::GLFixture
{
protected:
    static Floats materialColor(GLenum face, GLenum parameter)
    {
        Floats floats{};
        glGetMaterialfv(face, parameter, floats.data());
        return floats;
    }
    static float shininess(GLenum face)
    {
        float value = -1.0f;
        glGetMaterialfv(face, GL_SHININESS, &value);
        return value;
    }
    static Floats currentColor()
    {
        Floats floats{};
        glGetFloatv(GL_CURRENT_COLOR, floats.data());
        return floats;
    }
};

TEST_F(HVOGLMaterialGL, everyColorGoesToItsFaceAndParameter)
{
    HVOGLMaterial material;
    const auto grey = [](double white) { return Color::calibratedWhite(white, 0.5); };
    material.setColor(grey(0.0625));
    material.setFrontAmbientColor(grey(0.125));
    material.setFrontDiffuseColor(grey(0.1875));
    material.setFrontSpecularColor(grey(0.25));
    material.setFrontEmissionColor(grey(0.3125));
    material.setBackAmbientColor(grey(0.375));
    material.setBackDiffuseColor(grey(0.4375));
    material.setBackSpecularColor(grey(0.5));
    material.setBackEmissionColor(grey(0.5625));
    material.primeOpenGL();

    const auto floats = [](float white) { return Floats{white, white, white, 0.5f}; };
    EXPECT_EQ(currentColor(), floats(0.0625f));
    EXPECT_EQ(materialColor(GL_FRONT, GL_AMBIENT), floats(0.125f));
    EXPECT_EQ(materialColor(GL_FRONT, GL_DIFFUSE), floats(0.1875f));
    EXPECT_EQ(materialColor(GL_FRONT, GL_SPECULAR), floats(0.25f));
    EXPECT_EQ(materialColor(GL_FRONT, GL_EMISSION), floats(0.3125f));
    EXPECT_EQ(materialColor(GL_BACK, GL_AMBIENT), floats(0.375f));
    EXPECT_EQ(materialColor(GL_BACK, GL_DIFFUSE), floats(0.4375f));
    EXPECT_EQ(materialColor(GL_BACK, GL_SPECULAR), floats(0.5f));
    EXPECT_EQ(materialColor(GL_BACK, GL_EMISSION), floats(0.5625f));
    EXPECT_NO_GL_ERROR();
}

TEST_F(HVOGLMaterialGL, theShininessIsSetForFrontFacesOnly)
{
    const float before = 3.0f;
    glMaterialfv(GL_FRONT_AND_BACK, GL_SHININESS, &before);
    HVOGLMaterial material;
    material.setShininess(17.0);
    material.primeOpenGL();
    EXPECT_EQ(shininess(GL_FRONT), 17.0f);
    EXPECT_EQ(shininess(GL_BACK), 3.0f);
    EXPECT_NO_GL_ERROR();
}

TEST_F(HVOGLMaterialGL, aMaterialOfNoColorDrawsAsWhite)
{
    const auto read = [] {
        return std::array{currentColor(),
                          materialColor(GL_FRONT, GL_AMBIENT),
                          materialColor(GL_FRONT, GL_DIFFUSE),
                          materialColor(GL_FRONT, GL_SPECULAR),
                          materialColor(GL_FRONT, GL_EMISSION),
                          materialColor(GL_BACK, GL_AMBIENT),
                          materialColor(GL_BACK, GL_DIFFUSE),
                          materialColor(GL_BACK, GL_SPECULAR),
                          materialColor(GL_BACK, GL_EMISSION)};
    };
    ToothModelLoader::standardMaterialForColor(Color::whiteColor())->primeOpenGL();
    const auto white = read();
    HVOGLMaterial(Color(1.0, 0.0, 0.0)).primeOpenGL();
    ASSERT_NE(read(), white);
    ToothModelLoader::standardMaterialForColor(std::nullopt)->primeOpenGL();
    EXPECT_EQ(read(), white);
    EXPECT_NO_GL_ERROR();
}

} // namespace
} // namespace kelo
