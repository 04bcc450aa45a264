#include "tests/document/DocumentFixture.h"

#include <map>
#include <random>
#include <set>

namespace kelo {
namespace {

using test::Keys;

/// What the host would know: what it was told at once, and what it pulled.
class DXDocumentModelRandom : public test::DocumentFixture
{
protected:
    DXDocumentModelRandom()
    {
        DXDocumentModel::BracketColorTypes types;
        for (long typeID : {1L, 2L}) {
            types[typeID] = std::make_shared<BracketColorType>();
            types[typeID]->typeID = typeID;
            types[typeID]->bracketColor = {0.1, 0.2, 0.3, 1.0};
        }
        document->setAvailableBracketColorTypes(types);
        teeth =
            test::joined(TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys());
    }

    const std::string &anyTooth() { return teeth[random() % teeth.size()]; }
    std::string anyMember()
    {
        const std::string &key = anyTooth();
        return random() % 3 == 0 ? key + "l" : key;
    }

    /// One thing that a user or a host does.
    void doSomething()
    {
        const auto &elastics = document->elasticModels();
        switch (random() % 9) {
        case 0:
            document->toggleVisibilityOfTooth(anyTooth());
            break;
        case 1:
            document->toggleVisibilityOfBracket(anyTooth());
            break;
        case 2:
            document->toggleVisibilityOfButton(anyTooth() + "l");
            break;
        case 3:
            document->bracket_setColorWithBracketColorTypeID(
                anyTooth(), random() % 2 ? std::optional<long>(1) : std::nullopt);
            break;
        case 4:
            document->bracket_makeVisibleAndSetColorWithBracketColorTypeID(anyTooth(), 2);
            break;
        case 5:
        case 6: {
            const Keys sequence{anyMember(), anyMember(), anyMember()};
            document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, nullptr, sequence));
            break;
        }
        case 7:
            if (!elastics.empty())
                document->removeElasticModel(elastics[random() % elastics.size()]);
            break;
        default:
            clock->advance(0.5 * static_cast<double>(random() % 8));
            break;
        }
    }

    std::mt19937 random{20261120};
    Keys teeth;
};

TEST_F(DXDocumentModelRandom, whatAlwaysHoldsHoldsAfterEveryStep)
{
    for (int step = 0; step < 3000; ++step) {
        doSomething();
        const auto complaints = document->checkSanity();
        ASSERT_TRUE(complaints.empty()) << "step " << step << ": " << complaints.front();
    }
}

TEST_F(DXDocumentModelRandom, theUpdatesThatAHostPullsAddUpToTheDocumentsState)
{
    std::map<std::string, bool> brackets;
    std::map<std::string, bool> buttons;
    std::map<std::string, long> colors;
    DXDocumentModelDelegate host;
    host.bracketUpdatesAvailable = [&](DXDocumentModel &model) {
        for (const auto &[key, visible] : model.bracketVisibilityUpdates())
            brackets[key] = visible;
        for (const auto &[key, typeID] : model.bracketColorTypeIDUpdates())
            colors[key] = typeID;
    };
    host.buttonUpdatesAvailable = [&](DXDocumentModel &model) {
        for (const auto &[key, visible] : model.buttonVisibilityUpdates())
            buttons[key] = visible;
    };
    document->setDelegate(&host);
    for (int step = 0; step < 2000; ++step)
        doSomething();
    document->flushOutstandingUpdates();

    ASSERT_EQ(brackets.size(), 28u) << "every bracket was touched";
    for (const auto &[key, visible] : brackets)
        EXPECT_EQ(visible, document->bracketVisibilities().at(key)) << key;
    ASSERT_FALSE(buttons.empty());
    for (const auto &[key, visible] : buttons)
        EXPECT_EQ(visible, document->buttonVisibilities().at(key)) << key;
    ASSERT_EQ(colors.size(), 28u);
    const auto &present = document->bracketColorsTypeIDs();
    for (const auto &[key, typeID] : colors)
        EXPECT_EQ(typeID, present.contains(key) ? present.at(key) : 4999) << key;
}

TEST_F(DXDocumentModelRandom, whatIsHiddenLeavesEveryElasticOnMoreThanOneTooth)
{
    for (int step = 0; step < 2000; ++step) {
        doSomething();
        const std::string key = anyTooth();
        if (bracket(key)->hiddenPrimary()) continue;
        document->toggleVisibilityOfBracket(key);
        for (const auto &elastic : document->elasticModels())
            for (const std::string &member : elastic->bracketSequence())
                ASSERT_NE(member, key) << "step " << step;
    }
}

} // namespace
} // namespace kelo
