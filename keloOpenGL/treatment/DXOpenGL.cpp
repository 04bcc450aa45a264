// The state of the treatment view and its lifecycle: construction and teardown, the document, the
// dates.

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "platform/time/NotificationCenter.h"

#include <QLocale>

#include <chrono>

namespace kelo {
namespace {

EditingRights::Moment momentOf(const QDateTime &date)
{
    if (!date.isValid()) return std::nullopt;
    return std::chrono::sys_time(std::chrono::milliseconds(date.toMSecsSinceEpoch()));
}

std::string dateLabelText(const QDateTime &date, bool isToday)
{
    if (isToday) return translated(QT_TRANSLATE_NOOP("DXOpenGL", "Today"));
    // The day by the user's clock: a host may give the moment in another zone.
    return QLocale().toString(date.toLocalTime().date(), QLocale::ShortFormat).toStdString();
}

} // namespace

int elasticConfigNamingAction = 0;
double gMsgPresistance = 10.0;

DXOpenGL::DXOpenGL(const Rect &frame) : HVOGLSmoothView(frame), state_(std::make_unique<State>())
{
    setUpLight();
    if (makeCurrentContextIfNeeded()) loadTextures();
    elasticConfigNamingAction = 0;
}

void DXOpenGL::setUpLight()
{
    setAmbientColor(Color::whiteColor());
    setDiffuseColor(Color::whiteColor());
    setSpecularColor(Color::whiteColor());
    setLightRotation({20.0f, 1.0f, 1.0f, 1.0f});
}

DXOpenGL::~DXOpenGL()
{
    NotificationCenter::defaultCenter().removeObserver(ownObserver());
    // The view may end while one of its menus is open, or in the action of a row.
    state_->openMenus.release();
    // The parts give back what they have in the context while it is current.
    if (hasOpenGLContext()) makeCurrentContextIfNeeded();
    state_.reset();
}

void DXOpenGL::setDocumentModel(std::shared_ptr<DXDocumentModel> model)
{
    observe(model.get());
    HVOGLSmoothView::setDocumentModel(std::move(model));
}

void DXOpenGL::observe(DXDocumentModel *model)
{
    // The document hears its meshes and tells of them too. Another document's changes are none of
    // this view's.
    NotificationCenter &center = NotificationCenter::defaultCenter();
    const auto &name = documentModelChangedNotification;
    if (documentModel()) center.removeObserver(ownObserver(), name, documentModel().get());
    const auto redraw = [this](const Notification &) { modelChanged(); };
    if (model) center.addObserver(ownObserver(), redraw, name, model);
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
    state_->overlay.noteLostContext();
}

DXOpenGLDelegate *DXOpenGL::delegate() const
{
    return state_->delegate;
}

void DXOpenGL::setDelegate(DXOpenGLDelegate *delegate)
{
    state_->delegate = delegate;
}

// Dates.

const QDateTime &DXOpenGL::currentDate() const
{
    return state_->dates.current;
}

void DXOpenGL::setCurrentDate(const QDateTime &date)
{
    state_->dates.current = date;
    state_->dates.rights.setToday(momentOf(date));
}

const QDateTime &DXOpenGL::approvedDate() const
{
    return state_->dates.approved;
}

void DXOpenGL::setApprovedDate(const QDateTime &date)
{
    state_->dates.approved = date;
    state_->dates.rights.setApproval(momentOf(date));
    setNeedsDisplay(true); // the tools that change the treatment come or go
}

const QDateTime &DXOpenGL::displayedDate() const
{
    return state_->dates.displayed;
}

void DXOpenGL::setDisplayedDate(const QDateTime &date)
{
    if (date == state_->dates.displayed) return;
    state_->dates.displayed = date;
    state_->dates.rights.show(momentOf(date));
    // Leaving the mode may end an elastic, which draws frames.
    const auto chooseMode = [this] { setMouseMode(mayEdit() ? elasticsMode : rotateMode); };
    if (survives(chooseMode)) showDateLabel();
}

void DXOpenGL::showDateLabel()
{
    makeCurrentContextIfNeeded();
    setDateStringTexture(
        DateLabel::textureOf(dateLabelText(state_->dates.displayed, displayedDateIsToday())));
}

bool DXOpenGL::displayedDateIsToday() const
{
    return state_->dates.rights.showsToday();
}

bool DXOpenGL::mayEdit() const
{
    return state_->dates.rights.mayEdit();
}

// What the last events were about.

const DXOpenGL::Name &DXOpenGL::firstClickedToothName() const
{
    return state_->events.firstClickedToothName;
}

void DXOpenGL::setFirstClickedToothName(const Name &name)
{
    state_->events.firstClickedToothName = name;
}

const DXOpenGL::Name &DXOpenGL::lastClickedToothName() const
{
    return state_->events.lastClickedToothName;
}

void DXOpenGL::setLastClickedToothName(const Name &name)
{
    state_->events.lastClickedToothName = name;
}

const DXOpenGL::Name &DXOpenGL::currentEventToothName() const
{
    return state_->events.currentEventToothName;
}

void DXOpenGL::setCurrentEventToothName(const Name &name)
{
    state_->events.currentEventToothName = name;
}

std::uint64_t DXOpenGL::currentEventElasticIndex() const
{
    return state_->events.currentEventElasticIndex;
}

std::uint64_t DXOpenGL::lastClickedElasticID() const
{
    return state_->events.lastClickedElasticID;
}

bool DXOpenGL::elasticWasClicked() const
{
    return state_->events.elasticWasClicked;
}

} // namespace kelo
