#include "keloOpenGL/printing/ArchPrinter.h"

#include "platform/gl.h"

#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/printing/PrintTarget.h"
#include "keloOpenGL/printing/WhiteBrackets.h"
#include "platform/view/OpenGLContext.h"

#include <QScopeGuard>

#include <algorithm>

namespace kelo {
namespace {

constexpr int pictureHeight = 400;
constexpr int frontWidth = 800; ///< and that of the drawing
constexpr int sideWidth = 725;
constexpr int bytesPerPixel = 3;

/// 1/sqrt(3) as a float: the side views' axes are diagonals of a cube.
constexpr float diagonal = 0.57735026f;

/// 3,200 pixels are more than a printer shows of a third of a page.
constexpr int largestScale = 4;

/// The printed arches are drawn at twice the zoom of the screen.
constexpr double printedZoom = 2.0;

PixelSize drawingSize(int scale)
{
    return {scale * frontWidth, scale * pictureHeight};
}

int possibleScale(int scale)
{
    GLint largestSide = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &largestSide);
    return std::max(1, std::min({scale, largestScale, largestSide / frontWidth}));
}

/// A bitmap image that borrows the block, whose rows are packed without padding.
QImage borrowingImage(const std::vector<unsigned char> &block, int width, int scale)
{
    return QImage(block.data(), scale * width, scale * pictureHeight, bytesPerPixel * scale * width,
                  QImage::Format_RGB888);
}

/// Enlarges what is drawn, for as long as it lives.
class PrintedZoom
{
public:
    PrintedZoom()
    {
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glScaled(printedZoom, printedZoom, printedZoom);
        glMatrixMode(GL_MODELVIEW);
    }
    ~PrintedZoom()
    {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
    }
    PrintedZoom(const PrintedZoom &) = delete;
    PrintedZoom &operator=(const PrintedZoom &) = delete;
};

} // namespace

const PrintedArch leftArch{{120.0f, -diagonal, diagonal, diagonal},
                           sideWidth,
                           frontWidth - sideWidth,
                           TreatmentNote::leftElasticToothNameKeys};
const PrintedArch frontArch{
    {90.0f, -1.0f, 0.0f, 0.0f}, frontWidth, 0, TreatmentNote::frontElasticToothNameKeys};
const PrintedArch rightArch{{120.0f, -diagonal, -diagonal, -diagonal},
                            sideWidth,
                            0,
                            TreatmentNote::rightElasticToothNameKeys};

QImage ArchPixels::leftImage() const
{
    return borrowingImage(left, leftArch.width, scale);
}

QImage ArchPixels::frontImage() const
{
    return borrowingImage(front, frontArch.width, scale);
}

QImage ArchPixels::rightImage() const
{
    return borrowingImage(right, rightArch.width, scale);
}

ArchPrint ArchPrinter::print(PrintedScene &scene, int scale, DepthBuffer depthBuffer)
{
    if (scene.openGLExtensions().find("GL_EXT_framebuffer_object") == std::string::npos)
        return {PrintRefusal{}, {}};
    scale = possibleScale(scale);
    const OpenGLContext::FlushSuppression nothingIsShown(scene.context());
    PrintTarget target(drawingSize(scale));
    if (depthBuffer == DepthBuffer::Drop) target.dropDepthBuffer();
    const unsigned status =
        target.isMade() ? scene.framebufferStatus() : GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT_EXT;
    if (status != GL_FRAMEBUFFER_COMPLETE_EXT) return {PrintRefusal{status}, {}};
    return {std::nullopt, drawPictures(scene, scale)};
}

ArchPixels ArchPrinter::drawPictures(PrintedScene &scene, int scale)
{
    const auto sceneIsRestored = qScopeGuard([&] {
        isPrinting_ = false;
        scale_ = 1;
        scene.leaveCamera();
    });
    isPrinting_ = true;
    scale_ = scale;
    glViewport(0, 0, scale * frontWidth, scale * pictureHeight);
    scene.enterCamera({frontWidth, pictureHeight});
    const PrintedZoom zoom;
    const WhiteBrackets whiteBrackets(scene.document());
    ArchPixels pixels;
    pixels.scale = scale;
    pixels.left = picture(scene, leftArch);
    pixels.front = picture(scene, frontArch);
    pixels.right = picture(scene, rightArch);
    return pixels;
}

std::vector<unsigned char> ArchPrinter::picture(PrintedScene &scene, const PrintedArch &arch) const
{
    scene.draw(arch.rotation);
    return readPrintImage(scale_ * arch.firstColumn, {scale_ * arch.width, scale_ * pictureHeight});
}

} // namespace kelo
