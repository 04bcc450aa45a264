#include "keloModel/TreatmentNote.h"

#include <utility>

namespace kelo {
namespace {

constexpr char buttonLetter = 'l';

/// The keys of the teeth from `first` to `last`, both included.
void appendToothKeys(std::vector<std::string> &keys, int first, int last)
{
    for (int tooth = first; tooth <= last; ++tooth)
        keys.push_back(std::to_string(tooth));
}

std::vector<std::string> toothKeys(int first, int last)
{
    std::vector<std::string> keys;
    appendToothKeys(keys, first, last);
    return keys;
}

std::vector<std::string> buttonKeys(const TreatmentNoteKeys &chart, std::vector<std::string> keys)
{
    for (std::string &key : keys)
        key = chart.buttonNameForToothName(key);
    return keys;
}

std::shared_ptr<const TreatmentNoteKeys> &keysInUse()
{
    static std::shared_ptr<const TreatmentNoteKeys> keys =
        std::make_shared<const TreatmentNoteKeys>();
    return keys;
}

} // namespace

TreatmentNoteKeys::~TreatmentNoteKeys() = default;

std::vector<std::string> TreatmentNoteKeys::upperToothNameKeys() const
{
    return toothKeys(2, 15);
}

std::vector<std::string> TreatmentNoteKeys::lowerToothNameKeys() const
{
    return toothKeys(18, 31);
}

std::vector<std::string> TreatmentNoteKeys::upperLingualButtonNameKeys() const
{
    return buttonKeys(*this, upperToothNameKeys());
}

std::vector<std::string> TreatmentNoteKeys::lowerLingualButtonNameKeys() const
{
    return buttonKeys(*this, lowerToothNameKeys());
}

std::string TreatmentNoteKeys::buttonNameForToothName(const std::string &toothName) const
{
    return toothName + buttonLetter;
}

std::string TreatmentNoteKeys::toothNameForButtonName(const std::string &buttonName) const
{
    std::string toothName = buttonName;
    std::erase(toothName, buttonLetter);
    return toothName;
}

std::vector<std::string> TreatmentNoteKeys::leftElasticToothNameKeys() const
{
    std::vector<std::string> keys = toothKeys(11, 15);
    appendToothKeys(keys, 18, 22);
    return keys;
}

std::vector<std::string> TreatmentNoteKeys::frontElasticToothNameKeys() const
{
    std::vector<std::string> keys = toothKeys(6, 11);
    appendToothKeys(keys, 22, 27);
    return keys;
}

std::vector<std::string> TreatmentNoteKeys::rightElasticToothNameKeys() const
{
    std::vector<std::string> keys = toothKeys(2, 6);
    appendToothKeys(keys, 27, 31);
    return keys;
}

std::vector<std::string> TreatmentNote::upperToothNameKeys()
{
    return keys()->upperToothNameKeys();
}

std::vector<std::string> TreatmentNote::lowerToothNameKeys()
{
    return keys()->lowerToothNameKeys();
}

std::vector<std::string> TreatmentNote::upperLingualButtonNameKeys()
{
    return keys()->upperLingualButtonNameKeys();
}

std::vector<std::string> TreatmentNote::lowerLingualButtonNameKeys()
{
    return keys()->lowerLingualButtonNameKeys();
}

std::string TreatmentNote::buttonNameForToothName(const std::string &toothName)
{
    return keys()->buttonNameForToothName(toothName);
}

std::string TreatmentNote::toothNameForButtonName(const std::string &buttonName)
{
    return keys()->toothNameForButtonName(buttonName);
}

std::vector<std::string> TreatmentNote::leftElasticToothNameKeys()
{
    return keys()->leftElasticToothNameKeys();
}

std::vector<std::string> TreatmentNote::frontElasticToothNameKeys()
{
    return keys()->frontElasticToothNameKeys();
}

std::vector<std::string> TreatmentNote::rightElasticToothNameKeys()
{
    return keys()->rightElasticToothNameKeys();
}

void TreatmentNote::setKeys(std::shared_ptr<const TreatmentNoteKeys> keys)
{
    keysInUse() = keys ? std::move(keys) : std::make_shared<const TreatmentNoteKeys>();
}

std::shared_ptr<const TreatmentNoteKeys> TreatmentNote::keys()
{
    return keysInUse();
}

} // namespace kelo
