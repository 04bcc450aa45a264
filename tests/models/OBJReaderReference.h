#pragma once

#include "models/OBJReader.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelo::test {

/// What a file says, as the tests compare it.
struct ReadMesh
{
    std::vector<OBJVertex> vertices;
    std::vector<std::uint32_t> indexes;
    std::string messages;
};

/// Bit for bit, so that a NaN equals itself and -0 differs from 0.
inline bool sameArrays(const ReadMesh &a, const ReadMesh &b)
{
    return a.vertices.size() == b.vertices.size() && a.indexes == b.indexes &&
           (a.vertices.empty() || std::memcmp(a.vertices.data(), b.vertices.data(),
                                              a.vertices.size() * sizeof(OBJVertex)) == 0);
}

/// Whether the reader never returns from this text: it ends within a face line, that is, the first
/// character that is neither space nor tab after the last line end is an `f`.
inline bool isEndlessOBJ(std::string_view text)
{
    const std::size_t lineEnd = text.find_last_of("\r\n");
    const std::string_view last =
        lineEnd == std::string_view::npos ? text : text.substr(lineEnd + 1);
    const std::size_t first = last.find_first_not_of(" \t");
    return first != std::string_view::npos && last[first] == 'f';
}

/// The reader's rules again, as plainly as they can be written: the whole text at once, one
/// string a token, the C library's conversions (so the process must be in the "C" locale). Serves
/// to check the fast reader against; not for texts for which `isEndlessOBJ` holds.
class ReferenceOBJReader
{
public:
    ReferenceOBJReader(std::string_view text, std::string path)
        : _text(text), _path(std::move(path))
    {
        while (_at < _text.size()) {
            skipBlanks();
            line();
            while (!atLineEnd())
                ++_at;
            ++_at;
            ++_line;
        }
    }

    ReadMesh mesh;

private:
    char at(std::size_t position) const { return position < _text.size() ? _text[position] : 0; }
    bool atLineEnd() const
    {
        return _at >= _text.size() || _text[_at] == '\n' || _text[_at] == '\r';
    }
    void skipBlanks()
    {
        while (at(_at) == ' ' || at(_at) == '\t')
            ++_at;
    }

    std::string token(const char *delimiters)
    {
        std::size_t end = _text.find_first_of(delimiters, _at);
        if (end == std::string_view::npos) end = _text.size();
        std::string token(_text.substr(_at, end - _at));
        _at = end;
        return token;
    }

    void malformedNumber()
    {
        mesh.messages +=
            "Malformed number on line " + std::to_string(_line + 1) + " of " + _path + "\n";
    }

    void line()
    {
        if (at(_at) == 'f') {
            ++_at;
            face();
        } else if (at(_at) == 'v') {
            ++_at;
            const char kind = at(_at);
            if (kind == ' ' || kind == '\t') {
                if (const auto position = vector()) {
                    mesh.vertices.push_back({{(*position)[0], (*position)[1], (*position)[2]}, {}});
                    _slots.push_back(0);
                }
            } else if (kind == 'n') {
                ++_at;
                if (const auto normal = vector()) _normals.push_back(*normal);
            } else if (kind != 't') {
                mesh.messages += "Malformed obj file " + _path + ": Line " +
                                 std::to_string(_line + 1) + " starts with invalid sequence \"v" +
                                 kind + "\"\n";
            }
        }
    }

    std::optional<std::vector<float>> vector()
    {
        std::vector<float> numbers;
        for (int i = 0; i < 3; ++i) {
            skipBlanks();
            const std::string number = token(" \t\r\n");
            char *stopped = nullptr;
            numbers.push_back(std::strtof(number.c_str(), &stopped));
            if (stopped == number.c_str()) {
                malformedNumber();
                return std::nullopt;
            }
        }
        return numbers;
    }

    std::optional<long> faceNumber()
    {
        const std::string number = token(" \t\r\n/");
        char *stopped = nullptr;
        const long value = std::strtol(number.c_str(), &stopped, 10);
        if (stopped == number.c_str()) {
            malformedNumber();
            return std::nullopt;
        }
        return value;
    }

    void face()
    {
        const std::size_t start = mesh.indexes.size();
        while (!atLineEnd()) {
            skipBlanks();
            std::optional<long> vertex = faceNumber();
            if (!vertex) {
                token(" \t\r\n");
                continue;
            }
            if (mesh.indexes.size() - start >= 3) {
                const std::uint32_t first = mesh.indexes[start], previous = mesh.indexes.back();
                mesh.indexes.push_back(first);
                mesh.indexes.push_back(previous);
            }
            if (at(_at) == '/') {
                ++_at;
                token(" \t\r\n/");
                if (at(_at) == '/') {
                    ++_at;
                    if (const auto normal = faceNumber()) vertex = assigned(*vertex, *normal);
                }
            }
            mesh.indexes.push_back(std::uint32_t(std::uint64_t(*vertex) - 1));
            skipBlanks();
        }
    }

    long assigned(long vertex, long normal)
    {
        if (normal < 1 || normal > long(_normals.size())) return vertex;
        if (vertex < 1 || vertex > long(mesh.vertices.size())) return vertex;
        std::size_t at = std::size_t(vertex) - 1;
        if (_slots[at] == normal) return vertex;
        if (_slots[at] != 0) {
            mesh.vertices.push_back(OBJVertex(mesh.vertices[at]));
            _slots.push_back(0);
            at = mesh.vertices.size() - 1;
        }
        for (std::size_t axis = 0; axis < 3; ++axis)
            mesh.vertices[at].normal[axis] = _normals[std::size_t(normal) - 1][axis];
        _slots[at] = normal;
        return long(at) + 1;
    }

    std::string_view _text;
    std::string _path;
    std::size_t _at = 0;
    unsigned _line = 0;
    std::vector<std::vector<float>> _normals;
    std::vector<long> _slots;
};

} // namespace kelo::test
