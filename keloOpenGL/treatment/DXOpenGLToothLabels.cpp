// The texts beside the teeth.

#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/DXOpenGLState.h"

#include "document/DXDocumentModel.h"
#include "document/ModelLookup.h"
#include "keloOpenGL/bands/RubberBandTables.h"
#include "models/DXGLightweightModel.h"

#include <functional>
#include <utility>
#include <vector>

namespace kelo {
namespace {

Extents extentsOfArch(const DXDocumentModel::Models &teeth, bool isUpper)
{
    MutableExtents arch;
    for (const auto &[key, tooth] : teeth) {
        if (isUpperToothName(key) == isUpper) arch.absorbExtents(tooth->extents());
    }
    return arch;
}

/// The teeth that have a label and are in the picture.
std::vector<LabelledTooth>
labelledTeeth(const DXDocumentModel::Models &teeth, const ToothLabels &labels,
              const std::function<bool(const DXGLightweightModel &)> &shows)
{
    std::vector<LabelledTooth> labelled;
    for (const auto &[key, text] : labels) {
        const auto tooth = modelUnderKey(teeth, key);
        if (!tooth || tooth->hiddenPrimary() || !shows(*tooth)) continue;
        labelled.push_back({text, tooth->extents(), isUpperToothName(key)});
    }
    return labelled;
}

Matrix currentMatrix(GLenum name)
{
    Matrix matrix;
    glGetFloatv(name, matrix.m);
    return matrix;
}

struct JawTransforms
{
    Matrix lower, upper;
};

/// The scene of these labels in the current matrices.
ToothLabelScene currentScene(const DXDocumentModel::Models &teeth,
                             std::vector<LabelledTooth> labelled, const JawTransforms &jaws,
                             double aspect, double viewHeight)
{
    const Matrix toEye = currentMatrix(GL_MODELVIEW_MATRIX);
    return {std::move(labelled),
            extentsOfArch(teeth, false),
            extentsOfArch(teeth, true),
            Matrix_multiplied(toEye, jaws.lower),
            Matrix_multiplied(toEye, jaws.upper),
            currentMatrix(GL_PROJECTION_MATRIX),
            aspect,
            viewHeight};
}

} // namespace

const ToothLabels &DXOpenGL::toothLabels() const
{
    return state_->overlay.toothLabels().labels();
}

void DXOpenGL::setToothLabels(ToothLabels labels)
{
    if (labels == toothLabels()) return;
    state_->overlay.toothLabels().setLabels(std::move(labels));
    setNeedsDisplay(true);
}

std::vector<PlacedToothLabel> DXOpenGL::placedToothLabels()
{
    const auto document = documentModel();
    if (toothLabels().empty() || isInColorPickMode() || !document) return {};
    return state_->overlay.toothLabels().placedIn(toothLabelScene(*document));
}

ToothLabelScene DXOpenGL::toothLabelScene(const DXDocumentModel &document) const
{
    const auto shows = [this](const DXGLightweightModel &tooth) { return shouldDraw(tooth); };
    const JawTransforms jaws{lowerMouthTransform(), upperMouthTransform()};
    return currentScene(document.toothModels(),
                        labelledTeeth(document.toothModels(), toothLabels(), shows), jaws,
                        overlayAspect(), bounds().size.height);
}

} // namespace kelo
