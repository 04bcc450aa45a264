#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelo {

/// Not installed: shared by the readers of this tree, the viewer's of treatment files among them.
///
/// Collects what is wrong with a JSON text, each problem with its place in front, as in
/// "notes[2].date: must be a date, as in 2026-11-20". The first hundred are kept: nobody reads
/// more, and a text from elsewhere may have millions.
class JSONProblems
{
public:
    static constexpr std::size_t mostProblems = 100;
    /// Bytes of a piece of the text that a problem repeats: a line on a screen.
    static constexpr std::size_t mostShownBytes = 80;

    void add(const std::string &place, const std::string &reason)
    {
        if (sentences_.size() < mostProblems)
            sentences_.push_back(place.empty() ? reason : place + ": " + reason);
        else
            ++furtherCount_;
    }
    bool empty() const { return sentences_.empty(); }
    /// The sentences; behind a hundred of them "and N more".
    std::vector<std::string> take()
    {
        if (furtherCount_ > 0)
            sentences_.push_back("and " + std::to_string(furtherCount_) + " more");
        furtherCount_ = 0;
        return std::exchange(sentences_, {});
    }

    /// A piece of the text as problems repeat it: of a long one the beginning, followed by "…", and
    /// control characters, line breaks among them, as "\x0a": a problem is one line. What turns the
    /// direction of writing is left to whoever shows it.
    static std::string shown(const std::string &text)
    {
        if (text.size() <= mostShownBytes) return withoutControls(text);
        std::size_t length = mostShownBytes;
        // Bytes of the form 10xxxxxx go on with a character that began before.
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
        return withoutControls(text.substr(0, length)) + "…";
    }

    static std::string member(const std::string &place, const std::string &name)
    {
        return place.empty() ? shown(name) : place + "." + shown(name);
    }
    static std::string element(const std::string &place, qsizetype index)
    {
        return place + "[" + std::to_string(index) + "]";
    }

private:
    static std::string withoutControls(const std::string &text)
    {
        static constexpr char digits[] = "0123456789abcdef";
        std::string shown;
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x20 || byte == 0x7F)
                shown += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
            else
                shown += c;
        }
        return shown;
    }

    std::vector<std::string> sentences_;
    std::size_t furtherCount_ = 0;
};

/// Whether a value is a number that names one integer.
inline bool isWholeNumber(const QJsonValue &value)
{
    // Above 2^53 a JSON number no longer names one integer.
    constexpr double largest = 9007199254740992.0;
    return value.isDouble() && value.toDouble() == std::floor(value.toDouble()) &&
           std::abs(value.toDouble()) <= largest;
}

/// The object that a text holds, or nothing and a problem: "line 3: illegal value".
inline std::optional<QJsonObject> objectOfJSON(const QByteArray &text, JSONProblems &problems)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError) {
        const qsizetype line = text.left(error.offset).count('\n') + 1;
        problems.add("line " + std::to_string(line), error.errorString().toStdString());
        return std::nullopt;
    }
    if (!document.isObject()) {
        problems.add({}, "must be an object");
        return std::nullopt;
    }
    return document.object();
}

} // namespace kelo
