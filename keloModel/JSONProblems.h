#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>

#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kelo {

/// Not installed: shared by the readers of this tree, the viewer's of treatment files among them.
///
/// Collects what is wrong with a JSON text, each problem with its place in front, as in
/// "notes[2].date: must be a date, as in 2026-11-20".
class JSONProblems
{
public:
    void add(const std::string &place, const std::string &reason)
    {
        sentences_.push_back(place.empty() ? reason : place + ": " + reason);
    }
    bool empty() const { return sentences_.empty(); }
    std::vector<std::string> take() { return std::exchange(sentences_, {}); }

    static std::string member(const std::string &place, const std::string &name)
    {
        return place.empty() ? name : place + "." + name;
    }
    static std::string element(const std::string &place, qsizetype index)
    {
        return place + "[" + std::to_string(index) + "]";
    }

private:
    std::vector<std::string> sentences_;
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
