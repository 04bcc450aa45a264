#pragma once

#include "base/Export.h"

#include <memory>
#include <string>
#include <vector>

namespace kelo {

/// Which teeth, brackets and lingual buttons a treatment note knows, and how they pair. A host with
/// a chart of its own derives from this and hands it to TreatmentNote::setKeys; what it does not
/// override is the standard chart of 28 teeth, universal numbers without the wisdom teeth. What an
/// object of it answers never changes: documents keep the lists that they made of the answers.
class KELO_EXPORT TreatmentNoteKeys
{
public:
    virtual ~TreatmentNoteKeys();

    /// "2" to "15", from the patient's right to the left.
    virtual std::vector<std::string> upperToothNameKeys() const;
    /// "18" to "31", from the patient's left to the right.
    virtual std::vector<std::string> lowerToothNameKeys() const;
    /// Parallel to the lists of teeth: the button at an index belongs to the tooth at that index.
    /// Built by buttonNameForToothName from those lists.
    virtual std::vector<std::string> upperLingualButtonNameKeys() const;
    virtual std::vector<std::string> lowerLingualButtonNameKeys() const;
    /// The tooth's key followed by the letter l.
    virtual std::string buttonNameForToothName(const std::string &toothName) const;
    /// The button's key without the letter l.
    virtual std::string toothNameForButtonName(const std::string &buttonName) const;

    /// @name Teeth and lingual buttons that belong to a side of the printed page
    /// The page shows the arches as a clinician faces them: on its left side the patient's right.
    /// An elastic is listed on every side that has one of its members. The canines are on two
    /// sides, the front and their own, because most bands that are seen from the side start there.
    /// @{
    /// Canine to second molar of the patient's right: "2" to "6", "27" to "31", and their buttons.
    virtual std::vector<std::string> leftElasticToothNameKeys() const;
    /// Canine to canine: "6" to "11", "22" to "27", and their buttons.
    virtual std::vector<std::string> frontElasticToothNameKeys() const;
    /// Canine to second molar of the patient's left: "11" to "15", "18" to "22", and their buttons.
    virtual std::vector<std::string> rightElasticToothNameKeys() const;
    /// @}
};

/// The key lists in use; see TreatmentNoteKeys for what each holds.
class KELO_EXPORT TreatmentNote
{
public:
    static std::vector<std::string> upperToothNameKeys();
    static std::vector<std::string> lowerToothNameKeys();
    static std::vector<std::string> upperLingualButtonNameKeys();
    static std::vector<std::string> lowerLingualButtonNameKeys();
    static std::string buttonNameForToothName(const std::string &toothName);
    static std::string toothNameForButtonName(const std::string &buttonName);
    static std::vector<std::string> leftElasticToothNameKeys();
    static std::vector<std::string> frontElasticToothNameKeys();
    static std::vector<std::string> rightElasticToothNameKeys();

    /// Replaces the lists from now on; null brings the standard ones back.
    static void setKeys(std::shared_ptr<const TreatmentNoteKeys> keys);
    /// The lists in use, never null.
    static std::shared_ptr<const TreatmentNoteKeys> keys();
};

} // namespace kelo
