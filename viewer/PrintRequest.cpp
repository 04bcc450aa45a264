#include "viewer/PrintRequest.h"

#include "viewer/OutputFile.h"

#include <QBuffer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace viewer {
namespace {

QJsonArray listAsJSON(const kelo::ElasticDescriptions &elastics)
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

QString writePicture(const QImage &picture, const QString &path)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG")) return path + QStringLiteral(": could not be drawn");
    return writeWholeFile(path, png);
}

} // namespace

void takePrintRequests(kelo::DXOpenGLDelegate &delegate,
                       std::function<void(const PrintRequest &)> handler)
{
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right =
        [handle = std::move(handler)](const QImage &left, const QImage &front, const QImage &right,
                                      const QDateTime &date,
                                      const kelo::ElasticDescriptions &elasticsLeft,
                                      const kelo::ElasticDescriptions &elasticsFront,
                                      const kelo::ElasticDescriptions &elasticsRight) {
            handle({left.copy(), front.copy(), right.copy(), date, elasticsLeft, elasticsFront,
                    elasticsRight});
        };
}

TreatmentPage treatmentPage(const PrintRequest &request, const kelo::DXDocumentModel &document,
                            const QString &patientName, const QString &patientIdentifier)
{
    TreatmentPage page;
    page.patientName = patientName;
    page.patientIdentifier = patientIdentifier;
    page.date = request.date.date();
    page.right = {request.right, request.elasticsRight};
    page.front = {request.front, request.elasticsFront};
    page.left = {request.left, request.elasticsLeft};
    page.bracketColors = bracketColorsInUse(document);
    return page;
}

QByteArray elasticsAsJSON(const PrintRequest &request)
{
    const QJsonObject object{
        {QStringLiteral("date"), request.date.date().toString(Qt::ISODate)},
        {QStringLiteral("left"), listAsJSON(request.elasticsLeft)},
        {QStringLiteral("front"), listAsJSON(request.elasticsFront)},
        {QStringLiteral("right"), listAsJSON(request.elasticsRight)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

QString writePrintImages(const PrintRequest &request, const QString &folder)
{
    if (!QDir().mkpath(folder)) return folder + QStringLiteral(": the folder could not be made");
    const QDir directory(folder);
    const std::pair<const char *, const QImage *> pictures[] = {
        {"left.png", &request.left}, {"front.png", &request.front}, {"right.png", &request.right}};
    for (const auto &[name, picture] : pictures) {
        const QString failure = writePicture(*picture, directory.filePath(QLatin1String(name)));
        if (!failure.isEmpty()) return failure;
    }
    return writeWholeFile(directory.filePath(QStringLiteral("elastics.json")),
                          elasticsAsJSON(request));
}

} // namespace viewer
