#pragma once

#include "base/Export.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

/// Small settings of the user, by key. The standard store is the desktop's settings of the running
/// application (its organisation and name; "keloOpenGL" for what the application does not say);
/// what is set is on disk when the call returns, or when the batch of calls does. Tests replace it
/// by a store in memory.
///
/// A key holds one value, bytes or text or a number; setting one of another kind replaces it.
/// Any text, the empty one included, is a key. A number can be read as text (the shortest decimal
/// that gives the same number again), and text that is a number from end to end as a number, both
/// without regard to the locale. Main thread only.
class KELO_EXPORT UserDefaults
{
public:
    using Bytes = std::vector<std::uint8_t>;

    virtual ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    static UserDefaults &standardUserDefaults();
    /// Replaces the standard store and returns the one before it (null when it was not made yet).
    static std::unique_ptr<UserDefaults>
    setStandardUserDefaults(std::unique_ptr<UserDefaults> store);
    /// An empty store that lives in memory only.
    static std::unique_ptr<UserDefaults> inMemory();

    virtual void setData_forKey(const Bytes &data, const std::string &key) = 0;
    /// floatForKey gives the same value again, bit by bit (any not-a-number as some not-a-number).
    virtual void setFloat_forKey(float value, const std::string &key) = 0;
    virtual void setString_forKey(const std::string &value, const std::string &key) = 0;
    virtual void removeObjectForKey(const std::string &key) = 0;

    /// Runs `changes`, which sets and removes any number of values, and writes them all at once:
    /// every write replaces the whole file and waits for the disk. Inside, the new values can be
    /// read already. When `changes` throws, what it has set until then is written. A batch inside
    /// of another is part of that one. The base, for stores that write nothing, only runs
    /// `changes`.
    virtual void performBatch(const std::function<void()> &changes);

    /// `nullopt` when no bytes are stored under the key.
    virtual std::optional<Bytes> dataForKey(const std::string &key) const = 0;
    /// 0 when nothing, or no number, is stored under the key.
    virtual float floatForKey(const std::string &key) const = 0;
    /// `nullopt` when no text is stored under the key.
    virtual std::optional<std::string> stringForKey(const std::string &key) const = 0;

protected:
    UserDefaults() = default;
};

} // namespace kelo
