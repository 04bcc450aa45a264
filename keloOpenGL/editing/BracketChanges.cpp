#include "keloOpenGL/editing/BracketChanges.h"

#include "keloModel/BracketColorType.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"

#include <functional>
#include <vector>

namespace kelo {
namespace {

HiddenFlags hiddenFlags(const DXDocumentModel::Models &models, const std::string &key)
{
    const auto found = models.find(key);
    if (found == models.end()) return {};
    return {found->second->hiddenPrimary(), found->second->hiddenSecondary()};
}

/// Calls `change` with the key of every bracket that the document has when its turn comes. The keys
/// are taken first: a host may change the document, or clear it, while it is told of a change.
void forEachBracket(const DXDocumentModel &document,
                    const std::function<void(const std::string &key)> &change)
{
    std::vector<std::string> keys;
    for (const auto &[key, model] : document.bracketModels())
        keys.push_back(key);
    for (const std::string &key : keys) {
        if (document.bracketModels().contains(key)) change(key);
    }
}

} // namespace

void carryOut(const ToothChange &change, DXDocumentModel &document)
{
    const auto &[operation, tooth, colorTypeID] = change;
    switch (operation) {
    case ToothOperation::None:
        break;
    case ToothOperation::ShowAndColorBracket:
        document.bracket_makeVisibleAndSetColorWithBracketColorTypeID(tooth, colorTypeID);
        break;
    case ToothOperation::ColorAndToggleBracket:
        document.bracket_setColorWithBracketColorTypeID(tooth, colorTypeID);
        document.toggleVisibilityOfBracket(tooth);
        break;
    case ToothOperation::RemoveColorAndToggleBracket:
        document.bracket_setColorWithBracketColorTypeID(tooth, noBracketColorTypeID);
        document.toggleVisibilityOfBracket(tooth);
        break;
    case ToothOperation::ToggleAndRemoveColorOfBracket:
        document.toggleVisibilityOfBracket(tooth);
        document.bracket_setColorWithBracketColorTypeID(tooth, noBracketColorTypeID);
        break;
    case ToothOperation::ToggleButton:
        document.toggleVisibilityOfButton(TreatmentNote::buttonNameForToothName(tooth));
        break;
    case ToothOperation::ToggleTooth:
        document.toggleVisibilityOfTooth(tooth);
        break;
    }
}

RepeatTarget repeatTarget(const DXDocumentModel &document, const std::string &tooth)
{
    return {hiddenFlags(document.bracketModels(), tooth),
            hiddenFlags(document.buttonModels(), TreatmentNote::buttonNameForToothName(tooth)),
            hiddenFlags(document.toothModels(), tooth)};
}

void placeAllBrackets(DXDocumentModel &document, long colorTypeID)
{
    forEachBracket(document, [&](const std::string &key) {
        const HiddenFlags hidden = hiddenFlags(document.bracketModels(), key);
        if (hidden.primary && !hidden.secondary)
            document.bracket_makeVisibleAndSetColorWithBracketColorTypeID(key, colorTypeID);
    });
}

void colorAllBrackets(DXDocumentModel &document, long colorTypeID)
{
    forEachBracket(document, [&](const std::string &key) {
        document.bracket_setColorWithBracketColorTypeID(key, colorTypeID);
    });
}

void removeAllBrackets(DXDocumentModel &document)
{
    forEachBracket(document, [&](const std::string &key) {
        // The second reason to be hidden does not count here.
        if (!hiddenFlags(document.bracketModels(), key).primary)
            document.toggleVisibilityOfBracket(key);
    });
    removeAllBracketColors(document);
}

void removeAllBracketColors(DXDocumentModel &document)
{
    colorAllBrackets(document, noBracketColorTypeID);
}

} // namespace kelo
