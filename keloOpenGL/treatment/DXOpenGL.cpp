// The state of the treatment view and its lifecycle: construction and teardown, the displayed date,
// the repeat period.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "keloOpenGL/view/StringTexture.h"
#include "models/HVOGLMaterial.h"
#include "platform/time/NotificationCenter.h"
#include "platform/time/RunLoop.h"

#include <QLocale>

namespace kelo {
namespace {

/// A negative interval is a host that means "the usual".
constexpr double usualRepeatInterval = 3.0;
constexpr double dateLabelPointSize = 36.0;

} // namespace

int elasticConfigNamingAction = 0;
double gMsgPresistance = 10.0;

DXOpenGL::DXOpenGL(const Rect &frame) : HVOGLSmoothView(frame), state_(std::make_unique<State>())
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
    state_->openMenus.release();
    if (hasOpenGLContext()) makeCurrentContextIfNeeded();
    forgetRepeatActionTimer();
    if (state_->verticalScrollSnapMouthClosedTimer)
        state_->verticalScrollSnapMouthClosedTimer->invalidate();
    state_->overlayRenderer.dropPictures();
    state_->dateStringTexture.reset();
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
    state_->toothLabelTextures.clear();
    // The objects stay until they are loaded again: the tools' hit areas go by their sizes.
    state_->texturesWereLost = true;
}

void DXOpenGL::setDateStringTexture(std::shared_ptr<StringTexture> texture)
{
    state_->dateStringTexture = std::move(texture);
    setNeedsDisplay(true);
}

void DXOpenGL::setRepeatActionTimerInterval(double seconds)
{
    state_->repeatActionTimerInterval = seconds < 0.0 ? usualRepeatInterval : seconds;
}

void DXOpenGL::forgetRepeatActionTimer()
{
    if (const auto timer = state_->repeatActionTimer.lock()) timer->invalidate();
    state_->repeatActionTimer.reset();
}

void DXOpenGL::restartRepeatActionTimer()
{
    forgetRepeatActionTimer();
    state_->repeatActionTimer = RunLoop::main().scheduledTimer(
        state_->repeatActionTimerInterval, false, [this](Timer &) { repeatActionTimerExpired(); });
}

void DXOpenGL::repeatActionTimerExpired()
{
    state_->repeatActionTimer.reset();
    state_->lastBracketColorTypeID.reset();
    restorePermanentMouseMode();
}

DXOpenGLDelegate *DXOpenGL::delegate() const
{
    return state_->delegate;
}

void DXOpenGL::setDelegate(DXOpenGLDelegate *delegate)
{
    state_->delegate = delegate;
}

const QDateTime &DXOpenGL::currentDate() const
{
    return state_->_currentDate;
}

void DXOpenGL::setCurrentDate(const QDateTime &date)
{
    state_->_currentDate = date;
}

const QDateTime &DXOpenGL::approvedDate() const
{
    return state_->_approvedDate;
}

const QDateTime &DXOpenGL::displayedDate() const
{
    return state_->_displayedDate;
}

bool DXOpenGL::displayedDateIsToday() const
{
    return state_->_displayedDateIsToday;
}

bool DXOpenGL::mayEdit() const
{
    return state_->_displayedDateIsToday && !state_->_approvedDate.isValid();
}

double DXOpenGL::repeatActionTimerInterval() const
{
    return state_->repeatActionTimerInterval;
}

bool DXOpenGL::repeatActionTimerIsRunning() const
{
    return state_->repeatActionTimer.lock() != nullptr;
}

const std::shared_ptr<StringTexture> &DXOpenGL::dateStringTexture() const
{
    return state_->dateStringTexture;
}

const DXOpenGL::Name &DXOpenGL::firstClickedToothName() const
{
    return state_->firstClickedToothName;
}

void DXOpenGL::setFirstClickedToothName(const Name &name)
{
    state_->firstClickedToothName = name;
}

const DXOpenGL::Name &DXOpenGL::lastClickedToothName() const
{
    return state_->lastClickedToothName;
}

void DXOpenGL::setLastClickedToothName(const Name &name)
{
    state_->lastClickedToothName = name;
}

const DXOpenGL::Name &DXOpenGL::currentEventToothName() const
{
    return state_->currentEventToothName;
}

void DXOpenGL::setCurrentEventToothName(const Name &name)
{
    state_->currentEventToothName = name;
}

std::uint64_t DXOpenGL::currentEventElasticIndex() const
{
    return state_->currentEventElasticIndex;
}

bool DXOpenGL::isRotating() const
{
    return state_->_rotating;
}

const std::optional<std::vector<std::string>> &DXOpenGL::bracketSequence() const
{
    return state_->bracketSequence;
}

std::optional<long> DXOpenGL::lastBracketColorTypeID() const
{
    return state_->lastBracketColorTypeID;
}

std::optional<long> DXOpenGL::lastElasticsSizeTypeID() const
{
    return state_->lastElasticsSizeTypeID;
}

std::uint64_t DXOpenGL::lastClickedElasticID() const
{
    return state_->lastClickedElasticID;
}

bool DXOpenGL::elasticWasClicked() const
{
    return state_->elasticWasClicked;
}

std::int64_t DXOpenGL::lastActionType() const
{
    return state_->lastActionType;
}

bool DXOpenGL::showsScenePart(ScenePart part) const
{
    return !state_->hiddenParts[static_cast<std::size_t>(part)];
}

const ToothLabels &DXOpenGL::toothLabels() const
{
    return state_->toothLabels;
}

void DXOpenGL::setApprovedDate(const QDateTime &date)
{
    state_->_approvedDate = date;
    setNeedsDisplay(true); // the tools that change the treatment come or go
}

void DXOpenGL::setDisplayedDate(const QDateTime &date)
{
    if (date == state_->_displayedDate) return;
    makeCurrentContextIfNeeded();
    state_->_displayedDate = date;
    state_->_displayedDateIsToday = state_->_currentDate.isValid() && state_->_currentDate == date;
    setMouseMode(mayEdit() ? elasticsMode : rotateMode);
    makeDateLabel();
    setNeedsDisplay(true);
}

void DXOpenGL::makeDateLabel()
{
    // The day by the user's clock: a host may give the moment in another zone.
    const QDate day = state_->_displayedDate.toLocalTime().date();
    const std::string text = state_->_displayedDateIsToday
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
