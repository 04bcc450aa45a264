#include "viewer/treatment/ChangeText.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>
#include <set>

namespace viewer {
namespace {

using Document = kelo::DXDocumentModel;
using Keys = std::vector<std::string>;
using Elastic = kelo::SavedElastic;
using Elastics = std::vector<Elastic>;
using Colors = kelo::NameKeyDictionary<std::optional<long>>;

/// As many names as a row of the menu has room for; more are only counted.
constexpr std::size_t mostNamedKeys = 6;
constexpr std::size_t mostNamedElastics = 3;

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

std::optional<long> colorUnder(const Colors &colors, const std::string &key)
{
    const auto found = colors.find(key);
    return found == colors.end() ? std::nullopt : found->second;
}

Keys recoloredKeys(const Colors &before, const Colors &after)
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
    Describer(const kelo::SavedState &before, const kelo::SavedState &after,
              const Document &document, const ConfigurationsSeen &configurations,
              ToothNotation notation)
        : before_(before),
          after_(after),
          document_(document),
          configurations_(configurations),
          notation_(notation)
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
    using Name = QString (Describer::*)(const Elastic &) const;

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

    /// The colour that all of them have in a state, or an empty string.
    QString commonColor(const kelo::SavedState &state, const Keys &keys) const
    {
        const auto first = colorUnder(state.bracketColorTypeIDs, keys.front());
        const bool isCommon = std::all_of(keys.begin(), keys.end(), [&](const std::string &key) {
            return colorUnder(state.bracketColorTypeIDs, key) == first;
        });
        return isCommon ? colorName(first) : QString();
    }

    /// The text and what something was and is; either may be unknown.
    static QString fromTo(const QString &text, const QString &before, const QString &after)
    {
        if (before.isEmpty() && after.isEmpty()) return text;
        if (before.isEmpty() || after.isEmpty())
            return ChangeText::tr("%1, %2").arg(text, before + after);
        return ChangeText::tr("%1, from %2 to %3").arg(text, before, after);
    }

    /// The text that counts these keys, with their names if there is room for them.
    QString withNames(const QString &text, const Keys &keys) const
    {
        if (keys.size() > mostNamedKeys) return text;
        QStringList names;
        for (const std::string &key : keys)
            names << name(kelo::toothKeyOfNameKey(key));
        return ChangeText::tr("%1 (%2)").arg(text, names.join(QStringLiteral(", ")));
    }

    QString teeth(bool place) const
    {
        const Keys keys = keysBecome(before_.toothVisibilities, after_.toothVisibilities, place);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        if (count > 1)
            return withNames(place ? ChangeText::tr("Place %n teeth", nullptr, count)
                                   : ChangeText::tr("Remove %n teeth", nullptr, count),
                             keys);
        return (place ? ChangeText::tr("Place tooth %1") : ChangeText::tr("Remove tooth %1"))
            .arg(name(keys[0]));
    }

    QString brackets(bool place) const
    {
        const Keys keys =
            keysBecome(before_.bracketVisibilities, after_.bracketVisibilities, place);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        if (!place)
            return count > 1 ? withNames(ChangeText::tr("Remove %n brackets", nullptr, count), keys)
                             : ChangeText::tr("Remove bracket from %1").arg(name(keys[0]));
        return fromTo(count > 1
                          ? withNames(ChangeText::tr("Place %n brackets", nullptr, count), keys)
                          : ChangeText::tr("Place bracket on %1").arg(name(keys[0])),
                      {}, commonColor(after_, keys));
    }

    QString buttons(bool place) const
    {
        const Keys keys = keysBecome(before_.buttonVisibilities, after_.buttonVisibilities, place);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        if (count > 1)
            return withNames(place ? ChangeText::tr("Place %n buttons", nullptr, count)
                                   : ChangeText::tr("Remove %n buttons", nullptr, count),
                             keys);
        return (place ? ChangeText::tr("Place button on %1")
                      : ChangeText::tr("Remove button from %1"))
            .arg(toothOfButton(keys[0]));
    }

    QString colors() const
    {
        const Keys keys = recoloredKeys(before_.bracketColorTypeIDs, after_.bracketColorTypeIDs);
        if (keys.empty()) return {};
        const int count = static_cast<int>(keys.size());
        const bool areCleared = std::none_of(keys.begin(), keys.end(), [&](const std::string &key) {
            return colorUnder(after_.bracketColorTypeIDs, key).has_value();
        });
        const QString one = areCleared ? ChangeText::tr("Clear bracket on %1")
                                       : ChangeText::tr("Colour bracket on %1");
        const QString text =
            count == 1
                ? one.arg(name(keys[0]))
                : withNames(areCleared ? ChangeText::tr("Clear %n brackets", nullptr, count)
                                       : ChangeText::tr("Colour %n brackets", nullptr, count),
                            keys);
        return fromTo(text, commonColor(before_, keys), commonColor(after_, keys));
    }

    QString elasticName(const Elastic &elastic) const
    {
        return toothNames(elastic.bracketSequence, notation_);
    }

    QString sizeName(const Elastic &elastic) const
    {
        const auto type = kelo::sizeTypeOf(document_, elastic);
        return type ? QString::fromStdString(type->typeLabel) : QString();
    }

    QString configName(const Elastic &elastic) const
    {
        const auto type = configurations_.typeOf(document_, elastic);
        return type ? QString::fromStdString(type->typeLabel) : QString();
    }

    /// What all of them have, or an empty string.
    QString common(const Elastics &elastics, Name nameOf) const
    {
        const QString first = (this->*nameOf)(elastics.front());
        const bool isCommon =
            std::all_of(elastics.begin(), elastics.end(),
                        [&](const Elastic &elastic) { return (this->*nameOf)(elastic) == first; });
        return isCommon ? first : QString();
    }

    /// The text that counts elastics, with the teeth that they run over if there is room for them.
    QString withNames(const QString &text, const Elastics &elastics) const
    {
        if (elastics.size() > mostNamedElastics) return text;
        QStringList names;
        for (const Elastic &elastic : elastics)
            names << elasticName(elastic);
        return ChangeText::tr("%1 (%2)").arg(text, names.join(QStringLiteral("; ")));
    }

    /// Those of one list that the other does not have.
    static Elastics missing(const Elastics &list, Elastics other)
    {
        Elastics found;
        for (const Elastic &elastic : list) {
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
        const Elastics placed = missing(after_.elastics, before_.elastics);
        if (placed.empty()) return {};
        const int count = static_cast<int>(placed.size());
        const QString text =
            count > 1 ? withNames(ChangeText::tr("Place %n elastics", nullptr, count), placed)
                      : ChangeText::tr("Place elastic %1").arg(elasticName(placed[0]));
        return fromTo(text, {}, common(placed, &Describer::sizeName));
    }

    QString elasticsRemoved() const
    {
        const Elastics removed = missing(before_.elastics, after_.elastics);
        if (removed.empty()) return {};
        const int count = static_cast<int>(removed.size());
        const QString text =
            count > 1 ? withNames(ChangeText::tr("Remove %n elastics", nullptr, count), removed)
                      : ChangeText::tr("Remove elastic %1").arg(elasticName(removed[0]));
        return fromTo(text, common(removed, &Describer::sizeName), {});
    }

    /// As many as before: some have another size, other members, or another name.
    QString elasticsChanged() const
    {
        if (after_.elastics.size() != before_.elastics.size()) return {};
        const Elastics were = missing(before_.elastics, after_.elastics);
        const Elastics are = missing(after_.elastics, before_.elastics);
        if (are.empty()) return {};
        const int count = static_cast<int>(are.size());
        const QString text =
            count > 1 ? withNames(ChangeText::tr("Change %n elastics", nullptr, count), were)
                      : ChangeText::tr("Change elastic %1").arg(elasticName(were[0]));
        if (count == 1 && were[0].bracketSequence != are[0].bracketSequence)
            return fromTo(text, {}, elasticName(are[0]));
        const Name size = &Describer::sizeName;
        const Name what = common(were, size) != common(are, size) ? size : &Describer::configName;
        return fromTo(text, common(were, what), common(are, what));
    }

    const kelo::SavedState &before_;
    const kelo::SavedState &after_;
    const Document &document_;
    const ConfigurationsSeen &configurations_;
    ToothNotation notation_;
};

} // namespace

QString changeText(const kelo::SavedState &before, const kelo::SavedState &after,
                   const Document &document, const ConfigurationsSeen &configurations,
                   ToothNotation notation)
{
    return Describer(before, after, document, configurations, notation).text();
}

} // namespace viewer
