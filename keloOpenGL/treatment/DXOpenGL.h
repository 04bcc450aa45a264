#pragma once

#include "keloOpenGL/treatment/DXOpenGLDelegate.h"
#include "keloOpenGL/treatment/PickBox.h"
#include "keloOpenGL/treatment/PickTarget.h"
#include "keloOpenGL/treatment/RubberBand.h"
#include "keloOpenGL/view/HVOGLSmoothView.h"
#include "platform/Menu.h"

#include <QDateTime>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class HVOGLMaterial;
class SimpleTexture;
class StringTexture;

/// What the naming item of the elastic menu found when the menu opened last: 1 for an elastic that
/// has a named configuration (a rename), 0 for one that has none. Every new view sets it to 0.
extern int elasticConfigNamingAction;

/// For hosts: how long they show a message, in seconds. The view itself never reads it.
extern double gMsgPresistance;

/// The index of no elastic.
inline constexpr std::uint64_t notFound = 0x7FFFFFFFFFFFFFFF;

/// The treatment view: shows the document's jaws and elastics with a date label and tool buttons
/// over them, and lets the clinician turn the jaws, open the mouth, place, remove, colour and mark
/// brackets, buttons and teeth, string elastics, and ask for a print. Made with
/// makeView<DXOpenGL>(frame).
///
/// Its mouse modes are MouseMode's: in the rotate mode a drag turns the jaws and opens the mouth;
/// in the bracket-colour mode a click on a tooth opens the bracket menu; in the elastics mode a
/// click on a bracket, a button or an elastic opens the elastic menu or goes on with the elastic
/// that is being strung. A drag that begins on nothing turns the jaws in every mode.
///
/// | input                       | effect                                                    |
/// |-----------------------------|-----------------------------------------------------------|
/// | left drag                   | across: turns the jaws; up and down: opens the mouth      |
/// | wheel                       | across: turns the jaws; up and down: opens the mouth      |
/// | left, right arrow           | turn by 45 degrees, animated                              |
/// | up, down arrow              | open the mouth by a step, or close it, animated           |
/// | 0                           | front view, mouth closed, animated                        |
///
/// A mouth left within 22 degrees of closed shuts by itself when the drag ends, or half a second
/// after the last turn of the wheel.
///
/// Timers are the main run loop's. Main thread only.
class DXOpenGL : public HVOGLSmoothView
{
public:
    explicit DXOpenGL(const Rect &frame);
    ~DXOpenGL() override;

    /// Not owned: who destroys a delegate that is set takes it away first. Null for none.
    DXOpenGLDelegate *delegate() const { return delegate_; }
    void setDelegate(DXOpenGLDelegate *delegate) { delegate_ = delegate; }

    /// @name Dates
    /// An invalid date is none.
    /// @{
    /// The present moment, as the host sees it.
    const QDateTime &currentDate() const { return _currentDate; }
    void setCurrentDate(const QDateTime &date) { _currentDate = date; }
    /// When the treatment was approved; an approved treatment is not edited.
    const QDateTime &approvedDate() const { return _approvedDate; }
    void setApprovedDate(const QDateTime &date) { _approvedDate = date; }
    /// The date that the label shows. Setting another one makes the label anew, "Today" for the
    /// current date, and chooses the mode: elastics for today's treatment while it is not approved,
    /// otherwise rotate. Set the current and the approval date before.
    const QDateTime &displayedDate() const { return _displayedDate; }
    void setDisplayedDate(const QDateTime &date);
    bool displayedDateIsToday() const { return _displayedDateIsToday; }
    /// @}

    /// @name Repeating the last action
    /// For some seconds after an action on one bracket, button or tooth every click on another one
    /// repeats it.
    /// @{
    double repeatActionTimerInterval() const { return repeatActionTimerInterval_; }
    /// A negative interval is stored as 3 seconds. 0 until a host sets it.
    void setRepeatActionTimerInterval(double seconds);
    void restartRepeatActionTimer();
    bool repeatActionTimerIsRunning() const { return repeatActionTimer.lock() != nullptr; }
    /// @}

    /// @name Pictures of the overlay
    /// @{
    const std::shared_ptr<StringTexture> &dateStringTexture() const { return dateStringTexture_; }
    void setDateStringTexture(std::shared_ptr<StringTexture> texture);
    const std::shared_ptr<SimpleTexture> &bracketToolTexture() const { return bracketToolTexture_; }
    void setBracketToolTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &bracketToolSelectedTexture() const
    {
        return bracketToolSelectedTexture_;
    }
    void setBracketToolSelectedTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &elasticsToolTexture() const
    {
        return elasticsToolTexture_;
    }
    void setElasticsToolTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &elasticsToolSelectedTexture() const
    {
        return elasticsToolSelectedTexture_;
    }
    void setElasticsToolSelectedTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &printButtonTexture() const { return printButtonTexture_; }
    void setPrintButtonTexture(std::shared_ptr<SimpleTexture> texture);
    /// Loads the five pictures of the tools from the library's bundle. One that is missing leaves
    /// its tool undrawn.
    void loadTextures();
    /// @}

    /// @name What the last events were about
    /// Names are keys of teeth, brackets and buttons; nothing when there was none.
    /// @{
    using Name = std::optional<std::string>;
    /// The bracket that the elastic being strung began on.
    const Name &firstClickedToothName() const { return firstClickedToothName_; }
    void setFirstClickedToothName(const Name &name) { firstClickedToothName_ = name; }
    /// What the last context menu or elastic click was about.
    const Name &lastClickedToothName() const { return lastClickedToothName_; }
    void setLastClickedToothName(const Name &name) { lastClickedToothName_ = name; }
    /// What lies under the pointer of the current event.
    const Name &currentEventToothName() const { return currentEventToothName_; }
    void setCurrentEventToothName(const Name &name) { currentEventToothName_ = name; }
    /// The elastic under the pointer, as its place in the document's list, or notFound.
    std::uint64_t currentEventElasticIndex() const { return currentEventElasticIndex_; }
    /// The keys of the elastic that is being strung; there exactly while one is.
    const std::optional<std::vector<std::string>> &bracketSequence() const
    {
        return bracketSequence_;
    }
    std::optional<long> lastBracketColorTypeID() const { return lastBracketColorTypeID_; }
    std::optional<long> lastElasticsSizeTypeID() const { return lastElasticsSizeTypeID_; }
    std::uint64_t lastClickedElasticID() const { return lastClickedElasticID_; }
    /// The kind of the last action on one bracket, button or tooth.
    enum ActionType : std::int64_t {
        colorBracket = 0,
        placeBracket = 1,
        removeBracket = 2,
        placeButton = 3,
        removeButton = 4,
        placeTooth = 5,
        removeTooth = 6
    };
    std::int64_t lastActionType() const { return lastActionType_; }
    /// @}

    /// @name Drawing
    /// @{
    /// Turns the world about the vertical axis, within the front half, and asks for a redraw.
    void rotateByDegrees(float degrees);
    /// The jaws, then the placed elastics, then the one that is being strung.
    void drawContent() override;
    /// Draws one band over the hooks of these keys, moved with the jaws; see RubberBand.h. In the
    /// pick mode it has the flat colour red 128, green 0, blue the low byte of colorPickID; else a
    /// material of the colour (white for none). A key without a hook is told on standard error, and
    /// nothing is drawn:
    ///     Hook position for bracket "KEY" not defined; cannot draw elastics (check ...)
    void drawRubberBand_color_closeLoop_colorPickMode_colorPickID(
        const std::vector<std::string> &keys, const std::optional<Color> &color, bool closeLoop,
        bool colorPickMode, std::uint32_t colorPickID);
    /// The placed elastics that have at least one of these keys, in placing order.
    ElasticDescriptions elasticsForToothNames(const std::vector<std::string> &toothNames) const;
    /// The overlay: the date label, the tools that change the treatment (today's, not yet
    /// approved), and the print button. Nothing while the scene is drawn for printing.
    void drawExtraContent() override;
    void drawDateLabel();
    void drawElasticsToolButton();
    void drawBracketToolButton();
    void drawPrintButton();
    /// Draws a picture upright into a rectangle of overlay coordinates (see OverlayLayout).
    void drawToolButton_inRect(const std::shared_ptr<SimpleTexture> &texture, const Rect &rect);
    /// Where the tools are, in overlay coordinates; all zero for one without a picture.
    Rect elasticsToolRect() const;
    Rect bracketColorToolRect() const;
    Rect printButtonRect() const;
    /// @}

    /// @name Picking
    /// What lies under a point. Points are in device pixels, counted from the lower left corner;
    /// coordinates are cut to whole numbers. A pick neither changes the picture that the view shows
    /// nor asks for a redraw.
    /// @{
    /// 0 where nothing lies under the point; the unique identifier of a tooth, bracket, button or
    /// gum, hidden ones included (a model with an extended hit box lies all over that box);
    /// 0x800000 + i for the document's elastic i, counted modulo 256: of more elastics the 257th
    /// reads as the first. A point outside the view gives 0xABCDEF, which names nothing. So does
    /// the overlay (the date label, the tools) by chance only: ask for its rectangles first.
    std::uint32_t pickIdentifierAtPoint(const Point &backingPoint);
    /// The key of the bracket or button, or of the tooth where teeth are included, that has the
    /// identifier; nothing for all else. A key found sets the flag, if one is given, to whether it
    /// is a button's; otherwise the flag stays as it is.
    Name bracketNameForIdentifier_includeTeeth_isLingualButton(std::uint32_t identifier,
                                                               bool includeTeeth,
                                                               bool *isLingualButton) const;
    /// The same for what lies under a point.
    Name bracketNameAtPoint_includeTeeth_isLingualButton(const Point &backingPoint,
                                                         bool includeTeeth, bool *isLingualButton);
    /// Where an event happened, as a point to pick at. For a view without the best resolution the
    /// event's point in the view, unscaled.
    Point backingPointForEvent(const Event &event) const;
    /// @}

    /// @name Input
    /// @{
    bool mouseModeIsElastics() const { return mouseMode() == elasticsMode; }
    bool mouseModeIsBracketColor() const { return mouseMode() == colorMode; }

    /// Shuts a mouth that is open by less than 22 degrees, over a quarter of a second.
    void snapMouthClosedIfNeeded();

    void rotateMouseDown(const Event &event) override;
    void rotateMouseDragged(const Event &event) override;
    void rotateMouseUp(const Event &event) override;
    void colorMouseDragged(const Event &event) override;
    void colorMouseUp(const Event &event) override;
    void elasticsMouseDragged(const Event &event) override;
    void elasticsMouseUp(const Event &event) override;
    void scrollWheel(const Event &event) override;
    void keyDown(const Event &event) override;
    /// @}

protected:
    void contextWasLost() override;
    /// Whether a pick may draw where nobody sees it; otherwise it draws into the view's own buffer
    /// and then draws the view again.
    virtual bool canPickOffScreen() const;
    /// False for a model that cannot be seen in the pixel that is being picked.
    bool shouldDrawForColorSelection(const DXGLightweightModel &model,
                                     const Matrix &jawTransform) const override;
    /// Whether a box, grown by margin on every side and moved by transform, may be seen in the
    /// pixel that is being picked; true while none is.
    bool pickMayShow(const Extents &box, double margin, const Matrix &transform) const;

private:
    void drawColorPickPass(int column, int row);
    void repeatActionTimerExpired();
    void drawElastics();
    void makeDateLabel();
    float overlayAspect() const;
    /// After the context was lost: loads the pictures and makes the label again in the new one.
    void reloadLostTextures();
    void forgetRepeatActionTimer();
    void snapMouthClosedTimerExpired();
    /// Whether the tools that change the treatment are there: today's, not yet approved.
    bool showsEditingTools() const { return _displayedDateIsToday && !_approvedDate.isValid(); }
    void turnTargetByAngle(float angle);

    // Fields that share their names with operations have the underscore behind.
    DXOpenGLDelegate *delegate_ = nullptr;
    Point _dragOrigin;
    bool _rotating = false;
    QDateTime _currentDate;
    QDateTime _approvedDate;
    QDateTime _displayedDate;
    bool _displayedDateIsToday = false;
    bool _printMode = false; ///< while the scene is drawn for printing
    std::shared_ptr<StringTexture> dateStringTexture_;
    std::shared_ptr<SimpleTexture> bracketToolTexture_;
    std::shared_ptr<SimpleTexture> bracketToolSelectedTexture_;
    std::shared_ptr<SimpleTexture> elasticsToolTexture_;
    std::shared_ptr<SimpleTexture> elasticsToolSelectedTexture_;
    std::shared_ptr<SimpleTexture> printButtonTexture_;
    Name firstClickedToothName_;
    Name lastClickedToothName_;
    std::optional<std::vector<std::string>> bracketSequence_;
    std::uint64_t lastClickedElasticID_ = 0;
    /// The first bracket's own material, while that bracket is highlighted.
    std::shared_ptr<HVOGLMaterial> savedBracketMaterial;
    std::optional<long> lastBracketColorTypeID_;
    std::optional<long> lastElasticsSizeTypeID_;
    std::int64_t lastActionType_ = 0;
    std::weak_ptr<Timer> repeatActionTimer; ///< the run loop holds it
    double repeatActionTimerInterval_ = 0.0;
    std::shared_ptr<Timer> verticalScrollSnapMouthClosedTimer;
    Name currentEventToothName_;
    std::uint64_t currentEventElasticIndex_ = 0;
    bool _printButtonTracking = false;
    bool _printButtonDown = false;
    bool texturesWereLost_ = false;
    PickTarget pickTarget_;
    std::optional<PickBox> pickBox_; ///< there while a pixel is being picked
    std::vector<RubberBandNode> bandNodes_; ///< scratch, kept for its room
    // Buffer names of the view's context, 0 until first use.
    std::uint32_t toolButtonVBOID = 0;
    std::uint32_t toolButtonVBOIndexID = 0;
    std::uint32_t elasticsVBOID = 0;
    std::uint32_t elasticsVBOIndexID = 0;
};

} // namespace kelo
