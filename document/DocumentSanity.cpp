#include "document/DocumentSanity.h"

#include "keloModel/TreatmentNote.h"
#include "models/PickIdentifier.h"

#include <cstdint>
#include <map>
#include <set>

namespace kelo {
namespace {

using Complaints = std::vector<std::string>;

std::string quoted(const std::string &key)
{
    return '"' + key + '"';
}

void checkCarriedModel(const ModelDictionary &carried, const std::string &key, const char *kind,
                       const DXGLightweightModel &tooth, Complaints &complaints)
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

void checkElastic(const ElasticModel &elastic, const ModelSet &models, Complaints &complaints)
{
    for (const std::string &key : elastic.bracketSequence()) {
        if (!modelUnderKey(models.brackets, key) && !modelUnderKey(models.buttons, key))
            complaints.push_back("The elastic " + std::to_string(elastic.uniqueID()) +
                                 " runs through " + quoted(key) +
                                 ", which is no loaded bracket or button");
    }
}

void checkIdentifiers(const ModelSet &models, Complaints &complaints)
{
    std::set<std::uint64_t> identifiers;
    checkIdentifier(models.upperGum, "upper gum", identifiers, complaints);
    checkIdentifier(models.lowerGum, "lower gum", identifiers, complaints);
    for (const auto &[key, tooth] : models.teeth)
        checkIdentifier(tooth, "tooth " + quoted(key), identifiers, complaints);
    for (const auto &[key, bracket] : models.brackets)
        checkIdentifier(bracket, "bracket " + quoted(key), identifiers, complaints);
    for (const auto &[key, button] : models.buttons) {
        checkIdentifier(button, "button " + quoted(key), identifiers, complaints);
        if (!button->extendedHitbox())
            complaints.push_back("The button " + quoted(key) + " has no extended hit box");
    }
}

} // namespace

std::vector<std::string> complaintsAboutModels(const ModelSet &models)
{
    Complaints complaints;
    for (const auto &[key, tooth] : models.teeth) {
        checkCarriedModel(models.brackets, key, "bracket", *tooth, complaints);
        checkCarriedModel(models.buttons, TreatmentNote::buttonNameForToothName(key), "button",
                          *tooth, complaints);
    }
    checkIdentifiers(models, complaints);
    return complaints;
}

std::vector<std::string> complaintsAboutColors(const BracketPaint &paint,
                                               const ModelDictionary &brackets)
{
    Complaints complaints;
    for (const auto &[key, typeID] : paint.typeIDs()) {
        if (!brackets.contains(key))
            complaints.push_back("The colour of bracket " + quoted(key) +
                                 " belongs to no loaded bracket");
        if (typeID != noBracketColorTypeID && !paint.availableTypes().contains(typeID))
            complaints.push_back("The colour " + std::to_string(typeID) + " of bracket " +
                                 quoted(key) + " is not available");
    }
    return complaints;
}

std::vector<std::string> complaintsAboutElastics(const ElasticList &elastics,
                                                 const ModelSet &models)
{
    Complaints complaints;
    std::map<std::uint32_t, const ElasticModel *> known;
    for (const auto &elastic : elastics) {
        if (!elastic) {
            complaints.emplace_back("The list of elastics holds a null");
            continue;
        }
        checkElastic(*elastic, models, complaints);
        const auto [same, isNew] = known.emplace(elastic->uniqueID(), elastic.get());
        if (!isNew && same->second != elastic.get())
            complaints.push_back("Two elastics share the identifier " +
                                 std::to_string(elastic->uniqueID()));
    }
    return complaints;
}

} // namespace kelo
