#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <cstddef>
#include <string>
#include <utility>

namespace kelo::test {

/// Counts how often the files of a folder, which must be there, are written: made or replaced by a
/// finished file, or closed after something was written into them. Opening one for writing alone
/// does not count; making one and then writing into it counts twice.
class FileWrites
{
public:
    explicit FileWrites(const std::string &folder) : notifier_(inotify_init1(IN_NONBLOCK))
    {
        inotify_add_watch(notifier_, folder.c_str(),
                          IN_CREATE | IN_MOVED_TO | IN_MODIFY | IN_CLOSE_WRITE);
    }
    ~FileWrites() { close(notifier_); }
    FileWrites(const FileWrites &) = delete;
    FileWrites &operator=(const FileWrites &) = delete;

    /// Of the file with this name, since the last call.
    int countOf(const std::string &name)
    {
        int count = 0;
        alignas(inotify_event) char buffer[4096];
        for (ssize_t length = read(notifier_, buffer, sizeof buffer); length > 0;
             length = read(notifier_, buffer, sizeof buffer)) {
            for (ssize_t place = 0; place < length;) {
                const auto &event = *reinterpret_cast<const inotify_event *>(buffer + place);
                if (event.len > 0 && name == event.name && isWrite(event)) ++count;
                place += static_cast<ssize_t>(sizeof event + event.len);
            }
        }
        return count;
    }

private:
    bool isWrite(const inotify_event &event)
    {
        if (event.mask & (IN_CREATE | IN_MOVED_TO)) return true;
        if (event.mask & IN_MODIFY) wasModified_ = true;
        return (event.mask & IN_CLOSE_WRITE) && std::exchange(wasModified_, false);
    }

    int notifier_;
    bool wasModified_ = false;
};

} // namespace kelo::test
