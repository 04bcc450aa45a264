#pragma once

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"
#include "platform/view/Event.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace kelo::test {

/// A box mesh with outward faces, from one corner to the other.
inline std::shared_ptr<DXGLightweightModel> boxModel(const std::array<float, 3> &low,
                                                     const std::array<float, 3> &high)
{
    std::vector<OBJVertex> vertices;
    std::vector<std::uint32_t> indexes;
    for (int axis = 0; axis < 3; ++axis) {
        for (int side = 0; side < 2; ++side) {
            const int u = (axis + 1) % 3;
            const int v = (axis + 2) % 3;
            const auto first = static_cast<std::uint32_t>(vertices.size());
            for (const auto &[atU, atV] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
                OBJVertex vertex{};
                vertex.position[axis] = side ? high[axis] : low[axis];
                vertex.position[u] = atU ? high[u] : low[u];
                vertex.position[v] = atV ? high[v] : low[v];
                vertex.normal[axis] = side ? 1.0f : -1.0f;
                vertices.push_back(vertex);
            }
            if (side)
                indexes.insert(indexes.end(),
                               {first, first + 1, first + 2, first, first + 2, first + 3});
            else
                indexes.insert(indexes.end(),
                               {first, first + 2, first + 1, first, first + 3, first + 2});
        }
    }
    return std::make_shared<DXGLightweightModel>(vertices.data(), vertices.size(), indexes.data(),
                                                 indexes.size());
}

/// A document in which every key has a box: the upper jaw's boxes above z = 0, the lower jaw's
/// below. All of it spans x -30..30, y -20..20, z -10..10.
inline std::shared_ptr<DXDocumentModel> boxDocument()
{
    const auto document = std::make_shared<DXDocumentModel>();
    document->setUpperGumModel(boxModel({-30.0f, -20.0f, 5.0f}, {30.0f, 20.0f, 10.0f}));
    document->setLowerGumModel(boxModel({-30.0f, -20.0f, -10.0f}, {30.0f, 20.0f, -5.0f}));
    NameKeyDictionary<std::shared_ptr<DXGLightweightModel>> teeth, brackets, buttons;
    const auto add = [&](const std::vector<std::string> &keys, float z) {
        float x = -28.0f;
        for (const std::string &key : keys) {
            teeth[key] = boxModel({x, -15.0f, z}, {x + 3.0f, -10.0f, z + 4.0f});
            brackets[key] = boxModel({x + 1.0f, -17.0f, z + 1.0f}, {x + 2.0f, -15.0f, z + 2.0f});
            buttons[TreatmentNote::buttonNameForToothName(key)] =
                boxModel({x + 1.0f, -10.0f, z + 1.0f}, {x + 2.0f, -9.0f, z + 2.0f});
            x += 4.0f;
        }
    };
    add(TreatmentNote::upperToothNameKeys(), 0.5f);
    add(TreatmentNote::lowerToothNameKeys(), -4.5f);
    document->setToothModels(teeth);
    document->setBracketModels(brackets);
    document->setButtonModels(buttons);
    return document;
}

/// Views that draw without a display, on a clock that the test moves.
class ViewFixture : public testing::Test
{
protected:
    /// An event whose point is (x, y) by the view's own conversion: rows from the bottom, from 0.
    static Event eventAt(EventType type, double x, double y, std::uint32_t modifierFlags = 0)
    {
        Event event;
        event.type = type;
        event.locationInWindow = {x, y + 1.0};
        event.modifierFlags = modifierFlags;
        event.clickCount = 1;
        return event;
    }

    static Event keyEvent(const std::u16string &characters)
    {
        Event event;
        event.type = EventType::KeyDown;
        event.characters = characters;
        return event;
    }

    TestSurface surface{SurfaceKind::Surfaceless};
    TestClock clock;
};

} // namespace kelo::test
