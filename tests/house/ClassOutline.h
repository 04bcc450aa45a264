#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kelo::test {

// What the classes of this tree look like from outside: counted in the sources as clang-format
// leaves them (one member a line, continuations further right, the braces of a body under its
// operation). Not a parser of C++.

/// A member function with a body.
struct Operation
{
    std::string className;
    std::string name;
    std::size_t bodyLength = 0; ///< its lines of code: no blank ones, no comments, no braces

    bool operator==(const Operation &) const = default;
};

struct ClassOutline
{
    std::string name;                  ///< without those of the classes around it
    std::size_t publicMethodCount = 0; ///< what is deleted does not count
    std::size_t fieldCount = 0;        ///< static ones do not count
    std::vector<Operation> operations; ///< those with a body in the class

    bool operator==(const ClassOutline &) const = default;
};

/// The classes and structs that a header defines, nested ones too, in the order of their ends.
std::vector<ClassOutline> classesIn(const std::string &header);

/// The member functions that a source defines outside of their classes.
std::vector<Operation> operationsIn(const std::string &source);

} // namespace kelo::test
