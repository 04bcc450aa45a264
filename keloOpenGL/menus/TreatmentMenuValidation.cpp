// Which rows of the treatment view's menus can be chosen, and what their headers say.

#include "keloOpenGL/menus/TreatmentMenus.h"

#include "document/ElasticModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/menus/TreatmentTexts.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kelo {
namespace {

using Components = std::optional<std::array<double, 4>>;

constexpr std::array bracketMenuTitles{"BracketColorType Menu", "Color BracketColorType Sub Menu",
                                       "Remove BracketColorType Sub Menu"};
constexpr std::array elasticMenuTitles{"ElasticsSizeType Menu", "ElasticsConfigType Sub Menu",
                                       "Color ElasticsSizeType Sub Menu",
                                       "Remove ElasticsSizeType Sub Menu"};

template<class Titles>
bool isOneOf(const std::string &title, const Titles &titles)
{
    return std::find(titles.begin(), titles.end(), title) != titles.end();
}

/// Tags 1 and 4. As an unsigned number -4 is above these and not above -1 to -4; it is this
/// comparison that decides.
bool actsOnAll(const MenuItem &item)
{
    return static_cast<std::uint64_t>(item.tag) < static_cast<std::uint64_t>(-4L);
}

/// In red, green or blue; a colour that is absent differs from every one that is there.
bool colorsDiffer(const Components &a, const Components &b)
{
    if (!a || !b) return a.has_value() != b.has_value();
    return (*a)[0] != (*b)[0] || (*a)[1] != (*b)[1] || (*a)[2] != (*b)[2];
}

Components materialColor(const DXDocumentModel &document, const std::string &key)
{
    const auto found = document.bracketModels().find(key);
    const auto material =
        found == document.bracketModels().end() ? nullptr : found->second->material();
    if (!material || !material->color()) return std::nullopt;
    const Color &color = *material->color();
    return std::array{color.red, color.green, color.blue, color.alpha};
}

/// The colour that the catalogue has for the elastic's size now.
Components sizeColor(const DXDocumentModel &document, const ElasticModel &elastic)
{
    if (!elastic.elasticsSizeType()) return std::nullopt;
    const auto &sizes = document.availableElasticsSizeTypes();
    const auto found = sizes.find(elastic.elasticsSizeType()->typeID);
    return found == sizes.end() ? std::nullopt : found->second->elasticsColor;
}

bool anyBracketIsShown(const DXDocumentModel &document)
{
    const auto &brackets = document.bracketModels();
    return std::any_of(brackets.begin(), brackets.end(), [](const auto &bracket) {
        return !bracket.second->hiddenPrimary() && !bracket.second->hiddenSecondary();
    });
}

} // namespace

bool TreatmentMenus::validate(MenuItem &item, const MenuContext &context, int &namingAction) const
{
    if (!item.menu || item.menu->items().empty() || !context.document) return false;
    const std::string &title = item.menu->title();
    if (isOneOf(title, bracketMenuTitles)) return validateBracketItem(item, context);
    if (isOneOf(title, elasticMenuTitles)) return validateElasticItem(item, context, namingAction);
    return false;
}

// One rule a line, as the menus have them: longer than most functions for that alone.
bool TreatmentMenus::validateBracketItem(MenuItem &item, const MenuContext &context) const
{
    const DXDocumentModel &document = *context.document;
    const std::string tooth = context.toothName.value_or("");
    const bool bracketIsHidden = isHidden(document.bracketModels(), tooth);
    const bool toothIsHidden = isHiddenPrimary(modelUnderKey(document.toothModels(), tooth));
    const std::string &action = item.actionName;

    if (action == "doNothing:") {
        if (item.tag != 1 && item.tag != -4) return item.tag == -3;
        const bool isForAll = item.tag == 1;
        if (bracketIsHidden)
            setTitle(item, isForAll ? QT_TRANSLATE_NOOP("DXOpenGL", "Place All Brackets")
                                    : QT_TRANSLATE_NOOP("DXOpenGL", "Place Bracket"));
        else
            setTitle(item, isForAll ? QT_TRANSLATE_NOOP("DXOpenGL", "Mark All Brackets")
                                    : QT_TRANSLATE_NOOP("DXOpenGL", "Mark Bracket"));
        if (bracketIsHidden)
            item.image = isForAll ? images_.placeAll() : images_.add();
        else
            item.image = isForAll ? images_.doubleColor(Color::whiteColor())
                                  : images_.color(Color::whiteColor());
        return isForAll;
    }
    if (action == "bracketColorMenuItemSelected:" || action == "markAllBracketsSelected:") {
        if (toothIsHidden) return false;
        if (actsOnAll(item)) return true;
        const auto type = representedTypeOf<BracketColorType>(item);
        return colorsDiffer(type ? type->bracketColor : std::nullopt,
                            materialColor(document, tooth));
    }
    if (action == "removeBracketSelected:" || action == "removeAllBracketsSelected:")
        return actsOnAll(item) ? anyBracketIsShown(document) : !bracketIsHidden;
    if (action == "placeToothSelected:" || action == "removeToothSelected:") return true;
    const std::array needTheTooth{"placeBracketSelected:", "placeAllBracketsSelected:",
                                  "placeButtonSelected:", "removeButtonSelected:"};
    return isOneOf(action, needTheTooth) && !toothIsHidden;
}

bool TreatmentMenus::validateElasticItem(MenuItem &item, const MenuContext &context,
                                         int &namingAction) const
{
    const DXDocumentModel &document = *context.document;
    const auto &elastics = document.elasticModels();
    const auto elastic =
        context.elasticIndex < elastics.size() ? elastics[context.elasticIndex] : nullptr;
    const std::string &action = item.actionName;

    if (action == "doNothing:") {
        if (item.tag == 1) {
            item.image = images_.doubleColor(Color::whiteColor());
            setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Mark All Elastics"));
            return true;
        }
        if (item.tag == -2) {
            item.image = images_.color(Color::whiteColor());
            setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Mark Elastic"));
            return false;
        }
        if (item.tag != -4) return item.tag == -3;
        if (item.title == "Place Named Elastic...") return false;
        item.image = images_.add();
        setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Start New Elastic"));
        return true;
    }
    if (action == "nameSelectedElasticsModel:") {
        if (!elastic) return false;
        const auto &configuration = elastic->elasticsConfigType();
        namingAction = configuration ? 1 : 0;
        if (configuration)
            setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Rename \"%@\" Elastic..."),
                     configuration->typeLabel);
        else
            setTitle(item, QT_TRANSLATE_NOOP("DXOpenGL", "Name This Elastic..."));
        return true;
    }
    if (action == "placeSelectedElasticsConfigType:") {
        const auto configuration = representedTypeOf<ElasticsConfigType>(item);
        return configuration && configuration->hasAssociatedSequence();
    }
    if (action == "startElasticColorMenuItemSelected:") return true;
    if (action == "updateElasticColorMenuItemSelected:" || action == "markAllElasticsSelected:") {
        if (actsOnAll(item)) return true;
        if (!elastic) return false;
        const auto type = representedTypeOf<ElasticsSizeType>(item);
        return colorsDiffer(type ? type->elasticsColor : std::nullopt,
                            sizeColor(document, *elastic));
    }
    if (action == "removeElasticSelected:" || action == "removeAllElasticsSelected:")
        return actsOnAll(item) ? !elastics.empty() : elastic != nullptr;
    return false;
}

} // namespace kelo
