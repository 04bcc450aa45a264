#include "viewer/treatment/DocumentChanges.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using viewer::DocumentChanges;
using Document = kelo::DXDocumentModel;

/// A document without meshes: a colour is a change all the same.
class DocumentChangesTest : public testing::Test
{
protected:
    static void change(Document &model) { model.bracket_setColorWithBracketColorTypeID("8", 4999); }
    static void eventEnds() { QCoreApplication::sendPostedEvents(); }

    std::shared_ptr<Document> document = std::make_shared<Document>();
    std::shared_ptr<Document> other = std::make_shared<Document>();
    int toldCount = 0;
    DocumentChanges changes{[this] { ++toldCount; }};
};

TEST_F(DocumentChangesTest, changesOfOneEventAreToldOnceAfterIt)
{
    changes.watch(document);
    change(*document);
    document->placeElasticModel(
        std::make_shared<kelo::ElasticModel>(nullptr, nullptr, std::vector<std::string>{"6"}));
    EXPECT_EQ(toldCount, 0);
    eventEnds();
    EXPECT_EQ(toldCount, 1);
    eventEnds();
    EXPECT_EQ(toldCount, 1) << "nothing has changed since";
    change(*document);
    eventEnds();
    EXPECT_EQ(toldCount, 2);
}

TEST_F(DocumentChangesTest, changesOfAnotherDocumentAreNotTold)
{
    changes.watch(document);
    change(*other);
    eventEnds();
    EXPECT_EQ(toldCount, 0);
    changes.watch(other);
    change(*document);
    eventEnds();
    EXPECT_EQ(toldCount, 0);
    change(*other);
    eventEnds();
    EXPECT_EQ(toldCount, 1);
    changes.watch(nullptr);
    change(*other);
    eventEnds();
    EXPECT_EQ(toldCount, 1);
}

TEST_F(DocumentChangesTest, whatWasNotToldOfTheDocumentBeforeIsDropped)
{
    changes.watch(document);
    change(*document);
    changes.watch(other);
    eventEnds();
    EXPECT_EQ(toldCount, 0);
}

TEST_F(DocumentChangesTest, changesCanBeToldBeforeTheEventEnds)
{
    changes.watch(document);
    changes.flush();
    EXPECT_EQ(toldCount, 0) << "there are none";
    change(*document);
    changes.flush();
    EXPECT_EQ(toldCount, 1);
    eventEnds();
    EXPECT_EQ(toldCount, 1) << "they were told";
    change(*document);
    changes.flush();
    change(*document);
    eventEnds();
    EXPECT_EQ(toldCount, 3);
}

TEST_F(DocumentChangesTest, aChangeThatIsMadeWhenOneIsToldIsToldToo)
{
    int remaining = 2;
    DocumentChanges chain([&] {
        ++toldCount;
        if (remaining-- > 0) change(*document);
    });
    chain.watch(document);
    change(*document);
    for (int event = 1; event <= 4; ++event) {
        eventEnds();
        EXPECT_EQ(toldCount, std::min(event, 3)) << "each in an event of its own";
    }
}

TEST_F(DocumentChangesTest, nothingIsToldAfterTheEnd)
{
    auto ending = std::make_unique<DocumentChanges>([this] { ++toldCount; });
    ending->watch(document);
    change(*document);
    ending.reset();
    change(*document);
    eventEnds();
    EXPECT_EQ(toldCount, 0);
}

} // namespace
