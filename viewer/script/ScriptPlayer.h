#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/script/Script.h"

#include <QString>

#include <functional>
#include <memory>

namespace viewer {

/// Plays interaction scripts on a view, through the same event handlers as mouse and keyboard, on a
/// clock that stops between the commands.
///
/// While it plays, context menus open as data and stay open until the script chooses a row or
/// dismisses them. A press while a menu is open closes the menu and does nothing else, as on a
/// desktop; so does Escape. Other keys and the wheel do nothing then, and the view learns of
/// modifier keys when the menu has closed.
///
/// The modifier keys of a press or a key are held down before it and released after it; the
/// view learns of both, and every event carries what is held at its time.
class ScriptPlayer
{
public:
    /// The clock is the main run loop.
    ScriptPlayer(kelo::DXOpenGL &view, kelo::VirtualRunLoop &clock);
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer &) = delete;
    ScriptPlayer &operator=(const ScriptPlayer &) = delete;

    /// What `picture` and `state` do; each returns what went wrong, or an empty string.
    std::function<QString(const QString &file)> writePicture;
    std::function<QString(const QString &file)> writeState;

    /// Plays one command; returns what went wrong, or an empty string.
    QString play(const ScriptCommand &command);
    /// Plays a script to its end or to its first failure: "LINE: reason".
    QString play(const ParsedScript &script);

    /// The script has ended and a person takes over: context menus open on the desktop again. One
    /// that is open stays so until the next one opens.
    void handOver();

    /// The open menu as it stands after validation, or null.
    const std::shared_ptr<kelo::Menu> &openMenu() const { return openMenu_; }

private:
    QString run(const PressCommand &command);
    QString run(const DragCommand &command);
    QString run(const ReleaseCommand &command);
    QString run(const ClickCommand &command);
    QString run(const ScrollCommand &command);
    QString run(const KeyCommand &command);
    QString run(const ModifiersCommand &command);
    QString run(const MenuCommand &command);
    QString run(const DismissCommand &command);
    QString run(const DateCommand &command);
    QString run(const ApproveCommand &command);
    QString run(const AdvanceCommand &command);
    QString run(const WaitCommand &command);
    QString run(const RepeatIntervalCommand &command);
    QString run(const MouthCommand &command);
    QString run(const RotationCommand &command);
    QString run(const ZoomCommand &command);
    QString run(const ShowCommand &command);
    QString run(const ResizeCommand &command);
    QString run(const FullScreenCommand &command);
    QString run(const PictureCommand &command);
    QString run(const StateCommand &command);

    struct Press
    {
        bool isRight = false;
        int clickCount = 1;
        std::uint32_t modifierFlags = 0; ///< held for this press, besides those held anyway
        bool isSwallowed = false;        ///< it closed a menu
    };

    std::uint32_t heldModifiers() const;
    /// Tells the view which modifier keys are held, where it does not know and no menu is open.
    void tellModifiers(std::uint32_t modifierFlags);
    kelo::Event makeEvent(kelo::EventType type, std::uint32_t modifierFlags) const;
    void sendMouse(kelo::EventType type, const Press &press, const kelo::Point &point);
    void closeMenu(const std::shared_ptr<kelo::MenuItem> &chosenItem);
    std::optional<kelo::Point> pointOf(const ClickCommand &command, QString &reason);
    std::optional<std::uint32_t> identifierOf(const ClickCommand &command) const;
    kelo::Point middleOfTool(const QString &name) const;

    kelo::DXOpenGL &view_;
    kelo::VirtualRunLoop &clock_;
    kelo::ContextMenuPresenter::Presenter previousPresenter_;
    std::shared_ptr<kelo::Menu> openMenu_;
    std::optional<Press> press_;
    std::uint32_t heldModifiers_ = 0; ///< between the presses
    std::uint32_t toldModifiers_ = 0; ///< what the view knows of
    kelo::Point pointer_;
};

} // namespace viewer
