#include "keloOpenGL/editing/ElasticEditor.h"

#include <algorithm>
#include <utility>

namespace kelo {

ElasticPress ElasticEditor::press(const ElasticHit &hit) const
{
    if (hit.elasticIndex && !isStringing())
        return hit.elasticExists ? ElasticPress::OpenElasticMenu : ElasticPress::Nothing;
    if (!hit.member || !hit.memberIsShown) return ElasticPress::TurnJaws;
    return isStringing() ? ElasticPress::GoOn : ElasticPress::OpenMemberMenu;
}

void ElasticEditor::begin(const std::string &member, long sizeTypeID)
{
    sequence_ = Members{member};
    sizeTypeID_ = sizeTypeID;
}

PlacementStep ElasticEditor::stepForClickOn(const std::string &member) const
{
    return ElasticPlacement{*sequence_}.stepForClickOn(member);
}

bool ElasticEditor::take(PlacementStep step, const std::string &member)
{
    if (!sequence_) return false;
    ElasticPlacement placement{*sequence_};
    if (placement.stepForClickOn(member) != step) return false;
    placement.take(step, member);
    sequence_ = std::move(placement.sequence);
    return true;
}

std::optional<ElasticEditor::Members>
ElasticEditor::beginPlacing(const std::function<bool(const std::string &member)> &isHidden)
{
    if (!sequence_ || isBeingPlaced_) return std::nullopt;
    // All brackets may have been removed meanwhile, by the menu that the right button opens.
    Members members = *sequence_;
    std::erase_if(members, isHidden);
    // What was left out may have stood between two passes of one member.
    members.erase(std::unique(members.begin(), members.end()), members.end());
    if (members.size() < 2) return std::nullopt;
    isBeingPlaced_ = true;
    return members;
}

} // namespace kelo
