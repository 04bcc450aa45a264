#pragma once

#include "base/Export.h"

#include <memory>

namespace kelo {

class DXGLightweightModel;
class HVOGLMaterial;

/// How the bracket that an elastic began on is told from the others while it is being strung: its
/// own colour with a wide highlight.
class KELO_EXPORT BracketHighlight
{
public:
    /// Keeps the bracket's material and gives it another one. Null changes nothing.
    void begin(const std::shared_ptr<DXGLightweightModel> &bracket);
    /// Gives the bracket its material back. One that was painted meanwhile, by the menu that the
    /// right button opens, keeps that. Null for a bracket that is no more.
    void end(const std::shared_ptr<DXGLightweightModel> &bracket);

private:
    std::shared_ptr<HVOGLMaterial> own_;
    std::shared_ptr<HVOGLMaterial> highlight_;
};

/// A pulse of a model's highlight, in steps that are drawn one by one. For as long as it lives the
/// model has a material of the pulse's; afterwards it has its own again.
class KELO_EXPORT HighlightPulse
{
public:
    static constexpr int stepCount = 20;

    /// The model has a material.
    explicit HighlightPulse(std::shared_ptr<DXGLightweightModel> model);
    ~HighlightPulse();
    HighlightPulse(const HighlightPulse &) = delete;
    HighlightPulse &operator=(const HighlightPulse &) = delete;

    /// Goes on to the next step: the shininess falls in the first half and rises in the second one.
    /// False when there is none left.
    bool step();
    const DXGLightweightModel &model() const { return *model_; }

private:
    std::shared_ptr<DXGLightweightModel> model_;
    std::shared_ptr<HVOGLMaterial> own_;
    std::shared_ptr<HVOGLMaterial> working_;
    int stepsDone_ = 0;
};

} // namespace kelo
