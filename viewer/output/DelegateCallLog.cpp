#include "viewer/output/DelegateCallLog.h"

#include "viewer/output/ElasticListJSON.h"

#include <QString>

namespace viewer {

DelegateCallLog::DelegateCallLog()
{
    const auto visibility = [this](const char *selector) {
        return [this, selector](const std::string &key, bool visible) {
            add(selector, {QString::fromStdString(key), visible});
        };
    };
    delegate_.tooth_visibilityDidChange = visibility("tooth:visibilityDidChange:");
    delegate_.bracket_visibilityDidChange = visibility("bracket:visibilityDidChange:");
    delegate_.button_visibilityDidChange = visibility("button:visibilityDidChange:");
    delegate_.bracketUpdatesAvailable = [this](auto &) { add("bracketUpdatesAvailable:"); };
    delegate_.buttonUpdatesAvailable = [this](auto &) { add("buttonUpdatesAvailable:"); };
    delegate_.elasticModelPlaced = [this](const auto &) { add("elasticModelPlaced:"); };
    delegate_.elasticModelRemoved = [this](const auto &) { add("elasticModelRemoved:"); };
    delegate_.elasticModelColorDidChange = [this](const auto &) {
        add("elasticModelColorDidChange:");
    };
    delegate_.elasticModelsRefactoredAroundBrackets = [this](const auto &keys) {
        QJsonArray names;
        for (const std::string &key : keys)
            names.append(QString::fromStdString(key));
        QJsonArray arguments;
        arguments.append(names); // in braces it would be taken for the list of arguments itself
        add("elasticModelsRefactoredAroundBrackets:", arguments);
    };
}

void DelegateCallLog::logCallsOf(kelo::DXOpenGLDelegate &delegate)
{
    // Each operation takes the place of the one before and calls it.
    const auto logged = [this](auto &operation, const char *selector, auto plainArguments) {
        operation = [this, selector, plainArguments, passOn = operation](auto &&...arguments) {
            add(selector, plainArguments(arguments...));
            if (passOn) passOn(arguments...);
        };
    };
    const auto none = [](auto &&...) { return QJsonArray(); };
    logged(delegate.DXOpenGL_willUpdateDocumentModel, "DXOpenGL:willUpdateDocumentModel:", none);
    logged(delegate.DXOpenGL_didUpdateDocumentModel, "DXOpenGL:didUpdateDocumentModel:", none);
    logged(delegate.toggleFullScreenMode, "toggleFullScreenMode:", none);
    logged(delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right,
           "printImagesLeft:front:right:forDate:elasticsLeft:front:right:",
           [](const auto &, const auto &, const auto &, const QDateTime &date, const auto &left,
              const auto &front, const auto &right) {
               return QJsonArray{date.date().toString(Qt::ISODate), elasticsAsJSON(left),
                                 elasticsAsJSON(front), elasticsAsJSON(right)};
           });
    logged(delegate.launchElasticsConfigAssociationSheetWithElasticModel_namingAction,
           "launchElasticsConfigAssociationSheetWithElasticModel:namingAction:",
           [](const auto &, int namingAction) { return QJsonArray{namingAction}; });
}

void DelegateCallLog::add(const char *selector, const QJsonArray &arguments)
{
    QJsonArray call{QLatin1String(selector)};
    for (const QJsonValue argument : arguments)
        call.append(argument);
    calls_.append(call);
}

} // namespace viewer
