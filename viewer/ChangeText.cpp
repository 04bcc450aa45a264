#include "viewer/ChangeText.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>
#include <set>

namespace viewer {
namespace {

using Document = kelo::DXDocumentModel;
using Keys = std::vector<std::string>;

/// The texts' context for translators.
struct ChangeText
{
    Q_DECLARE_TR_FUNCTIONS(ChangeText)
};

Keys keysBecome(const Document::Visibilities &before, const Document::Visibilities &after,
                bool visible)
{
    Keys keys;
    for (const auto &[key, is] : after) {
        const auto was = before.find(key);
        if (is == visible && was != before.end() && was->second != visible) keys.push_back(key);
    }
    return keys;
}

std::optional<long> colorUnder(const Document::ColorTypeIDs &colors, const std::string &key)
{
    const auto found = colors.find(key);
    if (found == colors.end() || found->second == kelo::noBracketColorTypeID) return std::nullopt;
    return found->second;
}

Keys recoloredKeys(const Document::ColorTypeIDs &before, const Document::ColorTypeIDs &after)
{
    std::set<std::string, kelo::NameKeyLess> all;
    for (const auto *colors : {&before, &after}) {
        for (const auto &[key, typeID] : *colors)
            all.insert(key);
    }
    Keys keys;
    for (const std::string &key : all) {
        if (colorUnder(before, key) != colorUnder(after, key)) keys.push_back(key);
    }
    return keys;
}

/// Describes the difference of two states; the member functions return empty texts for what did not
/// change.
class Describer
{
public:
    Describer(const DocumentState &before, const DocumentState &after, const Document &document,
              ToothNotation notation)
        : before_(before), after_(after), document_(document), notation_(notation)
    {}

    QString text() const
    {
        // An elastic may bring its brackets along, a bracket its tooth, and hiding may take
        // elastics: what was meant comes first.
        for (const QString &part :
             {elasticsPlaced(), teeth(false), brackets(true), brackets(false), buttons(true),
              buttons(false), teeth(true), elasticsChanged(), elasticsRemoved(), colors()}) {
            if (!part.isEmpty()) return part;
        }
        return {};
    }

private:
    QString name(const std::string &key) const { return toothName(key, notation_); }

    /// The name of a button's tooth.
    QString toothOfButton(const std::string &key) const
    {
        return name(kelo::toothKeyOfNameKey(key));
    }

    QString colorName(const std::optional<long> &typeID) const
    {
        if (!typeID) return {};
        const auto &types = document_.availableBracketColorTypes();
        const auto found = types.find(*typeID);
        if (found == types.end()) return QString::number(*typeID);
        // Inside of a sentence; names such as "TMA" stay as they are.
        QString label = QString::fromStdString(found->second->typeLabel);
        const bool isWord = label.size() < 2 || !label[1].isUpper();
        return isWord ? label.left(1).toLower() + label.mid(1) : label;
    }

    /// The colour that all of them have now, or an empty text.
    QString commonColor(const Keys &keys) const
    {
        const auto first = colorUnder(after_.bracketColors, keys.front());
        const bool isCommon = std::all_of(keys.begin(), keys.end(), [&](const std::string &key) {
            return colorUnder(after_.bracketColors, key) == first;
        });
        return isCommon ? colorName(first) : QString();
    }

    QString withColor(const QString &text, const Keys &keys) const
    {
        const QString color = commonColor(keys);
        return color.isEmpty() ? text : ChangeText::tr("%1, %2").arg(text, color);
    }

    QString teeth(bool place) const
    {
        const Keys keys = keysBecome(before_.teeth, after_.teeth, place);
        if (keys.empty()) return {};
        if (keys.size() > 1)
            return (
                place ? ChangeText::tr("Place %n teeth", nullptr, static_cast<int>(keys.size()))
                      : ChangeText::tr("Remove %n teeth", nullptr, static_cast<int>(keys.size())));
        return (place ? ChangeText::tr("Place tooth %1") : ChangeText::tr("Remove tooth %1"))
            .arg(name(keys[0]));
    }

    QString brackets(bool place) const
    {
        const Keys keys = keysBecome(before_.brackets, after_.brackets, place);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        if (!place)
            return count > 1 ? ChangeText::tr("Remove %n brackets", nullptr, count)
                             : ChangeText::tr("Remove bracket from %1").arg(name(keys[0]));
        return withColor(count > 1 ? ChangeText::tr("Place %n brackets", nullptr, count)
                                   : ChangeText::tr("Place bracket on %1").arg(name(keys[0])),
                         keys);
    }

    QString buttons(bool place) const
    {
        const Keys keys = keysBecome(before_.buttons, after_.buttons, place);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        if (count > 1)
            return place ? ChangeText::tr("Place %n buttons", nullptr, count)
                         : ChangeText::tr("Remove %n buttons", nullptr, count);
        return (place ? ChangeText::tr("Place button on %1")
                      : ChangeText::tr("Remove button from %1"))
            .arg(toothOfButton(keys[0]));
    }

    QString colors() const
    {
        const Keys keys = recoloredKeys(before_.bracketColors, after_.bracketColors);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        const bool areCleared = std::none_of(keys.begin(), keys.end(), [&](const std::string &key) {
            return colorUnder(after_.bracketColors, key).has_value();
        });
        if (areCleared)
            return count > 1 ? ChangeText::tr("Clear %n brackets", nullptr, count)
                             : ChangeText::tr("Clear bracket on %1").arg(name(keys[0]));
        return withColor(count > 1 ? ChangeText::tr("Colour %n brackets", nullptr, count)
                                   : ChangeText::tr("Colour bracket on %1").arg(name(keys[0])),
                         keys);
    }

    QString elasticName(const ElasticState &elastic) const
    {
        QStringList names;
        for (const std::string &key : elastic.bracketSequence)
            names << name(key);
        return names.join(QStringLiteral(" \u2013 "));
    }

    /// Those of one list that the other does not have.
    static std::vector<ElasticState> missing(const std::vector<ElasticState> &list,
                                             std::vector<ElasticState> other)
    {
        std::vector<ElasticState> found;
        for (const ElasticState &elastic : list) {
            const auto same = std::find(other.begin(), other.end(), elastic);
            if (same == other.end())
                found.push_back(elastic);
            else
                other.erase(same);
        }
        return found;
    }

    QString elasticsPlaced() const
    {
        if (after_.elastics.size() <= before_.elastics.size()) return {};
        const auto placed = missing(after_.elastics, before_.elastics);
        if (placed.empty()) return {};
        if (placed.size() > 1)
            return ChangeText::tr("Place %n elastics", nullptr, static_cast<int>(placed.size()));
        const auto &size = placed[0].sizeType;
        const QString text = ChangeText::tr("Place elastic %1").arg(elasticName(placed[0]));
        return size ? ChangeText::tr("%1, %2").arg(text, QString::fromStdString(size->typeLabel))
                    : text;
    }

    QString elasticsRemoved() const
    {
        const auto removed = missing(before_.elastics, after_.elastics);
        if (removed.empty()) return {};
        if (removed.size() > 1)
            return ChangeText::tr("Remove %n elastics", nullptr, static_cast<int>(removed.size()));
        return ChangeText::tr("Remove elastic %1").arg(elasticName(removed[0]));
    }

    /// As many as before: some have another size, or another name.
    QString elasticsChanged() const
    {
        if (after_.elastics.size() != before_.elastics.size()) return {};
        const auto changed = missing(after_.elastics, before_.elastics);
        if (changed.empty()) return {};
        if (changed.size() > 1)
            return ChangeText::tr("Change %n elastics", nullptr, static_cast<int>(changed.size()));
        return ChangeText::tr("Change elastic %1").arg(elasticName(changed[0]));
    }

    const DocumentState &before_;
    const DocumentState &after_;
    const Document &document_;
    ToothNotation notation_;
};

} // namespace

QString changeText(const DocumentState &before, const DocumentState &after,
                   const Document &document, ToothNotation notation)
{
    return Describer(before, after, document, notation).text();
}

} // namespace viewer
