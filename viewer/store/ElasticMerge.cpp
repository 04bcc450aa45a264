#include "viewer/store/ElasticMerge.h"

#include "viewer/store/ElasticAttributes.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace viewer {
namespace {

using Records = std::vector<kelo::SavedElastic>;
using Sequence = std::vector<std::string>;

/// Elastics, each as often as it occurs.
class Bag
{
public:
    explicit Bag(const Records &records = {})
    {
        for (const kelo::SavedElastic &record : records)
            ++counts_[record];
    }
    /// Takes one out; false when there is none.
    bool take(const kelo::SavedElastic &record)
    {
        const auto found = counts_.find(record);
        if (found == counts_.end()) return false;
        if (--found->second == 0) counts_.erase(found);
        return true;
    }

private:
    std::map<kelo::SavedElastic, std::size_t> counts_;
};

/// Those of `records` that `others` does not have, in their order.
Records recordsWithout(const Records &records, const Records &others)
{
    Bag known(others);
    Records left;
    for (const kelo::SavedElastic &record : records) {
        if (!known.take(record)) left.push_back(record);
    }
    return left;
}

/// Whether an elastic of the first members may be what became of one of the second: the same, or
/// shortened.
bool isPartOf(const Sequence &part, const Sequence &whole)
{
    auto from = whole.begin();
    for (const std::string &member : part) {
        from = std::find(from, whole.end(), member);
        if (from == whole.end()) return false;
        ++from;
    }
    return !part.empty();
}

/// An elastic that was there before, and what it became; nothing: it was removed.
struct Change
{
    kelo::SavedElastic before;
    std::optional<kelo::SavedElastic> after;
};

struct Changes
{
    std::vector<Change> changes;
    Records placed;
};

/// First what kept its members, and then, among the rest, what lost some: lists keep their order,
/// so shortened elastics come in the order in which they were.
Changes changesBetween(const Records &before, const Records &after)
{
    Records added = recordsWithout(after, before);
    std::map<Sequence, std::vector<std::size_t>> bySequence;
    for (std::size_t i = added.size(); i-- > 0;)
        bySequence[added[i].bracketSequence].push_back(i);
    std::vector<bool> isPaired(added.size(), false);
    Changes found;
    for (const kelo::SavedElastic &gone : recordsWithout(before, after)) {
        Change change{gone, std::nullopt};
        const auto same = bySequence.find(gone.bracketSequence);
        if (same != bySequence.end() && !same->second.empty()) {
            change.after = added[same->second.back()];
            isPaired[same->second.back()] = true;
            same->second.pop_back();
        }
        found.changes.push_back(std::move(change));
    }
    std::size_t next = 0;
    const auto skipPaired = [&] {
        while (next < added.size() && isPaired[next])
            ++next;
    };
    for (Change &change : found.changes) {
        skipPaired();
        if (change.after || next == added.size() ||
            !isPartOf(added[next].bracketSequence, change.before.bracketSequence))
            continue;
        isPaired[next] = true;
        change.after = added[next];
    }
    for (std::size_t i = 0; i < added.size(); ++i) {
        if (!isPaired[i]) found.placed.push_back(std::move(added[i]));
    }
    return found;
}

/// What became of one elastic that two changed: of each of its values the change that was made.
kelo::SavedElastic combined(const kelo::SavedElastic &before, const kelo::SavedElastic &mine,
                            const kelo::SavedElastic &theirs)
{
    kelo::SavedElastic both = mine;
    for (const ElasticAttribute &attribute : elasticAttributes()) {
        const auto value = attribute.value;
        if (mine.*value == before.*value) both.*value = theirs.*value;
    }
    if (mine.bracketSequence == before.bracketSequence)
        both.bracketSequence = theirs.bracketSequence;
    return both;
}

class Merge
{
public:
    Merge(const Records &before, const Records &stored)
    {
        slots_.assign(stored.begin(), stored.end());
        // Backwards, so that the first of equal ones is taken first.
        for (std::size_t i = stored.size(); i-- > 0;)
            positions_[stored[i]].push_back(i);
        Changes theirs = changesBetween(before, stored);
        for (Change &change : theirs.changes)
            changedByOthers_[change.before].push_back(std::move(change.after));
        placedByOthers_ = Bag(theirs.placed);
    }

    void apply(const Change &change)
    {
        const auto changed = changedByOthers_.find(change.before);
        if (changed == changedByOthers_.end() || changed->second.empty()) {
            replace(change.before, change.after);
            return;
        }
        const std::optional<kelo::SavedElastic> theirs = std::move(changed->second.back());
        changed->second.pop_back();
        if (!change.after) return; // what they made of it stays
        if (theirs)
            replace(*theirs, combined(change.before, *change.after, *theirs));
        else
            slots_.emplace_back(change.after);
    }

    void place(const kelo::SavedElastic &record)
    {
        if (!placedByOthers_.take(record)) slots_.emplace_back(record);
    }

    Records records() &&
    {
        Records left;
        for (auto &slot : slots_) {
            if (slot) left.push_back(std::move(*slot));
        }
        return left;
    }

private:
    /// The first that is stored like `record` becomes `after`.
    void replace(const kelo::SavedElastic &record, const std::optional<kelo::SavedElastic> &after)
    {
        const auto found = positions_.find(record);
        if (found == positions_.end() || found->second.empty()) return;
        slots_[found->second.back()] = after;
        found->second.pop_back();
    }

    std::vector<std::optional<kelo::SavedElastic>> slots_;
    std::map<kelo::SavedElastic, std::vector<std::size_t>> positions_;
    std::map<kelo::SavedElastic, std::vector<std::optional<kelo::SavedElastic>>> changedByOthers_;
    Bag placedByOthers_;
};

} // namespace

std::vector<kelo::SavedElastic> mergedElastics(const std::vector<kelo::SavedElastic> &before,
                                               const std::vector<kelo::SavedElastic> &after,
                                               const std::vector<kelo::SavedElastic> &stored)
{
    if (stored == before) return after;
    if (stored == after) return stored;
    const Changes mine = changesBetween(before, after);
    Merge merge(before, stored);
    for (const Change &change : mine.changes)
        merge.apply(change);
    for (const kelo::SavedElastic &record : mine.placed)
        merge.place(record);
    return std::move(merge).records();
}

} // namespace viewer
