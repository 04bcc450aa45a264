#pragma once

#include <chrono>
#include <optional>

namespace kelo {

/// Whether the treatment that is shown may be edited: today's may, as long as it is not approved.
/// Two moments are the same if they are so to the millisecond; nothing stands for none.
class EditingRights
{
public:
    using Moment = std::optional<std::chrono::sys_time<std::chrono::milliseconds>>;

    /// The present moment, as the host sees it. What is shown already stays today's, or not.
    void setToday(const Moment &moment) { today_ = moment; }
    void setApproval(const Moment &moment) { isApproved_ = moment.has_value(); }
    /// The treatment of this moment is shown from now on.
    void show(const Moment &moment) { showsToday_ = today_ && today_ == moment; }

    bool showsToday() const { return showsToday_; }
    bool mayEdit() const { return showsToday_ && !isApproved_; }

private:
    Moment today_;
    bool isApproved_ = false;
    bool showsToday_ = false;
};

} // namespace kelo
