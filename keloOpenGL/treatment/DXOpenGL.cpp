// The state of the treatment view and its lifecycle: construction and teardown, the displayed date,
// the repeat period.

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/bands/BandRenderer.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/overlay/OverlayRenderer.h"
#include "keloOpenGL/view/OffscreenTarget.h"
#include "keloOpenGL/view/StreamBuffer.h"
#include "keloOpenGL/view/StringTexture.h"
#include "models/HVOGLMaterial.h"
#include "platform/NotificationCenter.h"
#include "platform/RunLoop.h"

#include <QLocale>

namespace kelo {
namespace {

/// A negative interval is a host that means "the usual".
constexpr double usualRepeatInterval = 3.0;
constexpr double dateLabelPointSize = 36.0;

} // namespace

int elasticConfigNamingAction = 0;
double gMsgPresistance = 10.0;

DXOpenGL::DXOpenGL(const Rect &frame)
    : HVOGLSmoothView(frame),
      pickTarget_(std::make_unique<OffscreenTarget>()),
      bandRenderer_(std::make_unique<BandRenderer>()),
      overlayRenderer_(std::make_unique<OverlayRenderer>()),
      streamedIndices_(std::make_unique<StreamBuffer>(StreamBuffer::Kind::Indices))
{
    const Color white = Color::whiteColor();
    setAmbientColor(white);
    setDiffuseColor(white);
    setSpecularColor(white);
    _lightRotation = {20.0f, 1.0f, 1.0f, 1.0f};
    if (makeCurrentContextIfNeeded()) loadTextures();
    elasticConfigNamingAction = 0;
}

DXOpenGL::~DXOpenGL()
{
    NotificationCenter::defaultCenter().removeObserver(ownObserver());
    // The view may end while one of its menus is open, or in the action of a row.
    for (const auto &opened : menus_) {
        const auto menu = opened.lock();
        if (menu && menu->delegate == this) menu->delegate = nullptr;
    }
    if (hasOpenGLContext()) makeCurrentContextIfNeeded();
    forgetRepeatActionTimer();
    if (verticalScrollSnapMouthClosedTimer) verticalScrollSnapMouthClosedTimer->invalidate();
    overlayRenderer_->dropPictures();
    dateStringTexture_.reset();
}

void DXOpenGL::setDocumentModel(std::shared_ptr<DXDocumentModel> model)
{
    // The document hears its meshes and tells of them too. Another document's changes are none of
    // this view's.
    NotificationCenter &center = NotificationCenter::defaultCenter();
    if (documentModel())
        center.removeObserver(ownObserver(), documentModelChangedNotification,
                              documentModel().get());
    if (model)
        center.addObserver(
            ownObserver(), [this](const Notification &) { modelChanged(); },
            documentModelChangedNotification, model.get());
    HVOGLSmoothView::setDocumentModel(std::move(model));
}

bool DXOpenGL::survives(const std::function<void()> &call)
{
    const auto thisLife = life();
    call();
    return !thisLife.expired();
}

void DXOpenGL::contextWasLost()
{
    HVOGLSmoothView::contextWasLost();
    toothLabelTextures_.clear();
    texturesWereLost_ = true; // the objects stay until then: the tools' hit areas go by their sizes
}

void DXOpenGL::setDateStringTexture(std::shared_ptr<StringTexture> texture)
{
    dateStringTexture_ = std::move(texture);
    setNeedsDisplay(true);
}

void DXOpenGL::setRepeatActionTimerInterval(double seconds)
{
    repeatActionTimerInterval_ = seconds < 0.0 ? usualRepeatInterval : seconds;
}

void DXOpenGL::forgetRepeatActionTimer()
{
    if (const auto timer = repeatActionTimer.lock()) timer->invalidate();
    repeatActionTimer.reset();
}

void DXOpenGL::restartRepeatActionTimer()
{
    forgetRepeatActionTimer();
    repeatActionTimer = RunLoop::main().scheduledTimer(
        repeatActionTimerInterval_, false, [this](Timer &) { repeatActionTimerExpired(); });
}

void DXOpenGL::repeatActionTimerExpired()
{
    repeatActionTimer.reset();
    lastBracketColorTypeID_.reset();
    restorePermanentMouseMode();
}

void DXOpenGL::setApprovedDate(const QDateTime &date)
{
    _approvedDate = date;
    setNeedsDisplay(true); // the tools that change the treatment come or go
}

void DXOpenGL::setDisplayedDate(const QDateTime &date)
{
    if (date == _displayedDate) return;
    makeCurrentContextIfNeeded();
    _displayedDate = date;
    _displayedDateIsToday = _currentDate.isValid() && _currentDate == date;
    setMouseMode(mayEdit() ? elasticsMode : rotateMode);
    makeDateLabel();
    setNeedsDisplay(true);
}

void DXOpenGL::makeDateLabel()
{
    // The day by the user's clock: a host may give the moment in another zone.
    const QDate day = _displayedDate.toLocalTime().date();
    const std::string text = _displayedDateIsToday
                                 ? translated(QT_TRANSLATE_NOOP("DXOpenGL", "Today"))
                                 : QLocale().toString(day, QLocale::ShortFormat).toStdString();
    TextAttributes attributes;
    attributes.foregroundColor = Color::whiteColor();
    attributes.pointSize = dateLabelPointSize;
    const Color clear = Color{0.0, 0.0, 0.0, 0.0};
    setDateStringTexture(
        std::make_shared<StringTexture>(text, attributes, Color::whiteColor(), clear, clear));
}

} // namespace kelo
