#include "keloModel/TreatmentNote.h"

#include "keloModel/NameKey.h"

#include <utility>

namespace kelo {
namespace {

/// The keys of the teeth from `first` to `last`, both included.
std::vector<std::string> toothKeys(int first, int last)
{
    std::vector<std::string> keys;
    for (int tooth = first; tooth <= last; ++tooth)
        keys.push_back(std::to_string(tooth));
    return keys;
}

std::vector<std::string> buttonKeys(const TreatmentNoteKeys &chart, std::vector<std::string> keys)
{
    for (std::string &key : keys)
        key = chart.buttonNameForToothName(key);
    return keys;
}

/// The teeth of both jaws, then their lingual buttons: an elastic may run over buttons alone.
std::vector<std::string> withButtons(const TreatmentNoteKeys &chart,
                                     std::vector<std::string> upperKeys,
                                     const std::vector<std::string> &lowerKeys)
{
    upperKeys.insert(upperKeys.end(), lowerKeys.begin(), lowerKeys.end());
    const std::vector<std::string> buttons = buttonKeys(chart, upperKeys);
    upperKeys.insert(upperKeys.end(), buttons.begin(), buttons.end());
    return upperKeys;
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
    // 1 and 16, and 17 and 32 below, are the wisdom teeth, which are not modelled.
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
    return buttonKeyOfToothKey(toothName);
}

std::string TreatmentNoteKeys::toothNameForButtonName(const std::string &buttonName) const
{
    return toothKeyOfNameKey(buttonName);
}

std::vector<std::string> TreatmentNoteKeys::leftElasticToothNameKeys() const
{
    return withButtons(*this, toothKeys(2, 6), toothKeys(27, 31));
}

std::vector<std::string> TreatmentNoteKeys::frontElasticToothNameKeys() const
{
    return withButtons(*this, toothKeys(6, 11), toothKeys(22, 27));
}

std::vector<std::string> TreatmentNoteKeys::rightElasticToothNameKeys() const
{
    return withButtons(*this, toothKeys(11, 15), toothKeys(18, 22));
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
