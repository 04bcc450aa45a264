// Elastics that clinicians name themselves.

#include "tests/viewer/ScriptFixture.h"

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
};

TEST_F(NamedElastics, aNewNameIsAConfigurationOfTheElasticsSizeAndMembers)
{
    // The sample's box has no name.
    const auto box = elastic(2);
    ASSERT_EQ(box->elasticsConfigType(), nullptr);
    const auto count = document().availableElasticsConfigTypes().size();
    EXPECT_EQ(treatment->nameElastic(box, "  My box "), QString());
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
    treatment->nameElastic(elastic(2), "My box");
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
    EXPECT_EQ(treatment->nameElastic(classTwo, "Class II, strong"), QString());
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
    treatment->nameElastic(elastic(2), "My box");
    const auto changes = treatment->changes().value();
    ASSERT_FALSE(changes.empty());
    EXPECT_EQ(changes.back().what, "elastic named");
    EXPECT_EQ(changes.back().key, "13,14,19,20");
}

TEST(NamedElasticsInADatabase, theNextStartHasThem)
{
    const QTemporaryDir folder;
    CommandLine commandLine;
    commandLine.headless = true;
    commandLine.database = folder.filePath("clinic.sqlite");
    auto previousLoop = kelo::RunLoop::setMain(std::make_unique<kelo::VirtualRunLoop>(1000.0));
    {
        OpenedTreatment treatment(commandLine);
        treatment.nameElastic(treatment.document()->elasticModels()[2], "My box");
        treatment.nameElastic(treatment.document()->elasticModels()[0], "Our Class II");
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
    kelo::RunLoop::setMain(std::move(previousLoop));
}

} // namespace
