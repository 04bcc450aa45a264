#pragma once

#include "models/Color.h"

#include <QDateTime>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QImage;

namespace kelo {

class DXDocumentModel;
class DXOpenGL;
class ElasticModel;
struct ElasticsConfigType;

/// One elastic as a printed page lists it.
struct ElasticDescription
{
    std::optional<Color> color;        ///< the size type's colour
    std::string name;                  ///< the size type's label
    std::vector<std::string> brackets; ///< the keys that the band runs through, in order
    std::shared_ptr<const ElasticModel> elastic = nullptr; ///< the elastic itself
};

using ElasticDescriptions = std::vector<ElasticDescription>;

/// What the treatment view tells its host. An empty member is an operation that the host does not
/// implement; the view goes on without it. The view does not own its delegate.
///
/// An operation may call the view and its document back in any way, let go of the last reference to
/// them, give them other delegates, and destroy this one. The view that it was called with stays
/// alive until it returns.
struct DXOpenGLDelegate
{
    /// Before and after all elastics change their size at once, so that the host can batch.
    std::function<void(DXOpenGL &, DXDocumentModel &)> DXOpenGL_willUpdateDocumentModel;
    std::function<void(DXOpenGL &, DXDocumentModel &)> DXOpenGL_didUpdateDocumentModel;

    /// A double click outside the print button, or Escape in full screen with no elastic being
    /// strung: the host takes the view into full screen or out of it.
    std::function<void(DXOpenGL &)> toggleFullScreenMode;

    /// The print button was pressed and released. The images are 24 bits a pixel, left and right
    /// 725 x 400, front 800 x 400; they borrow pixels that are freed when the call returns, so
    /// the host uses or copies them before. Left and right are sides of the printed page, as a
    /// clinician faces the patient: the left picture shows the patient's right. The lists hold the
    /// elastics of each side (see TreatmentNoteKeys).
    std::function<void(const QImage &left, const QImage &front, const QImage &right,
                       const QDateTime &date, const ElasticDescriptions &elasticsLeft,
                       const ElasticDescriptions &elasticsFront,
                       const ElasticDescriptions &elasticsRight)>
        printImagesLeft_front_right_forDate_elasticsLeft_front_right;

    /// The clinician wants to name this elastic's configuration; the naming action is 1 when it has
    /// a name already (to rename it), otherwise 0.
    std::function<void(const std::shared_ptr<ElasticModel> &, int namingAction)>
        launchElasticsConfigAssociationSheetWithElasticModel_namingAction;

    /// A question, not an event: asked before a named configuration is placed where a band over the
    /// same members is placed already, which the new one would hide. False leaves everything as it
    /// is. Without an answer it is placed.
    std::function<bool(const std::shared_ptr<ElasticsConfigType> &)> mayPlaceAgain;
};

} // namespace kelo
