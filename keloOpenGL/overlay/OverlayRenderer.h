#pragma once

#include "base/Export.h"
#include "base/Rect.h"
#include "keloOpenGL/overlay/OverlayTools.h"
#include "keloOpenGL/view/StreamBuffer.h"

#include <array>
#include <cstdint>
#include <memory>

namespace kelo {

class SimpleTexture;

/// The projection and state of the flat overlay in the current context, for as long as it lives.
class KELO_EXPORT OverlayState
{
public:
    /// The view's width divided by its height; finite and above 0.
    explicit OverlayState(double aspect);
    ~OverlayState();
    OverlayState(const OverlayState &) = delete;
    OverlayState &operator=(const OverlayState &) = delete;

private:
    bool depthTestWasEnabled_;
    std::int32_t matrixMode_ = 0;
};

/// Holds the pictures of the tools and draws them into the current context, within an OverlayState.
/// The buffer for indices is filled anew at every picture; others may use it in between.
class KELO_EXPORT OverlayRenderer
{
public:
    enum class Look { Plain, Selected };

    OverlayRenderer();
    ~OverlayRenderer();
    OverlayRenderer(const OverlayRenderer &) = delete;
    OverlayRenderer &operator=(const OverlayRenderer &) = delete;

    using Picture = std::shared_ptr<SimpleTexture>;
    /// Null for a look that has no picture.
    const Picture &picture(OverlayToolID id, Look look = Look::Plain) const;
    void setPicture(OverlayToolID id, Look look, Picture texture);
    /// Of the plain pictures: where a tool is does not depend on how it looks.
    OverlayPictureSizes pictureSizes() const;

    /// Nothing for a look without a picture.
    void drawTool(const OverlayTool &tool, Look look, const OverlayLayout &layout,
                  StreamBuffer &indices);
    /// A picture, upright, into a rectangle of overlay coordinates. Null draws nothing.
    void drawPicture(const Picture &texture, const Rect &rect, StreamBuffer &indices);

private:
    struct Pictures
    {
        Picture plain, selected;
    };
    std::array<Pictures, overlayToolCount> pictures_;
    StreamBuffer vertices_{StreamBuffer::Kind::Vertices};
};

} // namespace kelo
