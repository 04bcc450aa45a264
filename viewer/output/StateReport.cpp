#include "viewer/output/StateReport.h"

#include "viewer/view/ScenePartNames.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "document/SavedState.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "models/DXGLightweightModel.h"
#include "platform/presenters/Menu.h"
#include "viewer/output/DelegateCallLog.h"
#include "viewer/store/ElasticAttributes.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <initializer_list>
#include <string>

namespace viewer {
namespace {

QJsonArray numbers(std::initializer_list<double> values)
{
    QJsonArray array;
    for (const double value : values)
        array.append(value);
    return array;
}

QJsonArray vector(const kelo::Vector3 &value)
{
    return numbers({value.x, value.y, value.z});
}

QJsonArray limits(const kelo::WindowLimits &window)
{
    return numbers({window.xMin, window.xMax, window.yMin, window.yMax});
}

template<class Visibilities>
QJsonObject visibilities(const Visibilities &visibleByKey)
{
    QJsonObject object;
    for (const auto &[key, visible] : visibleByKey)
        object.insert(QString::fromStdString(key), visible);
    return object;
}

template<class Models>
void appendHiddenSecondary(QJsonArray &keys, const Models &models)
{
    for (const auto &[key, model] : models) {
        if (model->hiddenSecondary()) keys.append(QString::fromStdString(key));
    }
}

template<class TypeIDs>
QJsonObject colorTypeIDs(const TypeIDs &typeIDByKey)
{
    QJsonObject object;
    for (const auto &[key, typeID] : typeIDByKey)
        object.insert(QString::fromStdString(key), static_cast<qint64>(typeID));
    return object;
}

QJsonObject elastic(const kelo::ElasticModel &model)
{
    QJsonObject object = elasticAsJSON(kelo::savedElasticOf(model));
    object.insert(QStringLiteral("uniqueID"), static_cast<qint64>(model.uniqueID()));
    return object;
}

/// What waits to be taken, left waiting.
QJsonObject pendingUpdates(const kelo::DXDocumentModel &document)
{
    return {{QStringLiteral("bracketColorTypeIDUpdates"),
             colorTypeIDs(document.pendingBracketColorTypeIDUpdates())},
            {QStringLiteral("bracketVisibilityUpdates"),
             visibilities(document.pendingBracketVisibilityUpdates())},
            {QStringLiteral("buttonVisibilityUpdates"),
             visibilities(document.pendingButtonVisibilityUpdates())}};
}

void insertDocument(QJsonObject &state, const kelo::DXDocumentModel &document)
{
    state.insert(QStringLiteral("toothVisibilities"), visibilities(document.toothVisibilities()));
    state.insert(QStringLiteral("bracketVisibilities"),
                 visibilities(document.bracketVisibilities()));
    state.insert(QStringLiteral("buttonVisibilities"), visibilities(document.buttonVisibilities()));
    QJsonArray hidden;
    appendHiddenSecondary(hidden, document.bracketModels());
    appendHiddenSecondary(hidden, document.buttonModels());
    state.insert(QStringLiteral("hiddenSecondary"), hidden);
    state.insert(QStringLiteral("bracketColorsTypeIDs"),
                 colorTypeIDs(document.bracketColorsTypeIDs()));
    QJsonArray elastics;
    for (const auto &model : document.elasticModels())
        elastics.append(elastic(*model));
    state.insert(QStringLiteral("elasticModels"), elastics);
    state.insert(QStringLiteral("pending"), pendingUpdates(document));
}

QJsonValue numberOrNull(const std::optional<long> &number)
{
    return number ? QJsonValue(static_cast<qint64>(*number)) : QJsonValue(QJsonValue::Null);
}

QJsonValue textOrNull(const std::optional<std::string> &text)
{
    return text ? QJsonValue(QString::fromStdString(*text)) : QJsonValue(QJsonValue::Null);
}

QJsonValue keysOrNull(const std::optional<std::vector<std::string>> &keys)
{
    if (!keys) return QJsonValue::Null;
    QJsonArray array;
    for (const std::string &key : *keys)
        array.append(QString::fromStdString(key));
    return array;
}

/// Null where the index does not name the elastic that was clicked last: before any was clicked, or
/// when others have moved up to its place.
QJsonValue elasticIndexOrNull(const kelo::DXOpenGL &view)
{
    const auto document = view.documentModel();
    const std::uint64_t index = view.currentEventElasticIndex();
    if (!document || !view.elasticWasClicked() || index >= document->elasticModels().size() ||
        document->elasticModels()[index]->uniqueID() != view.lastClickedElasticID())
        return QJsonValue::Null;
    return static_cast<qint64>(index);
}

QJsonObject menuObject(const kelo::Menu &menu);

QJsonObject menuItemObject(const kelo::MenuItem &item)
{
    if (item.separator) return {{QStringLiteral("separator"), true}};
    QJsonValue image = QJsonValue::Null;
    if (item.image) {
        const QSizeF points = item.image->deviceIndependentSize();
        image = numbers({points.width(), points.height()});
    }
    return {{QStringLiteral("title"), QString::fromStdString(item.title)},
            {QStringLiteral("action"), QString::fromStdString(item.actionName)},
            {QStringLiteral("tag"), static_cast<qint64>(item.tag)},
            {QStringLiteral("enabled"), item.enabled},
            {QStringLiteral("checked"), item.state == kelo::MenuItemState::On},
            {QStringLiteral("indentation"), item.indentationLevel},
            {QStringLiteral("image"), image},
            {QStringLiteral("submenu"),
             item.submenu ? QJsonValue(menuObject(*item.submenu)) : QJsonValue(QJsonValue::Null)}};
}

QJsonObject menuObject(const kelo::Menu &menu)
{
    QJsonArray items;
    for (const auto &item : menu.items())
        items.append(menuItemObject(*item));
    return {{QStringLiteral("title"), QString::fromStdString(menu.title())},
            {QStringLiteral("items"), items}};
}

/// What the clinician is in the middle of.
void insertInteraction(QJsonObject &state, const kelo::DXOpenGL &view)
{
    state.insert(QStringLiteral("displayedDateIsToday"), view.displayedDateIsToday());
    state.insert(QStringLiteral("lastActionType"), static_cast<qint64>(view.lastActionType()));
    state.insert(QStringLiteral("lastBracketColorTypeID"),
                 numberOrNull(view.lastBracketColorTypeID()));
    state.insert(QStringLiteral("repeatActionTimerRunning"), view.repeatActionTimerIsRunning());
    state.insert(QStringLiteral("firstClickedToothName"), textOrNull(view.firstClickedToothName()));
    state.insert(QStringLiteral("lastClickedToothName"), textOrNull(view.lastClickedToothName()));
    state.insert(QStringLiteral("currentEventToothName"), textOrNull(view.currentEventToothName()));
    state.insert(QStringLiteral("currentEventElasticIndex"), elasticIndexOrNull(view));
    state.insert(QStringLiteral("bracketSequence"), keysOrNull(view.bracketSequence()));
}

QJsonArray hiddenParts(const kelo::DXOpenGL &view)
{
    QJsonArray names;
    for (std::size_t i = 0; i < scenePartNames.size(); ++i) {
        if (!view.showsScenePart(static_cast<kelo::ScenePart>(i)))
            names.append(QLatin1String(scenePartNames[i]));
    }
    return names;
}

} // namespace

QByteArray stateAsJSON(const kelo::DXOpenGL &view, const DelegateCallLog &callLog,
                       const kelo::Menu *openMenu)
{
    const auto &rotation = view.worldRotation();
    const auto extents = view.extents();
    QJsonObject state{
        {QStringLiteral("mouseMode"), static_cast<int>(view.mouseMode())},
        {QStringLiteral("mouseModeIsTemporary"), view.mouseModeIsTemporary()},
        {QStringLiteral("permanentMouseMode"), static_cast<int>(view.permanentMouseMode())},
        {QStringLiteral("mouthOpenAngle"), view.mouthOpenAngle()},
        {QStringLiteral("worldRotation"),
         numbers({rotation[0], rotation[1], rotation[2], rotation[3]})},
        {QStringLiteral("worldCenter"), vector(view.worldCenter())},
        {QStringLiteral("rotationCenter"), vector(view.rotationCenter())},
        {QStringLiteral("zoom"), limits(view.zoomBox())},
        {QStringLiteral("window"), limits(view.windowLimits())},
        {QStringLiteral("zRange"), numbers({view.zMin(), view.zMax()})},
        {QStringLiteral("extents"), numbers({extents->xMin(), extents->xMax(), extents->yMin(),
                                             extents->yMax(), extents->zMin(), extents->zMax()})},
        {QStringLiteral("fullScreen"), view.isInFullScreenMode()},
        {QStringLiteral("menu"),
         openMenu ? QJsonValue(menuObject(*openMenu)) : QJsonValue(QJsonValue::Null)},
        {QStringLiteral("calls"), callLog.calls()},
    };
    insertInteraction(state, view);
    state.insert(QStringLiteral("hiddenParts"), hiddenParts(view));
    if (view.documentModel()) insertDocument(state, *view.documentModel());
    return QJsonDocument(state).toJson(QJsonDocument::Indented);
}

} // namespace viewer
