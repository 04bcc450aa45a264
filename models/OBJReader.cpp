#include "models/OBJReader.h"

#include "models/OBJReaderDetail.h"
#include "models/OBJReaderInput.h"
#include "models/OBJReaderNumbers.h"
#include "models/OBJReaderText.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>

namespace kelo {
namespace {

using detail::CArray;
using detail::OBJReadingLimits;

struct Normal
{
    float components[3];
};

/// The messages about malformed lines.
class Reports
{
public:
    Reports(const char *path, const OBJReadingLimits &limits)
        : _path(limits.escapesMessages ? shownText(path, longestShownPath) : path),
          _escapes(limits.escapesMessages),
          _left(limits.maximumReports)
    {}
    Reports(const Reports &) = delete;
    Reports &operator=(const Reports &) = delete;
    ~Reports()
    {
        if (_unreported != 0)
            std::fprintf(stderr, "and %zu more problems in %s\n", _unreported, _path.c_str());
    }

    [[gnu::cold]] void malformedNumber(std::uint32_t line)
    {
        if (mayReport())
            std::fprintf(stderr, "Malformed number on line %u of %s\n", line, _path.c_str());
    }

    [[gnu::cold]] void invalidSequence(std::uint32_t line, char c)
    {
        if (!mayReport()) return;
        // One write: another thread may be reporting about another file.
        std::string message = "Malformed obj file " + _path + ": Line " + std::to_string(line) +
                              " starts with invalid sequence \"v";
        message += _escapes ? shownText({&c, 1}, 1) : std::string(1, c);
        message += "\"\n";
        std::fwrite(message.data(), 1, message.size(), stderr);
    }

private:
    bool mayReport()
    {
        if (_left == 0) {
            ++_unreported;
            return false;
        }
        --_left;
        return true;
    }

    std::string _path;
    bool _escapes;
    std::size_t _left;
    std::size_t _unreported = 0;
};

/// One call's working arrays and the grammar.
class Reading
{
public:
    Reading(const char *path, const OBJReadingLimits &limits)
        : vertices("vertices", initialCapacity, limits.maximumVertexCount, limits),
          indexes("indexes", initialCapacity, limits.maximumIndexCount, limits),
          _slots("vertices", initialCapacity, limits.maximumVertexCount, limits),
          _normals("normals", initialCapacity, limits.maximumVertexCount, limits),
          _refusesUnendingFaces(limits.refusesUnendingFaces),
          _reports(path, limits)
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
            _reports.invalidSequence(_lineCounter + 1, p == textEnd ? '\0' : *p);
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
            if (p == textEnd && _refusesUnendingFaces)
                throw detail::UnendingFace();
            else if (p == textEnd)
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

    [[gnu::cold]] void reportMalformedNumber() { _reports.malformedNumber(_lineCounter + 1); }

    std::uint32_t _lineCounter = 0;
    obj::CLocale _locale;
    /// Per vertex the number of the normal that it was given last, 0 for none.
    CArray<std::uint32_t> _slots;
    CArray<Normal> _normals;
    bool _refusesUnendingFaces;
    Reports _reports;
};

} // namespace

void detail::readOBJ(const char *path, int file, std::uint64_t size, const OBJReadingLimits &limits,
                     OBJVertex **vertices, std::uint32_t *vertexCount, std::uint32_t **indexes,
                     std::uint32_t *indexCount)
{
    Reading reading(path, limits);
    LineRuns runs(file, size, limits);
    while (runs.advance())
        reading.readLines(runs.begin(), runs.end(), runs.textEnd());
    *vertexCount = static_cast<std::uint32_t>(reading.vertices.count());
    *vertices = reading.vertices.released();
    *indexCount = static_cast<std::uint32_t>(reading.indexes.count());
    *indexes = reading.indexes.released();
}

bool detail::loadOBJFile(const char *path, const OBJReadingLimits &limits, OBJVertex **vertices,
                         std::uint32_t *vertexCount, std::uint32_t **indexes,
                         std::uint32_t *indexCount)
{
    const File file(path);
    if (file.descriptor < 0) return false;
    const std::int64_t size = file.size();
    if (size < 0) return false;
    try {
        readOBJ(path, file.descriptor, static_cast<std::uint64_t>(size), limits, vertices,
                vertexCount, indexes, indexCount);
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
