#include "tools/meshcheck/MeshCheck.h"

#include "models/OBJReaderNumbers.h"
#include "models/OBJReaderText.h"
#include "tools/meshcheck/MeshShape.h"
#include "tools/meshcheck/MeshSurface.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>

namespace kelo {
namespace {

/// The token in quotation marks, shortened and without characters that would tear the report.
std::string inQuotes(std::string_view token)
{
    return '"' + shownText(token, longestShownToken) + '"';
}

/// The lines of one text, as the reader understands them.
class TextCheck
{
public:
    /// `text` ends with a line break that is not in the file, so that every token ends.
    TextCheck(std::string text, const std::string &file, Strictness strictness,
              const MeshFileLimits &limits)
        : _file(file), _strictness(strictness), _limits(limits), _text(std::move(text))
    {
        char *const end = _text.data() + _text.size() - 1;
        _endsWithinLine = end != _text.data() && !obj::isLineEnd(end[-1]);
        char *p = _text.data();
        for (; p < end && !_isTooLarge; ++_line) {
            char *lineEnd = std::find_if(p, end, obj::isLineEnd);
            checkLine(obj::skippedBlanks(p), lineEnd == end && _endsWithinLine);
            p = lineEnd + (lineEnd + 1 < end && lineEnd[0] == '\r' && lineEnd[1] == '\n' ? 2 : 1);
        }
        if (!_isTooLarge) checkWhole();
    }

    std::vector<MeshProblem> problems;
    std::size_t unlistedCount = 0;

private:
    void report(std::size_t line, std::string reason)
    {
        if (problems.size() < mostListedProblems)
            problems.push_back({_file, line, std::move(reason)});
        else
            ++unlistedCount;
    }
    void report(std::string reason) { report(_line, std::move(reason)); }

    /// As the reader, which makes no difference between the vertices of the file and its copies.
    void checkCounts()
    {
        if (_shape.positions.size() + _copyCount > _limits.vertexCount)
            tooLarge(tooManyVerticesReason(_limits));
        else if (_shape.normals.size() > _limits.vertexCount)
            tooLarge(tooManyNormalsReason(_limits));
        else if (_triangleCount > _limits.triangleCount)
            tooLarge(tooManyTrianglesReason(_limits));
    }
    void tooLarge(std::string reason)
    {
        report(0, std::move(reason));
        _isTooLarge = true;
    }
    void reportAll(ShapeProblems found)
    {
        for (ShapeProblem &problem : found.listed)
            report(problem.line, std::move(problem.reason));
        unlistedCount += found.unlistedCount;
    }

    void checkLine(char *p, bool isCut)
    {
        if (*p == 'f') {
            checkFace(p + 1);
            if (isCut) report("no line break at the end of the file: the face never ends");
            return;
        }
        if (isCut) report("no line break at the end of the file");
        if (*p != 'v') return;
        ++p;
        std::array<float, 3> numbers{};
        if (obj::isBlank(*p)) {
            if (checkNumbers(p, numbers)) addPosition(numbers);
        } else if (*p == 'n') {
            if (checkNumbers(p + 1, numbers)) _shape.normals.push_back(numbers);
            checkCounts();
        } else if (*p != 't') {
            report("unknown sequence " +
                   (obj::isLineEnd(*p) ? inQuotes("v") : inQuotes(std::string{'v', *p})));
        }
    }

    /// False when the reader drops the line.
    bool checkNumbers(char *p, std::array<float, 3> &numbers)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            p = obj::skippedBlanks(p);
            const char *token = p;
            const obj::Conversion conversion = obj::readFloat(p, numbers[i], _locale);
            const std::string_view written(token, std::size_t(p - token));
            if (written.empty()) {
                report("malformed number: " + std::to_string(i) + " numbers instead of 3");
                return false;
            }
            if (!conversion.whole) report("malformed number " + inQuotes(written));
            if (!conversion.any) return false;
            if (!std::isfinite(numbers[i])) report("number is not finite: " + inQuotes(written));
        }
        return true;
    }

    void addPosition(const std::array<float, 3> &position)
    {
        _shape.positions.push_back(position);
        checkCounts();
        if (_copyCount != 0 && !_renumberingReported) {
            _renumberingReported = true;
            report(
                "position behind faces that gave vertices a second normal: the reader numbers it " +
                std::to_string(_shape.positions.size() + _copyCount) + " instead of " +
                std::to_string(_shape.positions.size()));
        }
    }

    void checkFace(char *p)
    {
        const std::size_t firstCorner = _shape.corners.size();
        std::size_t vertexCount = 0;
        for (p = obj::skippedBlanks(p); !obj::isLineEnd(*p); p = obj::skippedBlanks(p)) {
            const char *token = p;
            while (!obj::endsNumber(*p))
                ++p;
            checkCorner({token, std::size_t(p - token)});
            ++vertexCount;
            // One line may be the whole file.
            if (vertexCount > 2 && _triangleCount + vertexCount - 2 > _limits.triangleCount) break;
        }
        if (vertexCount < 3)
            report("face of " + std::to_string(vertexCount) +
                   (vertexCount == 1 ? " vertex" : " vertices"));
        else
            _shape.faces.push_back({firstCorner, _line});
        ++_faceCount;
        _triangleCount += vertexCount < 3 ? 0 : vertexCount - 2;
        checkCounts();
    }

    /// `vertex`, `vertex/texture`, `vertex//normal` or `vertex/texture/normal`
    void checkCorner(std::string_view token)
    {
        const std::size_t slash = token.find('/');
        std::int64_t vertex = 0;
        const bool hasVertex = checkReference(token.substr(0, slash), token, "vertex",
                                              _shape.positions.size(), vertex);
        if (hasVertex) {
            _shape.corners.push_back(static_cast<std::uint32_t>(vertex - 1));
            _shape.normalOf.push_back(0);
        }
        if (slash == std::string_view::npos) return;
        const std::size_t second = token.find('/', slash + 1);
        if (second == std::string_view::npos) return;
        std::int64_t normal = 0;
        if (checkReference(token.substr(second + 1), token, "normal", _shape.normals.size(),
                           normal) &&
            hasVertex) {
            _shape.normalOf.back() = static_cast<std::uint32_t>(normal);
            assignNormal(static_cast<std::size_t>(vertex - 1), normal);
        }
    }

    /// Whether `number` is the number of something that was read.
    bool checkReference(std::string_view number, std::string_view token, const char *kind,
                        std::size_t count, std::int64_t &value)
    {
        if (!obj::convertIntegerToken(number.data(), number.data() + number.size(), value).whole) {
            report(std::string("malformed ") + kind + " number in " + inQuotes(token));
            return false;
        }
        const std::string what = std::string(kind) + " number " + std::to_string(value);
        if (value == 0)
            report(what + ": numbers begin with 1");
        else if (value < 0)
            report("negative " + what + ": relative numbers are not supported");
        else if (static_cast<std::uint64_t>(value) > count)
            report(what + " is out of range: " + std::to_string(count) + " read so far");
        else
            return true;
        return false;
    }

    /// Counts the copies that the reader makes of vertices with a second normal.
    void assignNormal(std::size_t vertex, std::int64_t normal)
    {
        _slots.resize(_shape.positions.size());
        if (_slots[vertex] == 0)
            _slots[vertex] = normal;
        else if (_slots[vertex] != normal)
            ++_copyCount;
    }

    void checkWhole()
    {
        if (_faceCount == 0)
            report(0, _shape.positions.empty() ? "the mesh is empty: no vertices and no faces"
                                               : "the mesh is empty: no faces");
        // With faces missing or misread, every neighbour would count as a hole.
        if (std::all_of(problems.begin(), problems.end(), [](const MeshProblem &problem) {
                return problem.reason.starts_with("no line break");
            }))
            reportAll(shapeProblems(_shape));
        if (_strictness == Strictness::strict && problems.empty())
            reportAll(surfaceProblems(_shape));
        std::stable_sort(
            problems.begin(), problems.end(),
            [](const MeshProblem &a, const MeshProblem &b) { return a.line < b.line; });
    }

    const std::string &_file;
    Strictness _strictness;
    MeshFileLimits _limits;
    std::string _text;
    bool _endsWithinLine = false;
    std::size_t _line = 1;
    obj::CLocale _locale;
    MeshShape _shape;
    std::vector<std::int64_t> _slots; ///< per position the normal that it has in the reader
    std::size_t _faceCount = 0, _triangleCount = 0, _copyCount = 0;
    bool _isTooLarge = false;
    bool _renumberingReported = false;
};

} // namespace

namespace {

/// `text` ends with a line break that is not the file's.
std::vector<MeshProblem> checkTerminatedText(std::string text, const std::string &file,
                                             Strictness strictness, std::size_t *unlistedCount,
                                             const MeshFileLimits &limits)
{
    TextCheck check(std::move(text), file, strictness, limits);
    if (unlistedCount) *unlistedCount = check.unlistedCount;
    return std::move(check.problems);
}

} // namespace

std::vector<MeshProblem> checkMeshText(std::string_view text, const std::string &file,
                                       Strictness strictness, std::size_t *unlistedCount,
                                       const MeshFileLimits &limits)
{
    std::string terminated;
    terminated.reserve(text.size() + 1);
    terminated.append(text).push_back('\n');
    return checkTerminatedText(std::move(terminated), file, strictness, unlistedCount, limits);
}

std::vector<MeshProblem> checkMeshFile(const std::string &path, Strictness strictness,
                                       std::size_t *unlistedCount, const MeshFileLimits &limits)
{
    namespace fs = std::filesystem;
    if (unlistedCount) *unlistedCount = 0;
    const auto refused = [&path](const std::string &why) {
        return std::vector<MeshProblem>{{path, 0, why}};
    };
    const auto unreadable = [&refused](const std::string &why) {
        return refused("cannot be read: " + why);
    };
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error) return unreadable(error.message());
    if (!fs::is_regular_file(status)) return unreadable("not a regular file");
    try {
        std::ifstream stream(path, std::ios::binary);
        if (!stream) return unreadable(std::strerror(errno));
        const std::uintmax_t size = fs::file_size(path);
        if (size > limits.byteCount) return refused(tooManyBytesReason(size, limits));
        std::string text(static_cast<std::size_t>(size) + 1, '\n');
        stream.read(text.data(), static_cast<std::streamsize>(size));
        if (stream.gcount() != static_cast<std::streamsize>(size))
            return unreadable("it became shorter");
        return checkTerminatedText(std::move(text), path, strictness, unlistedCount, limits);
    } catch (const std::bad_alloc &) {
        return unreadable("not enough memory");
    } catch (const std::exception &failure) {
        return unreadable(failure.what());
    }
}

std::string sentenceOf(const MeshProblem &problem)
{
    std::string text = shownText(problem.file, longestShownPath);
    if (problem.line != 0) text += ':' + std::to_string(problem.line);
    return text + ": " + problem.reason;
}

std::vector<std::string> meshFilesAt(const std::string &path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    if (!fs::is_directory(path, error)) return {path};
    std::vector<std::string> files;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(path, options, error), end; entry != end;
         entry.increment(error)) {
        std::string ending = entry->path().extension().string();
        std::transform(ending.begin(), ending.end(), ending.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (ending == ".obj") files.push_back(entry->path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace kelo
