#include "keloOpenGL/view/PartialFrames.h"

#include "platform/gl.h"

namespace kelo {

void PartialFrames::begin(std::uint64_t redrawRequests, bool mayBePartial)
{
    drawsPart_ = part_ && mayBePartial && redrawRequests_ == redrawRequests && picture_.restore();
    if (!drawsPart_) {
        redrawRequests_ = redrawRequests;
        return;
    }
    glEnable(GL_SCISSOR_TEST);
    glScissor(part_->column, part_->row, part_->width, part_->height);
}

void PartialFrames::end(const PixelSize &size,
                        const std::function<std::optional<FramePart>()> &partOfLaterFrames)
{
    if (drawsPart_) {
        drawsPart_ = false;
        glDisable(GL_SCISSOR_TEST);
        return;
    }
    part_.reset();
    const std::optional<FramePart> part = partOfLaterFrames();
    if (!part || !picture_.keep(size)) return;
    part_ = part->pixels;
    partBox_.emplace(part->pixels, part->projection);
}

bool PartialFrames::mayShow(const Extents &box, double margin, const Matrix &transform) const
{
    return !drawsPart_ || partBox_->mayShow(box, margin, transform);
}

} // namespace kelo
