#include "viewer/script/ScriptPlayer.h"

#include "viewer/files/Limits.h"
#include "viewer/script/PickPoints.h"
#include "viewer/script/ScriptRun.h"
#include "viewer/text/DateText.h"
#include "viewer/text/ShownText.h"
#include "viewer/view/ZoomToFit.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <utility>

namespace viewer {
namespace {

/// Elastics beyond this many share their identifiers with the first ones.
constexpr std::uint32_t pickableElastics = 256;

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + shortened(text) + QLatin1Char('\'');
}

std::optional<std::uint32_t> uniqueID(const kelo::DXDocumentModel::Models &models,
                                      const QString &key)
{
    const auto found = models.find(key.toStdString());
    if (found == models.end()) return std::nullopt;
    return found->second->uniqueID();
}

/// The row with this title or, where none has it, the one that shows it. In this order a script
/// means the same rows in every language.
std::shared_ptr<kelo::MenuItem> itemTitled(const kelo::Menu &menu, const QString &title)
{
    const std::string wanted = title.toStdString();
    for (const auto text : {&kelo::MenuItem::title, &kelo::MenuItem::shownTitle}) {
        for (const auto &item : menu.items()) {
            if (!item->separator && (*item).*text == wanted) return item;
        }
    }
    return nullptr;
}

} // namespace

ScriptPlayer::ScriptPlayer(kelo::DXOpenGL &view, kelo::VirtualRunLoop &clock)
    : view_(view), clock_(clock)
{
    previousPresenter_ = kelo::ContextMenuPresenter::setPresenter(
        [this](const std::shared_ptr<kelo::Menu> &menu, const kelo::Event &, kelo::OpenGLView &) {
            openMenu_ = menu;
        });
}

ScriptPlayer::~ScriptPlayer()
{
    closeMenu(nullptr);
    kelo::ContextMenuPresenter::setPresenter(previousPresenter_);
}

QString ScriptPlayer::play(const ScriptCommand &command)
{
    return std::visit([this](const auto &one) { return run(one); }, command);
}

QString ScriptPlayer::play(const ParsedScript &script)
{
    for (const ScriptLine &line : script.lines) {
        const QString failure = play(line.command);
        if (!failure.isEmpty())
            return QStringLiteral("%1: %2").arg(QString::number(line.number), failure);
    }
    return {};
}

void ScriptPlayer::handOver()
{
    kelo::ContextMenuPresenter::setPresenter([this](const std::shared_ptr<kelo::Menu> &menu,
                                                    const kelo::Event &event,
                                                    kelo::OpenGLView &view) {
        closeMenu(nullptr);
        if (previousPresenter_)
            previousPresenter_(menu, event, view);
        else
            kelo::ContextMenuPresenter::popUpNativeMenu(menu, event, view);
    });
}

std::uint32_t ScriptPlayer::heldModifiers() const
{
    return heldModifiers_ | (press_ ? press_->modifierFlags : 0);
}

void ScriptPlayer::tellModifiers(std::uint32_t modifierFlags)
{
    if (openMenu_ || modifierFlags == toldModifiers_) return;
    toldModifiers_ = modifierFlags;
    view_.sendEvent(makeEvent(kelo::EventType::FlagsChanged, modifierFlags));
}

kelo::Event ScriptPlayer::makeEvent(kelo::EventType type, std::uint32_t modifierFlags) const
{
    kelo::Event event;
    event.type = type;
    // Windows count rows from 1 at the bottom, the view from 0.
    event.locationInWindow = {pointer_.x, pointer_.y + 1.0};
    event.modifierFlags = modifierFlags;
    event.timestamp = clock_.currentTime();
    return event;
}

void ScriptPlayer::sendMouse(kelo::EventType type, const Press &press, const kelo::Point &point)
{
    pointer_ = point;
    if (press.isSwallowed) return;
    kelo::Event event = makeEvent(type, heldModifiers_ | press.modifierFlags);
    event.clickCount = press.clickCount;
    view_.sendEvent(event);
}

void ScriptPlayer::closeMenu(const std::shared_ptr<kelo::MenuItem> &chosenItem)
{
    // First forgotten: the action may open another menu.
    if (const auto menu = std::exchange(openMenu_, nullptr)) menu->close(chosenItem);
    tellModifiers(heldModifiers());
}

QString ScriptPlayer::run(const PressCommand &command)
{
    if (press_) return QStringLiteral("a button is held already");
    press_ =
        Press{command.isRight, command.clickCount, command.modifierFlags, openMenu_ != nullptr};
    pointer_ = command.point; // the pointer is there before the keys and the button go down
    closeMenu(nullptr);
    sendMouse(command.isRight ? kelo::EventType::RightMouseDown : kelo::EventType::LeftMouseDown,
              *press_, command.point);
    return {};
}

QString ScriptPlayer::run(const DragCommand &command)
{
    if (!press_) return QStringLiteral("no button is held");
    sendMouse(press_->isRight ? kelo::EventType::RightMouseDragged
                              : kelo::EventType::LeftMouseDragged,
              *press_, command.point);
    return {};
}

QString ScriptPlayer::run(const ReleaseCommand &command)
{
    if (!press_) return QStringLiteral("no button is held");
    const Press press = *std::exchange(press_, std::nullopt);
    sendMouse(press.isRight ? kelo::EventType::RightMouseUp : kelo::EventType::LeftMouseUp, press,
              command.point);
    tellModifiers(heldModifiers());
    return {};
}

std::optional<std::uint32_t> ScriptPlayer::identifierOf(const ClickCommand &command) const
{
    const auto document = view_.documentModel();
    if (!document) return std::nullopt;
    switch (command.target) {
    case ClickCommand::Target::Tooth:
        return uniqueID(document->toothModels(), command.name);
    case ClickCommand::Target::Bracket:
        return uniqueID(document->bracketModels(), command.name);
    case ClickCommand::Target::Button:
        return uniqueID(document->buttonModels(), command.name);
    case ClickCommand::Target::Elastic: {
        const std::uint32_t index = command.name.toUInt();
        const bool isThere = index < document->elasticModels().size() && index < pickableElastics;
        return isThere ? std::optional(kelo::pickIdentifierOfElastic(index)) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

kelo::Point ScriptPlayer::middleOfTool(const QString &name) const
{
    const kelo::Rect rect = overlayRectInView(view_.toolRectNamed(name.toStdString()), view_);
    return {rect.origin.x + rect.size.width / 2.0, rect.origin.y + rect.size.height / 2.0};
}

std::optional<kelo::Point> ScriptPlayer::pointOf(const ClickCommand &command, QString &reason)
{
    if (command.target == ClickCommand::Target::Point) return command.point;
    if (command.target == ClickCommand::Target::Tool) return middleOfTool(command.name);
    static const char *const kinds[] = {"point", "tooth", "bracket", "button", "elastic", "tool"};
    const QString what =
        QLatin1String(kinds[static_cast<int>(command.target)]) + QLatin1Char(' ') + command.name;
    const auto identifier = identifierOf(command);
    if (!identifier) {
        reason = QStringLiteral("there is no %1").arg(what);
        return std::nullopt;
    }
    const auto point = clickablePoint(view_, *identifier);
    if (!point) reason = QStringLiteral("nothing of %1 can be clicked here").arg(what);
    return point;
}

QString ScriptPlayer::run(const ClickCommand &command)
{
    QString reason;
    const auto point = pointOf(command, reason);
    if (!point) return reason;
    const QString failure =
        run(PressCommand{false, *point, command.clickCount, command.modifierFlags});
    return failure.isEmpty() ? run(ReleaseCommand{*point}) : failure;
}

QString ScriptPlayer::run(const ScrollCommand &command)
{
    if (command.point) pointer_ = *command.point;
    if (openMenu_) return {};
    kelo::Event event = makeEvent(kelo::EventType::ScrollWheel, heldModifiers());
    event.deltaX = command.deltaX;
    event.deltaY = command.deltaY;
    view_.sendEvent(event);
    return {};
}

QString ScriptPlayer::run(const KeyCommand &command)
{
    if (openMenu_) {
        if (command.character == kelo::FunctionKey::Escape) closeMenu(nullptr);
        return {};
    }
    const std::uint32_t modifierFlags = heldModifiers() | command.modifierFlags;
    tellModifiers(modifierFlags);
    kelo::Event event = makeEvent(kelo::EventType::KeyDown, modifierFlags);
    event.characters = std::u16string(1, command.character);
    view_.sendEvent(event);
    event.type = kelo::EventType::KeyUp;
    view_.sendEvent(event);
    tellModifiers(heldModifiers());
    return {};
}

QString ScriptPlayer::run(const ModifiersCommand &command)
{
    heldModifiers_ = command.modifierFlags;
    tellModifiers(heldModifiers());
    return {};
}

QString ScriptPlayer::run(const MenuCommand &command)
{
    if (!openMenu_) return QStringLiteral("no menu is open");
    std::shared_ptr<kelo::MenuItem> item;
    const kelo::Menu *menu = openMenu_.get();
    for (const QString &title : command.titles) {
        if (!menu) return QStringLiteral("%1 has no submenu").arg(quoted(command.titles.first()));
        item = itemTitled(*menu, title);
        if (!item) return QStringLiteral("the menu has no row %1").arg(quoted(title));
        if (!item->enabled) return QStringLiteral("the row %1 is disabled").arg(quoted(title));
        menu = item->submenu.get();
    }
    closeMenu(item);
    return {};
}

QString ScriptPlayer::run(const DismissCommand &)
{
    if (!openMenu_) return QStringLiteral("no menu is open");
    closeMenu(nullptr);
    return {};
}

QString ScriptPlayer::run(const DateCommand &command)
{
    view_.setDisplayedDate(command.date ? momentOf(*command.date) : view_.currentDate());
    return {};
}

QString ScriptPlayer::run(const ApproveCommand &command)
{
    view_.setApprovedDate(command.date ? momentOf(*command.date) : QDateTime());
    view_.setNeedsDisplay(true);
    return {};
}

QString ScriptPlayer::run(const AdvanceCommand &command)
{
    clock_.advance(command.seconds);
    return {};
}

QString ScriptPlayer::run(const WaitCommand &command)
{
    const double end = clock_.currentTime() + command.seconds;
    QEventLoop loop;
    QTimer::singleShot(std::chrono::milliseconds(std::llround(command.seconds * 1000.0)),
                       Qt::PreciseTimer, &loop, &QEventLoop::quit);
    const RealTime realTime(clock_, end);
    loop.exec();
    // However often the clock went on meanwhile, it ends where `advance` would. More than once only
    // where a sum is rounded down.
    while (clock_.currentTime() < end)
        clock_.advance(end - clock_.currentTime());
    return {};
}

QString ScriptPlayer::run(const RepeatIntervalCommand &command)
{
    view_.setRepeatActionTimerInterval(command.seconds);
    return {};
}

QString ScriptPlayer::run(const MouthCommand &command)
{
    view_.setMouthOpenAngle(static_cast<float>(command.degrees));
    return {};
}

QString ScriptPlayer::run(const RotationCommand &command)
{
    view_.setWorldRotationAngle_axis(command.degrees, command.x, command.y, command.z);
    return {};
}

QString ScriptPlayer::run(const ZoomCommand &command)
{
    if (!command.box) {
        zoomToFit(view_);
        return {};
    }
    const auto &[left, right, bottom, top] = *command.box;
    view_.setZoomData(kelo::DXOpenGL::zoomDataWithXMin_xMax_yMin_yMax(left, right, bottom, top));
    return {};
}

QString ScriptPlayer::run(const ShowCommand &command)
{
    view_.setShowsScenePart(command.part, command.shows);
    return {};
}

QString ScriptPlayer::run(const ResizeCommand &command)
{
    // The size is in points: a scale makes more pixels of it than renderers draw at once.
    const kelo::Size pixels = view_.convertSizeToBacking(command.size);
    if (pixels.width > largestSide || pixels.height > largestSide)
        return QStringLiteral("the view may be %1 pixels at most on each side, not %2x%3")
            .arg(QString::number(largestSide), QString::number(pixels.width),
                 QString::number(pixels.height));
    view_.setFrameSize(command.size);
    return {};
}

QString ScriptPlayer::run(const FullScreenCommand &command)
{
    if (!command.on)
        view_.exitFullScreenModeWithOptions();
    else if (!view_.enterFullScreenMode())
        return QStringLiteral("full screen needs a display");
    return {};
}

QString ScriptPlayer::run(const PictureCommand &command)
{
    return writePicture ? writePicture(command.file) : QString();
}

QString ScriptPlayer::run(const StateCommand &command)
{
    return writeState ? writeState(command.file) : QString();
}

} // namespace viewer
