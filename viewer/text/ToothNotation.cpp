#include "viewer/text/ToothNotation.h"

#include "keloModel/NameKey.h"

#include <QCoreApplication>
#include <QStringList>

#include <utility>

namespace viewer {
namespace {

constexpr int teethInQuadrant = 8;

/// Quadrants count from the upper right round to the lower right, as universal numbers do.
enum Quadrant { UpperRight, UpperLeft, LowerLeft, LowerRight };

struct Place
{
    Quadrant quadrant;
    int fromMidline; ///< 1: central incisor
};

Place placeOf(int universalNumber)
{
    const int index = universalNumber - 1;
    const auto quadrant = static_cast<Quadrant>(index / teethInQuadrant);
    const int inQuadrant = index % teethInQuadrant;
    const bool runsToMidline = quadrant == UpperRight || quadrant == LowerLeft;
    return {quadrant, runsToMidline ? teethInQuadrant - inQuadrant : inQuadrant + 1};
}

QString nameOf(int universalNumber, ToothNotation notation)
{
    static constexpr const char *palmerQuadrants[] = {"UR", "UL", "LL", "LR"};
    const Place place = placeOf(universalNumber);
    switch (notation) {
    case ToothNotation::FDI:
        return QString::number(10 * (place.quadrant + 1) + place.fromMidline);
    case ToothNotation::Palmer:
        return QLatin1String(palmerQuadrants[place.quadrant]) + QString::number(place.fromMidline);
    case ToothNotation::Universal:
        break;
    }
    return QString::number(universalNumber);
}

} // namespace

QString toothName(const std::string &key, ToothNotation notation)
{
    const bool isButton = kelo::isButtonKey(key);
    const QString number = QString::fromStdString(kelo::toothKeyOfNameKey(key));
    bool isNumber = false;
    const int universalNumber = number.toInt(&isNumber);
    if (!isNumber || universalNumber < 1 || universalNumber > 4 * teethInQuadrant)
        return QString::fromStdString(key);
    const QString name = nameOf(universalNumber, notation);
    return isButton ? QCoreApplication::translate("ToothNotation", "%1 lingual").arg(name) : name;
}

QString toothNames(const std::vector<std::string> &keys, ToothNotation notation,
                   const QString &separator)
{
    QStringList names;
    for (const std::string &key : keys)
        names << toothName(key, notation);
    return names.join(separator);
}

namespace {

constexpr std::pair<ToothNotation, const char *> notationNames[] = {
    {ToothNotation::Universal, "universal"},
    {ToothNotation::FDI, "fdi"},
    {ToothNotation::Palmer, "palmer"},
};

} // namespace

std::optional<ToothNotation> toothNotationFromName(const QString &name)
{
    for (const auto &[notation, known] : notationNames) {
        if (name == QLatin1String(known)) return notation;
    }
    return std::nullopt;
}

QString nameOfToothNotation(ToothNotation notation)
{
    for (const auto &[known, name] : notationNames) {
        if (known == notation) return QLatin1String(name);
    }
    return {};
}

} // namespace viewer
