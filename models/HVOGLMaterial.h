#pragma once

#include "base/Export.h"
#include "models/Color.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kelo {

/// A fixed-function OpenGL material: nine colours and a shininess. Every mesh carries one, and
/// several may share one.
///
/// A colour may be absent ("no colour"). Drawing then uses, for the absent ones alone, what a
/// material made from white has in their place, so that a material of no colour draws as white.
class KELO_EXPORT HVOGLMaterial
{
public:
    using OptionalColor = std::optional<Color>;
    /// What a key names: a colour (or none) for the nine colour keys, a number for "shininess".
    using Value = std::variant<OptionalColor, double>;
    using Dictionary = std::map<std::string, Value>;

    static constexpr double defaultShininess = 32.0;

    /// White throughout (see setGeneralColor), shininess 32.
    HVOGLMaterial();
    /// setGeneralColor with the colour.
    explicit HVOGLMaterial(const OptionalColor &color, double shininess = defaultShininess);

    static std::shared_ptr<HVOGLMaterial> material();
    static std::shared_ptr<HVOGLMaterial> materialWithColor(const OptionalColor &color);
    static std::shared_ptr<HVOGLMaterial> materialWithColor_shininess(const OptionalColor &color,
                                                                      double shininess);

    /// @name Keys
    /// @{
    /// The nine colour keys: "color", then front and back of diffuse, ambient, specular, emission.
    static const std::vector<std::string> &colorNames();
    /// The nine colour keys followed by "shininess".
    static const std::vector<std::string> &parameterNames();

    /// Throws std::invalid_argument for a key that is not among parameterNames.
    Value valueForKey(const std::string &key) const;
    /// Does what the setter of that name does. Throws std::invalid_argument for an unknown key, and
    /// for a number under a colour key or a colour under "shininess".
    void setValue_forKey(const Value &value, const std::string &key);
    Dictionary dictionaryWithValuesForKeys(const std::vector<std::string> &keys) const;
    void setValuesForKeysWithDictionary(const Dictionary &values);
    /// Copies all ten parameters as they are. Neither the index nor anything derived changes.
    void takeValuesFrom(const HVOGLMaterial &other);
    /// @}

    /// @name Parameters
    /// @{
    /// Derives the nine colours from one: ambient is the colour blended 0.7 toward black, diffuse
    /// the colour, specular the colour blended 0.7 toward white, emission black; front and back
    /// alike. The shininess stays. No colour makes all but the emissions absent.
    void setGeneralColor(const OptionalColor &color);
    /// The front diffuse colour, which setColor alone does not change.
    const OptionalColor &generalColor() const { return _frontDiffuseColor; }

    /// The nominal colour: OpenGL's current colour while drawing, and what equality goes by.
    const OptionalColor &color() const { return _color; }
    const OptionalColor &frontAmbientColor() const { return _frontAmbientColor; }
    const OptionalColor &backAmbientColor() const { return _backAmbientColor; }
    const OptionalColor &frontDiffuseColor() const { return _frontDiffuseColor; }
    const OptionalColor &backDiffuseColor() const { return _backDiffuseColor; }
    const OptionalColor &frontSpecularColor() const { return _frontSpecularColor; }
    const OptionalColor &backSpecularColor() const { return _backSpecularColor; }
    const OptionalColor &frontEmissionColor() const { return _frontEmissionColor; }
    const OptionalColor &backEmissionColor() const { return _backEmissionColor; }

    /// Each of these changes that one colour only.
    void setColor(const OptionalColor &color) { _color = color; }
    void setFrontAmbientColor(const OptionalColor &color) { _frontAmbientColor = color; }
    void setBackAmbientColor(const OptionalColor &color) { _backAmbientColor = color; }
    void setFrontDiffuseColor(const OptionalColor &color) { _frontDiffuseColor = color; }
    void setBackDiffuseColor(const OptionalColor &color) { _backDiffuseColor = color; }
    void setFrontSpecularColor(const OptionalColor &color) { _frontSpecularColor = color; }
    void setBackSpecularColor(const OptionalColor &color) { _backSpecularColor = color; }
    void setFrontEmissionColor(const OptionalColor &color) { _frontEmissionColor = color; }
    void setBackEmissionColor(const OptionalColor &color) { _backEmissionColor = color; }

    /// The specular exponent; OpenGL takes 0 to 128.
    double shininess() const { return _shininess; }
    void setShininess(double shininess) { _shininess = shininess; }

    /// A tag for the owner; the material itself never reads it.
    std::int32_t _index() const { return index_; }
    void setIndex(std::int32_t index) { index_ = index; }
    /// @}

    /// Makes this the material of OpenGL's current context: the current colour, then ambient,
    /// diffuse, specular and emission of the front faces, the same of the back faces, and the
    /// shininess of the front faces. The back faces' shininess is left alone, on purpose.
    void primeOpenGL() const;

    /// @name User defaults
    /// Colours are stored under "Model " followed by their key, the shininess, as a single float,
    /// under "Model shininess", in the standard user defaults. The sender is ignored.
    /// @{
    /// One batch, and so one write to the disk.
    void saveDefaults(const void *sender = nullptr) const;
    /// Colours that are not stored stay as they are. A shininess that is not stored, or stored as
    /// 0, becomes 32.
    void restoreDefaults(const void *sender = nullptr);
    /// White, shininess 32.
    void restoreFactoryDefaults(const void *sender = nullptr);
    /// @}

    /// The hash of color().
    std::size_t hash() const;
    /// Whether color() is equal; the other colours and the shininess take no part.
    bool isEqual(const HVOGLMaterial &other) const { return _color == other._color; }
    bool operator==(const HVOGLMaterial &other) const { return isEqual(other); }

private:
    OptionalColor *colorField(const std::string &key);

    OptionalColor _color;
    OptionalColor _frontAmbientColor;
    OptionalColor _backAmbientColor;
    OptionalColor _frontDiffuseColor;
    OptionalColor _backDiffuseColor;
    OptionalColor _frontSpecularColor;
    OptionalColor _backSpecularColor;
    OptionalColor _frontEmissionColor;
    OptionalColor _backEmissionColor;
    double _shininess = defaultShininess;
    std::int32_t index_ = 0; ///< the field `_index`, whose name its accessor has
};

} // namespace kelo
