#pragma once

#include "base/Export.h"
#include "keloOpenGL/overlay/DateLabel.h"
#include "keloOpenGL/overlay/OverlayRenderer.h"
#include "keloOpenGL/overlay/OverlayTools.h"
#include "keloOpenGL/overlay/ToothLabelRenderer.h"

#include <optional>
#include <vector>

namespace kelo {

/// What the overlay is drawn for.
struct OverlayFrame
{
    float aspect = 1.0f; ///< the view's width divided by its height; see OverlayLayout
    long mouseMode = 0;
    bool mayEdit = false;
    std::optional<OverlayToolID> pressedTool;

    /// False for a view without area.
    bool hasArea() const;
};

/// The flat overlay of a treatment view: the labels of the teeth, the date label and the tools,
/// drawn in this order into the current context.
class KELO_EXPORT Overlay
{
public:
    using Picture = OverlayRenderer::Picture;

    DateLabel &dateLabel() { return dateLabel_; }
    const DateLabel &dateLabel() const { return dateLabel_; }
    ToothLabelRenderer &toothLabels() { return toothLabels_; }
    const ToothLabelRenderer &toothLabels() const { return toothLabels_; }

    /// @name Pictures of the tools
    /// @{
    const Picture &picture(OverlayToolID tool, bool isSelected) const;
    void setPicture(OverlayToolID tool, bool isSelected, Picture picture);
    /// All of them, from the library's bundle; null for one that is missing there.
    void loadPictures();
    /// Whether the context went with the pictures. The objects stay, because where the tools can be
    /// pressed follows from their sizes.
    void noteLostContext();
    /// In the next context, before anything is drawn.
    void reloadAfterLostContext();
    /// @}

    /// @name Where the tools are
    /// @{
    /// In overlay coordinates; all zero for a tool without a picture.
    Rect toolRect(OverlayToolID tool, float aspect) const;
    /// Of the tools that are there; null for none.
    const OverlayTool *toolAt(const Point &pointInOverlay, const OverlayFrame &frame) const;
    /// @}

    /// @name Drawing
    /// @{
    /// Everything, in an OverlayState of its own.
    void draw(const OverlayFrame &frame, const std::vector<PlacedToothLabel> &toothLabels,
              StreamBuffer &indices);
    /// These within an OverlayState. A pressed tool is drawn darker, and leaves its grey as the
    /// current colour; a tool of the mouse mode that is in force has its other picture.
    void drawTool(OverlayToolID tool, const OverlayFrame &frame, StreamBuffer &indices);
    void drawPicture(const Picture &picture, const Rect &rect, StreamBuffer &indices);
    /// @}

private:
    OverlayRenderer tools_;
    DateLabel dateLabel_;
    ToothLabelRenderer toothLabels_;
    bool contextWasLost_ = false;
};

} // namespace kelo
