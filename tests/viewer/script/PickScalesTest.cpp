// From what a script names to what the view picks, at the backing scales of real screens.

#include "tests/viewer/support/ScriptFixture.h"
#include "viewer/script/PickPoints.h"

#include <set>

namespace {

using viewer::test::ScriptFixture;

constexpr double scales[] = {1.0, 1.25, 1.5, 1.75, 2.0, 3.0};

class PickScales : public ScriptFixture, public testing::WithParamInterface<double>
{
protected:
    PickScales() { view->setSurfacelessScaleFactor(GetParam()); }

    /// What a click in the middle of an object's area reaches, by way of an event.
    std::optional<std::uint32_t> pickedAt(std::uint32_t identifier)
    {
        const auto point = viewer::clickablePoint(*view, identifier);
        if (!point) return std::nullopt;
        kelo::Event event;
        event.type = kelo::EventType::LeftMouseDown;
        // Windows count rows from 1 at the bottom, the view from 0.
        event.locationInWindow = {point->x, point->y + 1.0};
        return view->pickIdentifierAtPoint(view->backingPointForEvent(event));
    }

    /// Thirty bands: from every upper tooth to the lower one under it and to that one's neighbour,
    /// then along the upper arch.
    void placeThirtyElastics()
    {
        kelo::DXDocumentModel::ElasticModels elastics;
        const auto place = [&](int from, int to) {
            elastics.push_back(std::make_shared<kelo::ElasticModel>(
                nullptr, document().availableElasticsSizeTypes().at(1),
                std::vector<std::string>{std::to_string(from), std::to_string(to)}));
        };
        for (int upper = 3; upper <= 14; ++upper)
            place(upper, 33 - upper);
        for (int upper = 3; upper <= 13; ++upper)
            place(upper, 32 - upper);
        for (int upper = 4; upper <= 10; ++upper)
            place(upper, upper + 1);
        document().setElasticModels(elastics);
    }
};

constexpr const char *poses[] = {
    "rotation 90 -1 0 0\nmouth 40\n",    "rotation 120 -1 1 1\nmouth 40\n",
    "rotation 120 -1 -1 -1\nmouth 40\n", "rotation 90 -1 0 0\nmouth 0\n",
    "rotation 20 -1 0 0\nmouth 50\n",    "rotation 160 -1 0 0\nmouth -50\n"};

TEST_P(PickScales, aClickInTheMiddleOfEachOfThirtyElasticsReachesIt)
{
    placeThirtyElastics();
    ASSERT_EQ(document().elasticModels().size(), 30u);
    std::set<std::uint32_t> reached;
    for (const char *pose : poses) {
        play(pose);
        for (std::uint32_t index = 0; index < 30; ++index) {
            if (reached.contains(index)) continue;
            const auto picked = pickedAt(0x800000 + index);
            if (!picked) continue; // behind others in this pose
            EXPECT_EQ(*picked, 0x800000 + index) << pose;
            reached.insert(index);
        }
    }
    EXPECT_EQ(reached.size(), 30u);
    EXPECT_NO_GL_ERROR();
}

TEST_P(PickScales, aScriptThatClicksAnElasticOpensTheMenuOfThatElastic)
{
    placeThirtyElastics();
    play(poses[0]);
    for (const char *index : {"2", "4", "5", "7"}) {
        play(QByteArray("click elastic ") + index + "\n");
        ASSERT_NE(player->openMenu(), nullptr) << index;
        EXPECT_EQ(view->currentEventElasticIndex(), static_cast<std::uint64_t>(std::stoi(index)));
        play("dismiss\n");
    }
    EXPECT_NO_GL_ERROR();
}

TEST_P(PickScales, aClickAtTheInnermostPointOfAToothBracketOrButtonReachesIt)
{
    std::set<std::uint32_t> reached;
    std::size_t modelCount = 0;
    const auto click = [&](const kelo::DXDocumentModel::Models &models) {
        modelCount += models.size();
        for (const auto &[key, model] : models) {
            const std::uint32_t identifier = model->uniqueID();
            if (reached.contains(identifier)) continue;
            const auto picked = pickedAt(identifier);
            if (!picked) continue;
            EXPECT_EQ(*picked, identifier) << key;
            reached.insert(identifier);
        }
    };
    for (const char *pose : poses) {
        play(pose);
        modelCount = 0;
        click(document().toothModels());
        click(document().bracketModels());
        click(document().buttonModels());
    }
    EXPECT_EQ(reached.size(), modelCount);
    EXPECT_EQ(modelCount, 3u * 28u);
    EXPECT_NO_GL_ERROR();
}

INSTANTIATE_TEST_SUITE_P(At, PickScales, testing::ValuesIn(scales), [](const auto &one) {
    return "scale" + std::to_string(static_cast<int>(one.param * 100.0)) + "percent";
});

} // namespace
