#include "keloOpenGL/editing/BracketHighlight.h"

#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

#include <utility>

namespace kelo {
namespace {

constexpr double highlightShininess = 2.0;
constexpr double pulseShininessStep = 3.0;

} // namespace

void BracketHighlight::begin(const std::shared_ptr<DXGLightweightModel> &bracket)
{
    if (!bracket) return;
    own_ = bracket->material();
    highlight_ = HVOGLMaterial::materialWithColor_shininess(own_ ? own_->color() : std::nullopt,
                                                            highlightShininess);
    bracket->setMaterial(highlight_);
}

void BracketHighlight::end(const std::shared_ptr<DXGLightweightModel> &bracket)
{
    // Let go of before the bracket is changed, which a host may hear of.
    const auto own = std::exchange(own_, nullptr);
    const auto highlight = std::exchange(highlight_, nullptr);
    if (bracket && own && bracket->material() == highlight) bracket->setMaterial(own);
}

HighlightPulse::HighlightPulse(std::shared_ptr<DXGLightweightModel> model)
    : model_(std::move(model)),
      own_(model_->material()),
      working_(HVOGLMaterial::materialWithColor_shininess(own_->color(), own_->shininess()))
{
    model_->setMaterial(working_);
}

HighlightPulse::~HighlightPulse()
{
    model_->setMaterial(own_);
}

bool HighlightPulse::step()
{
    if (stepsDone_ == stepCount) return false;
    const double change = stepsDone_ < stepCount / 2 ? -pulseShininessStep : pulseShininessStep;
    working_->setShininess(working_->shininess() + change);
    ++stepsDone_;
    return true;
}

} // namespace kelo
