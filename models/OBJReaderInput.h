#pragma once

#include "models/OBJReaderDetail.h"
#include "models/OBJReaderNumbers.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

/// Where the OBJ reader's text comes from and its arrays live.

namespace kelo::detail {

/// A count would pass its maximum.
struct TooManyElements
{
    const char *what; ///< "vertices", "normals", "indexes"
};

/// The file's bytes cannot be had; `error` is an error number, 0 for a file that ended early.
struct UnreadableBytes
{
    int error;
};

/// A face on a last line without a line end, where that is refused.
struct UnendingFace
{};

/// A growing array in memory of the C allocator, because the caller releases it with `free`.
template<class Element>
class CArray
{
public:
    CArray(const char *what, std::size_t capacity, std::size_t maximum,
           const OBJReadingLimits &limits)
        : _what(what),
          _maximum(maximum),
          _reallocate(limits.reallocate ? limits.reallocate : std::realloc)
    {
        setCapacity(std::min(capacity, maximum));
    }
    CArray(const CArray &) = delete;
    CArray &operator=(const CArray &) = delete;
    ~CArray() { std::free(_elements); }

    Element &operator[](std::size_t index) { return _elements[index]; }
    Element *data() { return _elements; }
    std::size_t count() const { return _count; }
    std::size_t capacity() const { return _capacity; }

    /// The capacity becomes the larger of its double and `needed`.
    void grow(std::size_t needed)
    {
        if (needed > _maximum) throw TooManyElements{_what};
        setCapacity(std::min(std::max(needed, 2 * _capacity), _maximum));
    }

    /// Appends where room was made before.
    void appendInRoom(const Element &element) { _elements[_count++] = element; }

    void append(const Element &element)
    {
        if (_count == _capacity) {
            const Element kept = element; // it may lie in the memory that growing gives back
            grow(_count + 1);
            appendInRoom(kept);
        } else {
            appendInRoom(element);
        }
    }

    /// Hands the memory over, cut to what is used.
    Element *released()
    {
        if (_count != 0)
            if (void *cut = _reallocate(_elements, _count * sizeof(Element)))
                _elements = static_cast<Element *>(cut);
        return std::exchange(_elements, nullptr);
    }

private:
    void setCapacity(std::size_t capacity)
    {
        if (capacity > SIZE_MAX / sizeof(Element)) throw std::bad_alloc();
        // One byte at least: a null for no bytes would look like a failure.
        void *memory = _reallocate(_elements, std::max<std::size_t>(capacity * sizeof(Element), 1));
        if (!memory) throw std::bad_alloc();
        _elements = static_cast<Element *>(memory);
        _capacity = capacity;
    }

    Element *_elements = nullptr;
    std::size_t _count = 0;
    std::size_t _capacity = 0;
    const char *_what;
    std::size_t _maximum;
    void *(*_reallocate)(void *, std::size_t);
};

/// The text of an open file in runs of whole lines, through one buffer.
class LineRuns
{
public:
    LineRuns(int file, std::uint64_t size, const OBJReadingLimits &limits)
        : _file(file),
          _unread(size),
          _buffer("bytes", std::max<std::size_t>(limits.blockSize, 4) + 1, SIZE_MAX / 2, limits)
    {}

    /// Goes on to the next run; false at the end of the text.
    bool advance()
    {
        const std::size_t rest = _used - _runEnd;
        std::memmove(_buffer.data(), _buffer.data() + _runEnd, rest);
        _used = rest;
        _runEnd = 0;
        while (_unread != 0) {
            if (_used + 1 == _buffer.capacity()) makeRoom();
            const std::size_t searched = _used;
            readBlock();
            _runEnd = endOfLastLine(searched);
            if (_runEnd != 0) return true;
        }
        if (_used == 0) return false;
        _unterminated = true;
        _runEnd = _used;
        _buffer[_used] = '\n'; // what the parser stops at
        return true;
    }

    char *begin() { return _buffer.data(); }
    char *end() { return _buffer.data() + _runEnd; }

    /// The end of the text, if its last line has no line end and is in this run; otherwise null.
    const char *textEnd() { return _unterminated ? end() : nullptr; }

private:
    void readBlock()
    {
        const std::uint64_t room = _buffer.capacity() - 1 - _used;
        const auto wanted = static_cast<std::size_t>(std::min(room, _unread));
        ssize_t got;
        do
            got = ::read(_file, _buffer.data() + _used, wanted);
        while (got < 0 && errno == EINTR);
        if (got <= 0) throw UnreadableBytes{got < 0 ? errno : 0};
        _used += static_cast<std::size_t>(got);
        _unread -= static_cast<std::size_t>(got);
    }

    /// Where the last whole line ends; 0 if no line ends at `searched` or after it.
    std::size_t endOfLastLine(std::size_t searched)
    {
        std::size_t end = 0;
        for (const char lineEnd : {'\n', '\r'}) {
            const std::size_t from = std::max(searched, end);
            const void *found = ::memrchr(&_buffer[from], lineEnd, _used - from);
            if (found) end = std::size_t(static_cast<const char *>(found) - _buffer.data()) + 1;
        }
        return end;
    }

    /// A line fills the buffer. Blanks before it and the inside of lines that are skipped anyway
    /// are dropped, however long they are; for the rest the buffer grows.
    void makeRoom()
    {
        char *text = _buffer.data();
        std::size_t blanks = 0;
        while (blanks < _used && obj::isBlank(text[blanks]))
            ++blanks;
        std::memmove(text, text + blanks, _used - blanks);
        _used -= blanks;
        if (blanks != 0) return;
        const bool skipped = text[0] != 'f' && (text[0] != 'v' || text[1] == 't');
        if (skipped)
            _used = 2;
        else
            _buffer.grow(_buffer.capacity() + 1);
    }

    int _file;
    std::uint64_t _unread;
    CArray<char> _buffer;
    std::size_t _used = 0;
    std::size_t _runEnd = 0;
    bool _unterminated = false;
};

/// An open file that closes itself.
class File
{
public:
    /// Not blocking, or the opening of a pipe would wait for its writer.
    explicit File(const char *path)
        : descriptor(::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK))
    {}
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    ~File()
    {
        if (descriptor >= 0) ::close(descriptor);
    }

    bool isRegular() const
    {
        struct stat status;
        return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    }

    /// The size in bytes with the reading position back at the start; negative if there is none.
    std::int64_t size() const
    {
        struct stat status;
        // Some file systems give directories a size.
        if (::fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) return -1;
        const off_t size = ::lseek(descriptor, 0, SEEK_END);
        return size >= 0 && ::lseek(descriptor, 0, SEEK_SET) == 0 ? std::int64_t(size) : -1;
    }

    const int descriptor;
};

} // namespace kelo::detail
