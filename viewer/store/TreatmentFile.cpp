#include "viewer/store/TreatmentFile.h"

#include "keloModel/JSONProblems.h"
#include "keloModel/TreatmentNote.h"
#include "viewer/files/Limits.h"
#include "viewer/store/ElasticAttributes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <set>
#include <string>

namespace viewer {
namespace {

using kelo::JSONProblems;

constexpr int currentVersion = 1;

const QString dateForm = QStringLiteral("yyyy-MM-dd");

std::set<std::string> unionOf(const std::vector<std::string> &upper,
                              const std::vector<std::string> &lower)
{
    std::set<std::string> keys(upper.begin(), upper.end());
    keys.insert(lower.begin(), lower.end());
    return keys;
}

std::set<std::string> toothKeys()
{
    return unionOf(kelo::TreatmentNote::upperToothNameKeys(),
                   kelo::TreatmentNote::lowerToothNameKeys());
}

std::set<std::string> buttonKeys()
{
    return unionOf(kelo::TreatmentNote::upperLingualButtonNameKeys(),
                   kelo::TreatmentNote::lowerLingualButtonNameKeys());
}

std::set<std::string> membersOfElastics()
{
    std::set<std::string> keys = toothKeys();
    keys.merge(buttonKeys());
    return keys;
}

struct ReadAttribute
{
    ElasticAttribute attribute;
    std::optional<std::set<long>> values; ///< those of the catalogue, if it says which there are
};

std::optional<std::set<long>> valuesOf(const ElasticAttribute &attribute,
                                       const kelo::Catalogue &catalogue)
{
    if (!attribute.valuesIn) return std::nullopt;
    return attribute.valuesIn(catalogue);
}

/// Reads the members of one treatment, each with its place.
class TreatmentReader
{
public:
    TreatmentReader(JSONProblems &problems, const kelo::Catalogue &catalogue)
        : problems_(problems), colorIDs_(identifiersOf(catalogue.bracketColorTypes))
    {
        for (const ElasticAttribute &attribute : elasticAttributes()) {
            attributes_.push_back({attribute, valuesOf(attribute, catalogue)});
            elasticMembers_ << QLatin1String(attribute.name);
        }
    }

    TreatmentRecord treatment(const QJsonObject &object)
    {
        reportUnknownMembers(
            object, {},
            {"format", "version", "patient", "currentDate", "approvedDate", "notes", "catalogue"});
        TreatmentRecord record;
        record.patient = patient(object["patient"]);
        record.currentDate = date(object, {}, "currentDate");
        record.approvedDate = date(object, {}, "approvedDate");
        const QJsonValue notes = object["notes"];
        if (!notes.isArray() && !notes.isUndefined()) problems_.add("notes", "must be a list");
        const QJsonArray list = limited(notes, "notes", mostNotes, "notes");
        for (qsizetype i = 0; i < list.size(); ++i)
            addNote(record, list[i], JSONProblems::element("notes", i));
        // A file written by hand may have them in any order.
        std::sort(record.notes.begin(), record.notes.end(),
                  [](const NoteRecord &a, const NoteRecord &b) { return a.date < b.date; });
        return record;
    }

private:
    template<class Type>
    static std::set<long> identifiersOf(const std::vector<std::shared_ptr<Type>> &records)
    {
        std::set<long> identifiers;
        for (const auto &record : records)
            identifiers.insert(record->typeID);
        return identifiers;
    }

    /// The list, or an empty one and a problem where it is too long.
    QJsonArray limited(const QJsonValue &value, const std::string &place, qsizetype most,
                       const char *kind)
    {
        const QJsonArray list = value.toArray();
        if (list.size() <= most) return list;
        problems_.add(place, "has " + std::to_string(list.size()) + " " + kind + "; at most " +
                                 std::to_string(most) + " are read");
        return {};
    }

    /// A misspelt member would otherwise be lost without a word.
    void reportUnknownMembers(const QJsonObject &object, const std::string &place,
                              const QStringList &known)
    {
        for (const QString &member : object.keys()) {
            if (!known.contains(member))
                problems_.add(JSONProblems::member(place, member.toStdString()),
                              "there is no such member");
        }
    }

    QString text(const QJsonObject &object, const std::string &place, const char *member)
    {
        const QJsonValue value = object[QLatin1String(member)];
        if (!value.isString() && !value.isUndefined())
            problems_.add(JSONProblems::member(place, member), "must be a text");
        const QString text = value.toString();
        if (text.size() > longestText)
            problems_.add(JSONProblems::member(place, member),
                          "has " + std::to_string(text.size()) + " characters; at most " +
                              std::to_string(longestText) + " are read");
        return text;
    }

    std::optional<QDate> date(const QJsonObject &object, const std::string &place,
                              const char *member)
    {
        const QJsonValue value = object[QLatin1String(member)];
        if (value.isUndefined() || value.isNull()) return std::nullopt;
        const QDate date = QDate::fromString(value.toString(), dateForm);
        if (!date.isValid()) {
            problems_.add(JSONProblems::member(place, member), "must be a date, as in 2026-11-20");
            return std::nullopt;
        }
        return date;
    }

    PatientRecord patient(const QJsonValue &value)
    {
        if (!value.isObject()) {
            problems_.add("patient",
                          value.isUndefined() ? "the patient is missing" : "must be an object");
            return {};
        }
        const QJsonObject object = value.toObject();
        reportUnknownMembers(object, "patient", {"name", "id", "birthDate"});
        return {text(object, "patient", "name"), text(object, "patient", "id"),
                date(object, "patient", "birthDate")};
    }

    void addNote(TreatmentRecord &record, const QJsonValue &value, const std::string &place)
    {
        if (!value.isObject()) {
            problems_.add(place, "must be an object");
            return;
        }
        const QJsonObject object = value.toObject();
        reportUnknownMembers(object, place,
                             {"date", "approvedDate", "toothVisibilities", "bracketVisibilities",
                              "buttonVisibilities", "bracketColorTypeIDs", "elastics"});
        NoteRecord note;
        // A date that is there and wrong has been reported by `date` already.
        if (const auto noteDate = date(object, place, "date"))
            note.date = *noteDate;
        else if (object["date"].isUndefined() || object["date"].isNull())
            problems_.add(JSONProblems::member(place, "date"), "the date is missing");
        if (note.date.isValid() && !noteDates_.insert(note.date).second)
            problems_.add(JSONProblems::member(place, "date"),
                          "there is a note of this date already");
        note.approvedDate = date(object, place, "approvedDate");
        note.toothVisibilities = visibilities(object, place, "toothVisibilities", teeth_);
        note.bracketVisibilities = visibilities(object, place, "bracketVisibilities", teeth_);
        note.buttonVisibilities = visibilities(object, place, "buttonVisibilities", buttons_);
        note.bracketColorTypeIDs = colors(object, place);
        note.elastics = elastics(object, place);
        record.notes.push_back(std::move(note));
    }

    QJsonObject members(const QJsonObject &object, const std::string &place, const char *member)
    {
        const QJsonValue value = object[QLatin1String(member)];
        if (!value.isObject() && !value.isUndefined())
            problems_.add(JSONProblems::member(place, member), "must be an object");
        return value.toObject();
    }

    bool isKnownKey(const std::string &place, const std::string &key,
                    const std::set<std::string> &known, const char *kind)
    {
        if (known.count(key) != 0) return true;
        problems_.add(place, "'" + JSONProblems::shown(key) + "' is no " + kind);
        return false;
    }

    kelo::NameKeyDictionary<bool> visibilities(const QJsonObject &object, const std::string &place,
                                               const char *member,
                                               const std::set<std::string> &known)
    {
        kelo::NameKeyDictionary<bool> visibleByKey;
        const QJsonObject values = members(object, place, member);
        const std::string here = JSONProblems::member(place, member);
        for (const QString &name : values.keys()) {
            const std::string key = name.toStdString();
            if (!isKnownKey(here, key, known, "tooth or button")) continue;
            if (!values[name].isBool())
                problems_.add(JSONProblems::member(here, key), "must be true or false");
            visibleByKey[key] = values[name].toBool();
        }
        return visibleByKey;
    }

    kelo::NameKeyDictionary<std::optional<long>> colors(const QJsonObject &object,
                                                        const std::string &place)
    {
        kelo::NameKeyDictionary<std::optional<long>> colorByKey;
        const QJsonObject values = members(object, place, "bracketColorTypeIDs");
        const std::string here = JSONProblems::member(place, "bracketColorTypeIDs");
        for (const QString &name : values.keys()) {
            const std::string key = name.toStdString();
            if (!isKnownKey(here, key, teeth_, "tooth")) continue;
            auto typeID = identifier(values[name], JSONProblems::member(here, key));
            if (typeID == kelo::noBracketColorTypeID) typeID.reset();
            if (typeID && !colorIDs_.contains(*typeID))
                problems_.add(JSONProblems::member(here, key),
                              std::to_string(*typeID) + " is the identifier of no colour");
            colorByKey[key] = typeID;
        }
        return colorByKey;
    }

    std::optional<long> identifier(const QJsonValue &value, const std::string &place)
    {
        if (value.isNull() || value.isUndefined()) return std::nullopt;
        if (!kelo::isWholeNumber(value)) {
            problems_.add(place, "must be a whole number or null");
            return std::nullopt;
        }
        return static_cast<long>(value.toDouble());
    }

    std::vector<kelo::SavedElastic> elastics(const QJsonObject &object, const std::string &place)
    {
        const std::string here = JSONProblems::member(place, "elastics");
        const QJsonValue value = object["elastics"];
        if (!value.isArray() && !value.isUndefined()) problems_.add(here, "must be a list");
        const QJsonArray list = limited(value, here, mostElastics, "elastics");
        std::vector<kelo::SavedElastic> records;
        for (qsizetype i = 0; i < list.size(); ++i)
            records.push_back(elastic(list[i], JSONProblems::element(here, i)));
        return records;
    }

    kelo::SavedElastic elastic(const QJsonValue &value, const std::string &place)
    {
        if (!value.isObject()) {
            problems_.add(place, "must be an object");
            return {};
        }
        const QJsonObject object = value.toObject();
        reportUnknownMembers(object, place, elasticMembers_);
        kelo::SavedElastic record;
        for (const auto &[attribute, values] : attributes_) {
            const std::string here = JSONProblems::member(place, attribute.name);
            const auto number = identifier(object[QLatin1String(attribute.name)], here);
            record.*attribute.value = number;
            if (number && values && !values->contains(*number))
                problems_.add(here, std::to_string(*number) + ' ' + attribute.complaint);
        }
        record.bracketSequence =
            sequence(object["bracketSequence"], JSONProblems::member(place, "bracketSequence"));
        return record;
    }

    std::vector<std::string> sequence(const QJsonValue &value, const std::string &place)
    {
        if (!value.isArray()) {
            problems_.add(place,
                          value.isUndefined() ? "the sequence is missing" : "must be a list");
            return {};
        }
        std::vector<std::string> keys;
        if (value.toArray().size() > mostMembers) {
            limited(value, place, mostMembers, "members");
            return {};
        }
        const QJsonArray list = value.toArray();
        for (qsizetype i = 0; i < list.size(); ++i) {
            const std::string here = JSONProblems::element(place, i);
            if (!list[i].isString())
                problems_.add(here, "must be a text");
            else if (isKnownKey(here, list[i].toString().toStdString(), members_,
                                "tooth or button"))
                keys.push_back(list[i].toString().toStdString());
        }
        if (list.size() < 2) problems_.add(place, "a band needs two brackets or buttons");
        return keys;
    }

    JSONProblems &problems_;
    /// What is looked up for every entry is made once.
    const std::set<std::string> teeth_ = toothKeys();
    const std::set<std::string> buttons_ = buttonKeys();
    const std::set<std::string> members_ = membersOfElastics();
    const std::set<long> colorIDs_;
    std::vector<ReadAttribute> attributes_;
    QStringList elasticMembers_{QStringLiteral("bracketSequence")};
    std::set<QDate> noteDates_;
};

/// Whether the text is a treatment file of a version that this program reads.
bool hasReadableVersion(const QJsonObject &object, JSONProblems &problems)
{
    if (object["format"].toString() != QStringLiteral("treatment")) {
        problems.add("format", "must be \"treatment\"");
        return false;
    }
    const QJsonValue version = object["version"];
    if (!kelo::isWholeNumber(version) || version.toDouble() < 1.0) {
        problems.add("version", "must be a whole number from 1");
        return false;
    }
    if (version.toDouble() > currentVersion) {
        problems.add("version", "this file was written by a newer program (version " +
                                    std::to_string(static_cast<long>(version.toDouble())) +
                                    "; this one reads up to " + std::to_string(currentVersion) +
                                    ")");
        return false;
    }
    return true;
}

QStringList asStringList(const std::vector<std::string> &sentences)
{
    QStringList list;
    for (const std::string &sentence : sentences)
        list << QString::fromStdString(sentence);
    return list;
}

QJsonValue dateValue(const std::optional<QDate> &date)
{
    return date ? QJsonValue(date->toString(dateForm)) : QJsonValue(QJsonValue::Null);
}

QJsonValue identifierValue(const std::optional<long> &identifier)
{
    return identifier ? QJsonValue(static_cast<qint64>(*identifier)) : QJsonValue(QJsonValue::Null);
}

QJsonObject visibilitiesObject(const kelo::NameKeyDictionary<bool> &visibleByKey)
{
    QJsonObject object;
    for (const auto &[key, visible] : visibleByKey)
        object[QString::fromStdString(key)] = visible;
    return object;
}

QJsonObject noteObject(const NoteRecord &note)
{
    QJsonObject colors;
    for (const auto &[key, typeID] : note.bracketColorTypeIDs)
        colors[QString::fromStdString(key)] = identifierValue(typeID);
    QJsonArray elastics;
    for (const kelo::SavedElastic &elastic : note.elastics)
        elastics.append(elasticAsJSON(elastic));
    return {{"date", note.date.toString(dateForm)},
            {"approvedDate", dateValue(note.approvedDate)},
            {"toothVisibilities", visibilitiesObject(note.toothVisibilities)},
            {"bracketVisibilities", visibilitiesObject(note.bracketVisibilities)},
            {"buttonVisibilities", visibilitiesObject(note.buttonVisibilities)},
            {"bracketColorTypeIDs", colors},
            {"elastics", elastics}};
}

} // namespace

TreatmentFileReading treatmentFromJSON(const QByteArray &text, const kelo::Catalogue &defaults)
{
    JSONProblems problems;
    const std::optional<QJsonObject> object = kelo::objectOfJSON(text, problems);
    if (!object || !hasReadableVersion(*object, problems))
        return {std::nullopt, asStringList(problems.take())};

    TreatmentFile file;
    file.catalogue = defaults;
    const QJsonValue catalogue = (*object)["catalogue"];
    if (catalogue.isObject()) {
        auto reading = kelo::catalogueFromJSON(catalogue.toObject(), "catalogue", &defaults);
        // Without its catalogue nothing else can be judged.
        if (!reading.catalogue) return {std::nullopt, asStringList(reading.problems)};
        file.catalogue = std::move(*reading.catalogue);
    } else if (!catalogue.isUndefined()) {
        problems.add("catalogue", "must be an object");
    }
    file.treatment = TreatmentReader(problems, file.catalogue).treatment(*object);
    if (!problems.empty()) return {std::nullopt, asStringList(problems.take())};
    return {std::move(file), {}};
}

QByteArray treatmentAsJSON(const TreatmentFile &file)
{
    const TreatmentRecord &treatment = file.treatment;
    QJsonArray notes;
    for (const NoteRecord &note : treatment.notes)
        notes.append(noteObject(note));
    QJsonObject object{
        {"format", "treatment"},
        {"version", currentVersion},
        {"patient", QJsonObject{{"name", treatment.patient.name},
                                {"id", treatment.patient.identifier},
                                {"birthDate", dateValue(treatment.patient.birthDate)}}},
        {"approvedDate", dateValue(treatment.approvedDate)},
        {"notes", notes},
        {"catalogue", kelo::catalogueAsJSONObject(file.catalogue)}};
    // Left out, it is the day of opening.
    if (treatment.currentDate) object["currentDate"] = dateValue(treatment.currentDate);
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

} // namespace viewer
