#include "keloOpenGL/overlay/OverlayTools.h"

#include "keloOpenGL/view/HVOGLBasicView.h"

#include <QtGlobal>

#include <algorithm>

namespace kelo {
namespace {

const TextureSize &sizeIn(const OverlayPictureSizes &sizes, OverlayToolID id)
{
    return sizes[static_cast<std::size_t>(id)];
}

Rect elasticsRect(const OverlayLayout &layout, const OverlayPictureSizes &sizes)
{
    return layout.elasticsToolRect(sizeIn(sizes, OverlayToolID::Elastics));
}

Rect bracketsRect(const OverlayLayout &layout, const OverlayPictureSizes &sizes)
{
    return layout.bracketColorToolRect(sizeIn(sizes, OverlayToolID::Brackets),
                                       sizeIn(sizes, OverlayToolID::Elastics));
}

Rect printRect(const OverlayLayout &layout, const OverlayPictureSizes &sizes)
{
    return layout.printButtonRect(sizeIn(sizes, OverlayToolID::Print));
}

constexpr std::array<OverlayTool, overlayToolCount> toolTable{{
    {OverlayToolID::Elastics, "elastics", "elastics_button", "elastics_button_down",
     HVOGLBasicView::elasticsMode, true, QT_TRANSLATE_NOOP("DXOpenGL", "String elastics"),
     elasticsRect},
    {OverlayToolID::Brackets, "bracket", "bracket_button", "bracket_button_down",
     HVOGLBasicView::colorMode, true, QT_TRANSLATE_NOOP("DXOpenGL", "Place and colour brackets"),
     bracketsRect},
    {OverlayToolID::Print, "print", "printer", nullptr, std::nullopt, false,
     QT_TRANSLATE_NOOP("DXOpenGL", "Print"), printRect},
}};

} // namespace

std::span<const OverlayTool> overlayTools()
{
    return toolTable;
}

const OverlayTool &overlayTool(OverlayToolID id)
{
    return toolTable[static_cast<std::size_t>(id)];
}

const OverlayTool *overlayToolNamed(std::string_view name)
{
    const auto found = std::find_if(toolTable.begin(), toolTable.end(),
                                    [&](const OverlayTool &tool) { return tool.name == name; });
    return found == toolTable.end() ? nullptr : &*found;
}

const OverlayTool *overlayToolAt(const Point &point, const OverlayLayout &layout,
                                 const OverlayPictureSizes &sizes, bool mayEdit)
{
    const auto found =
        std::find_if(toolTable.rbegin(), toolTable.rend(), [&](const OverlayTool &tool) {
            return tool.isThere(mayEdit) && tool.rect(layout, sizes).contains(point);
        });
    return found == toolTable.rend() ? nullptr : &*found;
}

Point overlayPoint(const Point &pointInView, const Size &viewSize)
{
    const double halfWidth = viewSize.width / 2.0;
    const double halfHeight = viewSize.height / 2.0;
    return {(pointInView.x - halfWidth) / halfHeight, (pointInView.y - halfHeight) / halfHeight};
}

} // namespace kelo
