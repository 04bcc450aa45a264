#include "viewer/DelegateCallLog.h"

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
        add("elasticModelsRefactoredAroundBrackets:", {names});
    };
}

void DelegateCallLog::add(const char *selector, const QJsonArray &arguments)
{
    QJsonArray call{QLatin1String(selector)};
    for (const QJsonValue argument : arguments)
        call.append(argument);
    calls_.append(call);
}

} // namespace viewer
