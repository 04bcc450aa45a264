// Elastics that clinicians name themselves.

#include "tests/viewer/support/ScriptFixture.h"
#include "viewer/treatment/UndoHistory.h"

#include <QTemporaryDir>

namespace {

using namespace viewer;

class NamedElastics : public viewer::test::ScriptFixture
{
protected:
    std::shared_ptr<kelo::ElasticModel> elastic(std::size_t index) const
    {
        return document().elasticModels().at(index);
    }
    QString nameElastic(std::size_t index, const QString &name) const
    {
        return treatment->applyNaming(treatment->namingOf(*elastic(index), name), index);
    }
};

TEST_F(NamedElastics, aNewNameIsAConfigurationOfTheElasticsSizeAndMembers)
{
    // The sample's box has no name.
    const auto box = elastic(2);
    ASSERT_EQ(box->elasticsConfigType(), nullptr);
    const auto count = document().availableElasticsConfigTypes().size();
    EXPECT_EQ(nameElastic(2, "  My box "), QString());
    ASSERT_EQ(document().availableElasticsConfigTypes().size(), count + 1);
    const auto &made = *document().availableElasticsConfigTypes().back();
    EXPECT_EQ(made.typeLabel, "My box");
    EXPECT_EQ(made.bracketSequence, "13,14,19,20");
    EXPECT_EQ(made.elasticsSizeTypeID, 11);
    EXPECT_GE(made.typeID, 1000);
    EXPECT_EQ(box->elasticsConfigType().get(), &made);
    EXPECT_NO_GL_ERROR();
}

TEST_F(NamedElastics, itIsInTheMenuAndCanBePlaced)
{
    nameElastic(2, "My box");
    const auto count = document().elasticModels().size();
    play("click bracket 6\nmenu \"My box\"");
    ASSERT_EQ(document().elasticModels().size(), count + 1);
    EXPECT_EQ(elastic(count)->bracketSequence(),
              (std::vector<std::string>{"13", "14", "19", "20"}));
    ASSERT_NE(elastic(count)->elasticsSizeType(), nullptr);
    EXPECT_EQ(elastic(count)->elasticsSizeType()->typeID, 11);
    EXPECT_NO_GL_ERROR();
}

TEST_F(NamedElastics, aRenamedOneKeepsItsPlaceAndAllItsElastics)
{
    const auto classTwo = elastic(0);
    const auto before = classTwo->elasticsConfigType();
    ASSERT_NE(before, nullptr);
    const auto count = document().availableElasticsConfigTypes().size();
    EXPECT_EQ(nameElastic(0, "Class II, strong"), QString());
    EXPECT_EQ(document().availableElasticsConfigTypes().size(), count);
    EXPECT_EQ(classTwo->elasticsConfigType()->typeID, before->typeID);
    EXPECT_EQ(classTwo->elasticsConfigType()->typeLabel, "Class II, strong");
    EXPECT_EQ(classTwo->elasticsConfigType()->displayOrder, before->displayOrder);
    play("click elastic 0");
    EXPECT_NE(row("Rename \"Class II, strong\" Elastic..."), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(NamedElastics, aNameThatIsEmptyOrTakenIsRefusedWithTheReason)
{
    EXPECT_EQ(treatment->nameProblem("", nullptr), "A name is needed.");
    EXPECT_EQ(treatment->nameProblem("   ", nullptr), "A name is needed.");
    const auto own = elastic(0)->elasticsConfigType();
    const QString label = QString::fromStdString(own->typeLabel);
    EXPECT_EQ(treatment->nameProblem(label.toUpper(), nullptr),
              "Another elastic has this name already.");
    EXPECT_EQ(treatment->nameProblem(label, own.get()), "");
    EXPECT_EQ(treatment->nameProblem("Something else", nullptr), "");
}

TEST_F(NamedElastics, theLogTellsOfTheName)
{
    nameElastic(2, "My box");
    const auto changes = treatment->changes().value();
    ASSERT_FALSE(changes.empty());
    EXPECT_EQ(changes.back().what, "elastic named");
    EXPECT_EQ(changes.back().key, "13,14,19,20");
}

TEST_F(NamedElastics, aNewNameThatIsTakenBackIsOfferedNoLonger)
{
    const auto count = document().availableElasticsConfigTypes().size();
    const OpenedTreatment::Naming naming = treatment->namingOf(*elastic(2), "My box");
    EXPECT_EQ(naming.before, nullptr);
    treatment->applyNaming(naming, 2);
    EXPECT_EQ(treatment->applyNaming({naming.after, naming.before}, 2), QString());
    EXPECT_EQ(document().availableElasticsConfigTypes().size(), count);
    EXPECT_EQ(elastic(2)->elasticsConfigType(), nullptr);
    EXPECT_TRUE(treatment->store()->namedElastics().value().empty());
}

TEST_F(NamedElastics, theLogHasTheNamesOfARenamedOne)
{
    const std::string before = elastic(0)->elasticsConfigType()->typeLabel;
    nameElastic(0, "Ours");
    const auto changes = treatment->changes().value();
    EXPECT_EQ(changes.back().what, "elastic renamed");
    EXPECT_EQ(changes.back().key, "6,30");
    EXPECT_EQ(changes.back().oldValue, QString::fromStdString(before));
    EXPECT_EQ(changes.back().newValue, "Ours");
}

TEST(NamedElasticsInADatabase, theNextStartHasThem)
{
    const QTemporaryDir folder;
    CommandLine commandLine;
    commandLine.headless = true;
    commandLine.database = folder.filePath("clinic.sqlite");
    const kelo::test::TestClock clock;
    {
        OpenedTreatment treatment(commandLine);
        const auto &elastics = treatment.document()->elasticModels();
        treatment.applyNaming(treatment.namingOf(*elastics[2], "My box"), 2);
        treatment.applyNaming(treatment.namingOf(*elastics[0], "Our Class II"), 0);
    }
    {
        const OpenedTreatment treatment(commandLine);
        EXPECT_EQ(treatment.sentences(), QStringList());
        const auto &elastics = treatment.document()->elasticModels();
        ASSERT_EQ(elastics.size(), 4u);
        ASSERT_NE(elastics[2]->elasticsConfigType(), nullptr);
        EXPECT_EQ(elastics[2]->elasticsConfigType()->typeLabel, "My box");
        EXPECT_EQ(elastics[0]->elasticsConfigType()->typeLabel, "Our Class II");
    }
}

TEST(NamedElasticsInADatabase, areNamedInSeveralTreatmentsAtOnceWithoutMixingUp)
{
    const QTemporaryDir folder;
    CommandLine commandLine;
    commandLine.headless = true;
    const kelo::test::TestClock clock;
    {
        const auto clinic = TreatmentStore::open(folder.filePath("clinic.sqlite")).value();
        const auto document = std::make_shared<kelo::DXDocumentModel>();
        OpenedTreatment one(commandLine, {}, document, clinic);
        commandLine.treatment = clinic->addTreatment(sampleTreatment(QDate(2026, 1, 2))).value();
        OpenedTreatment other(commandLine, {}, std::make_shared<kelo::DXDocumentModel>(), clinic);
        const auto nameIt = [](OpenedTreatment &treatment, std::size_t index, const char *name) {
            const auto elastic = treatment.document()->elasticModels()[index];
            EXPECT_EQ(treatment.applyNaming(treatment.namingOf(*elastic, name), index), QString());
        };
        nameIt(one, 2, "Mine");
        nameIt(other, 2, "Yours");
        nameIt(other, 0, "Our Class II");
        one.takeNewNames();
        std::vector<std::string> names;
        for (const auto &type : clinic->namedElastics().value())
            names.push_back(type.typeLabel);
        EXPECT_EQ(names, (std::vector<std::string>{"Our Class II", "Mine", "Yours"}));
        EXPECT_EQ(one.document()->elasticModels()[2]->elasticsConfigType()->typeLabel, "Mine");
        EXPECT_EQ(one.document()->elasticModels()[0]->elasticsConfigType()->typeLabel,
                  "Our Class II");
        EXPECT_EQ(one.document()->availableElasticsConfigTypes().back()->typeLabel, "Yours");
        // Taken back in the other treatment, it is offered here no longer, unless it is used here.
        const auto mine = one.document()->elasticModels()[2]->elasticsConfigType();
        const auto yours = other.document()->elasticModels()[2]->elasticsConfigType();
        other.applyNaming({yours, nullptr}, 2);
        one.takeNewNames();
        EXPECT_EQ(one.document()->availableElasticsConfigTypes().back()->typeLabel, "Mine");
        other.takeNewNames();
        EXPECT_EQ(other.document()->availableElasticsConfigTypes().back()->typeLabel, "Mine");
        // What a note of another treatment has stays in the database.
        ASSERT_TRUE(clinic->removeNamedElastic(mine->typeID));
        EXPECT_EQ(clinic->namedElastics().value().back().typeLabel, "Mine");
    }
}

TEST(NamedElasticsInADatabase, undoKeepsANameThatIsTakenBackElsewhere)
{
    const QTemporaryDir folder;
    CommandLine commandLine;
    commandLine.headless = true;
    auto previousLoop = kelo::RunLoop::setMain(std::make_unique<kelo::VirtualRunLoop>(1000.0));
    {
        const auto clinic = TreatmentStore::open(folder.filePath("clinic.sqlite")).value();
        OpenedTreatment one(commandLine, {}, std::make_shared<kelo::DXDocumentModel>(), clinic);
        const auto document = one.document();
        UndoHistory history;
        history.watch(document);
        const auto elastic = document->elasticModels()[2];
        ASSERT_EQ(one.applyNaming(one.namingOf(*elastic, "Mine"), 2), QString());
        const auto named = elastic->elasticsConfigType();
        history.endStep();
        document->removeElasticModel(elastic);
        history.endStep();
        ASSERT_TRUE(clinic->removeNamedElastic(named->typeID));
        one.takeNewNames();
        EXPECT_EQ(document->elasticModels().size(), 3u);
        for (const auto &type : document->availableElasticsConfigTypes())
            EXPECT_NE(type->typeID, named->typeID) << "it is offered no longer";
        history.stack().undo();
        ASSERT_EQ(document->elasticModels().size(), 4u);
        EXPECT_EQ(document->elasticModels()[2]->elasticsConfigType()->typeLabel, "Mine");
    }
    kelo::RunLoop::setMain(std::move(previousLoop));
}

} // namespace
