#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "geometry/Matrix.h"
#include "models/Color.h"

#include <optional>

namespace kelo {

class Camera;
class DXGLightweightModel;
struct Light;

/// How a model takes part in a drawing.
enum class ModelDrawing {
    None,         ///< not at all
    MaterialOnly, ///< unseen, but a mesh without a material takes over the last one's
    Shaded,       ///< as it looks
    Identifier,   ///< in the flat colour that it is picked by
};

/// Draws a scene in one cycle: background, camera, light, material, and then what the caller has,
/// usually two jaws. Everything goes to the current OpenGL context, without which nothing here may
/// be called; the object itself remembers what that context has been given.
///
/// Nothing here allocates.
class KELO_EXPORT SceneRenderer
{
public:
    /// @name A context's state
    /// @{
    /// Until the first cycle in this context is done.
    bool isFirstCycle() const { return isFirstCycle_; }
    void noteCycle() { isFirstCycle_ = false; }
    /// The next cycle sets everything again, in another context.
    void contextWasLost();
    /// Depth test, culling, and the colour that OpenGL clears with; without a colour that stays.
    static void setUp(const std::optional<Color> &clearColor);
    /// In device pixels; 0 by 0 until it is set.
    const PixelSize &viewport() const { return viewport_; }
    void setViewport(const PixelSize &size);
    /// @}

    /// @name A scene's state
    /// Leaves the model-view matrix as the current one.
    /// @{
    /// The camera's window; the identity for a camera without volume.
    static void loadProjection(const Camera &camera);
    static void loadModelView(const Camera &camera);
    /// Turns lighting and light 0 on. A light with a missing colour is an AssertionFailure.
    static void loadLight(const Light &light);
    /// Multiplies the current matrix by the light's rotation.
    static void turnByRotation(const Light &light);
    /// Whitish, glowing faintly red in front and green behind; a model's own material replaces it.
    static void loadDefaultMaterial();
    /// @}

    /// One cycle's drawing. The stages are asked in this order: updateModelView, updateLighting,
    /// setupDefaultMaterial, drawContent, drawExtraContent.
    template<class Stages>
    static void drawScene(const Size &size, const std::optional<Color> &clearColor, Stages &stages)
    {
        drawBackground(size, clearColor);
        stages.updateModelView();
        beginContent();
        stages.updateLighting();
        stages.setupDefaultMaterial();
        stages.drawContent();
        stages.drawExtraContent();
    }
    /// Clears the depth buffer alone and covers the colours: the clear colour (black for none),
    /// shaded from lighter at the top left to darker at the bottom right. Afterwards the model-view
    /// matrix is the identity, lighting is off, and depths are not written. The size is in points.
    static void drawBackground(const Size &size, const std::optional<Color> &clearColor);
    /// From here on depths are written.
    static void beginContent();

    /// One jaw's models, in order, under its transform. `drawingOf` is asked for each model.
    template<class Models, class Choice>
    static void drawJaw(const Models &models, const Matrix &jawTransform, const Choice &drawingOf)
    {
        const JawScope jaw(jawTransform);
        for (const auto &model : models)
            drawModel(*model, drawingOf(*model));
    }
    /// Blending off, as the jaws are drawn.
    static void beginJaws();

private:
    class KELO_EXPORT JawScope
    {
    public:
        explicit JawScope(const Matrix &jawTransform);
        ~JawScope();
        JawScope(const JawScope &) = delete;
        JawScope &operator=(const JawScope &) = delete;
    };
    static void drawModel(DXGLightweightModel &model, ModelDrawing drawing);

    PixelSize viewport_;
    bool isFirstCycle_ = true;
};

} // namespace kelo
