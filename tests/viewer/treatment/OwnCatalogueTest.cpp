// Treatments that come with a catalogue of their own.

#include "viewer/treatment/OpenedTreatment.h"

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/TestClock.h"
#include "tests/viewer/support/TreatmentStoreFixture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

using namespace viewer;

namespace {

/// A clinic's database, and a treatment file from elsewhere: its catalogue has one size and two
/// named elastics, the second with an identifier that this clinic gives too.
class OwnCatalogue : public testing::Test
{
protected:
    OwnCatalogue()
    {
        commandLine.headless = true;
        commandLine.database = folder.filePath("clinic.sqlite");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(R"({"format": "treatment", "version": 1, "patient": {"name": "A", "id": "1"},
            "currentDate": "2026-11-20",
            "catalogue": {
                "elasticsSizeTypes": [{"typeID": 77, "typeLabel": "Fox", "displayOrder": 1,
                                       "elasticsColor": [1, 0, 0, 1]}],
                "elasticsConfigTypes": [
                    {"typeID": 5, "typeLabel": "Theirs", "displayOrder": 1,
                     "elasticsSizeTypeID": 77, "bracketSequence": "6,30"},
                    {"typeID": 1000, "typeLabel": "Also theirs", "displayOrder": 2,
                     "elasticsSizeTypeID": 77, "bracketSequence": "11,22"}]},
            "notes": [{"date": "2026-11-20", "bracketVisibilities": {"6": true, "30": true},
                       "elastics": [{"elasticsConfigTypeID": 1000, "elasticsSizeTypeID": 77,
                                     "bracketSequence": ["11", "22"]}]}]})");
    }

    std::shared_ptr<TreatmentStore> store() const
    {
        return TreatmentStore::open(commandLine.database).value();
    }
    static std::vector<std::string> namesIn(const OpenedTreatment &treatment)
    {
        std::vector<std::string> names;
        for (const auto &type : treatment.document()->availableElasticsConfigTypes())
            names.push_back(type->typeLabel);
        return names;
    }
    /// Opens a treatment of the database.
    std::unique_ptr<OpenedTreatment> opened(qint64 treatmentID)
    {
        commandLine.treatment = treatmentID;
        return std::make_unique<OpenedTreatment>(commandLine);
    }

    kelo::test::TestClock clock;
    QTemporaryDir folder;
    QString path = folder.filePath("theirs.json");
    CommandLine commandLine;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(OwnCatalogue, staysWithAnImportedTreatment)
{
    const qint64 imported = importTreatment(*store(), path);
    const auto treatment = opened(imported);
    EXPECT_EQ(treatment->sentences(), QStringList());
    EXPECT_EQ(treatment->document()->availableElasticsSizeTypes().size(), 1u);
    EXPECT_EQ(treatment->document()->availableElasticsSizeTypes().at(77)->typeLabel, "Fox");
    EXPECT_EQ(namesIn(*treatment), (Names{"Theirs", "Also theirs"}));
    ASSERT_EQ(treatment->document()->elasticModels().size(), 1u);
    EXPECT_EQ(treatment->document()->elasticModels()[0]->elasticsConfigType()->typeLabel,
              "Also theirs");
}

TEST_F(OwnCatalogue, isNotStoredForTheLibrarysOne)
{
    const auto treatment = std::make_unique<OpenedTreatment>(commandLine);
    EXPECT_EQ(store()->catalogue(treatment->treatmentID()).value(), QByteArray());
    EXPECT_GT(treatment->document()->availableElasticsSizeTypes().size(), 1u);
}

TEST_F(OwnCatalogue, offersTheClinicsNamesBesideItsOwnWhereTheIdentifierIsFree)
{
    for (const auto &[typeID, label] : {std::pair{1000L, "Ours"}, std::pair{1001L, "Ours too"}}) {
        kelo::ElasticsConfigType configuration;
        configuration.typeID = typeID;
        configuration.typeLabel = label;
        configuration.elasticsSizeTypeID = 11; // a size of the library's catalogue
        configuration.bracketSequence = "6,7";
        ASSERT_TRUE(store()->saveNamedElastic(configuration));
    }
    const auto treatment = opened(importTreatment(*store(), path));
    EXPECT_EQ(namesIn(*treatment), (Names{"Theirs", "Also theirs", "Ours too"}));
    EXPECT_EQ(treatment->document()->availableElasticsConfigTypes()[2]->elasticsSizeTypeID, 0)
        << "there is no such size here";
    // What is written out can be read again.
    ASSERT_EQ(treatment->exportTo(folder.filePath("export.json")), QString());
    const auto again = opened(importTreatment(*store(), folder.filePath("export.json")));
    EXPECT_EQ(namesIn(*again), (Names{"Theirs", "Also theirs", "Ours too"}));
}

TEST_F(OwnCatalogue, takesTheNamesThatAreGivenInItsTreatmentAndNoOtherDoes)
{
    const qint64 imported = importTreatment(*store(), path);
    {
        const auto treatment = opened(imported);
        const auto elastic = treatment->document()->elasticModels()[0];
        EXPECT_EQ(treatment->applyNaming(treatment->namingOf(*elastic, "Renamed"), 0), QString());
    }
    EXPECT_TRUE(store()->namedElastics().value().empty());
    const auto treatment = opened(imported);
    EXPECT_EQ(namesIn(*treatment), (Names{"Theirs", "Renamed"}));
    EXPECT_EQ(treatment->document()->elasticModels()[0]->elasticsConfigType()->typeLabel,
              "Renamed");
}

TEST_F(OwnCatalogue, thatCannotBeReadIsASentenceAndTheLibrarysTakesItsPlace)
{
    const qint64 imported = importTreatment(*store(), path);
    ASSERT_TRUE(store()->setCatalogue(imported, R"({"elasticsSizeTypes": 7})"));
    const auto treatment = opened(imported);
    ASSERT_FALSE(treatment->sentences().isEmpty());
    EXPECT_EQ(treatment->sentences().front(),
              commandLine.database + ": elasticsSizeTypes: must be a list");
    EXPECT_GT(treatment->document()->availableElasticsSizeTypes().size(), 1u);
}

TEST_F(OwnCatalogue, ofATreatmentThatIsNotThereIsNamed)
{
    const auto clinic = store();
    EXPECT_EQ(clinic->catalogue(9).sentence(), commandLine.database + ": there is no treatment 9");
    EXPECT_EQ(clinic->setCatalogue(9, "{}").sentence(),
              commandLine.database + ": there is no treatment 9");
}
