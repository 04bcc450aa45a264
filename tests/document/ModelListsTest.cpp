#include "document/ModelLists.h"

#include "document/ModelNotLoaded.h"
#include "tests/document/DocumentFixture.h"

namespace kelo {
namespace {

/// The message of the refusal, or an empty string.
template<class List>
std::string refusalOf(List &&list)
{
    try {
        list();
    } catch (const ModelNotLoaded &error) {
        return error.what();
    }
    return {};
}

ModelSet completeSet()
{
    using test::joined;
    const auto teeth =
        joined(TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys());
    const auto buttons = joined(TreatmentNote::upperLingualButtonNameKeys(),
                                TreatmentNote::lowerLingualButtonNameKeys());
    return {test::emptyModels(teeth), test::emptyModels(teeth), test::emptyModels(buttons),
            test::emptyModel(), test::emptyModel()};
}

TEST(ModelLists, allModelsComeKindByKindAndTheGumsLast)
{
    const ModelSet models{test::emptyModels({"9", "8"}), test::emptyModels({"8"}),
                          test::emptyModels({"8l"}), test::emptyModel(), test::emptyModel()};
    const ModelList expected{models.teeth.at("8"),    models.teeth.at("9"), models.brackets.at("8"),
                             models.buttons.at("8l"), models.upperGum,      models.lowerGum};
    EXPECT_EQ(loadedModels(models), expected);
    EXPECT_EQ(completeModels(models), expected);
}

TEST(ModelLists, allModelsNeedBothGums)
{
    ModelSet models = completeSet();
    models.lowerGum = nullptr;
    EXPECT_EQ(refusalOf([&] { completeModels(models); }),
              "The models need the lower gum, which is not loaded");
    models.upperGum = nullptr;
    EXPECT_EQ(refusalOf([&] { completeModels(models); }),
              "The models need the upper gum, which is not loaded");
    EXPECT_EQ(loadedModels(models).size(), 84u);
}

TEST(ModelLists, aSetHoldsItsOwnMeshesOnly)
{
    ModelSet models = completeSet();
    for (const auto &model : loadedModels(models))
        EXPECT_TRUE(holds(models, model.get()));
    EXPECT_FALSE(holds(models, test::emptyModel().get()));
    models.upperGum = nullptr;
    EXPECT_FALSE(holds(models, nullptr));
}

TEST(ModelLists, aJawComesToothByToothAfterItsGum)
{
    const ModelSet models = completeSet();
    JawList lower(Jaw::Lower);
    const ModelList &list = lower.complete(models);
    ASSERT_EQ(list.size(), 43u);
    EXPECT_EQ(list[0], models.lowerGum);
    const std::string first = TreatmentNote::lowerToothNameKeys().front();
    EXPECT_EQ(list[1], models.teeth.at(first));
    EXPECT_EQ(list[2], models.brackets.at(first));
    EXPECT_EQ(list[3], models.buttons.at(TreatmentNote::lowerLingualButtonNameKeys().front()));
}

TEST(ModelLists, aJawNamesTheFirstThingThatItLacks)
{
    ModelSet models = completeSet();
    JawList upper(Jaw::Upper);
    models.buttons.erase("8l");
    EXPECT_EQ(refusalOf([&] { upper.complete(models); }),
              "The upper models need the button \"8l\", which is not loaded");
    EXPECT_EQ(upper.loaded(models).size(), 42u);
    upper.forget();
    models.brackets.erase("8");
    EXPECT_EQ(refusalOf([&] { upper.complete(models); }),
              "The upper models need the bracket \"8\", which is not loaded");
    upper.forget();
    models.upperGum = nullptr;
    EXPECT_EQ(refusalOf([&] { upper.complete(models); }),
              "The upper models need the upper gum, which is not loaded");
}

TEST(ModelLists, aJawIsListedAnewOnlyAfterItWasForgotten)
{
    ModelSet models = completeSet();
    JawList upper(Jaw::Upper);
    const auto before = upper.loaded(models);
    models.upperGum = test::emptyModel();
    EXPECT_EQ(upper.loaded(models), before);
    upper.forget();
    EXPECT_EQ(upper.loaded(models).front(), models.upperGum);
}

} // namespace
} // namespace kelo
