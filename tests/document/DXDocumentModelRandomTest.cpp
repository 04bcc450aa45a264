#include "tests/document/DocumentFixture.h"

#include <algorithm>
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

/// A host that knows nothing but what the delegate is told: it does the same to a document of its
/// own, and keeps what it pulled. It leaves about every third offer of updates for the next one.
class ReplayingHost : public DXDocumentModelDelegate
{
public:
    ReplayingHost(std::shared_ptr<DXDocumentModel> copy, std::mt19937 &random)
        : copy_(std::move(copy)), random_(random)
    {
        tooth_visibilityDidChange = [this](const std::string &key, bool visible) {
            copy_->setToothVisibilities({{key, visible}});
        };
        bracket_visibilityDidChange = [this](const std::string &key, bool visible) {
            copy_->setBracketVisibilities({{key, visible}});
        };
        button_visibilityDidChange = [this](const std::string &key, bool visible) {
            copy_->setButtonVisibilities({{key, visible}});
        };
        bracketUpdatesAvailable = [this](DXDocumentModel &model) {
            if (random_() % 3) pullBrackets(model);
        };
        buttonUpdatesAvailable = [this](DXDocumentModel &model) {
            if (random_() % 3) pullButtons(model);
        };
        elasticModelPlaced = [this](const std::shared_ptr<ElasticModel> &elastic) {
            const auto copied = std::make_shared<ElasticModel>(nullptr, elastic->elasticsSizeType(),
                                                               elastic->bracketSequence());
            copies_[elastic->uniqueID()] = copied;
            copy_->placeElasticModel(copied);
        };
        elasticModelRemoved = [this](const std::shared_ptr<ElasticModel> &elastic) {
            copy_->removeElasticModel(copies_.at(elastic->uniqueID()));
        };
        elasticModelColorDidChange = [this](const std::shared_ptr<ElasticModel> &elastic) {
            copy_->elasticModel_setElasticsSizeType(copies_.at(elastic->uniqueID()),
                                                    elastic->elasticsSizeType());
        };
        elasticModelsRefactoredAroundBrackets = [this](const Keys &keys) {
            ASSERT_EQ(keys.size(), 1u);
            copy_->refactorElasticModels(keys.front());
        };
    }

    void pullBrackets(DXDocumentModel &model)
    {
        for (const auto &[key, visible] : model.bracketVisibilityUpdates())
            brackets.insert_or_assign(key, visible);
        for (const auto &[key, typeID] : model.bracketColorTypeIDUpdates())
            colors.insert_or_assign(key, typeID);
    }
    void pullButtons(DXDocumentModel &model)
    {
        for (const auto &[key, visible] : model.buttonVisibilityUpdates())
            buttons.insert_or_assign(key, visible);
    }

    /// As of the last pulls; what was never pulled is as it was at the beginning.
    DXDocumentModel::Visibilities brackets;
    DXDocumentModel::Visibilities buttons;
    DXDocumentModel::ColorTypeIDs colors;

private:
    std::shared_ptr<DXDocumentModel> copy_;
    std::mt19937 &random_;
    std::map<std::uint32_t, std::shared_ptr<ElasticModel>> copies_;
};

/// Every difference between what a host pulled and what stands now is pending, and what is pending
/// is what stands now.
template<class Value>
testing::AssertionResult pendingIsTheDifference(const NameKeyDictionary<Value> &pulled,
                                                const NameKeyDictionary<Value> &pending,
                                                const NameKeyDictionary<Value> &present)
{
    for (const auto &[key, value] : present) {
        const auto waiting = pending.find(key);
        if (waiting != pending.end() && waiting->second != value)
            return testing::AssertionFailure() << key << " is pending with another value";
        if (waiting == pending.end() && pulled.at(key) != value)
            return testing::AssertionFailure() << key << " has changed and is not pending";
    }
    for (const auto &[key, value] : pending) {
        if (!present.contains(key))
            return testing::AssertionFailure() << key << " is pending and does not exist";
    }
    return testing::AssertionSuccess();
}

/// The colour of every bracket, 4999 where there is none.
DXDocumentModel::ColorTypeIDs colorsOfAllBrackets(const DXDocumentModel &model)
{
    DXDocumentModel::ColorTypeIDs colors;
    for (const auto &[key, bracket] : model.bracketModels())
        colors[key] = noBracketColorTypeID;
    for (const auto &[key, typeID] : model.bracketColorsTypeIDs())
        colors[key] = typeID;
    return colors;
}

testing::AssertionResult haveSameElastics(const DXDocumentModel &first,
                                          const DXDocumentModel &second)
{
    const auto &elastics = first.elasticModels();
    const auto &others = second.elasticModels();
    if (elastics.size() != others.size())
        return testing::AssertionFailure() << elastics.size() << " and " << others.size();
    for (std::size_t i = 0; i < elastics.size(); ++i) {
        if (elastics[i]->bracketSequence() != others[i]->bracketSequence() ||
            elastics[i]->elasticsSizeType() != others[i]->elasticsSizeType())
            return testing::AssertionFailure() << "elastic " << i << " differs";
    }
    return testing::AssertionSuccess();
}

TEST_F(DXDocumentModelRandom, fiftyThousandReplayedOperationsGiveTheSameState)
{
    const auto copy = std::make_shared<DXDocumentModel>();
    copy->setToothModels(test::emptyModels(teeth));
    copy->setBracketModels(test::emptyModels(teeth));
    copy->setButtonModels(test::emptyModels(test::joined(
        TreatmentNote::upperLingualButtonNameKeys(), TreatmentNote::lowerLingualButtonNameKeys())));
    ReplayingHost host(copy, random);
    host.brackets = document->bracketVisibilities();
    host.buttons = document->buttonVisibilities();
    host.colors = colorsOfAllBrackets(*document);
    document->setDelegate(&host);
    const auto anotherSize = std::make_shared<ElasticsSizeType>();

    std::size_t mostElastics = 0;
    std::size_t mostPending = 0;
    for (int step = 0; step < 50000; ++step) {
        const auto &elastics = document->elasticModels();
        if (random() % 10 == 0 && !elastics.empty())
            document->elasticModel_setElasticsSizeType(elastics[random() % elastics.size()],
                                                       random() % 2 ? anotherSize : nullptr);
        else
            doSomething();

        const auto complaints = document->checkSanity();
        ASSERT_TRUE(complaints.empty()) << "step " << step << ": " << complaints.front();
        ASSERT_EQ(document->toothVisibilities(), copy->toothVisibilities()) << "step " << step;
        ASSERT_EQ(document->bracketVisibilities(), copy->bracketVisibilities()) << "step " << step;
        ASSERT_EQ(document->buttonVisibilities(), copy->buttonVisibilities()) << "step " << step;
        ASSERT_TRUE(haveSameElastics(*document, *copy)) << "step " << step;
        ASSERT_TRUE(pendingIsTheDifference(host.brackets,
                                           document->pendingBracketVisibilityUpdates(),
                                           document->bracketVisibilities()))
            << "step " << step;
        ASSERT_TRUE(pendingIsTheDifference(host.buttons, document->pendingButtonVisibilityUpdates(),
                                           document->buttonVisibilities()))
            << "step " << step;
        ASSERT_TRUE(pendingIsTheDifference(host.colors,
                                           document->pendingBracketColorTypeIDUpdates(),
                                           colorsOfAllBrackets(*document)))
            << "step " << step;
        mostElastics = std::max(mostElastics, document->elasticModels().size());
        mostPending = std::max(mostPending, document->pendingBracketVisibilityUpdates().size());
    }
    EXPECT_GT(mostElastics, 5u) << "the operations met placed elastics";
    EXPECT_GT(mostPending, 5u) << "the operations met pending updates";

    host.pullBrackets(*document);
    host.pullButtons(*document);
    EXPECT_EQ(host.brackets, document->bracketVisibilities());
    EXPECT_EQ(host.buttons, document->buttonVisibilities());
    EXPECT_EQ(host.colors, colorsOfAllBrackets(*document));
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
