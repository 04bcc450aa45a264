#pragma once

#include "base/Export.h"
#include "keloOpenGL/editing/ActionType.h"
#include "keloOpenGL/overlay/ToothLabels.h"
#include "keloOpenGL/treatment/DXOpenGLDelegate.h"
#include "keloOpenGL/treatment/ScenePart.h"
#include "keloOpenGL/view/HVOGLSmoothView.h"
#include "platform/presenters/Menu.h"

#include <QDateTime>
#include <QImage>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class SimpleTexture;
class StringTexture;
class TreatmentMenus;
enum class ElasticPress;
enum class OverlayToolID : std::size_t;
enum class PlacementStep;
struct ArchPixels;
struct DrawnBand;
struct ElasticHit;
struct FramePart;
struct MenuContext;
struct OverlayFrame;
struct OverlayTool;
struct PickedScene;
struct PlacedToothLabel;
struct ToothLabelScene;

/// What the naming item of the elastic menu found when the menu opened last: 1 for an elastic that
/// has a named configuration (a rename), 0 for one that has none. Every new view sets it to 0.
extern KELO_EXPORT int elasticConfigNamingAction;

/// For hosts: how long they show a message, in seconds. The view itself never reads it.
extern KELO_EXPORT double gMsgPresistance;

/// The index of no elastic.
inline constexpr std::uint64_t noElasticIndex = 0x7FFFFFFFFFFFFFFF;

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
/// | Escape                      | discards the elastic being strung, else leaves full screen|
/// | menu key                    | the context menu of what is under the pointer             |
/// | Control, held               | in the elastics mode: clicks are for brackets             |
/// | double click                | full screen, if the host does it                          |
///
/// A mouth left within 22 degrees of closed closes automatically when the drag ends, or half a
/// second after the last turn of the wheel.
///
/// Timers are the main run loop's. Main thread only.
class KELO_EXPORT DXOpenGL : public HVOGLSmoothView
{
public:
    explicit DXOpenGL(const Rect &frame);
    ~DXOpenGL() override;

    /// Redraws from then on whenever the document announces a change.
    void setDocumentModel(std::shared_ptr<DXDocumentModel> model) override;

    /// Not owned. Reset it before destroying the delegate. Null for none.
    DXOpenGLDelegate *delegate() const;
    void setDelegate(DXOpenGLDelegate *delegate);

    /// @name Dates
    /// An invalid date is none.
    /// @{
    /// The present moment, as the host sees it.
    const QDateTime &currentDate() const;
    void setCurrentDate(const QDateTime &date);
    /// When the treatment was approved; an approved treatment is not edited.
    const QDateTime &approvedDate() const;
    void setApprovedDate(const QDateTime &date);
    /// The date that the label shows. Setting another one replaces the label ("Today" in the user's
    /// language for the current date, for any other the day that it falls on in the user's time
    /// zone) and chooses the mode: elastics for today's treatment while it is not approved,
    /// otherwise rotate. Set the current and the approval date before.
    const QDateTime &displayedDate() const;
    void setDisplayedDate(const QDateTime &date);
    bool displayedDateIsToday() const;
    /// Whether clicks may change the treatment: today's is shown, and it is not approved.
    bool mayEdit() const;
    /// @}

    /// @name Repeating the last action
    /// For some seconds after an action on one bracket, button or tooth every click on another one
    /// repeats it.
    /// @{
    double repeatActionTimerInterval() const;
    /// A negative interval is stored as 3 seconds. 0 until a host sets it.
    void setRepeatActionTimerInterval(double seconds);
    void restartRepeatActionTimer();
    bool repeatActionTimerIsRunning() const;
    /// @}

    /// @name Pictures of the overlay
    /// @{
    const std::shared_ptr<StringTexture> &dateStringTexture() const;
    void setDateStringTexture(std::shared_ptr<StringTexture> texture);
    const std::shared_ptr<SimpleTexture> &bracketToolTexture() const;
    void setBracketToolTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &bracketToolSelectedTexture() const;
    void setBracketToolSelectedTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &elasticsToolTexture() const;
    void setElasticsToolTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &elasticsToolSelectedTexture() const;
    void setElasticsToolSelectedTexture(std::shared_ptr<SimpleTexture> texture);
    const std::shared_ptr<SimpleTexture> &printButtonTexture() const;
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
    const Name &firstClickedToothName() const;
    void setFirstClickedToothName(const Name &name);
    /// What the last context menu or elastic click was about.
    const Name &lastClickedToothName() const;
    void setLastClickedToothName(const Name &name);
    /// What lies under the pointer of the current event.
    const Name &currentEventToothName() const;
    void setCurrentEventToothName(const Name &name);
    /// The elastic that the last click in the elastics mode was about, as its place in the
    /// document's list; noElasticIndex when it was about a bracket or button. 0, like all state of
    /// a new view, until then, whether or not there are elastics.
    std::uint64_t currentEventElasticIndex() const;
    /// Whether the press that is going on began on nothing, so that its drag turns the jaws.
    bool isRotating() const;
    /// The keys of the elastic that is being strung; present exactly while one is.
    const std::optional<std::vector<std::string>> &bracketSequence() const;
    std::optional<long> lastBracketColorTypeID() const;
    std::optional<long> lastElasticsSizeTypeID() const;
    std::uint64_t lastClickedElasticID() const;
    /// False while lastClickedElasticID is still the zero that it starts with.
    bool elasticWasClicked() const;
    /// The kind of the last action on one bracket, button or tooth: an ActionType.
    std::int64_t lastActionType() const;
    /// @}

    /// @name Drawing
    /// @{
    /// Turns the world about the vertical axis, within the front half, and requests a redraw.
    void rotateByDegrees(float degrees);
    /// The jaws, then the placed elastics, then the one that is being strung.
    void drawContent() override;
    /// Draws one band over the hooks of these keys, moved with the jaws; see RubberBand.h. In the
    /// pick mode it has the flat colour red 128, green 0, blue the low byte of colorPickID; else a
    /// material of the colour (white for none). A key without a hook is reported on standard error,
    /// and nothing is drawn:
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
    /// Where a tool whose picture has this size lies; see OverlayLayout.
    static Rect toolRectWithRatio_width_height_yOffset_relativeWidth(float aspect, float width,
                                                                     float height, float yOffset,
                                                                     float relativeWidth);
    /// Where the tools are, in overlay coordinates; all zero for one without a picture.
    Rect elasticsToolRect() const;
    Rect bracketColorToolRect() const;
    Rect printButtonRect() const;
    /// The tools by the names that scripts have for them: "elastics", "bracket" and "print".
    static std::vector<std::string> toolNames();
    /// All zero for a name that no tool has.
    Rect toolRectNamed(const std::string &toolName) const;
    /// Of the tools that are there now: without those that change a treatment which may not be
    /// edited.
    std::vector<Rect> shownToolRects() const;
    /// @}

    /// @name Parts of the scene
    /// @{
    /// Whether a part is drawn; at first all are. What is left out cannot be picked either. The
    /// document does not change, and prints show everything.
    bool showsScenePart(ScenePart part) const;
    void setShowsScenePart(ScenePart part, bool shows);
    /// @}

    /// @name Texts beside the teeth
    /// @{
    /// Texts beside the teeth that are shown, such as their numbers; at first none. They stay with
    /// their teeth as the jaws turn; those of teeth that are turned away, and those that would
    /// cover another one, are left out. Neither picks nor prints have them.
    const ToothLabels &toothLabels() const;
    void setToothLabels(ToothLabels labels);
    /// @}

    /// @name Picking
    /// What lies under a point. Points are in device pixels, counted from the lower left corner;
    /// coordinates are truncated to whole numbers. A pick neither changes the picture that the view
    /// shows nor requests a redraw.
    /// @{
    /// 0 where nothing lies under the point; the unique identifier of a tooth, bracket, button or
    /// gum, hidden ones included (a model with an extended hit box lies all over that box);
    /// pickIdentifierOfElastic(i) for the document's elastic i: of more than 256 elastics the 257th
    /// reads as the first. A point outside the view gives noPixelPickIdentifier. So does
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
    /// The identifiers of all pixels at once, deviceSize() of them row by row from the bottom left;
    /// for hosts that look for a point where an object can be clicked. Empty when there is nothing
    /// to draw on.
    std::vector<std::uint32_t> pickIdentifiers();
    /// Where an event happened, as a point to pick at. For a view without the best resolution the
    /// event's point in the view, unscaled.
    Point backingPointForEvent(const Event &event) const;
    /// @}

    /// @name Actions on the tooth that the bracket menu was opened on
    /// Rows of the bracket menu; those with a colour stand for a std::shared_ptr<BracketColorType>.
    /// Each begins a repeat period, in which clicks do the same to other teeth.
    /// @{
    void bracketColorMenuItemSelected(MenuItem &sender);
    void placeBracketSelected(MenuItem &sender);
    void removeBracketSelected(MenuItem &sender);
    void placeButtonSelected(MenuItem &sender);
    void removeButtonSelected(MenuItem &sender);
    void placeToothSelected(MenuItem &sender);
    void removeToothSelected(MenuItem &sender);
    /// Opens the bracket menu for what was hit, or repeats the last action on it; on nothing it
    /// begins a rotate drag.
    void colorMouseDown(const Event &event) override;
    /// @}

    /// @name Actions on all brackets
    /// @{
    void placeAllBracketsSelected(MenuItem &sender); ///< those that are not placed
    void markAllBracketsSelected(MenuItem &sender);  ///< hidden ones too, which stay hidden
    void removeAllBracketsSelected(MenuItem &sender);
    void clearAllBracketsSelected(MenuItem &sender); ///< removes all colours
    /// @}

    /// @name Stringing an elastic
    /// From startElasticColorMenuItemSelected until a click on the first member, Escape, or a
    /// change of the mode.
    /// @{
    /// Opens the elastic menu, or goes on with the elastic that is being strung; on nothing, or on
    /// what is hidden, it begins a rotate drag.
    void elasticsMouseDown(const Event &event) override;
    /// Begins an elastic of the row's std::shared_ptr<ElasticsSizeType> on lastClickedToothName.
    void startElasticColorMenuItemSelected(MenuItem &sender);
    /// Places the elastic if it has two members or more, and ends the stringing.
    void resolveElasticPlacement();
    /// Ends the stringing without placing anything.
    void endElasticPlacement();
    /// Confirms a click on the bracket or button: a short pulse of its highlight, drawn at once in
    /// twenty frames.
    void signalElasticsPlacement(const std::string &name);
    /// @}

    /// @name Placed elastics
    /// Rows of the elastic menu.
    /// @{
    /// Places the row's std::shared_ptr<ElasticsConfigType>, showing the brackets and buttons that
    /// it needs; where a tooth is missing, says so in an alert and changes nothing.
    void placeSelectedElasticsConfigType(MenuItem &sender);
    void updateElasticColorMenuItemSelected(MenuItem &sender);
    void markAllElasticsSelected(MenuItem &sender);
    void removeElasticSelected(MenuItem &sender);
    void removeAllElasticsSelected(MenuItem &sender);
    /// Asks the host to name the elastic under the pointer.
    void nameSelectedElasticsModel(MenuItem &sender);
    /// @}

    /// @name Context menus
    /// The view is the delegate of its menus.
    /// @{
    /// Opens the bracket menu for currentEventToothName; ends a repeat period.
    void displayBracketMenuForEvent(const Event &event);
    /// Opens the elastic menu for the elastic at currentEventElasticIndex, or for
    /// currentEventToothName when there is none.
    void displayElasticMenuForEvent(const Event &event);
    bool validateMenuItem(MenuItem &item) override;
    void menuDidClose(Menu &menu) override;
    void doNothing(MenuItem &) {}
    /// @}

    /// @name Printing
    /// @{
    /// Draws the arches from the two sides and the front, mouth closed and brackets white, and
    /// hands the pictures with the displayed date and the elastics of each side to the delegate.
    /// What the view shows stays as it is; a view in full screen leaves full screen. Does nothing
    /// without the delegate's operation.
    void submitPrintRequest();
    /// The pictures of a print request, with pixels of their own.
    struct PrintPictures
    {
        QImage left, front, right;
    };
    /// The same three pictures with `scale` (1 to 4) times as many pixels in each direction, for
    /// the resolution of a printer: 725, 800 and 725 times `scale` wide, 400 times `scale` high.
    /// May be called from the delegate's operation. Pictures without pixels where the view cannot
    /// draw them. What the view shows stays as it is.
    PrintPictures printPicturesAtScale(int scale);
    /// Draws the scene once, turned like this and with the mouth closed, into the framebuffer that
    /// is bound, and returns `width` x 400 pixels of it from column `offset` on: three bytes a
    /// pixel (red, green, blue), rows without padding, top row first.
    std::vector<unsigned char> printImageForRotationAngle_x_y_z_width_offset(float angleInDegrees,
                                                                             float x, float y,
                                                                             float z, int width,
                                                                             int offset);
    /// For hosts about to close or switch: places or discards an elastic that is being strung.
    void finishOperations();
    /// @}

    /// @name Input
    /// @{
    /// Leaving the elastics mode ends an elastic that is being strung; leaving the bracket-colour
    /// mode in a repeat period ends the period.
    void setMouseMode(long mode) override;
    /// Nothing while a repeat period holds the temporary bracket-colour mode.
    void restorePermanentMouseMode() override;
    bool mouseModeIsElastics() const { return mouseMode() == elasticsMode; }
    bool mouseModeIsBracketColor() const { return mouseMode() == colorMode; }
    /// A hand where clicks are for brackets, a cross where they are for elastics.
    QCursor cursorForMouseMode(long mode) const override;
    /// What each tool of the overlay is for.
    std::string toolTipAtPoint(const Point &pointInView) const override;

    /// Shuts a mouth that is open by less than 22 degrees, over a quarter of a second.
    void snapMouthClosedIfNeeded();

    void leftMouseDown(const Event &event) override;
    void leftMouseDragged(const Event &event) override;
    void leftMouseUp(const Event &event) override;
    void rightMouseUp(const Event &event) override;
    void mouseCaptureLost() override;
    /// A rotate drag is the button's that began it: while it goes on, the events of another one
    /// neither turn the jaws nor end it.
    void rotateMouseDown(const Event &event) override;
    void rotateMouseDragged(const Event &event) override;
    void rotateMouseUp(const Event &event) override;
    void colorMouseDragged(const Event &event) override;
    void colorMouseUp(const Event &event) override;
    void elasticsMouseDragged(const Event &event) override;
    void elasticsMouseUp(const Event &event) override;
    void scrollWheel(const Event &event) override;
    /// Control held in the elastics mode enters the bracket-colour mode until it is released.
    void flagsChanged(const Event &event) override;
    void keyDown(const Event &event) override;
    void exitFullScreenModeWithOptions() override;
    /// @}

protected:
    void contextWasLost() override;
    /// What the context can do, and whether the bound framebuffer is complete. A subclass that
    /// returns something else is refused a print, like a computer that cannot make one.
    virtual std::string openGLExtensions() const;
    virtual unsigned framebufferStatus() const;
    /// Whether a pick may draw off screen; otherwise it draws into the view's own buffer and then
    /// draws the view again.
    virtual bool canPickOffScreen() const;
    bool shouldDraw(const DXGLightweightModel &model) const override;
    /// False for a model that cannot be seen in the pixel that is being picked.
    bool shouldDrawForColorSelection(const DXGLightweightModel &model,
                                     const Matrix &jawTransform) const override;
    /// False for a model that cannot be seen in the part of the picture that is being drawn.
    bool mayBeSeen(const DXGLightweightModel &model, const Matrix &jawTransform) const override;
    /// Whether a box, grown by margin on every side and moved by transform, may be seen in the
    /// pixel that is being picked, or the part that is being drawn; true while all of it is.
    bool mayShow(const Extents &box, double margin, const Matrix &transform) const;
    void willDrawPicture() override;
    void didDrawPicture() override;

private:
    struct KeyCommand
    {
        char16_t key;
        void (DXOpenGL::*run)(const Event &);
    };
    static const KeyCommand keyCommands[];
    struct Pulse;

    /// Runs what reaches the host, a change of the document above all. False when the view ended in
    /// it: then nothing of the view may be touched. Unlike tellDelegate it does not keep the view
    /// alive: a host that let go of the view may destroy the delegate, and hears no more.
    bool survives(const std::function<void()> &call);
    /// Tells the delegate; false when the view ended in it.
    template<class Operation, class... Arguments>
    bool tell(Operation operation, Arguments &&...arguments);
    /// Requests a redraw too. False when the view ended in it.
    bool changeDocument(const std::function<void(DXDocumentModel &)> &change);
    /// The same for all elastics, with the delegate told before and after.
    void changeElastics(DXDocumentModel &document, const std::function<void()> &change);
    void setUpLight();
    void observe(DXDocumentModel *model);
    void showDateLabel();

    bool canPick();
    PickedScene pickedScene();
    void drawPickedScene();
    Name toothNameAtPoint(const Point &backingPoint);
    ElasticHit elasticHitAtPoint(const Point &backingPoint);
    void noteElasticPress(const ElasticHit &hit, ElasticPress press);
    void carryOut(ElasticPress press, const ElasticHit &hit, const Event &event);

    void chooseForLastClickedTooth(ActionType action, std::optional<long> colorTypeID = {});
    void noteActionDone(ActionType action);
    void pressTooth(std::string name, const Event &event);
    void repeatLastActionOn(const std::string &name);
    void repeatPeriodEnded();

    void goOnWithElasticAt(const std::string &name);
    void closeElasticAt(const std::string &name);
    void takeElasticStep(PlacementStep step, const std::string &name);
    void beginElasticOn(const std::string &name, long sizeTypeID);
    bool survivesPlacing(const std::shared_ptr<ElasticModel> &elastic);
    std::shared_ptr<DXGLightweightModel> bracketUnderKey(const Name &key) const;
    std::shared_ptr<ElasticModel> lastClickedElastic() const;
    void placeIfHostAgrees(const std::shared_ptr<ElasticsConfigType> &configuration);
    void askHostToName(const std::shared_ptr<ElasticModel> &elastic);
    void drawPulse(Pulse &pulse);
    std::optional<FramePart> pulsingPart();

    void drawBand(const DrawnBand &band);
    void drawElastics();
    void drawPlacedElastics(const DXDocumentModel &document);
    bool drawsElasticOver(const std::vector<std::string> &keys) const;
    /// While the matrices are those of the scene.
    std::vector<PlacedToothLabel> placedToothLabels();
    ToothLabelScene toothLabelScene(const DXDocumentModel &document) const;
    float overlayAspect() const;
    OverlayFrame overlayFrame() const;
    const std::shared_ptr<SimpleTexture> &toolPicture(OverlayToolID tool, bool isSelected) const;
    void setToolPicture(OverlayToolID tool, bool isSelected,
                        std::shared_ptr<SimpleTexture> texture);
    Rect toolRect(OverlayToolID tool) const;
    /// Of those that are there; null for none.
    const OverlayTool *toolAt(const Point &pointInOverlay) const;
    void drawTool(OverlayToolID tool);
    TreatmentMenus treatmentMenus();
    MenuContext menuContext() const;
    void popUp(const std::shared_ptr<Menu> &menu, const Event &event);
    void noteMenuAboutElastic(const ElasticModel &elastic);
    void noteMenuAboutMember();
    class PrintScene;
    bool hostTakesPrints() const;
    void handOverPrint(const ArchPixels &pixels);
    /// The camera has no size before the first drawing, but the view can be pressed.
    Size pressedSize() const;
    Point pointInView(const Event &event) const;
    /// Where the pointer is in the overlay's coordinates.
    Point toolPointForEvent(const Event &event) const;
    void leaveMouseMode();
    void enterColorModeForControl();
    void followControlKey(const Event &event);
    void pressTool(const OverlayTool &tool);
    void pressInMouseMode(const Event &event);
    void releasePrintButton();
    bool hostTogglesFullScreen() const;
    /// False when the view ended in it.
    bool toggleHostsFullScreen();
    void leaveFullScreen();
    void scrollMouth(double lines);
    void openMenuForPress(const Event &press);
    void turnTargetByAngle(float angle);

    /// @name What keys do
    /// @{
    void stepMouthUp(const Event &event);
    void stepMouthDown(const Event &event);
    void turnLeft(const Event &event);
    void turnRight(const Event &event);
    void goHome(const Event &event);
    void escapePressed(const Event &event);
    void openMenuAtPointer(const Event &event);
    /// @}

    struct State; ///< what the view remembers; see DXOpenGLState.h
    std::unique_ptr<State> state_;
};

} // namespace kelo
