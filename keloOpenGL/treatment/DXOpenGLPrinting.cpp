// Printing: the three views of the arches, drawn off screen and handed to the host.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "base/TellDelegate.h"
#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/printing/PrintTarget.h"
#include "keloOpenGL/printing/WhiteBrackets.h"
#include "keloOpenGL/view/Camera.h"
#include "keloOpenGL/view/Mouth.h"
#include "platform/presenters/Alert.h"
#include "platform/settings/VersionChecker.h"

#include <QImage>
#include <QScopeGuard>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace kelo {
namespace {

constexpr int targetWidth = 800;
constexpr int printHeight = 400;
constexpr int sideWidth = 725;
constexpr int bytesPerPixel = 3;

/// 1/sqrt(3) as a float: the side views' axes are diagonals of a cube.
constexpr float diagonal = 0.57735026f;

/// 3,200 pixels are more than a printer shows of a third of a page.
constexpr int largestPrintScale = 4;

/// The printed arches are drawn at twice the zoom of the screen.
constexpr double printedZoom = 2.0;

constexpr const char *notSupported = QT_TRANSLATE_NOOP("DXOpenGL", "Printing Not Supported");
constexpr const char *requirements = QT_TRANSLATE_NOOP(
    "DXOpenGL", "This computer does not meet the minimum system requirements for printing.");

PixelSize targetSize(int scale)
{
    return {scale * targetWidth, scale * printHeight};
}

std::string framebufferMessage(unsigned status)
{
    char number[32];
    std::snprintf(number, sizeof number, " (Error 0x%X)", status);
    return translated(requirements) + number;
}

/// A bitmap image that borrows the block, whose rows are packed without padding.
QImage borrowingImage(const std::vector<unsigned char> &block, int width, int scale = 1)
{
    return QImage(block.data(), scale * width, scale * printHeight, bytesPerPixel * scale * width,
                  QImage::Format_RGB888);
}

} // namespace

std::vector<unsigned char>
DXOpenGL::printImageForRotationAngle_x_y_z_width_offset(float angleInDegrees, float x, float y,
                                                        float z, int width, int offset)
{
    // Pictures are large: where there is no memory for one, the view is as it was all the same.
    const auto restored = qScopeGuard([this, kept = camera(), mouth = mouth()] {
        setCamera(kept);
        setMouth(mouth);
    });
    Camera turned = camera();
    turned.setWorldRotation({angleInDegrees, x, y, z});
    setCamera(turned);
    setMouth({});
    drawRect({});
    return readPrintImage(state_->printScale * offset,
                          {state_->printScale * width, state_->printScale * printHeight});
}

DXOpenGL::PrintImages DXOpenGL::drawPrintImages(int scale)
{
    const auto viewIsRestored = qScopeGuard([this, kept = camera()] {
        state_->_printMode = false;
        state_->printScale = 1;
        setCamera(kept);
        restoreViewAfterPrinting();
    });
    Camera printed = camera();
    printed.setSize({targetWidth, printHeight});
    printed.fitWindow(printed.size());
    setCamera(printed);
    state_->printScale = scale;
    glViewport(0, 0, scale * targetWidth, scale * printHeight);
    state_->_printMode = true;
    updateProjection();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    const auto projectionIsPopped = qScopeGuard([] {
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glMatrixMode(GL_MODELVIEW);
    });
    glScaled(printedZoom, printedZoom, printedZoom);
    glMatrixMode(GL_MODELVIEW);

    const WhiteBrackets whiteBrackets(documentModel().get());
    PrintImages images;
    images.left = printImageForRotationAngle_x_y_z_width_offset(
        120.0f, -diagonal, diagonal, diagonal, sideWidth, targetWidth - sideWidth);
    images.front =
        printImageForRotationAngle_x_y_z_width_offset(90.0f, -1.0f, 0.0f, 0.0f, targetWidth, 0);
    images.right = printImageForRotationAngle_x_y_z_width_offset(120.0f, -diagonal, -diagonal,
                                                                 -diagonal, sideWidth, 0);
    return images;
}

std::string DXOpenGL::openGLExtensions() const
{
    const auto *extensions = reinterpret_cast<const char *>(glGetString(GL_EXTENSIONS));
    return extensions ? extensions : "";
}

unsigned DXOpenGL::framebufferStatus() const
{
    return glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
}

void DXOpenGL::restoreViewAfterPrinting()
{
    const bool inPixels = VersionChecker::isLionOrLater() && wantsBestResolutionOpenGLSurface();
    const Size size = inPixels ? convertSizeToBacking(cameraSize()) : cameraSize();
    glViewport(0, 0, static_cast<int>(size.width), static_cast<int>(size.height));
    adjustWindow();
}

void DXOpenGL::submitPrintRequest()
{
    const auto canPrint = [this] {
        return state_->delegate &&
               state_->delegate->printImagesLeft_front_right_forDate_elasticsLeft_front_right;
    };
    if (!canPrint() || !makeCurrentContextIfNeeded()) return;
    if (openGLExtensions().find("GL_EXT_framebuffer_object") == std::string::npos) {
        AlertPresenter::runModal({translated(notSupported), translated(requirements), "OK"});
        return;
    }

    PrintImages images;
    unsigned status = 0;
    {
        // What is drawn here is not for the screen.
        const OpenGLContext::FlushSuppression nothingIsShown(openGLContext());
        const PrintTarget target(targetSize(1));
        status = target.isMade() ? framebufferStatus() : GL_FRAMEBUFFER_INCOMPLETE_ATTACHMENT_EXT;
        if (status == GL_FRAMEBUFFER_COMPLETE_EXT) images = drawPrintImages(1);
    }
    if (status != GL_FRAMEBUFFER_COMPLETE_EXT) {
        // Only now that the target is gone: the view is drawn and shown under the box, and may be
        // closed while it is open.
        AlertPresenter::runModal({translated(notSupported), framebufferMessage(status), "OK"});
        return;
    }

    const auto left = elasticsForToothNames(TreatmentNote::leftElasticToothNameKeys());
    const auto front = elasticsForToothNames(TreatmentNote::frontElasticToothNameKeys());
    const auto right = elasticsForToothNames(TreatmentNote::rightElasticToothNameKeys());
    if (isInFullScreenMode() && !survives([this] { exitFullScreenModeWithOptions(); })) return;
    const QDateTime date = state_->displayedDate;
    tellDelegate(teller(), state_->delegate,
                 &DXOpenGLDelegate::printImagesLeft_front_right_forDate_elasticsLeft_front_right,
                 borrowingImage(images.left, sideWidth), borrowingImage(images.front, targetWidth),
                 borrowingImage(images.right, sideWidth), date, left, front, right);
}

DXOpenGL::PrintPictures DXOpenGL::printPicturesAtScale(int scale)
{
    if (!makeCurrentContextIfNeeded()) return {};
    if (openGLExtensions().find("GL_EXT_framebuffer_object") == std::string::npos) return {};
    GLint largestSide = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE_EXT, &largestSide);
    scale = std::max(1, std::min({scale, largestPrintScale, largestSide / targetWidth}));

    const OpenGLContext::FlushSuppression nothingIsShown(openGLContext());
    PrintTarget target(targetSize(scale));
    target.dropDepthBuffer();
    if (!target.isMade() || framebufferStatus() != GL_FRAMEBUFFER_COMPLETE_EXT) return {};
    const PrintImages images = drawPrintImages(scale);
    return {borrowingImage(images.left, sideWidth, scale).copy(),
            borrowingImage(images.front, targetWidth, scale).copy(),
            borrowingImage(images.right, sideWidth, scale).copy()};
}

void DXOpenGL::finishOperations()
{
    if (state_->elastics.isStringing()) resolveElasticPlacement();
}

} // namespace kelo
