#include "viewer/store/ElasticMerge.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace viewer {
namespace {

using Records = std::vector<ElasticRecord>;
using Sequence = std::vector<std::string>;

/// Orders elastics by their values, so that equal ones are found without comparing all with all.
struct ByValue
{
    bool operator()(const ElasticRecord &first, const ElasticRecord &second) const
    {
        return tied(first) < tied(second);
    }
    static std::tuple<const Sequence &, const std::optional<long> &, const std::optional<long> &>
    tied(const ElasticRecord &record)
    {
        return {record.bracketSequence, record.elasticsConfigTypeID, record.elasticsSizeTypeID};
    }
};

/// Elastics, each as often as it occurs.
class Bag
{
public:
    explicit Bag(const Records &records = {})
    {
        for (const ElasticRecord &record : records)
            ++counts_[record];
    }
    /// Takes one out; false when there is none.
    bool take(const ElasticRecord &record)
    {
        const auto found = counts_.find(record);
        if (found == counts_.end()) return false;
        if (--found->second == 0) counts_.erase(found);
        return true;
    }

private:
    std::map<ElasticRecord, std::size_t, ByValue> counts_;
};

/// Those of `records` that `others` does not have, in their order.
Records recordsWithout(const Records &records, const Records &others)
{
    Bag known(others);
    Records left;
    for (const ElasticRecord &record : records) {
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
    ElasticRecord before;
    std::optional<ElasticRecord> after;
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
    for (const ElasticRecord &gone : recordsWithout(before, after)) {
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
ElasticRecord combined(const ElasticRecord &before, const ElasticRecord &mine,
                       const ElasticRecord &theirs)
{
    ElasticRecord both = mine;
    if (mine.elasticsConfigTypeID == before.elasticsConfigTypeID)
        both.elasticsConfigTypeID = theirs.elasticsConfigTypeID;
    if (mine.elasticsSizeTypeID == before.elasticsSizeTypeID)
        both.elasticsSizeTypeID = theirs.elasticsSizeTypeID;
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
        const std::optional<ElasticRecord> theirs = std::move(changed->second.back());
        changed->second.pop_back();
        if (!change.after) return; // what they made of it stays
        if (theirs)
            replace(*theirs, combined(change.before, *change.after, *theirs));
        else
            slots_.emplace_back(change.after);
    }

    void place(const ElasticRecord &record)
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
    void replace(const ElasticRecord &record, const std::optional<ElasticRecord> &after)
    {
        const auto found = positions_.find(record);
        if (found == positions_.end() || found->second.empty()) return;
        slots_[found->second.back()] = after;
        found->second.pop_back();
    }

    std::vector<std::optional<ElasticRecord>> slots_;
    std::map<ElasticRecord, std::vector<std::size_t>, ByValue> positions_;
    std::map<ElasticRecord, std::vector<std::optional<ElasticRecord>>, ByValue> changedByOthers_;
    Bag placedByOthers_;
};

} // namespace

std::vector<ElasticRecord> mergedElastics(const std::vector<ElasticRecord> &before,
                                          const std::vector<ElasticRecord> &after,
                                          const std::vector<ElasticRecord> &stored)
{
    if (stored == before) return after;
    if (stored == after) return stored;
    const Changes mine = changesBetween(before, after);
    Merge merge(before, stored);
    for (const Change &change : mine.changes)
        merge.apply(change);
    for (const ElasticRecord &record : mine.placed)
        merge.place(record);
    return std::move(merge).records();
}

} // namespace viewer
