#include "viewer/page/PrintRequest.h"

#include "viewer/files/OutputFile.h"
#include "viewer/output/ElasticListJSON.h"
#include "viewer/output/PictureFile.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>

#include <utility>

namespace viewer {
namespace {

/// A column of the page is about 90 mm wide: 2,400 pixels over it are 680 in an inch.
constexpr int pageScale = 3;

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

std::optional<PrintRequest> printRequestOf(kelo::DXOpenGL &view)
{
    std::optional<PrintRequest> taken;
    kelo::DXOpenGLDelegate delegate;
    takePrintRequests(delegate, [&taken](const PrintRequest &request) { taken = request; });
    kelo::DXOpenGLDelegate *const own = view.delegate();
    const auto ownIsRestored = qScopeGuard([&view, own] { view.setDelegate(own); });
    view.setDelegate(&delegate);
    view.submitPrintRequest();
    return taken;
}

TreatmentPage treatmentPage(const PrintRequest &request, const OpenedTreatment &treatment,
                            const PageSettings &settings)
{
    TreatmentPage page;
    page.patientName = treatment.patientName();
    page.patientIdentifier = treatment.patientIdentifier();
    page.date = request.date.date();
    // The request's left is the left side of the page, where a clinician reads the patient's right.
    page.right = {request.left, request.elasticsLeft};
    page.front = {request.front, request.elasticsFront};
    page.left = {request.right, request.elasticsRight};
    page.bracketColors = bracketColorsInUse(*treatment.document());
    page.notation = settings.notation;
    page.greyscale = settings.greyscale;
    return page;
}

TreatmentPage sharpTreatmentPage(const PrintRequest &request, kelo::DXOpenGL &view,
                                 const OpenedTreatment &treatment, const PageSettings &settings)
{
    TreatmentPage page = treatmentPage(request, treatment, settings);
    const auto pictures = view.printPicturesAtScale(pageScale);
    if (pictures.front.isNull()) return page;
    page.right.picture = pictures.left;
    page.front.picture = pictures.front;
    page.left.picture = pictures.right;
    return page;
}

QByteArray elasticsAsJSON(const PrintRequest &request)
{
    const QJsonObject object{
        {QStringLiteral("date"), request.date.date().toString(Qt::ISODate)},
        {QStringLiteral("left"), elasticsAsJSON(request.elasticsLeft)},
        {QStringLiteral("front"), elasticsAsJSON(request.elasticsFront)},
        {QStringLiteral("right"), elasticsAsJSON(request.elasticsRight)},
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
        const QString failure =
            writeWhatWasMade(directory.filePath(QLatin1String(name)), pictureAsPNG(*picture),
                             QStringLiteral("could not be drawn"));
        if (!failure.isEmpty()) return failure;
    }
    return writeWholeFile(directory.filePath(QStringLiteral("elastics.json")),
                          elasticsAsJSON(request));
}

} // namespace viewer
