#include "models/OBJReaderFile.h"

#include "models/OBJReaderDetail.h"
#include "models/OBJReaderInput.h"
#include "models/OBJReaderNumbers.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace kelo {
namespace {

using detail::OBJReadingLimits;

/// Not strerror, whose text another thread may overwrite.
std::string unreadableReason(int error)
{
    return "cannot be read: " +
           (error ? std::generic_category().message(error) : std::string("it became shorter"));
}

MeshFileRefusal notOpened(const std::string &reason)
{
    return {0, "cannot be read: " + reason, false};
}

/// A second walk through the text of a file that is refused, to find out where.
class Search
{
public:
    Search(int file, std::uint64_t size) : _runs(file, size, OBJReadingLimits()) {}

    /// The first face with a vertex number whose index lies outside of `vertexCount` vertices.
    MeshFileRefusal faceOutOfRange(std::uint32_t vertexCount)
    {
        while (nextLine()) {
            const char *p = obj::skippedBlanks(_begin);
            if (*p != 'f') continue;
            for (p = obj::skippedBlanks(p + 1); !obj::isLineEnd(*p); p = obj::skippedBlanks(p)) {
                std::int64_t vertex = 0;
                if (obj::readFaceNumber(p, vertex).any && indexOf(vertex) >= vertexCount)
                    return {_line, "vertex number " + std::to_string(vertex) +
                                       " is out of range: the mesh has " +
                                       std::to_string(vertexCount) +
                                       (vertexCount == 1 ? " vertex" : " vertices")};
                while (!obj::endsNumber(*p))
                    ++p;
            }
        }
        return {0, "a vertex number is out of range"};
    }

    std::size_t lastLine()
    {
        while (nextLine()) {
        }
        return _line;
    }

private:
    /// As the reader counts it, so that 0 and less lie far beyond every vertex.
    static std::uint32_t indexOf(std::int64_t vertex)
    {
        return static_cast<std::uint32_t>(static_cast<std::uint64_t>(vertex) - 1);
    }

    bool nextLine()
    {
        for (;;) {
            if (_next == _end) {
                if (!_runs.advance()) return false;
                _next = _runs.begin();
                _end = _runs.end();
            }
            _begin = _next;
            char *lineEnd = std::find_if(_next, _end, obj::isLineEnd);
            // The line feed of CR LF ends no line of its own, in whichever run it is.
            const bool endsThePairBefore =
                lineEnd == _begin && lineEnd != _end && *lineEnd == '\n' && _endedWithCR;
            _endedWithCR = lineEnd != _end && *lineEnd == '\r';
            _next = lineEnd == _end ? _end : lineEnd + 1;
            if (endsThePairBefore) continue;
            ++_line;
            return true;
        }
    }

    detail::LineRuns _runs;
    char *_begin = nullptr, *_next = nullptr, *_end = nullptr;
    bool _endedWithCR = false;
    std::size_t _line = 0;
};

/// What `find` finds on a second walk through the file; where it cannot be read any more, or there
/// is no memory to do so, `otherwise`.
template<class Find>
MeshFileRefusal foundInFile(const detail::File &file, MeshFileRefusal otherwise, Find &&find)
{
    try {
        const std::int64_t size = file.size(); // goes back to the start
        if (size < 0) return otherwise;
        Search search(file.descriptor, static_cast<std::uint64_t>(size));
        return find(search);
    } catch (const detail::UnreadableBytes &) {
        return otherwise;
    } catch (const detail::TooManyElements &) {
        return otherwise;
    } catch (const std::bad_alloc &) {
        return otherwise;
    }
}

std::string tooManyReason(const detail::TooManyElements &tooMany, const MeshFileLimits &limits)
{
    const std::string what = tooMany.what;
    if (what == "indexes") return tooManyTrianglesReason(limits);
    return what == "normals" ? tooManyNormalsReason(limits) : tooManyVerticesReason(limits);
}

} // namespace

std::optional<MeshFileRefusal> readMeshFile(const std::string &path, const MeshFileLimits &limits,
                                            OBJVertex **vertices, std::uint32_t *vertexCount,
                                            std::uint32_t **indexes, std::uint32_t *indexCount)
{
    const detail::File file(path.c_str());
    if (file.descriptor < 0) return notOpened(std::generic_category().message(errno));
    if (!file.isRegular()) return notOpened("not a regular file");
    const std::int64_t size = file.size();
    if (size < 0) return notOpened(std::generic_category().message(errno));
    if (static_cast<std::uint64_t>(size) > limits.byteCount)
        return MeshFileRefusal{0, tooManyBytesReason(static_cast<std::uint64_t>(size), limits)};

    const OBJReadingLimits reading{.maximumVertexCount = limits.vertexCount,
                                   .maximumIndexCount = 3 * limits.triangleCount,
                                   .refusesUnendingFaces = true,
                                   .escapesMessages = true,
                                   .maximumReports = limits.reportedLineCount};
    OBJVertex *readVertices = nullptr;
    std::uint32_t *readIndexes = nullptr;
    std::uint32_t readVertexCount = 0, readIndexCount = 0;
    try {
        detail::readOBJ(path.c_str(), file.descriptor, static_cast<std::uint64_t>(size), reading,
                        &readVertices, &readVertexCount, &readIndexes, &readIndexCount);
    } catch (const std::bad_alloc &) {
        return MeshFileRefusal{0, "not enough memory"};
    } catch (const detail::TooManyElements &tooMany) {
        return MeshFileRefusal{0, tooManyReason(tooMany, limits)};
    } catch (const detail::UnreadableBytes &failure) {
        return MeshFileRefusal{0, unreadableReason(failure.error)};
    } catch (const detail::UnendingFace &) {
        const std::string reason = "no line break at the end of the file: the face never ends";
        return foundInFile(file, {0, reason}, [&](Search &search) {
            return MeshFileRefusal{search.lastLine(), reason};
        });
    }

    const auto largest = std::max_element(readIndexes, readIndexes + readIndexCount);
    if (largest != readIndexes + readIndexCount && *largest >= readVertexCount) {
        std::free(readVertices);
        std::free(readIndexes);
        return foundInFile(file, {0, "a vertex number is out of range"},
                           [&](Search &search) { return search.faceOutOfRange(readVertexCount); });
    }
    *vertices = readVertices;
    *vertexCount = readVertexCount;
    *indexes = readIndexes;
    *indexCount = readIndexCount;
    return std::nullopt;
}

} // namespace kelo
