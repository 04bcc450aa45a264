#pragma once

#include "base/Rect.h"
#include "keloOpenGL/bands/BandRenderer.h"
#include "keloOpenGL/menus/OpenMenus.h"
#include "keloOpenGL/overlay/OverlayRenderer.h"
#include "keloOpenGL/overlay/ToothLabels.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/ScenePart.h"
#include "keloOpenGL/view/OffscreenTarget.h"
#include "keloOpenGL/view/StreamBuffer.h"
#include "platform/view/Event.h"

#include <QDateTime>

#include <bitset>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo {

class HVOGLMaterial;
class PickBox;
class StringTexture;
class Timer;

/// What a treatment view remembers, and the parts that it is put together from. Only the view's own
/// sources include this.
struct DXOpenGL::State
{
    DXOpenGLDelegate *delegate = nullptr;
    Point _dragOrigin;
    bool _rotating = false;
    std::optional<MouseButton> rotatingButton; ///< that the rotate drag began with
    QDateTime _currentDate;
    QDateTime _approvedDate;
    QDateTime _displayedDate;
    bool _displayedDateIsToday = false;
    int printScale = 1;      ///< device pixels for each pixel of a print request
    bool _printMode = false; ///< while the scene is drawn for printing
    std::shared_ptr<StringTexture> dateStringTexture;
    Name firstClickedToothName;
    Name lastClickedToothName;
    std::optional<std::vector<std::string>> bracketSequence;
    bool isPlacing = false; ///< while the document is given the elastic that was strung
    OpenMenus openMenus;
    std::uint64_t lastClickedElasticID = 0;
    bool elasticWasClicked = false;
    /// The first bracket's own material, while that bracket is highlighted.
    std::shared_ptr<HVOGLMaterial> savedBracketMaterial;
    std::shared_ptr<HVOGLMaterial> highlightMaterial; ///< what that bracket has meanwhile
    std::optional<long> lastBracketColorTypeID;
    std::optional<long> lastElasticsSizeTypeID;
    std::int64_t lastActionType = 0;
    std::weak_ptr<Timer> repeatActionTimer; ///< the run loop holds it
    double repeatActionTimerInterval = 0.0;
    std::shared_ptr<Timer> verticalScrollSnapMouthClosedTimer;
    Name currentEventToothName;
    std::uint64_t currentEventElasticIndex = 0;
    bool _printButtonTracking = false;
    bool _printButtonDown = false;
    bool texturesWereLost = false;
    ToothLabels toothLabels;
    std::map<std::string, std::shared_ptr<StringTexture>> toothLabelTextures; ///< by text
    std::bitset<scenePartCount> hiddenParts;
    std::vector<std::uint64_t> modelsLeftOut; ///< unique identifiers in order, for the next draw
    OffscreenTarget pickTarget;
    const PickBox *onlyPart = nullptr; ///< there while only some pixels are drawn
    std::shared_ptr<Pulse> pulse;      ///< the one that is going on
    BandRenderer bandRenderer;
    OverlayRenderer overlayRenderer;
    /// The bands' and the tools'; each fills it before drawing from it.
    StreamBuffer streamedIndices{StreamBuffer::Kind::Indices};
};

} // namespace kelo
