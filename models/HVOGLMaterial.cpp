#include "models/HVOGLMaterial.h"

#include "models/UserDefaultsColor.h"
#include "platform/gl.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace kelo {
namespace {

const std::string shininessKey = "shininess";
const std::string defaultsPrefix = "Model ";

/// How far ambient leans toward black and specular toward white in a material of one colour.
constexpr double blendFraction = 0.7;

void setMaterialColor(GLenum face, GLenum parameter, const std::optional<Color> &color,
                      const std::optional<Color> &whiteMaterialsColor)
{
    const Color shown = color ? *color : whiteMaterialsColor.value_or(Color::whiteColor());
    glMaterialfv(face, parameter, shown.rgba());
}

} // namespace

HVOGLMaterial::HVOGLMaterial() : HVOGLMaterial(Color::whiteColor()) {}

HVOGLMaterial::HVOGLMaterial(const OptionalColor &color, double shininess)
{
    setGeneralColor(color);
    setShininess(shininess);
}

std::shared_ptr<HVOGLMaterial> HVOGLMaterial::material()
{
    return std::make_shared<HVOGLMaterial>();
}

std::shared_ptr<HVOGLMaterial> HVOGLMaterial::materialWithColor(const OptionalColor &color)
{
    return std::make_shared<HVOGLMaterial>(color);
}

std::shared_ptr<HVOGLMaterial>
HVOGLMaterial::materialWithColor_shininess(const OptionalColor &color, double shininess)
{
    return std::make_shared<HVOGLMaterial>(color, shininess);
}

const std::vector<std::string> &HVOGLMaterial::colorNames()
{
    static const std::vector<std::string> names{"color",
                                                "frontDiffuseColor",
                                                "backDiffuseColor",
                                                "frontAmbientColor",
                                                "backAmbientColor",
                                                "frontSpecularColor",
                                                "backSpecularColor",
                                                "frontEmissionColor",
                                                "backEmissionColor"};
    return names;
}

const std::vector<std::string> &HVOGLMaterial::parameterNames()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all = colorNames();
        all.push_back(shininessKey);
        return all;
    }();
    return names;
}

HVOGLMaterial::OptionalColor *HVOGLMaterial::colorField(const std::string &key)
{
    // In the order of colorNames.
    const std::array fields{&_color,
                            &_frontDiffuseColor,
                            &_backDiffuseColor,
                            &_frontAmbientColor,
                            &_backAmbientColor,
                            &_frontSpecularColor,
                            &_backSpecularColor,
                            &_frontEmissionColor,
                            &_backEmissionColor};
    const auto &names = colorNames();
    const auto name = std::find(names.begin(), names.end(), key);
    if (name == names.end()) return nullptr;
    return fields.at(static_cast<std::size_t>(name - names.begin()));
}

HVOGLMaterial::Value HVOGLMaterial::valueForKey(const std::string &key) const
{
    if (key == shininessKey) return _shininess;
    if (const auto *field = const_cast<HVOGLMaterial *>(this)->colorField(key)) return *field;
    throw std::invalid_argument("A material has no value for the key \"" + key + "\"");
}

void HVOGLMaterial::setValue_forKey(const Value &value, const std::string &key)
{
    if (key == shininessKey) {
        if (const double *number = std::get_if<double>(&value)) {
            setShininess(*number);
            return;
        }
        throw std::invalid_argument("A material's shininess is a number");
    }
    OptionalColor *field = colorField(key);
    if (!field) throw std::invalid_argument("A material has no value for the key \"" + key + "\"");
    const OptionalColor *color = std::get_if<OptionalColor>(&value);
    if (!color) throw std::invalid_argument("A material's " + key + " is a colour");
    *field = *color;
}

HVOGLMaterial::Dictionary
HVOGLMaterial::dictionaryWithValuesForKeys(const std::vector<std::string> &keys) const
{
    Dictionary values;
    for (const std::string &key : keys)
        values.insert_or_assign(key, valueForKey(key));
    return values;
}

void HVOGLMaterial::setValuesForKeysWithDictionary(const Dictionary &values)
{
    for (const auto &[key, value] : values)
        setValue_forKey(value, key);
}

void HVOGLMaterial::takeValuesFrom(const HVOGLMaterial &other)
{
    setValuesForKeysWithDictionary(other.dictionaryWithValuesForKeys(parameterNames()));
}

void HVOGLMaterial::setGeneralColor(const OptionalColor &color)
{
    // A copy, because the argument may be one of the fields.
    const OptionalColor general = color;
    const Color black = Color::blackColor();
    OptionalColor ambient;
    OptionalColor specular;
    if (general) {
        ambient = general->blendedColorWithFraction_ofColor(blendFraction, black);
        specular = general->blendedColorWithFraction_ofColor(blendFraction, Color::whiteColor());
    }
    _color = general;
    _frontAmbientColor = ambient;
    _frontDiffuseColor = general;
    _frontSpecularColor = specular;
    _frontEmissionColor = black;
    _backAmbientColor = ambient;
    _backDiffuseColor = general;
    _backSpecularColor = specular;
    _backEmissionColor = black;
}

void HVOGLMaterial::primeOpenGL() const
{
    static const HVOGLMaterial white;
    _color.value_or(*white._color).glColor();
    setMaterialColor(GL_FRONT, GL_AMBIENT, _frontAmbientColor, white._frontAmbientColor);
    setMaterialColor(GL_FRONT, GL_DIFFUSE, _frontDiffuseColor, white._frontDiffuseColor);
    setMaterialColor(GL_FRONT, GL_SPECULAR, _frontSpecularColor, white._frontSpecularColor);
    setMaterialColor(GL_FRONT, GL_EMISSION, _frontEmissionColor, white._frontEmissionColor);
    setMaterialColor(GL_BACK, GL_AMBIENT, _backAmbientColor, white._backAmbientColor);
    setMaterialColor(GL_BACK, GL_DIFFUSE, _backDiffuseColor, white._backDiffuseColor);
    setMaterialColor(GL_BACK, GL_SPECULAR, _backSpecularColor, white._backSpecularColor);
    setMaterialColor(GL_BACK, GL_EMISSION, _backEmissionColor, white._backEmissionColor);
    const float exponent = static_cast<float>(_shininess);
    glMaterialfv(GL_FRONT, GL_SHININESS, &exponent);
}

void HVOGLMaterial::saveDefaults(const void *) const
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    defaults.performBatch([&] {
        for (const std::string &key : colorNames())
            UserDefaults_setColor_forKey(defaults, std::get<OptionalColor>(valueForKey(key)),
                                         defaultsPrefix + key);
        defaults.setFloat_forKey(static_cast<float>(_shininess), defaultsPrefix + shininessKey);
    });
}

void HVOGLMaterial::restoreDefaults(const void *)
{
    const UserDefaults &defaults = UserDefaults::standardUserDefaults();
    for (const std::string &key : colorNames()) {
        if (const OptionalColor stored = UserDefaults_colorForKey(defaults, defaultsPrefix + key))
            setValue_forKey(stored, key);
    }
    const float stored = defaults.floatForKey(defaultsPrefix + shininessKey);
    setShininess(stored == 0.0f ? defaultShininess : static_cast<double>(stored));
}

void HVOGLMaterial::restoreFactoryDefaults(const void *)
{
    setGeneralColor(Color::whiteColor());
    setShininess(defaultShininess);
}

std::size_t HVOGLMaterial::hash() const
{
    return _color ? _color->hash() : 0;
}

} // namespace kelo
