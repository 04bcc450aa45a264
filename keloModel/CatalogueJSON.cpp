// The JSON form of a catalogue.

#include "keloModel/Catalogue.h"

#include "keloModel/JSONProblems.h"
#include "keloModel/TreatmentNote.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <map>
#include <set>
#include <string>

namespace kelo {
namespace {

const QString bracketColorTypesName = QStringLiteral("bracketColorTypes");
const QString elasticsSizeTypesName = QStringLiteral("elasticsSizeTypes");
const QString elasticsConfigTypesName = QStringLiteral("elasticsConfigTypes");

/// One record of a list, with its place for the problems.
class Record
{
public:
    Record(const QJsonObject &object, std::string place, JSONProblems &problems)
        : object_(object), place_(std::move(place)), problems_(problems)
    {}

    const std::string &place() const { return place_; }

    void problem(const char *member, const std::string &reason)
    {
        problems_.add(JSONProblems::member(place_, member), reason);
    }

    void readCommon(QKType &type)
    {
        known_ << "typeID"
               << "typeLabel"
               << "displayOrder"
               << "name";
        const QJsonValue typeID = object_["typeID"];
        if (typeID.isUndefined())
            problem("typeID", "the identifier is missing");
        else if (!isWholeNumber(typeID) || typeID.toDouble() < 1.0)
            problem("typeID", "must be a whole number above 0");
        else
            type.typeID = static_cast<long>(typeID.toDouble());

        const QJsonValue label = object_["typeLabel"];
        if (!label.isString() || label.toString().trimmed().isEmpty())
            problem("typeLabel", "must be a text that is not empty");
        else
            type.typeLabel = checkedText("typeLabel", label);

        type.displayOrder = optionalWholeNumber("displayOrder").value_or(0);
        if (const QJsonValue name = object_["name"]; name.isString())
            type.name = checkedText("name", name);
        else if (!name.isUndefined() && !name.isNull())
            problem("name", "must be a text");
    }

    std::optional<long> optionalWholeNumber(const char *member)
    {
        known_ << member;
        const QJsonValue value = object_[QLatin1String(member)];
        if (value.isUndefined() || value.isNull()) return std::nullopt;
        if (!isWholeNumber(value)) {
            problem(member, "must be a whole number");
            return std::nullopt;
        }
        return static_cast<long>(value.toDouble());
    }

    /// Null is a record without colour; a colour that is left out was forgotten.
    std::optional<std::array<double, 4>> color(const char *member)
    {
        known_ << member;
        if (object_[QLatin1String(member)].isNull()) return std::nullopt;
        const QJsonArray components = object_[QLatin1String(member)].toArray();
        std::array<double, 4> color{};
        bool good = components.size() == 4;
        for (qsizetype i = 0; good && i < 4; ++i) {
            color[static_cast<std::size_t>(i)] = components[i].toDouble(-1.0);
            good = components[i].isDouble() && components[i].toDouble() >= 0.0 &&
                   components[i].toDouble() <= 1.0;
        }
        if (!good) {
            problem(member, "must be four numbers from 0 to 1: red, green, blue, alpha");
            return std::nullopt;
        }
        return color;
    }

    std::string optionalText(const char *member)
    {
        known_ << member;
        const QJsonValue value = object_[QLatin1String(member)];
        if (!value.isString() && !value.isUndefined() && !value.isNull())
            problem(member, "must be a text");
        return checkedText(member, value);
    }

    /// To be called last: what nothing asked for is a misspelt member.
    void reportUnknownMembers()
    {
        for (const QString &member : object_.keys()) {
            if (!known_.contains(member))
                problem(member.toUtf8().constData(), "there is no such member");
        }
    }

private:
    std::string checkedText(const char *member, const QJsonValue &value)
    {
        const QString text = value.toString();
        if (static_cast<std::size_t>(text.size()) <= longestCatalogueText)
            return text.toStdString();
        problem(member, "has " + std::to_string(text.size()) + " characters; at most " +
                            std::to_string(longestCatalogueText) + " are read");
        return {};
    }

    const QJsonObject object_;
    std::string place_;
    JSONProblems &problems_;
    QSet<QString> known_;
};

std::set<std::string> knownNameKeys()
{
    std::set<std::string> keys;
    for (const auto &list :
         {TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys(),
          TreatmentNote::upperLingualButtonNameKeys(), TreatmentNote::lowerLingualButtonNameKeys()})
        keys.insert(list.begin(), list.end());
    return keys;
}

void checkSequence(const std::string &sequence, const std::set<std::string> &known, Record &record)
{
    if (sequence.empty()) return;
    static const char member[] = "bracketSequence";
    std::size_t count = 0;
    for (std::size_t begin = 0; begin <= sequence.size(); ++count) {
        const std::size_t end = std::min(sequence.find(',', begin), sequence.size());
        const std::string key = sequence.substr(begin, end - begin);
        if (known.count(key) == 0)
            record.problem(member, "'" + JSONProblems::shown(key) + "' is no tooth or button");
        begin = end + 1;
    }
    if (count < 2) record.problem(member, "a band needs two brackets or buttons");
}

/// Reads the list `name` of `object`, one record after the other with `readRecord`.
template<class Type, class ReadRecord>
std::vector<std::shared_ptr<Type>> readList(const QJsonObject &object, const QString &name,
                                            const std::string &place,
                                            const std::vector<std::shared_ptr<Type>> *defaults,
                                            JSONProblems &problems, ReadRecord &&readRecord)
{
    const std::string listPlace = JSONProblems::member(place, name.toStdString());
    const QJsonValue value = object[name];
    if (value.isUndefined() && defaults) return *defaults;
    if (!value.isArray()) {
        problems.add(listPlace, value.isUndefined() ? "the list is missing" : "must be a list");
        return {};
    }
    std::vector<std::shared_ptr<Type>> records;
    std::map<long, std::string> placeByID;
    const QJsonArray list = value.toArray();
    if (static_cast<std::size_t>(list.size()) > mostCatalogueRecords) {
        problems.add(listPlace, "has " + std::to_string(list.size()) + " entries; at most " +
                                    std::to_string(mostCatalogueRecords) + " are read");
        return {};
    }
    for (qsizetype i = 0; i < list.size(); ++i) {
        const std::string here = JSONProblems::element(listPlace, i);
        if (!list[i].isObject()) {
            problems.add(here, "must be an object");
            continue;
        }
        Record record(list[i].toObject(), here, problems);
        auto type = std::make_shared<Type>();
        record.readCommon(*type);
        readRecord(*type, record);
        record.reportUnknownMembers();
        const auto [earlier, isNew] = placeByID.emplace(type->typeID, here);
        if (!isNew && type->typeID != 0)
            record.problem("typeID", std::to_string(type->typeID) + " stands at " +
                                         earlier->second + " already");
        records.push_back(std::move(type));
    }
    return records;
}

void checkSizesOfConfigs(const Catalogue &catalogue, const std::string &place,
                         JSONProblems &problems)
{
    std::set<long> sizes;
    for (const auto &type : catalogue.elasticsSizeTypes)
        sizes.insert(type->typeID);
    for (std::size_t i = 0; i < catalogue.elasticsConfigTypes.size(); ++i) {
        const long size = catalogue.elasticsConfigTypes[i]->elasticsSizeTypeID;
        if (size > 0 && !sizes.contains(size)) {
            const std::string list =
                JSONProblems::member(place, elasticsConfigTypesName.toStdString());
            problems.add(JSONProblems::element(list, static_cast<qsizetype>(i)) +
                             ".elasticsSizeTypeID",
                         std::to_string(size) + " is the identifier of no size");
        }
    }
}

QJsonObject commonMembers(const QKType &type)
{
    QJsonObject object{{"typeID", static_cast<qint64>(type.typeID)},
                       {"typeLabel", QString::fromStdString(type.typeLabel)},
                       {"displayOrder", static_cast<qint64>(type.displayOrder)}};
    if (!type.name.empty()) object["name"] = QString::fromStdString(type.name);
    return object;
}

QJsonValue colorMember(const std::optional<std::array<double, 4>> &color)
{
    if (!color) return QJsonValue::Null;
    QJsonArray components;
    for (const double component : *color)
        components.append(component);
    return components;
}

} // namespace

CatalogueReading catalogueFromJSON(const QJsonObject &object, const std::string &place,
                                   const Catalogue *defaults)
{
    JSONProblems problems;
    Catalogue catalogue;
    catalogue.bracketColorTypes = readList<BracketColorType>(
        object, bracketColorTypesName, place, defaults ? &defaults->bracketColorTypes : nullptr,
        problems, [](BracketColorType &type, Record &record) {
            type.bracketColor = record.color("bracketColor");
            if (type.typeID == noBracketColorTypeID)
                record.problem("typeID", std::to_string(noBracketColorTypeID) +
                                             " stands for a bracket without colour");
        });
    catalogue.elasticsSizeTypes = readList<ElasticsSizeType>(
        object, elasticsSizeTypesName, place, defaults ? &defaults->elasticsSizeTypes : nullptr,
        problems, [](ElasticsSizeType &type, Record &record) {
            type.elasticsColor = record.color("elasticsColor");
        });
    const std::set<std::string> known = knownNameKeys();
    catalogue.elasticsConfigTypes = readList<ElasticsConfigType>(
        object, elasticsConfigTypesName, place, defaults ? &defaults->elasticsConfigTypes : nullptr,
        problems, [&known](ElasticsConfigType &type, Record &record) {
            type.elasticsSizeTypeID = record.optionalWholeNumber("elasticsSizeTypeID").value_or(0);
            type.bracketSequence = record.optionalText("bracketSequence");
            checkSequence(type.bracketSequence, known, record);
        });
    for (const QString &member : object.keys()) {
        if (member != bracketColorTypesName && member != elasticsSizeTypesName &&
            member != elasticsConfigTypesName)
            problems.add(JSONProblems::member(place, member.toStdString()),
                         "there is no such member");
    }
    checkSizesOfConfigs(catalogue, place, problems);
    if (!problems.empty()) return {std::nullopt, problems.take()};
    return {std::move(catalogue), {}};
}

CatalogueReading catalogueFromJSON(const QByteArray &text, const Catalogue *defaults)
{
    JSONProblems problems;
    const std::optional<QJsonObject> object = objectOfJSON(text, problems);
    if (!object) return {std::nullopt, problems.take()};
    return catalogueFromJSON(*object, {}, defaults);
}

QJsonObject catalogueAsJSONObject(const Catalogue &catalogue)
{
    QJsonArray colors, sizes, configs;
    for (const auto &type : catalogue.bracketColorTypes) {
        QJsonObject object = commonMembers(*type);
        object["bracketColor"] = colorMember(type->bracketColor);
        colors.append(object);
    }
    for (const auto &type : catalogue.elasticsSizeTypes) {
        QJsonObject object = commonMembers(*type);
        object["elasticsColor"] = colorMember(type->elasticsColor);
        sizes.append(object);
    }
    for (const auto &type : catalogue.elasticsConfigTypes) {
        QJsonObject object = commonMembers(*type);
        object["elasticsSizeTypeID"] = static_cast<qint64>(type->elasticsSizeTypeID);
        object["bracketSequence"] = QString::fromStdString(type->bracketSequence);
        configs.append(object);
    }
    return {{bracketColorTypesName, colors},
            {elasticsSizeTypesName, sizes},
            {elasticsConfigTypesName, configs}};
}

QByteArray catalogueAsJSON(const Catalogue &catalogue)
{
    return QJsonDocument(catalogueAsJSONObject(catalogue)).toJson(QJsonDocument::Indented);
}

} // namespace kelo
