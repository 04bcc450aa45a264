#include "platform/gl.h"

#include "tests/viewer/script/RandomScriptScene.h"

#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/bands/RubberBandTables.h"
#include "tests/support/GLTest.h"
#include "viewer/files/OutputFile.h"
#include "viewer/output/StateReport.h"
#include "viewer/script/Script.h"
#include "viewer/store/TreatmentFile.h"
#include "viewer/treatment/MeshFolder.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <stdexcept>

namespace viewer::test {
namespace {

using kelo::TreatmentNote;

const QString treatmentFile = QStringLiteral("treatment.json");

struct Box
{
    std::array<double, 3> low, high;
};

Box boxAround(const kelo::Vector3 &middle, double halfWidth, double halfHeight)
{
    return {{middle.x - halfWidth, middle.y - halfWidth, middle.z - halfHeight},
            {middle.x + halfWidth, middle.y + halfWidth, middle.z + halfHeight}};
}

kelo::Vector3 hook(const std::string &key)
{
    return kelo::bracketHookPositions().at(key).position;
}

/// A bracket and a button are on the two sides of their tooth.
kelo::Vector3 middleOfTooth(const std::string &key)
{
    const kelo::Vector3 outside = hook(key);
    const kelo::Vector3 inside = hook(TreatmentNote::buttonNameForToothName(key));
    return {(outside.x + inside.x) / 2.0f, (outside.y + inside.y) / 2.0f,
            (outside.z + inside.z) / 2.0f};
}

/// Over, or under, all teeth of a jaw.
Box gum(const std::vector<std::string> &keys, bool isUpper)
{
    Box box{{-25.0, -18.0, 1000.0}, {25.0, 20.0, -1000.0}};
    for (const std::string &key : keys) {
        box.low[2] = std::min(box.low[2], static_cast<double>(middleOfTooth(key).z));
        box.high[2] = std::max(box.high[2], static_cast<double>(middleOfTooth(key).z));
    }
    if (isUpper)
        box.low[2] = box.high[2] + 3.0, box.high[2] += 6.0;
    else
        box.high[2] = box.low[2] - 3.0, box.low[2] -= 6.0;
    return box;
}

/// Eight corners with a normal each, wound so that the faces are seen from outside.
QByteArray boxAsOBJ(const Box &box)
{
    QByteArray text;
    const auto line = [&text](const char *verb, double x, double y, double z) {
        text += QByteArray(verb) + ' ' + QByteArray::number(x, 'f', 4) + ' ' +
                QByteArray::number(y, 'f', 4) + ' ' + QByteArray::number(z, 'f', 4) + '\n';
    };
    const auto isHigh = [](int corner, int axis) { return (corner >> axis & 1) != 0; };
    for (int corner = 0; corner < 8; ++corner) {
        const auto at = [&](int axis) {
            return isHigh(corner, axis) ? box.high[axis] : box.low[axis];
        };
        line("v", at(0), at(1), at(2));
    }
    const double part = 1.0 / std::sqrt(3.0);
    for (int corner = 0; corner < 8; ++corner) {
        const auto at = [&](int axis) { return isHigh(corner, axis) ? part : -part; };
        line("vn", at(0), at(1), at(2));
    }
    const auto triangle = [&text](int a, int b, int c) {
        text += 'f';
        for (const int corner : {a, b, c}) {
            const QByteArray number = QByteArray::number(corner + 1);
            text += ' ' + number + "//" + number;
        }
        text += '\n';
    };
    for (int axis = 0; axis < 3; ++axis) {
        const int u = 1 << (axis + 1) % 3;
        const int v = 1 << (axis + 2) % 3;
        const int high = 1 << axis;
        triangle(high, high + u, high + u + v);
        triangle(high, high + u + v, high + v);
        triangle(0, u + v, u);
        triangle(0, v, u + v);
    }
    return text;
}

/// So that there is something to place too. Not what the sample patient's elastics run over.
void takeSomeOut(NoteRecord &note)
{
    for (const char *key : {"2", "8", "9", "15", "18", "25", "31"})
        note.bracketVisibilities[key] = false;
    for (auto &[key, isPlaced] : note.buttonVisibilities)
        isPlaced = QByteArray::fromStdString(key).chopped(1).toInt() % 2 != 0;
    note.toothVisibilities["7"] = false;
    note.toothVisibilities["24"] = false;
}

void write(const QString &folder, const QString &name, const QByteArray &content)
{
    const QString failure = writeWholeFile(QDir(folder).filePath(name), content);
    if (!failure.isEmpty()) throw std::runtime_error(failure.toStdString());
}

void writeMesh(const QString &folder, const std::string &name, const Box &box)
{
    write(folder, QString::fromStdString(name + ".obj"), boxAsOBJ(box));
}

/// What the document says of a bracket's colour; white for none.
std::optional<kelo::Color> colorOfBracket(const kelo::DXDocumentModel &document,
                                          const std::string &key)
{
    const auto &typeIDs = document.bracketColorsTypeIDs();
    const auto typeID = typeIDs.find(key);
    if (typeID == typeIDs.end()) return kelo::Color::whiteColor();
    const auto &types = document.availableBracketColorTypes();
    const auto type = types.find(typeID->second);
    if (type == types.end() || !type->second->bracketColor) return std::nullopt;
    return kelo::Color(*type->second->bracketColor);
}

bool isFirstMember(const kelo::DXOpenGL &view, const std::string &key)
{
    const auto &sequence = view.bracketSequence();
    return sequence && !sequence->empty() && sequence->front() == key;
}

/// Brackets have the document's colours, and only one on which an elastic that is being strung
/// began is highlighted; buttons have the materials that they began with.
QString materialComplaint(const RandomScriptScene &scene)
{
    const kelo::DXOpenGL &view = scene.view();
    const kelo::DXDocumentModel &document = scene.document();
    for (const auto &[key, bracket] : document.bracketModels()) {
        const auto material = bracket->material();
        if (material->color() != colorOfBracket(document, key))
            return QStringLiteral("bracket %1 has another colour than the document says")
                .arg(QString::fromStdString(key));
        if (!isFirstMember(view, key) &&
            material->shininess() != kelo::HVOGLMaterial::defaultShininess)
            return QStringLiteral("bracket %1 is highlighted").arg(QString::fromStdString(key));
    }
    for (const auto &[key, button] : document.buttonModels()) {
        if (button->material() != scene.firstMaterialOfButton(key))
            return QStringLiteral("button %1 has another material than before")
                .arg(QString::fromStdString(key));
    }
    return {};
}

/// An elastic is strung in its mode only, from the member that was clicked first, over at least one
/// and over none twice in a row.
QString stringingComplaint(const kelo::DXOpenGL &view)
{
    const auto &sequence = view.bracketSequence();
    if (!sequence) return {};
    if (!view.mouseModeIsElastics())
        return QStringLiteral("an elastic is being strung in the mode %1").arg(view.mouseMode());
    if (sequence->empty()) return QStringLiteral("an elastic is being strung over nothing");
    const auto twice = std::adjacent_find(sequence->begin(), sequence->end());
    if (twice != sequence->end())
        return QStringLiteral("an elastic is being strung over %1 twice in a row")
            .arg(QString::fromStdString(*twice));
    const auto &first = view.firstClickedToothName();
    if (sequence->front() != first)
        return QStringLiteral("an elastic is being strung from %1, but %2 was clicked first")
            .arg(QString::fromStdString(sequence->front()))
            .arg(QString::fromStdString(first.value_or("nothing")));
    return {};
}

/// Elastics run over at least two members, all of them shown. None is placed over a member twice in
/// a row; later, where a member between two passes of another is removed, the passes meet.
QString elasticComplaint(const RandomScriptScene &scene)
{
    const kelo::DXDocumentModel &document = scene.document();
    int number = 0;
    for (const auto &elastic : document.elasticModels()) {
        const auto &sequence = elastic->bracketSequence();
        if (sequence.size() < 2)
            return QStringLiteral("elastic %1 runs over less than two members").arg(number);
        const auto twice = std::adjacent_find(sequence.begin(), sequence.end());
        if (twice != sequence.end() && scene.isNewElastic(elastic->uniqueID()))
            return QStringLiteral("elastic %1 was placed over %2 twice in a row")
                .arg(number)
                .arg(QString::fromStdString(*twice));
        for (const std::string &key : sequence) {
            const auto &models =
                key.back() == 'l' ? document.buttonModels() : document.bracketModels();
            const auto &model = models.at(key);
            if (model->hiddenPrimary() || model->hiddenSecondary())
                return QStringLiteral("elastic %1 runs over %2, which is hidden")
                    .arg(number)
                    .arg(QString::fromStdString(key));
        }
        ++number;
    }
    return {};
}

/// The temporary mode lasts as long as Control is held, clicks repeat an action or a menu is open,
/// and a drag turns the jaws only while a button is held.
QString inputComplaint(const RandomScriptScene &scene)
{
    const kelo::DXOpenGL &view = scene.view();
    const bool controlIsHeld = (view.currentModifierFlags() & kelo::ModifierFlag::Control) != 0;
    if (view.mouseModeIsTemporary() && !controlIsHeld && !view.repeatActionTimerIsRunning() &&
        !scene.openMenu())
        return QStringLiteral("the mode %1 is temporary without a reason").arg(view.mouseMode());
    if (view.isRotating() && !scene.buttonIsHeld() && !scene.openMenu())
        return QStringLiteral("the jaws are being turned with no button held");
    return {};
}

/// A key that a note leaves out has the usual value.
bool readsBack(const kelo::NameKeyDictionary<bool> &stored, bool usual,
               const kelo::NameKeyDictionary<bool> &present)
{
    return std::all_of(present.begin(), present.end(), [&stored, usual](const auto &entry) {
        const auto found = stored.find(entry.first);
        return (found == stored.end() ? usual : found->second) == entry.second;
    });
}

/// The type of a bracket's colour; 4999 where there is none.
template<class TypeIDs>
long typeIDOf(const TypeIDs &typeIDs, const std::string &key)
{
    const auto found = typeIDs.find(key);
    return found == typeIDs.end()
               ? kelo::noBracketColorTypeID
               : std::optional<long>(found->second).value_or(kelo::noBracketColorTypeID);
}

bool colorsReadBack(const NoteRecord &note, const kelo::DXDocumentModel &document)
{
    const auto &brackets = document.bracketModels();
    return std::all_of(brackets.begin(), brackets.end(), [&](const auto &bracket) {
        return typeIDOf(note.bracketColorTypeIDs, bracket.first) ==
               typeIDOf(document.bracketColorsTypeIDs(), bracket.first);
    });
}

std::vector<kelo::SavedElastic> recordsOf(const kelo::DXDocumentModel::ElasticModels &elastics)
{
    std::vector<kelo::SavedElastic> records;
    for (const auto &elastic : elastics) {
        kelo::SavedElastic record;
        if (const auto &type = elastic->elasticsConfigType())
            record.elasticsConfigTypeID = type->typeID;
        if (const auto &type = elastic->elasticsSizeType())
            record.elasticsSizeTypeID = type->typeID;
        record.bracketSequence = elastic->bracketSequence();
        records.push_back(record);
    }
    return records;
}

bool isFinite(const kelo::DXOpenGL &view)
{
    const auto zoom = view.zoomBox();
    const auto window = view.windowLimits();
    const auto &rotation = view.worldRotation();
    const auto center = view.worldCenter();
    const double numbers[] = {view.mouthOpenAngle(),
                              rotation[0],
                              rotation[1],
                              rotation[2],
                              rotation[3],
                              center.x,
                              center.y,
                              center.z,
                              zoom.xMin,
                              zoom.xMax,
                              zoom.yMin,
                              zoom.yMax,
                              window.xMin,
                              window.xMax,
                              window.yMin,
                              window.yMax,
                              view.zMin(),
                              view.zMax()};
    return std::all_of(std::begin(numbers), std::end(numbers),
                       [](double number) { return std::isfinite(number); });
}

/// Between the drawings nothing is left on the stacks.
QString stackComplaint()
{
    for (const auto &[depth, level, name] :
         {std::tuple{GL_MODELVIEW_STACK_DEPTH, 1, "model-view"},
          std::tuple{GL_PROJECTION_STACK_DEPTH, 1, "projection"},
          std::tuple{GL_ATTRIB_STACK_DEPTH, 0, "attribute"},
          std::tuple{GL_CLIENT_ATTRIB_STACK_DEPTH, 0, "client attribute"}}) {
        GLint now = level;
        glGetIntegerv(static_cast<GLenum>(depth), &now);
        if (now != level)
            return QStringLiteral("the %1 stack is %2 deep").arg(QLatin1String(name)).arg(now);
    }
    return {};
}

} // namespace

void writeRandomScriptScene(const QString &folder)
{
    const auto upper = TreatmentNote::upperToothNameKeys();
    const auto lower = TreatmentNote::lowerToothNameKeys();
    for (const auto &keys : {upper, lower}) {
        for (const std::string &key : keys) {
            writeMesh(folder, "_tooth_" + key, boxAround(middleOfTooth(key), 2.2, 3.0));
            writeMesh(folder, "bracket_" + key, boxAround(hook(key), 1.2, 1.2));
            writeMesh(folder, "button_" + key,
                      boxAround(hook(TreatmentNote::buttonNameForToothName(key)), 1.0, 1.0));
        }
    }
    writeMesh(folder, "_upper_gums", gum(upper, true));
    writeMesh(folder, "_lower_gums", gum(lower, false));
    const QStringList problems = meshFolderProblems(folder);
    if (!problems.isEmpty()) throw std::runtime_error(problems.first().toStdString());

    const QDate date(2026, 11, 20);
    TreatmentRecord record = sampleTreatment(date);
    record.currentDate = date;
    takeSomeOut(record.notes.back());
    const auto bundle = kelo::ResourceBundle::bundleWithIdentifier(kelo::keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType("catalogue", "json") : std::nullopt;
    QFile file(QString::fromStdString(path.value_or("")));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("There is no catalogue.");
    const auto reading = kelo::catalogueFromJSON(file.readAll());
    if (!reading.catalogue) throw std::runtime_error(reading.problems.front());
    write(folder, treatmentFile, treatmentAsJSON({record, *reading.catalogue}));
}

RandomScriptScene::RandomScriptScene(const QString &folder)
{
    // A frame this small is drawn sooner without handing it to other threads.
    if (!qEnvironmentVariableIsSet("LP_NUM_THREADS")) qputenv("LP_NUM_THREADS", "0");
    previousAlerts_ =
        kelo::AlertPresenter::setPresenter([this](const kelo::Alert &) { ++alertCount_; });
    view_ = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {120.0, 90.0}});
    CommandLine commandLine;
    commandLine.headless = true;
    commandLine.meshes = folder;
    commandLine.file = QDir(folder).filePath(treatmentFile);
    treatment_ = std::make_unique<OpenedTreatment>(commandLine);
    treatment_->callLog().logCallsOf(delegate_);
    view_->setDelegate(&delegate_);
    treatment_->showIn(*view_);
    for (const auto &[key, button] : document().buttonModels())
        buttonMaterials_[key] = button->material();
    player_ = std::make_unique<ScriptPlayer>(*view_, *clock_);
}

RandomScriptScene::~RandomScriptScene()
{
    player_.reset();
    view_->setDelegate(nullptr);
    view_.reset();
    treatment_.reset();
    kelo::AlertPresenter::setPresenter(previousAlerts_);
}

void RandomScriptScene::noteChoice(const MenuCommand &choice)
{
    const kelo::Menu *menu = openMenu().get();
    std::string action;
    for (const QString &title : choice.titles) {
        if (!menu) return;
        const auto &items = menu->items();
        const auto item = std::find_if(items.begin(), items.end(), [&title](const auto &one) {
            return !one->separator && one->title == title.toStdString();
        });
        if (item == items.end() || !(*item)->enabled) return;
        action = (*item)->actionName;
        menu = (*item)->submenu.get();
    }
    chosenActions_.push_back(action);
}

bool RandomScriptScene::play(const QByteArray &line)
{
    const ParsedScript script = parseScript(line);
    if (!script.problems.isEmpty())
        throw std::logic_error(line.toStdString() + ": " + script.problems.first().toStdString());
    if (script.lines.empty()) return false;
    const ScriptCommand &command = script.lines.front().command;
    for (const auto &elastic : document().elasticModels())
        knownElastics_.insert(elastic->uniqueID());
    if (const auto *choice = std::get_if<MenuCommand>(&command)) noteChoice(*choice);
    try {
        if (!player_->play(command).isEmpty()) return false;
        view_->displayIfNeeded();
    } catch (const std::exception &exception) {
        if (thrown_.isEmpty()) thrown_ = QString::fromUtf8(exception.what());
    }
    if (std::holds_alternative<PressCommand>(command)) buttonIsHeld_ = true;
    if (std::holds_alternative<ReleaseCommand>(command)) buttonIsHeld_ = false;
    return true;
}

QByteArray RandomScriptScene::state() const
{
    return stateAsJSON(*view_, treatment_->callLog(), openMenu().get());
}

QString complaintAbout(RandomScriptScene &scene)
{
    if (!scene.thrown().isEmpty()) return QStringLiteral("thrown: ") + scene.thrown();
    const auto complaints = scene.document().checkSanity();
    if (!complaints.empty()) return QString::fromStdString(complaints.front());
    const auto noError = kelo::test::noGLError();
    if (!noError) return QString::fromUtf8(noError.message());
    if (!isFinite(scene.view())) return QStringLiteral("a number of the view is not finite");
    for (const QString &complaint :
         {stackComplaint(), stringingComplaint(scene.view()), materialComplaint(scene),
          elasticComplaint(scene), inputComplaint(scene)}) {
        if (!complaint.isEmpty()) return complaint;
    }
    return {};
}

QString complaintAboutStorage(RandomScriptScene &scene)
{
    const auto text = scene.treatment().asJSON();
    if (!text) return text.sentence();
    const auto reading = treatmentFromJSON(text.value(), kelo::Catalogue());
    if (!reading.file) return reading.problems.first();
    const NoteRecord &note = reading.file->treatment.notes.back();
    const kelo::DXDocumentModel &document = scene.document();
    if (!readsBack(note.toothVisibilities, true, document.toothVisibilities()))
        return QStringLiteral("the stored teeth are others");
    if (!readsBack(note.bracketVisibilities, false, document.bracketVisibilities()))
        return QStringLiteral("the stored brackets are others");
    if (!readsBack(note.buttonVisibilities, false, document.buttonVisibilities()))
        return QStringLiteral("the stored buttons are others");
    if (!colorsReadBack(note, document)) return QStringLiteral("the stored colours are others");
    if (note.elastics != recordsOf(document.elasticModels()))
        return QStringLiteral("the stored elastics are others");
    return {};
}

} // namespace viewer::test
