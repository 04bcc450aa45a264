#include "viewer/output/SceneExport.h"

#include "document/DXDocumentModel.h"
#include "geometry/Matrix.h"
#include "keloModel/NameKey.h"
#include "keloModel/TreatmentNote.h"
#include "keloOpenGL/bands/RubberBand.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "models/DXGLightweightModel.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace viewer {
namespace {

using Model = std::shared_ptr<kelo::DXGLightweightModel>;

/// Collects groups; OBJ counts vertices through the whole file.
class OBJText
{
public:
    void addGroup(const std::string &name, const kelo::DXGLightweightModel &model,
                  const kelo::Matrix &transform)
    {
        text_ += "o " + name + "\n";
        for (const kelo::OBJVertex &vertex : model.vertices()) {
            appendLine(
                "v", kelo::Matrix_multiplyVector3(
                         transform, {vertex.position[0], vertex.position[1], vertex.position[2]}));
        }
        for (const kelo::OBJVertex &vertex : model.vertices()) {
            appendLine("vn",
                       kelo::Matrix_multiplyVector3_rotationOnly(
                           transform, {vertex.normal[0], vertex.normal[1], vertex.normal[2]}));
        }
        const auto indexes = model.indexes();
        for (std::size_t i = 0; i + 2 < indexes.size(); i += 3)
            appendFace(std::span(indexes).subspan(i, 3));
        vertexCount_ += model.vertices().size();
    }

    /// A tube, whose faces have four corners.
    void addBand(const std::string &name, std::span<const kelo::RubberBandNode> nodes)
    {
        text_ += "o " + name + "\n";
        std::vector<kelo::RubberBandVertex> vertices(nodes.size() *
                                                     kelo::rubberBandVerticesPerNode);
        kelo::writeRubberBandVertices(nodes, vertices.data());
        for (const kelo::RubberBandVertex &vertex : vertices)
            appendLine("v", vertex.position);
        for (const kelo::RubberBandVertex &vertex : vertices)
            appendLine("vn", vertex.normal);
        std::vector<std::uint32_t> indexes(nodes.size() * kelo::rubberBandIndicesPerNode);
        kelo::writeRubberBandIndices(nodes.size(), indexes.data());
        for (std::size_t i = 0; i < indexes.size(); i += 4)
            appendFace(std::span(indexes).subspan(i, 4));
        vertexCount_ += vertices.size();
    }

    QByteArray bytes() const { return QByteArray::fromStdString(text_); }

private:
    template<class Corners>
    void appendFace(const Corners &corners)
    {
        text_ += "f";
        for (const auto corner : corners) {
            const std::string number = std::to_string(vertexCount_ + corner + 1);
            text_ += " " + number + "//" + number;
        }
        text_ += "\n";
    }

    void appendLine(const char *keyword, const kelo::Vector3 &vector)
    {
        text_ += keyword;
        for (const float component : {vector.x, vector.y, vector.z}) {
            // The shortest text that reads back as the same float, whatever the locale is.
            char number[32];
            const auto end = std::to_chars(number, number + sizeof number, component).ptr;
            text_ += " ";
            text_.append(number, end);
        }
        text_ += "\n";
    }

    std::string text_ = "# the scene as shown; millimetres\n";
    std::size_t vertexCount_ = 0;
};

void addIfVisible(OBJText &text, const std::string &name, const Model &model,
                  const kelo::Matrix &transform)
{
    if (model && !model->hiddenPrimary() && !model->hiddenSecondary())
        text.addGroup(name, *model, transform);
}

template<class Models>
Model modelOf(const Models &models, const std::string &key)
{
    const auto found = models.find(key);
    return found == models.end() ? nullptr : found->second;
}

/// What differs between the jaws.
struct Jaw
{
    kelo::ScenePart arch;
    std::string gumName;
    Model gum;
    std::vector<std::string> toothKeys;
    kelo::Matrix transform;
};

void addJaw(OBJText &text, const kelo::DXDocumentModel &document, const kelo::DXOpenGL &view,
            const Jaw &jaw)
{
    using kelo::ScenePart;
    if (!view.showsScenePart(jaw.arch)) return;
    if (view.showsScenePart(ScenePart::Gums))
        addIfVisible(text, jaw.gumName, jaw.gum, jaw.transform);
    for (const std::string &key : jaw.toothKeys) {
        addIfVisible(text, "tooth_" + key, modelOf(document.toothModels(), key), jaw.transform);
        if (view.showsScenePart(ScenePart::Brackets))
            addIfVisible(text, "bracket_" + key, modelOf(document.bracketModels(), key),
                         jaw.transform);
        const std::string buttonKey = kelo::TreatmentNote::buttonNameForToothName(key);
        if (view.showsScenePart(ScenePart::Buttons))
            addIfVisible(text, "button_" + buttonKey, modelOf(document.buttonModels(), buttonKey),
                         jaw.transform);
    }
}

/// Whether the view draws a band over these keys: it hangs on no arch that is left out.
bool showsElasticOver(const kelo::DXOpenGL &view, const std::vector<std::string> &keys)
{
    using kelo::ScenePart;
    const auto archIsShown = [&](const std::string &key) {
        return view.showsScenePart(kelo::isUpperArchKey(key) ? ScenePart::UpperArch
                                                             : ScenePart::LowerArch);
    };
    return view.showsScenePart(ScenePart::Elastics) &&
           std::all_of(keys.begin(), keys.end(), archIsShown);
}

void addElastics(OBJText &text, const kelo::DXDocumentModel &document, const kelo::DXOpenGL &view)
{
    std::vector<kelo::RubberBandNode> nodes;
    int index = 0;
    for (const auto &elastic : document.elasticModels()) {
        // One that is not drawn, or cannot be, keeps its number.
        const std::string name = "elastic_" + std::to_string(index++);
        if (!showsElasticOver(view, elastic->bracketSequence())) continue;
        const auto *missing = kelo::calculateRubberBandNodes(
            elastic->bracketSequence(), true, view.upperMouthTransform(),
            view.lowerMouthTransform(), view.effectiveMouthOpenAngle(), nodes);
        if (!missing && !nodes.empty()) text.addBand(name, nodes);
    }
}

} // namespace

QByteArray sceneAsOBJ(const kelo::DXOpenGL &view)
{
    OBJText text;
    if (const auto document = view.documentModel()) {
        addJaw(text, *document, view,
               {kelo::ScenePart::UpperArch, "upper_gums", document->upperGumModel(),
                kelo::TreatmentNote::upperToothNameKeys(), view.upperMouthTransform()});
        addJaw(text, *document, view,
               {kelo::ScenePart::LowerArch, "lower_gums", document->lowerGumModel(),
                kelo::TreatmentNote::lowerToothNameKeys(), view.lowerMouthTransform()});
        addElastics(text, *document, view);
    }
    return text.bytes();
}

} // namespace viewer
