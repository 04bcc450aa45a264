#include "document/DXDocumentModel.h"

#include "document/ModelLookup.h"
#include "keloModel/TreatmentNote.h"
#include "models/PickIdentifier.h"

#include <set>

namespace kelo {
namespace {

using Complaints = std::vector<std::string>;

std::string quoted(const std::string &key)
{
    return '"' + key + '"';
}

void checkCarriedModel(const DXDocumentModel::Models &carried, const std::string &key,
                       const char *kind, const DXGLightweightModel &tooth, Complaints &complaints)
{
    const auto model = modelUnderKey(carried, key);
    if (model && model->hiddenSecondary() != tooth.hiddenPrimary())
        complaints.push_back(std::string("The ") + kind + ' ' + quoted(key) +
                             " does not hide and show with its tooth");
}

void checkIdentifier(const std::shared_ptr<DXGLightweightModel> &model, const std::string &name,
                     std::set<std::uint64_t> &identifiers, Complaints &complaints)
{
    if (!model) return;
    const std::uint64_t identifier = model->uniqueID();
    if (!canBePicked(identifier))
        complaints.push_back("The " + name + " has the identifier " + std::to_string(identifier) +
                             ", which cannot be picked");
    if (!identifiers.insert(identifier).second)
        complaints.push_back("The " + name + " shares the identifier " +
                             std::to_string(identifier) + " with another model");
}

void checkElastic(const ElasticModel &elastic, const DXDocumentModel &model, Complaints &complaints)
{
    for (const std::string &key : elastic.bracketSequence()) {
        if (!modelUnderKey(model.bracketModels(), key) && !modelUnderKey(model.buttonModels(), key))
            complaints.push_back("The elastic " + std::to_string(elastic.uniqueID()) +
                                 " runs through " + quoted(key) +
                                 ", which is no loaded bracket or button");
    }
}

} // namespace

std::vector<std::string> DXDocumentModel::checkSanity() const
{
    Complaints complaints;
    for (const auto &[key, tooth] : _toothModels) {
        checkCarriedModel(_bracketModels, key, "bracket", *tooth, complaints);
        checkCarriedModel(_buttonModels, TreatmentNote::buttonNameForToothName(key), "button",
                          *tooth, complaints);
    }

    std::set<std::uint64_t> identifiers;
    checkIdentifier(_upperGumModel, "upper gum", identifiers, complaints);
    checkIdentifier(_lowerGumModel, "lower gum", identifiers, complaints);
    for (const auto &[key, tooth] : _toothModels)
        checkIdentifier(tooth, "tooth " + quoted(key), identifiers, complaints);
    for (const auto &[key, bracket] : _bracketModels)
        checkIdentifier(bracket, "bracket " + quoted(key), identifiers, complaints);
    for (const auto &[key, button] : _buttonModels) {
        checkIdentifier(button, "button " + quoted(key), identifiers, complaints);
        if (!button->extendedHitbox())
            complaints.push_back("The button " + quoted(key) + " has no extended hit box");
    }

    for (const auto &[key, typeID] : _bracketColorTypeIDs) {
        if (!_bracketModels.contains(key))
            complaints.push_back("The colour of bracket " + quoted(key) +
                                 " belongs to no loaded bracket");
        if (typeID != noBracketColorTypeID && !_availableBracketColorTypes.contains(typeID))
            complaints.push_back("The colour " + std::to_string(typeID) + " of bracket " +
                                 quoted(key) + " is not available");
    }

    std::map<std::uint32_t, const ElasticModel *> elastics;
    for (const auto &elastic : _elasticModels) {
        if (!elastic) {
            complaints.emplace_back("The list of elastics holds a null");
            continue;
        }
        checkElastic(*elastic, *this, complaints);
        const auto [known, isNew] = elastics.emplace(elastic->uniqueID(), elastic.get());
        if (!isNew && known->second != elastic.get())
            complaints.push_back("Two elastics share the identifier " +
                                 std::to_string(elastic->uniqueID()));
    }
    return complaints;
}

} // namespace kelo
