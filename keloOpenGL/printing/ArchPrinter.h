#pragma once

#include "base/Export.h"
#include "base/Rect.h"

#include <QImage>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class DXDocumentModel;
class OpenGLContext;

/// One of the pictures of a print request: how the arches are turned, which columns of the drawing
/// it has, and the teeth whose elastics are listed beside it.
struct PrintedArch
{
    std::array<float, 4> rotation; ///< the angle in degrees, then the axis
    int width;
    int firstColumn;
    std::vector<std::string> (*toothNameKeys)();
};

extern KELO_EXPORT const PrintedArch leftArch, frontArch, rightArch;

/// The scene that is printed, as its printer sees it. Its context is current meanwhile.
class KELO_EXPORT PrintedScene
{
public:
    virtual ~PrintedScene() = default;

    virtual OpenGLContext &context() = 0;
    /// What the context can do, and whether the bound framebuffer is complete.
    virtual std::string openGLExtensions() const = 0;
    virtual unsigned framebufferStatus() const = 0;
    /// Null for a scene without models.
    virtual const DXDocumentModel *document() const = 0;

    /// Looks at the zoom box in a view of this size, and loads the projection.
    virtual void enterCamera(const Size &viewSize) = 0;
    /// Back to the camera and the viewport from before.
    virtual void leaveCamera() = 0;
    /// Draws the scene once, turned like this and with the mouth closed.
    virtual void draw(const std::array<float, 4> &rotation) = 0;
};

/// The pixels of a print: three bytes each (red, green, blue), rows without padding, top row first.
struct ArchPixels
{
    std::vector<unsigned char> left, front, right;
    int scale = 1; ///< pixels for each pixel of a print request, in each direction

    /// Pictures that borrow these pixels.
    QImage leftImage() const;
    QImage frontImage() const;
    QImage rightImage() const;
};

/// Why there is no print.
struct PrintRefusal
{
    /// Of the framebuffer; nothing where the computer has no framebuffer objects at all.
    std::optional<unsigned> framebufferStatus;
};

struct ArchPrint
{
    std::optional<PrintRefusal> refusal; ///< if there is one, there are no pixels
    ArchPixels pixels;
};

/// Prints a scene off screen: the arches from the left, the front and the right, at twice the zoom
/// of the screen, with white brackets and without overlay. Nothing of it is shown, and afterwards,
/// however it ends, the scene is as it was.
class KELO_EXPORT ArchPrinter
{
public:
    enum class DepthBuffer {
        LeaveName, ///< as a print request does; see PrintTarget
        Drop
    };

    /// `scale` is taken between 1 and 4, or what the context allows. Throws what the drawing
    /// throws, and std::bad_alloc where there is no memory for the pixels.
    ArchPrint print(PrintedScene &scene, int scale, DepthBuffer depthBuffer);

    /// Whether the scene is being drawn for a print.
    bool isPrinting() const { return isPrinting_; }
    /// Draws the scene and reads a picture, 400 pixels high, from the bound framebuffer, both
    /// times the scale of the print that is going on.
    std::vector<unsigned char> picture(PrintedScene &scene, const PrintedArch &arch) const;

private:
    ArchPixels drawPictures(PrintedScene &scene, int scale);

    int scale_ = 1;
    bool isPrinting_ = false;
};

} // namespace kelo
