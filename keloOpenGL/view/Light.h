#pragma once

#include "keloOpenGL/view/RotationQuaternion.h"
#include "models/Color.h"

#include <optional>

namespace kelo {

/// The directional light of a scene. It stays with the viewer however the world turns, and shines
/// along the viewer's axis unless it is turned away from that. SceneRenderer gives it to OpenGL.
struct Light
{
    /// Where an unturned light comes from, in homogeneous coordinates: the viewer.
    static constexpr float towardsViewer[4] = {0.0f, 0.0f, 1.0f, 0.0f};

    /// The light that a view has unless a host sets another one: ambient grey 0.2, diffuse grey
    /// 0.62, specular white, unturned.
    static Light usual()
    {
        return {Color{0.2, 0.2, 0.2, 1.0}, Color{0.62, 0.62, 0.62, 1.0}, Color{1.0, 1.0, 1.0, 1.0}};
    }

    /// Nothing can be lit while one of the three is missing.
    std::optional<Color> ambientColor;
    std::optional<Color> diffuseColor;
    std::optional<Color> specularColor;
    /// How the light is turned away from the viewer's axis.
    AngleAndAxis rotation{};

    bool hasAllColors() const { return ambientColor && diffuseColor && specularColor; }
    /// The colours of another light; the rotation stays.
    void takeColors(const Light &other)
    {
        ambientColor = other.ambientColor;
        diffuseColor = other.diffuseColor;
        specularColor = other.specularColor;
    }
};

} // namespace kelo
