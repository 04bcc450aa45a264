#pragma once

#include "base/Export.h"
#include "geometry/Extents.h"
#include "geometry/Matrix.h"
#include "geometry/Vector.h"
#include "keloOpenGL/view/HVFindGoodWindow.h"
#include "keloOpenGL/view/HVOGLMouseView.h"
#include "keloOpenGL/view/PackedData.h"
#include "models/Color.h"
#include "platform/presenters/Menu.h"
#include "platform/time/RunLoop.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class Camera;
class DXDocumentModel;
class DXGLightweightModel;
class Mouth;
enum class ModelDrawing;

/// A 3D view of a document's two jaws: an orthographic camera, one directional light that stays
/// with the viewer, the jaws' transforms for the opened mouth, and a fixed order of drawing into
/// which subclasses hook their own content.
///
/// What the camera looks at: the world is turned by `worldRotation` about `rotationCenter`; the
/// zoom box is the part of the world (after turning) that must be visible, and the window limits
/// are that box widened to the view's proportions. Every setter that changes what is seen asks for
/// a redraw.
class KELO_EXPORT HVOGLBasicView : public HVOGLMouseView, public MenuDelegate
{
public:
    /// An angle in degrees and an axis, as four floats.
    using Rotation = std::array<float, 4>;

    explicit HVOGLBasicView(const Rect &frame);
    ~HVOGLBasicView() override;

    /// Sets the times, the default orientation and the default colours.
    void awakeFromNib() override;

    static PixelFormat basicPixelFormat();

    /// @name Class-wide switches, for hosts; both true at start
    /// @{
    static bool drawRectEnabled();
    static void setDrawRectEnabled(bool enabled); ///< false: drawing cycles do nothing at all
    static bool bufferSwappingEnabled();
    static void setBufferSwappingEnabled(bool enabled); ///< false: cycles do not flush
    /// @}

    /// @name The document
    /// @{
    const std::shared_ptr<DXDocumentModel> &documentModel() const;
    /// Shows a document model (or none) and zooms to fit it.
    virtual void setDocumentModel(std::shared_ptr<DXDocumentModel> model);
    /// The document changed: asks for a redraw.
    void modelChanged();
    /// @}

    /// @name Colours
    /// @{
    /// Background 0.29, 0.58, 0.73; light: ambient grey 0.2, diffuse grey 0.62, specular white.
    void restoreDefaultColors();
    const std::optional<Color> &clearColor() const;
    const std::optional<Color> &ambientColor() const;
    const std::optional<Color> &diffuseColor() const;
    const std::optional<Color> &specularColor() const;
    void setClearColor(const std::optional<Color> &color);
    void setAmbientColor(const std::optional<Color> &color);
    void setDiffuseColor(const std::optional<Color> &color);
    void setSpecularColor(const std::optional<Color> &color);
    /// @}

    /// @name Drawing
    /// @{
    /// Makes the view's context current unless it is; false when there is nothing to draw on.
    bool makeCurrentContextIfNeeded();
    void reshape() override;
    /// Takes a changed size over into the viewport and the window limits.
    void resizeGL();
    /// Computes the window limits from the zoom box and the view's size, loads the projection, and
    /// asks for a redraw.
    void adjustWindow();
    void updateProjection();
    /// One drawing cycle.
    void drawRect(const Rect &dirtyRect) override;
    /// True until the first cycle has finished.
    bool isFirstDrawRect() const;
    /// While true, models are drawn in the flat colours that they are picked by.
    bool isInColorPickMode() const;
    /// The view's size as last taken over, in points; 0 by 0 before the first time.
    const Size &cameraSize() const;
    /// Reads one OpenGL error code and prints it on standard output unless it is 0; returns it.
    unsigned reportError();
    /// What reportError prints for a code: "OpenGL error: 1280 - GL_INVALID_ENUM" and a line end;
    /// for a code without a name only the part up to "- ".
    static std::string errorReport(unsigned code);

    /// Hooks, called by the cycle in this order.
    virtual void updateModelView();
    virtual void updateLighting();
    virtual void setupDefaultMaterial();
    virtual void drawContent();
    virtual void drawExtraContent() {}
    /// Turns the light's position by the light rotation.
    void loadLightTransform();
    /// How the light is turned away from the viewer's axis; not at all unless a subclass does it.
    const Rotation &lightRotation() const;
    /// @}

    /// @name The mouth
    /// @{
    /// Degrees; values beyond -55 or 55 are stored as those.
    void setMouthOpenAngle(float angleInDegrees);
    float mouthOpenAngle() const;
    /// Radians, after the dead zone.
    float effectiveMouthOpenAngle() const;
    Matrix upperMouthTransform() const;
    Matrix lowerMouthTransform() const;
    /// @}

    /// @name World orientation
    /// @{
    const Rotation &worldRotation() const;
    /// The axis is stored as it is, not normalised.
    void setWorldRotationAngle_axis(double angleInDegrees, double x, double y, double z);
    /// 90 degrees about (-1, 0, 0): the front of the mouth towards the viewer.
    virtual Rotation defaultOrientation() const;
    void restoreDefaultOrientation();
    /// The target operations: at once here, animated by a subclass.
    virtual void setTargetWorldRotationAngle_axis(double angleInDegrees, double x, double y,
                                                  double z);
    void setTargetWorldRotationData(const PackedData &rotationData);
    virtual void setTargetWorldCenterData(const PackedData &centerData);
    virtual void setTargetZoomData(const PackedData &zoomData);
    /// @}

    /// @name Centre and zoom
    /// @{
    /// 12 bytes, or an assertion fails. Sets the rotation centre too.
    void setWorldCenterData(const PackedData &centerData);
    PackedData worldCenterData() const;
    Vector3 worldCenter() const;
    /// Hook: the point to turn about for a world centre; the centre itself here.
    virtual PackedData rotationCenterDataForWorldCenterData(const PackedData &centerData) const;
    /// 12 bytes, or an assertion fails. Asks for no redraw.
    void setRotationCenterData(const PackedData &centerData);
    PackedData rotationCenterData() const;
    Vector3 rotationCenter() const;
    /// 32 bytes, or an assertion fails. Leaves near and far as they are.
    void setZoomData(const PackedData &zoomData);
    PackedData zoomData() const;
    static PackedData zoomDataWithXMin_xMax_yMin_yMax(double xMin, double xMax, double yMin,
                                                      double yMax);
    WindowLimits zoomBox() const;
    WindowLimits windowLimits() const;
    double zMin() const; ///< near
    double zMax() const; ///< far
    /// @}

    /// @name Extents and fitting
    /// @{
    static PackedData worldCenterDataForExtents(const Extents &extents);
    /// The union of the extents of all models of the document.
    void updateExtents();
    void setModelExtents(std::shared_ptr<const Extents> extents);
    /// The scene's extents; a box of half-size 100 about the origin while there are none.
    std::shared_ptr<const Extents> extents() const;
    std::shared_ptr<const Extents> extentsForZoomToFit();
    virtual double zoomToFitRadiusForExtents(const Extents &extents) const;
    virtual double zoomToFitScaleFactor() const { return 0.625; }
    void zoomToFit();
    void immediateZoomToFit() { zoomToFit(); }
    /// @}

    /// @name Animation
    /// @{
    void startAnimationTimer();
    void stopAnimationTimer();
    bool animationTimerIsRunning() const;
    virtual void animationForTimer(Timer &timer);
    /// The absolute time of the last animation tick.
    double time() const;
    void initializeStartTime();
    /// Seconds since then, by a clock that is never set.
    double elapsedTime() const;
    virtual void updateObjectRotationForTimeDelta(double) {}
    /// @}

    /// @name Modes and menus
    /// @{
    /// Mode 5 for the Control flag alone, otherwise the present mode.
    long mouseModeForDeviceIndependentBits(std::uint32_t bits) const override;
    /// A menu titled "Mode": enables the rows of the modes and checks the present one's.
    void menuNeedsUpdate(Menu &menu) override;
    using HVOGLMouseView::mouseModeAction;
    /// Sets the mode that the menu row's tag names.
    void mouseModeAction(const MenuItem &sender);
    /// @}

    /// @name Handlers by button and mode
    /// Left presses go to the present mode's handler; right presses to the colour handlers, in the
    /// elastics mode too.
    /// @{
    void leftMouseDown(const Event &event) override;
    void leftMouseDragged(const Event &event) override;
    void leftMouseUp(const Event &event) override;
    void rightMouseDown(const Event &event) override;
    void rightMouseDragged(const Event &event) override;
    void rightMouseUp(const Event &event) override;
    void otherMouseDown(const Event &event) override;
    void otherMouseDragged(const Event &event) override;

    virtual void rotateMouseDown(const Event &) {}
    virtual void rotateMouseDragged(const Event &) {}
    virtual void rotateMouseUp(const Event &) {}
    virtual void colorMouseDown(const Event &) {}
    virtual void colorMouseDragged(const Event &) {}
    virtual void colorMouseUp(const Event &) {}
    virtual void elasticsMouseDown(const Event &) {}
    virtual void elasticsMouseDragged(const Event &) {}
    virtual void elasticsMouseUp(const Event &) {}
    /// @}

    /// @name Answers to the platform
    /// @{
    /// A point of the window as the row and column of a pixel counted from the view's bottom left,
    /// in points.
    Point convertPoint_fromView(const Point &point, const OpenGLView *view) const override;
    bool isFlipped() const override { return true; }
    bool isOpaque() const override { return true; }
    bool acceptsFirstResponder() const override { return true; }
    bool becomeFirstResponder() override { return true; }
    bool resignFirstResponder() override { return true; }
    /// @}

    /// The modes, which are also the tags of the "Mode" menu's rows.
    enum MouseMode : long { rotateMode = 2, colorMode = 5, elasticsMode = 6 };

protected:
    void contextWasLost() override;
    /// Hook: whether a model belongs to the picture at all, however its hidden flags are. Asked in
    /// picks too.
    virtual bool shouldDraw(const DXGLightweightModel &) const { return true; }
    /// Hook: whether a model must be drawn for the pick that is going on. Hidden ones are asked for
    /// too. A pick of one pixel leaves out what cannot be seen there.
    virtual bool shouldDrawForColorSelection(const DXGLightweightModel &, const Matrix &) const
    {
        return true;
    }
    /// Hook: whether a model, under its jaw's transform, may be seen in what is being drawn of the
    /// picture. Not asked in picks.
    virtual bool mayBeSeen(const DXGLightweightModel &, const Matrix &) const { return true; }
    /// Hooks around the drawing of a cycle's picture: before anything of it is there, and when it
    /// is done but not shown yet. A subclass may restrict the drawing to a part between the two, if
    /// the rest is there.
    virtual void willDrawPicture() {}
    virtual void didDrawPicture() {}
    /// The models of one jaw, under its transform.
    void drawModels(const std::vector<std::shared_ptr<DXGLightweightModel>> &models,
                    const Matrix &jawTransform);

    /// Notes that the animation has come to the present moment.
    void noteAnimationTime();
    /// Seconds since noteAnimationTime, by a clock that is never set: never negative.
    double timeSinceAnimation() const;
    /// Seconds that drawing a frame took, added to every animation step. 0 unless a subclass
    /// measures it.
    double lastRenderingTime() const;
    void setLastRenderingTime(double seconds);

    void setLightRotation(const Rotation &rotation);
    /// As setMouthOpenAngle, but any angle is stored.
    void setUnlimitedMouthOpenAngle(float angleInDegrees);
    /// For the time of a pass that draws what is picked; no redraw is requested.
    void setIsInColorPickMode(bool isInColorPickMode);

    /// @name The viewpoint as values
    /// For a picture that is not the view's own, such as a print: a subclass draws it with others
    /// and puts these back. Setting them requests no redraw and leaves OpenGL alone.
    /// @{
    const Camera &camera() const;
    void setCamera(const Camera &camera);
    const Mouth &mouth() const;
    void setMouth(const Mouth &mouth);
    /// @}

private:
    bool isReadyToDraw();
    void setUpFirstCycle();
    void drawPicture();
    PixelSize viewportSize() const;
    ModelDrawing drawingOf(const DXGLightweightModel &model, const Matrix &jawTransform) const;
    WindowLimits zoomBoxToFit(const Extents &scene, const PackedData &worldCenterData) const;
    void frame(const PackedData &worldCenterData, const WindowLimits &zoomBox);

    struct Parts; ///< see HVOGLBasicViewParts.h
    std::unique_ptr<Parts> parts_;
};

} // namespace kelo
