#pragma once

#include "base/Export.h"
#include "keloOpenGL/editing/ElasticPlacement.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

/// What a press in the elastics mode hit.
struct ElasticHit
{
    /// There for an elastic: its place in the document's list, however long that is.
    std::optional<std::uint32_t> elasticIndex;
    bool elasticExists = false;        ///< the list is that long
    std::optional<std::string> member; ///< a bracket or button, or the tooth of a bracket
    bool memberIsShown = false;        ///< the bracket or button
};

/// What such a press is for.
enum class ElasticPress {
    Nothing,
    OpenElasticMenu, ///< for the elastic that was hit
    OpenMemberMenu,  ///< for the bracket or button, on which an elastic can begin
    GoOn,            ///< the elastic that is being strung goes on at the bracket or button
    TurnJaws         ///< a rotate drag begins
};

constexpr bool opensMenu(ElasticPress press)
{
    return press == ElasticPress::OpenElasticMenu || press == ElasticPress::OpenMemberMenu;
}

/// Whether it is about a placed elastic, however long the list, not about a bracket or button.
constexpr bool isOnPlacedElastic(ElasticPress press)
{
    return press == ElasticPress::OpenElasticMenu || press == ElasticPress::Nothing;
}

/// An elastic that is being strung by clicks, from its first member until it is placed or given up.
/// Changes nothing but itself: it returns what is to be done.
class KELO_EXPORT ElasticEditor
{
public:
    using Members = std::vector<std::string>;

    bool isStringing() const { return sequence_.has_value(); }
    /// The members so far, the newest last; present exactly while an elastic is being strung.
    const std::optional<Members> &sequence() const { return sequence_; }
    /// The size type of the last elastic that was begun.
    std::optional<long> sizeTypeID() const { return sizeTypeID_; }

    /// While an elastic is being strung, placed ones cannot be clicked.
    ElasticPress press(const ElasticHit &hit) const;

    void begin(const std::string &member, long sizeTypeID);
    /// While one is being strung.
    PlacementStep stepForClickOn(const std::string &member) const;
    /// Carries out a step. Nothing, and false, if the click does not mean that step any more, as
    /// when the stringing has ended since.
    bool take(PlacementStep step, const std::string &member);
    void end() { sequence_.reset(); }

    /// The members to be placed, of which the hidden ones are left out. Nothing if fewer than two
    /// are left, or while the elastic is being placed already: a host that is told of it may ask
    /// for that again. Followed by notePlaced.
    std::optional<Members>
    beginPlacing(const std::function<bool(const std::string &member)> &isHidden);
    void notePlaced() { isBeingPlaced_ = false; }

private:
    std::optional<Members> sequence_;
    std::optional<long> sizeTypeID_;
    bool isBeingPlaced_ = false;
};

} // namespace kelo
