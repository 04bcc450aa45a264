#pragma once

#include "base/TellDelegate.h"
#include "keloOpenGL/bands/BandRenderer.h"
#include "keloOpenGL/editing/BracketEditor.h"
#include "keloOpenGL/editing/BracketHighlight.h"
#include "keloOpenGL/editing/EditingRights.h"
#include "keloOpenGL/editing/ElasticEditor.h"
#include "keloOpenGL/menus/OpenMenus.h"
#include "keloOpenGL/overlay/ButtonPress.h"
#include "keloOpenGL/overlay/Overlay.h"
#include "keloOpenGL/picking/ScenePicker.h"
#include "keloOpenGL/printing/ArchPrinter.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "keloOpenGL/treatment/SceneParts.h"
#include "keloOpenGL/view/PartialFrames.h"
#include "keloOpenGL/view/RotateDrag.h"
#include "keloOpenGL/view/StreamBuffer.h"
#include "platform/time/DelayedCall.h"

#include <QDateTime>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kelo {

/// A pulse that is going on: the model that it is about, and its frames.
struct DXOpenGL::Pulse
{
    Pulse(std::shared_ptr<DXGLightweightModel> model, std::shared_ptr<Pulse> interrupted)
        : highlight(std::move(model)), before(std::move(interrupted))
    {}

    HighlightPulse highlight;
    std::shared_ptr<Pulse> before; ///< that it interrupts
    PartialFrames frames;
};

/// What a treatment view remembers, and the parts that it is put together from. Only the view's own
/// sources include this.
struct DXOpenGL::State
{
    /// An invalid date is none.
    struct Dates
    {
        QDateTime current;
        QDateTime approved;
        QDateTime displayed;
        EditingRights rights; ///< that follow from them
    };
    /// What the last events were about; the view's operations of these names tell more.
    struct EventSubjects
    {
        Name firstClickedToothName;
        Name lastClickedToothName;
        Name currentEventToothName;
        std::uint64_t currentEventElasticIndex = 0;
        std::uint64_t lastClickedElasticID = 0;
        bool elasticWasClicked = false;
    };
    /// The time in which clicks repeat the last action.
    struct RepeatPeriod
    {
        double interval = 0.0; ///< seconds
        DelayedCall end;       ///< pending while it goes on
    };

    DXOpenGLDelegate *delegate = nullptr;

    Dates dates;
    EventSubjects events;

    BracketEditor brackets;
    RepeatPeriod repeatPeriod;
    ElasticEditor elastics;
    BracketHighlight firstBracketHighlight;
    std::shared_ptr<Pulse> pulse; ///< the one that is going on

    RotateDrag drag;
    ButtonPress printButton;
    DelayedCall mouthSnap; ///< after the last turn of the wheel
    ScenePicker picker;

    OpenMenus openMenus;
    ArchPrinter printer;
    Overlay overlay;
    SceneParts sceneParts;
    BandRenderer bandRenderer;
    /// The bands' and the tools'; each fills it before drawing from it.
    StreamBuffer streamedIndices{StreamBuffer::Kind::Indices};
};

template<class Operation, class... Arguments>
bool DXOpenGL::tell(Operation operation, Arguments &&...arguments)
{
    return tellDelegate(teller(), state_->delegate, operation,
                        std::forward<Arguments>(arguments)...);
}

} // namespace kelo
