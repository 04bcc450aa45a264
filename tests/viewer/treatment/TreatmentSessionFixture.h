#pragma once

#include "tests/document/DocumentFixture.h"
#include "tests/support/CapturedOutput.h"
#include "tests/viewer/support/TreatmentStoreFixture.h"
#include "viewer/treatment/TreatmentSession.h"

namespace viewer {

using kelo::DXDocumentModel;
using kelo::ElasticModel;
using kelo::test::Keys;
using kelo::test::standardErrorOf;
using test::day;
using test::fullRecord;
using test::OtherConnection;
using Lines = std::vector<std::string>;

/// A document whose changes a session stores, on a clock that the test advances.
class TreatmentSessionTest : public kelo::test::DocumentFixture
{
protected:
    TreatmentSessionTest() : path(folder.filePath(QStringLiteral("treatments.db")))
    {
        fillCatalogues(*document);
        store = TreatmentStore::open(path).value();
        treatmentID = store->addTreatment({}).value();
        startSession();
    }

    static void fillCatalogues(DXDocumentModel &model)
    {
        DXDocumentModel::BracketColorTypes colors;
        DXDocumentModel::ElasticsSizeTypes sizes;
        for (long typeID : {1L, 2L, 3L, 4L}) {
            colors[typeID] = std::make_shared<kelo::BracketColorType>();
            colors[typeID]->typeID = typeID;
            colors[typeID]->bracketColor = {0.1, 0.2, 0.3, 1.0};
            sizes[typeID] = std::make_shared<kelo::ElasticsSizeType>();
            sizes[typeID]->typeID = typeID;
        }
        const auto config = std::make_shared<kelo::ElasticsConfigType>();
        config->typeID = 1;
        model.setAvailableBracketColorTypes(colors);
        model.setAvailableElasticsSizeTypes(sizes);
        model.setAvailableElasticsConfigTypes({config});
    }

    std::shared_ptr<DXDocumentModel> anotherDocument() const
    {
        auto model = std::make_shared<DXDocumentModel>();
        const Keys teeth = kelo::test::joined(kelo::TreatmentNote::upperToothNameKeys(),
                                              kelo::TreatmentNote::lowerToothNameKeys());
        const Keys buttons = kelo::test::joined(kelo::TreatmentNote::upperLingualButtonNameKeys(),
                                                kelo::TreatmentNote::lowerLingualButtonNameKeys());
        model->setUpperGumModel(kelo::test::emptyModel());
        model->setLowerGumModel(kelo::test::emptyModel());
        model->setToothModels(kelo::test::emptyModels(teeth));
        model->setBracketModels(kelo::test::emptyModels(teeth));
        model->setButtonModels(kelo::test::emptyModels(buttons));
        fillCatalogues(*model);
        return model;
    }

    void startSession()
    {
        session = std::make_unique<TreatmentSession>(store, treatmentID, document);
        session->failureHandler = [this](const QString &sentence) {
            sentences.push_back(sentence.toStdString());
        };
        session->storedHandler = [this](const NoteReport &report) { stored.push_back(report); };
        const auto opened = session->openNote(day(20));
        ASSERT_TRUE(opened) << opened.sentence().toStdString();
    }

    NoteRecord noteOf(const QDate &date) const
    {
        return store->note(treatmentID, date).value().value_or(NoteRecord());
    }

    std::shared_ptr<ElasticModel> placed(const Keys &sequence, long sizeTypeID = 3)
    {
        auto elastic = std::make_shared<ElasticModel>(
            nullptr, document->availableElasticsSizeTypes().at(sizeTypeID), sequence);
        document->placeElasticModel(elastic);
        return elastic;
    }

    QTemporaryDir folder;
    QString path;
    std::shared_ptr<TreatmentStore> store;
    qint64 treatmentID = 0;
    std::unique_ptr<TreatmentSession> session;
    Lines sentences;
    std::vector<NoteReport> stored;
};

} // namespace viewer
