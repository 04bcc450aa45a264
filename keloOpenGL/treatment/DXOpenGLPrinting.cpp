// Printing: the three pictures of the arches and their lists, handed to the host.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "base/TellDelegate.h"
#include "document/DXDocumentModel.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/printing/ArchPrinter.h"
#include "keloOpenGL/view/Camera.h"
#include "keloOpenGL/view/Mouth.h"
#include "platform/presenters/Alert.h"
#include "platform/settings/VersionChecker.h"

#include <QImage>
#include <QScopeGuard>

#include <cstdio>
#include <vector>

namespace kelo {
namespace {

constexpr const char *notSupported = QT_TRANSLATE_NOOP("DXOpenGL", "Printing Not Supported");
constexpr const char *requirements = QT_TRANSLATE_NOOP(
    "DXOpenGL", "This computer does not meet the minimum system requirements for printing.");

Alert alertOf(const PrintRefusal &refusal)
{
    char number[32] = "";
    if (refusal.framebufferStatus)
        std::snprintf(number, sizeof number, " (Error 0x%X)", *refusal.framebufferStatus);
    return {translated(notSupported), translated(requirements) + number, "OK"};
}

DXOpenGL::PrintPictures copiesOf(const ArchPixels &pixels)
{
    return {pixels.leftImage().copy(), pixels.frontImage().copy(), pixels.rightImage().copy()};
}

struct ElasticLists
{
    ElasticDescriptions left, front, right;
};

ElasticLists elasticListsOf(const DXOpenGL &view)
{
    return {view.elasticsForToothNames(leftArch.toothNameKeys()),
            view.elasticsForToothNames(frontArch.toothNameKeys()),
            view.elasticsForToothNames(rightArch.toothNameKeys())};
}

void tellOfPrint(const Teller &teller, const DXOpenGLDelegate *delegate, const ArchPixels &pixels,
                 const QDateTime &date, const ElasticLists &elastics)
{
    tellDelegate(teller, delegate,
                 &DXOpenGLDelegate::printImagesLeft_front_right_forDate_elasticsLeft_front_right,
                 pixels.leftImage(), pixels.frontImage(), pixels.rightImage(), date, elastics.left,
                 elastics.front, elastics.right);
}

} // namespace

/// The view's scene for its printer.
class DXOpenGL::PrintScene : public PrintedScene
{
public:
    explicit PrintScene(DXOpenGL &view) : view_(view) {}

    OpenGLContext &context() override { return view_.openGLContext(); }
    std::string openGLExtensions() const override { return view_.openGLExtensions(); }
    unsigned framebufferStatus() const override { return view_.framebufferStatus(); }
    const DXDocumentModel *document() const override { return view_.documentModel().get(); }

    void enterCamera(const Size &viewSize) override
    {
        before_ = view_.camera();
        Camera printed = before_;
        printed.setSize(viewSize);
        printed.fitWindow(viewSize);
        view_.setCamera(printed);
        view_.updateProjection();
    }

    void leaveCamera() override
    {
        view_.setCamera(before_);
        const Size points = before_.size();
        const bool inPixels =
            VersionChecker::isLionOrLater() && view_.wantsBestResolutionOpenGLSurface();
        const Size size = inPixels ? view_.convertSizeToBacking(points) : points;
        glViewport(0, 0, static_cast<int>(size.width), static_cast<int>(size.height));
        view_.adjustWindow();
    }

    void draw(const Rotation &rotation) override
    {
        const auto isRestored = qScopeGuard([this, kept = view_.camera(), mouth = view_.mouth()] {
            view_.setCamera(kept);
            view_.setMouth(mouth);
        });
        Camera turned = view_.camera();
        turned.setWorldRotation(rotation);
        view_.setCamera(turned);
        view_.setMouth({});
        view_.drawRect({});
    }

private:
    DXOpenGL &view_;
    Camera before_;
};

std::string DXOpenGL::openGLExtensions() const
{
    const auto *extensions = reinterpret_cast<const char *>(glGetString(GL_EXTENSIONS));
    return extensions ? extensions : "";
}

unsigned DXOpenGL::framebufferStatus() const
{
    return glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
}

std::vector<unsigned char>
DXOpenGL::printImageForRotationAngle_x_y_z_width_offset(float angleInDegrees, float x, float y,
                                                        float z, int width, int offset)
{
    PrintScene scene(*this);
    return state_->printer.picture(scene, {{angleInDegrees, x, y, z}, width, offset, nullptr});
}

bool DXOpenGL::hostTakesPrints() const
{
    const DXOpenGLDelegate *host = state_->delegate;
    return host && host->printImagesLeft_front_right_forDate_elasticsLeft_front_right;
}

void DXOpenGL::submitPrintRequest()
{
    if (!hostTakesPrints() || !makeCurrentContextIfNeeded()) return;
    PrintScene scene(*this);
    const auto print = state_->printer.print(scene, 1, ArchPrinter::DepthBuffer::LeaveName);
    // Only now that the target is gone: the view is shown under the box, and may be closed.
    if (print.refusal) return AlertPresenter::runModal(alertOf(*print.refusal));
    handOverPrint(print.pixels);
}

void DXOpenGL::handOverPrint(const ArchPixels &pixels)
{
    const ElasticLists elastics = elasticListsOf(*this);
    if (isInFullScreenMode() && !survives([this] { exitFullScreenModeWithOptions(); })) return;
    const QDateTime date = state_->dates.displayed;
    tellOfPrint(teller(), state_->delegate, pixels, date, elastics);
}

DXOpenGL::PrintPictures DXOpenGL::printPicturesAtScale(int scale)
{
    if (!makeCurrentContextIfNeeded()) return {};
    PrintScene scene(*this);
    const auto print = state_->printer.print(scene, scale, ArchPrinter::DepthBuffer::Drop);
    return print.refusal ? PrintPictures() : copiesOf(print.pixels);
}

void DXOpenGL::finishOperations()
{
    if (state_->elastics.isStringing()) resolveElasticPlacement();
}

} // namespace kelo
