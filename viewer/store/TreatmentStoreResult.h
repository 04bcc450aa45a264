#pragma once

#include <QString>

#include <utility>
#include <variant>

namespace viewer {

/// Why a database could not be read or written.
enum class StoreProblem {
    Locked,       ///< another program is writing; worth another try
    ReadOnly,     ///< it may be read, but not written
    DiskFull,     ///< no room for what was to be written
    NotReachable, ///< no such folder, no permission, or the device failed
    Damaged,      ///< a database whose content does not hold together
    NotADatabase, ///< a file of another kind
    Foreign,      ///< a database of another program
    NewerVersion, ///< written by a newer version of this program
    NoSuchRecord, ///< the patient or treatment that was named is not there
    BadRecord,    ///< what was to be stored cannot be: a note without a date, two of one date
    Other,
};

struct StoreFailure
{
    StoreProblem problem = StoreProblem::Other;
    QString sentence; ///< for the user; names the file
};

/// A value, or why there is none.
template<class Value>
class StoreResult
{
public:
    StoreResult(Value value) : content_(std::move(value)) {}
    StoreResult(StoreFailure failure) : content_(std::move(failure)) {}

    bool good() const { return std::holds_alternative<Value>(content_); }
    explicit operator bool() const { return good(); }
    /// The value; only of a good result, otherwise std::bad_variant_access.
    Value &value() & { return std::get<Value>(content_); }
    const Value &value() const & { return std::get<Value>(content_); }
    /// Of a result that is about to end: a value of its own, so that a loop may walk over it.
    Value value() && { return std::get<Value>(std::move(content_)); }
    /// Only of a result that is not good.
    const StoreFailure &failure() const { return std::get<StoreFailure>(content_); }
    /// The failure's sentence; empty when all is well.
    QString sentence() const { return good() ? QString() : failure().sentence; }

private:
    std::variant<Value, StoreFailure> content_;
};

/// Of an operation that gives nothing back.
using StoreOutcome = StoreResult<std::monostate>;

} // namespace viewer
