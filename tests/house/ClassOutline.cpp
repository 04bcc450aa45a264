#include "tests/house/ClassOutline.h"

#include "tests/house/SourceTree.h"

#include <algorithm>
#include <optional>
#include <regex>

namespace kelo::test {
namespace {

std::size_t indentationOf(const std::string &line)
{
    return std::min(line.find_first_not_of(' '), line.size());
}

std::string trimmed(const std::string &line)
{
    return line.substr(indentationOf(line));
}

std::string withoutComment(const std::string &line)
{
    std::string code = line.substr(0, line.find("//"));
    while (!code.empty() && code.back() == ' ')
        code.pop_back();
    return code;
}

/// Lines without comments; what was nothing else is empty.
std::vector<std::string> codeLinesOf(const std::string &text)
{
    std::vector<std::string> lines = linesOf(text);
    for (std::string &line : lines)
        line = withoutComment(line);
    return lines;
}

/// The lines of code between a brace that is alone in its line and the one that closes it.
std::size_t linesInBraces(const std::vector<std::string> &lines, std::size_t opening)
{
    const std::string closing = std::string(indentationOf(lines[opening]), ' ') + "}";
    std::size_t count = 0;
    for (std::size_t i = opening + 1; i < lines.size() && !startsWith(lines[i], closing); ++i)
        if (!lines[i].empty()) ++count;
    return count;
}

bool startsWithAny(const std::string &text, const std::vector<std::string> &starts)
{
    return std::any_of(starts.begin(), starts.end(),
                       [&text](const std::string &start) { return startsWith(text, start); });
}

/// A member's type and name: what stands before its parameters, its value or its end, with the
/// arguments of templates taken out. `end` is where that is.
std::string headOf(const std::string &member, std::size_t &end)
{
    std::string head;
    int depth = 0;
    for (end = 0; end < member.size(); ++end) {
        const char c = member[end];
        if (c == '<') ++depth;
        if (depth == 0) {
            if (c == '(' || c == '=' || c == '{' || c == ';') break;
            head += c;
        }
        if (c == '>') --depth;
    }
    return head;
}

/// The names that one declaration of fields declares: `double x = 0.0, y = f(1, 2);` has two.
std::size_t declaratorsIn(const std::string &fields)
{
    std::size_t count = 1;
    int depth = 0;
    for (const char c : fields) {
        if (c == '<' || c == '(' || c == '{' || c == '[') ++depth;
        if (c == '>' || c == ')' || c == '}' || c == ']') --depth;
        if (c == ',' && depth == 0) ++count;
    }
    return count;
}

/// A class that is being read.
struct OpenClass
{
    ClassOutline outline;
    std::size_t indentation = 0;
    bool isPublic = false;

    void addMethod(const std::string &member, const std::string &head)
    {
        if (isPublic && member.find("= delete") == std::string::npos) ++outline.publicMethodCount;
        const bool isInOneLine = !member.empty() && member.back() == '}';
        if (!isInOneLine) return;
        const std::string name = head.substr(head.find_last_of(" *&") + 1);
        const bool isEmpty = endsWith(member, "{}");
        outline.operations.push_back({outline.name, name, isEmpty ? 0u : 1u});
    }

    void add(const std::string &member)
    {
        static const std::vector<std::string> others = {"using ",  "friend ",       "enum ",
                                                        "class ",  "struct ",       "union ",
                                                        "typedef", "static_assert", "Q_OBJECT"};
        if (startsWithAny(member, others)) return;
        std::size_t end = 0;
        const std::string head = headOf(member, end);
        const bool isFunctionPointer = member.compare(end, 2, "(*") == 0;
        if (member.find("operator") != std::string::npos ||
            (end < member.size() && member[end] == '(' && !isFunctionPointer))
            addMethod(member, head);
        else if (!startsWith(member, "static "))
            outline.fieldCount += declaratorsIn(member);
    }
};

class HeaderReader
{
public:
    explicit HeaderReader(const std::string &header) : lines_(codeLinesOf(header)) {}

    std::vector<ClassOutline> read()
    {
        for (at_ = 0; at_ < lines_.size(); ++at_)
            readLine();
        return std::move(closed_);
    }

private:
    void readLine()
    {
        const std::string &line = lines_[at_];
        if (line.empty() || line[0] == '#') return;
        if (opensClass()) return;
        if (open_.empty()) return;
        OpenClass &current = open_.back();
        const std::size_t indentation = indentationOf(line);
        const std::string text = trimmed(line);
        if (indentation == current.indentation) {
            if (startsWith(text, "}"))
                closeClass();
            else
                current.isPublic = startsWithAny(text, {"public", "signals", "Q_SIGNALS"});
        } else if (indentation == current.indentation + 4) {
            readMember(current, text);
        }
    }

    bool opensClass()
    {
        static const std::regex head(
            R"(( *)(class|struct) (?:\w+_EXPORT )?(\w+)(?: final)?(?: :.*)?)");
        std::smatch match;
        if (!std::regex_match(lines_[at_], match, head)) return false;
        std::size_t brace = at_ + 1;
        while (brace < lines_.size() && indentationOf(lines_[brace]) > indentationOf(lines_[at_]))
            ++brace; // base classes that the line had no room for
        if (brace == lines_.size() || lines_[brace] != match[1].str() + "{") return false;
        open_.push_back({{match[3], 0, 0, {}}, match[1].str().size(), match[2] == "struct"});
        at_ = brace;
        return true;
    }

    void closeClass()
    {
        closed_.push_back(std::move(open_.back().outline));
        open_.pop_back();
    }

    void readMember(OpenClass &current, const std::string &text)
    {
        if (startsWith(text, "template") || startsWith(text, "}")) return;
        if (text == "{") {
            noteBody(current);
            return;
        }
        std::string member = text;
        while (at_ + 1 < lines_.size() &&
               indentationOf(lines_[at_ + 1]) > current.indentation + 4 && !lines_[at_ + 1].empty())
            member += " " + trimmed(lines_[++at_]);
        current.add(member);
        std::size_t end = 0;
        const std::string head = headOf(member, end);
        lastName_ = head.substr(head.find_last_of(" *&") + 1);
    }

    void noteBody(OpenClass &current)
    {
        current.outline.operations.push_back(
            {current.outline.name, lastName_, linesInBraces(lines_, at_)});
        const std::string closing = std::string(indentationOf(lines_[at_]), ' ') + "}";
        while (at_ + 1 < lines_.size() && !startsWith(lines_[at_], closing))
            ++at_;
    }

    std::vector<std::string> lines_;
    std::size_t at_ = 0;
    std::vector<OpenClass> open_;
    std::vector<ClassOutline> closed_;
    std::string lastName_;
};

} // namespace

std::vector<ClassOutline> classesIn(const std::string &header)
{
    return HeaderReader(header).read();
}

std::vector<Operation> operationsIn(const std::string &source)
{
    static const std::regex head(R"((?:\S.*[\s&*])?(\w+)::(~?\w+|operator\S+)\(.*)");
    const std::vector<std::string> lines = codeLinesOf(source);
    std::vector<Operation> found;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::smatch match;
        if (lines[i].empty() || lines[i][0] == ' ' || !std::regex_match(lines[i], match, head))
            continue;
        const std::string className = match[1];
        const std::string name = match[2];
        std::size_t end = i; // of the parameters and initialisers
        while (end < lines.size() && lines[end] != "{" && !endsWith(lines[end], "}") &&
               !endsWith(lines[end], ";"))
            ++end;
        if (end == lines.size() || endsWith(lines[end], ";")) continue;
        const bool isEmpty = endsWith(lines[end], "{}");
        found.push_back(
            {className, name, lines[end] == "{" ? linesInBraces(lines, end) : (isEmpty ? 0u : 1u)});
        i = end;
    }
    return found;
}

} // namespace kelo::test
