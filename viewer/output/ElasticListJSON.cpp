#include "viewer/output/ElasticListJSON.h"

#include <QJsonObject>
#include <QString>

namespace viewer {

QJsonArray elasticsAsJSON(const kelo::ElasticDescriptions &elastics)
{
    QJsonArray list;
    for (const kelo::ElasticDescription &elastic : elastics) {
        QJsonArray brackets;
        for (const std::string &key : elastic.brackets)
            brackets.append(QString::fromStdString(key));
        QJsonValue color;
        if (elastic.color)
            color = QJsonArray{elastic.color->red, elastic.color->green, elastic.color->blue,
                               elastic.color->alpha};
        list.append(QJsonObject{{QStringLiteral("color"), color},
                                {QStringLiteral("name"), QString::fromStdString(elastic.name)},
                                {QStringLiteral("brackets"), brackets}});
    }
    return list;
}

} // namespace viewer
