#include "models/OBJReader.h"

#include "models/OBJReaderDetail.h"
#include "models/OBJReaderNumbers.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kelo {
namespace {

using detail::OBJReadingLimits;

/// A count would pass what the outputs can tell.
struct TooManyElements
{};

/// The file's bytes cannot be had; `error` is an error number, 0 for a file that ended early.
struct UnreadableBytes
{
    int error;
};

/// A growing array in memory of the C allocator, because the caller releases it with `free`.
template<class Element>
class CArray
{
public:
    CArray(std::size_t capacity, std::size_t maximum, const OBJReadingLimits &limits)
        : _maximum(maximum), _reallocate(limits.reallocate ? limits.reallocate : std::realloc)
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
        if (needed > _maximum) throw TooManyElements();
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
          _buffer(std::max<std::size_t>(limits.blockSize, 4) + 1, SIZE_MAX / 2, limits)
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

    /// Where the last whole line ends; 0 if no line ends at `searched` or behind it.
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

struct Normal
{
    float components[3];
};

/// One call's working arrays and the grammar.
class Reading
{
public:
    Reading(const char *path, const OBJReadingLimits &limits)
        : vertices(initialCapacity, limits.maximumCount, limits),
          indexes(initialCapacity, limits.maximumCount, limits),
          _path(path),
          _slots(initialCapacity, limits.maximumCount, limits),
          _normals(initialCapacity, limits.maximumCount, limits)
    {}

    /// Reads the lines [p, end). `textEnd` is `end` if the last of them has no line end.
    void readLines(char *p, const char *end, const char *textEnd)
    {
        while (p < end) {
            p = readLine(obj::skippedBlanks(p), textEnd);
            while (!obj::isLineEnd(*p))
                ++p;
            ++p;
            ++_lineCounter;
        }
    }

    CArray<OBJVertex> vertices;
    CArray<std::uint32_t> indexes;

private:
    static constexpr std::size_t initialCapacity = 1024;

    /// Returns a place in the line or at its end.
    char *readLine(char *p, const char *textEnd)
    {
        if (*p == 'f') return readFace(p + 1, textEnd);
        if (*p != 'v') return p;
        ++p;
        if (obj::isBlank(*p)) {
            OBJVertex vertex{};
            if (readVector(p, vertex.position)) appendVertex(vertex, 0);
        } else if (*p == 'n') {
            ++p;
            Normal normal;
            if (readVector(p, normal.components)) _normals.append(normal);
        } else if (*p != 't') {
            // At the end of the text the next character is the zero that ends it.
            std::fprintf(stderr,
                         "Malformed obj file %s: Line %u starts with invalid sequence \"v%c\"\n",
                         _path, _lineCounter + 1, p == textEnd ? '\0' : *p);
        }
        return p;
    }

    /// False, with a message, when one of the three is no number.
    bool readVector(char *&p, float (&components)[3])
    {
        for (float &component : components) {
            p = obj::skippedBlanks(p);
            if (!obj::readFloat(p, component, _locale).any) {
                reportMalformedNumber();
                return false;
            }
        }
        return true;
    }

    char *readFace(char *p, const char *textEnd)
    {
        const std::size_t faceStart = indexes.count();
        while (!obj::isLineEnd(*p) || p == textEnd) {
            // A face that runs into the end of the text has no end: number after number is missing.
            if (p == textEnd)
                reportMalformedNumber();
            else
                p = readFaceVertex(obj::skippedBlanks(p), faceStart);
        }
        return p;
    }

    char *readFaceVertex(char *p, std::size_t faceStart)
    {
        std::int64_t vertex = 0;
        if (!obj::readFaceNumber(p, vertex).any) {
            reportMalformedNumber();
            while (!obj::endsNumber(*p))
                ++p;
            return p;
        }
        makeRoomForFaceVertex(faceStart);
        if (*p == '/') {
            ++p;
            while (!obj::endsFaceNumber(*p))
                ++p; // the texture number
            if (*p == '/') {
                ++p;
                std::int64_t normal = 0;
                if (!obj::readFaceNumber(p, normal).any)
                    reportMalformedNumber();
                else
                    vertex = vertexWithNormal(vertex, normal);
            }
        }
        // Unsigned: the smallest number wraps around instead of overflowing.
        indexes.appendInRoom(static_cast<std::uint32_t>(static_cast<std::uint64_t>(vertex) - 1));
        return obj::skippedBlanks(p);
    }

    /// From the fourth vertex on, a face's vertex also repeats two earlier ones, the first of the
    /// face and the one before it, for the next triangle of the fan.
    void makeRoomForFaceVertex(std::size_t faceStart)
    {
        const std::size_t count = indexes.count();
        if (count - faceStart < 3) {
            if (count == indexes.capacity()) indexes.grow(count + 1);
            return;
        }
        if (count + 3 >= indexes.capacity()) indexes.grow(count + 3);
        const std::uint32_t first = indexes[faceStart];
        const std::uint32_t previous = indexes[count - 1];
        indexes.appendInRoom(first);
        indexes.appendInRoom(previous);
    }

    /// Gives the vertex its normal, or a copy of it if it has another one; the number of the vertex
    /// that carries the normal. Numbers that name nothing that was read change nothing.
    std::int64_t vertexWithNormal(std::int64_t vertex, std::int64_t normal)
    {
        if (normal < 1 || static_cast<std::uint64_t>(normal) > _normals.count()) return vertex;
        if (vertex < 1 || static_cast<std::uint64_t>(vertex) > vertices.count()) return vertex;
        const auto number = static_cast<std::uint32_t>(normal);
        const auto at = static_cast<std::size_t>(vertex - 1);
        const Normal &assigned = _normals[number - 1];
        if (_slots[at] == number) return vertex;
        if (_slots[at] == 0) {
            _slots[at] = number;
            std::memcpy(vertices[at].normal, assigned.components, sizeof assigned.components);
            return vertex;
        }
        OBJVertex copy = vertices[at];
        std::memcpy(copy.normal, assigned.components, sizeof assigned.components);
        appendVertex(copy, number);
        return static_cast<std::int64_t>(vertices.count());
    }

    void appendVertex(const OBJVertex &vertex, std::uint32_t slot)
    {
        vertices.append(vertex);
        _slots.append(slot);
    }

    [[gnu::cold]] void reportMalformedNumber() const
    {
        std::fprintf(stderr, "Malformed number on line %u of %s\n", _lineCounter + 1, _path);
    }

    const char *_path;
    std::uint32_t _lineCounter = 0;
    obj::CLocale _locale;
    /// Per vertex the number of the normal that it was given last, 0 for none.
    CArray<std::uint32_t> _slots;
    CArray<Normal> _normals;
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

} // namespace

bool detail::loadOBJFile(const char *path, const OBJReadingLimits &limits, OBJVertex **vertices,
                         std::uint32_t *vertexCount, std::uint32_t **indexes,
                         std::uint32_t *indexCount)
{
    const File file(path);
    if (file.descriptor < 0) return false;
    const std::int64_t size = file.size();
    if (size < 0) return false;
    try {
        Reading reading(path, limits);
        LineRuns runs(file.descriptor, static_cast<std::uint64_t>(size), limits);
        while (runs.advance())
            reading.readLines(runs.begin(), runs.end(), runs.textEnd());
        *vertexCount = static_cast<std::uint32_t>(reading.vertices.count());
        *vertices = reading.vertices.released();
        *indexCount = static_cast<std::uint32_t>(reading.indexes.count());
        *indexes = reading.indexes.released();
        return true;
    } catch (const std::bad_alloc &) {
        std::fprintf(stderr, "Not enough memory to read %s\n", path);
    } catch (const TooManyElements &) {
        std::fprintf(stderr, "Too many vertices, normals or indexes in %s\n", path);
    } catch (const UnreadableBytes &failure) {
        std::fprintf(stderr, "Cannot read %s: %s\n", path,
                     failure.error ? std::strerror(failure.error) : "it became shorter");
    }
    return false;
}

bool loadOBJFile(const char *path, OBJVertex **vertices, std::uint32_t *vertexCount,
                 std::uint32_t **indexes, std::uint32_t *indexCount)
{
    return detail::loadOBJFile(path, {}, vertices, vertexCount, indexes, indexCount);
}

} // namespace kelo
