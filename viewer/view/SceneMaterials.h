#pragma once

#include "keloOpenGL/keloOpenGL.h"

#include <array>
#include <memory>
#include <string>

namespace viewer {

enum class MaterialPart { Teeth, Gums, Brackets, Buttons };

inline constexpr std::array materialParts{MaterialPart::Teeth, MaterialPart::Gums,
                                          MaterialPart::Brackets, MaterialPart::Buttons};

/// The material of a part as it is in the factory setting, in another colour and shininess: the
/// colour's ambient and specular shares are those of the part.
std::shared_ptr<kelo::HVOGLMaterial> materialOfPart(MaterialPart part, const kelo::Color &color,
                                                    double shininess);
/// As the library loads the part.
std::shared_ptr<kelo::HVOGLMaterial> factoryMaterial(MaterialPart part);

/// The materials of one document's meshes by part, which the user may choose and keep as defaults.
/// A bracket with a colour of its own keeps it, and takes the shininess of the brackets.
///
/// Defaults are kept in the standard user defaults by HVOGLMaterial, the keys of each part with the
/// part's name before them.
class SceneMaterials
{
public:
    explicit SceneMaterials(std::shared_ptr<kelo::DXDocumentModel> document);

    const kelo::HVOGLMaterial &material(MaterialPart part) const;
    void setColor(MaterialPart part, const kelo::Color &color);
    void setShininess(MaterialPart part, double shininess);

    void saveDefaults(MaterialPart part) const;
    /// What was saved last; the factory setting where nothing was.
    void restoreDefaults(MaterialPart part);
    void restoreFactoryDefaults(MaterialPart part);
    /// restoreDefaults of every part of which something was saved.
    void restoreAllSaved();
    bool hasDefaults(MaterialPart part) const;

    /// Gives every mesh the material of its part, where it has another one. The bracket under this
    /// key, from which an elastic is being strung, keeps the material that marks it, unless the
    /// document has painted the bracket since. Whoever shows the document draws it anew.
    void apply(const std::string &strungFrom = {});

private:
    std::shared_ptr<kelo::HVOGLMaterial> &slot(MaterialPart part);

    std::shared_ptr<kelo::DXDocumentModel> document_;
    std::array<std::shared_ptr<kelo::HVOGLMaterial>, materialParts.size()> materials_;
};

} // namespace viewer
