#include "viewer/TreatmentPage.h"

#include "tests/keloOpenGL/ViewFixture.h"

#include <QBuffer>
#include <QPdfWriter>

#include <gtest/gtest.h>

using namespace viewer;

namespace {

kelo::ElasticDescriptions elastics(int count)
{
    kelo::ElasticDescriptions list;
    for (int i = 0; i < count; ++i)
        list.push_back({kelo::Color(0.9, 0.4, 0.1, 1.0), "1/4\" 3.5 oz", {"6", "30"}});
    return list;
}

TreatmentPage pageWith(int elasticCount)
{
    TreatmentPage page;
    page.patientName = "Sample Patient";
    page.patientIdentifier = "S-1";
    page.date = QDate(2026, 11, 20);
    for (PrintedSide *side : {&page.right, &page.front, &page.left}) {
        side->picture = QImage(side == &page.front ? 800 : 725, 400, QImage::Format_RGB888);
        side->picture.fill(Qt::lightGray);
        side->elastics = elastics(elasticCount);
    }
    return page;
}

QPageLayout layoutOf(QPageSize::PageSizeId size, QPageLayout::Orientation orientation)
{
    return {QPageSize(size), orientation, QMarginsF(15.0, 15.0, 15.0, 15.0),
            QPageLayout::Millimeter};
}

int pagesOf(const TreatmentPage &page, const QPageLayout &layout)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageLayout(layout);
    return paintTreatmentPage(page, writer);
}

const QPageLayout a4 = layoutOf(QPageSize::A4, QPageLayout::Landscape);

TEST(TreatmentPage, anOrdinaryTreatmentIsOnePageOnEverySizeAndOrientation)
{
    for (const auto size : {QPageSize::A4, QPageSize::Letter}) {
        for (const auto orientation : {QPageLayout::Portrait, QPageLayout::Landscape}) {
            EXPECT_EQ(pagesOf(pageWith(0), layoutOf(size, orientation)), 1);
            EXPECT_EQ(pagesOf(pageWith(10), layoutOf(size, orientation)), 1);
        }
    }
}

TEST(TreatmentPage, aListThatDoesNotFitRunsOverToASecondPage)
{
    EXPECT_EQ(pagesOf(pageWith(40), a4), 2);
}

TEST(TreatmentPage, everyRowIsPrintedHoweverManyPagesThatTakes)
{
    const int pages = pagesOf(pageWith(400), a4);
    EXPECT_GT(pages, 5);
    EXPECT_LT(pages, 30);
}

TEST(TreatmentPage, aLegendThatDoesNotFitUnderTheListsHasAPageOfItsOwn)
{
    TreatmentPage page = pageWith(0);
    for (int i = 0; i < 29; ++i)
        page.bracketColors.push_back(
            {QString("Colour %1").arg(i), kelo::Color(0.5, 0.5, 0.5, 1.0), 1});
    EXPECT_EQ(pagesOf(page, a4), 1);
    int elasticCount = 1;
    while (pagesOf(pageWith(elasticCount + 1), a4) == 1)
        ++elasticCount;
    for (PrintedSide *side : {&page.right, &page.front, &page.left})
        side->elastics = elastics(elasticCount); // fills the first page to its end
    EXPECT_EQ(pagesOf(page, a4), 2);
}

TEST(TreatmentPage, aRowHigherThanASheetIsPrintedAllTheSame)
{
    TreatmentPage page = pageWith(1);
    page.front.elastics[0].name = std::string(40000, 'x') + " y";
    EXPECT_EQ(pagesOf(page, a4), 2);
}

TEST(TreatmentPage, aPageWithoutPicturesIsPrinted)
{
    TreatmentPage page;
    page.date = QDate(2026, 11, 20);
    EXPECT_EQ(pagesOf(page, a4), 1);
}

TEST(TreatmentPage, thePDFHasATitleAndStandsOnItsOwn)
{
    const QByteArray pdf = treatmentPageAsPDF(pageWith(2), a4);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
    EXPECT_TRUE(pdf.contains("/Title"));
}

TEST(TreatmentPage, theColoursInUseAreThoseOfShownBracketsInTheCataloguesOrder)
{
    kelo::DXDocumentModel document;
    const auto type = [](long typeID, long displayOrder, const char *label) {
        auto record = std::make_shared<kelo::BracketColorType>();
        record->typeID = typeID;
        record->displayOrder = displayOrder;
        record->typeLabel = label;
        record->bracketColor = {0.1, 0.2, 0.3, 1.0};
        return record;
    };
    document.setAvailableBracketColorTypes(
        {{1, type(1, 30, "Red")}, {2, type(2, 10, "Blue")}, {3, type(3, 20, "Green")}});
    kelo::DXDocumentModel::Models brackets;
    for (const char *key : {"6", "7", "8", "9"})
        brackets[key] = kelo::test::boxModel({0.0f, 0.0f, 0.0f}, {1.0f, 1.0f, 1.0f});
    brackets["9"]->setHiddenPrimary(true);
    document.setBracketModels(brackets);
    document.setBracketColorTypeIDs({{"6", 1}, {"7", 2}, {"8", 1}, {"9", 3}});
    const auto colors = bracketColorsInUse(document);
    ASSERT_EQ(colors.size(), 2u);
    EXPECT_EQ(colors[0].label, "Blue");
    EXPECT_EQ(colors[0].bracketCount, 1);
    EXPECT_EQ(colors[1].label, "Red");
    EXPECT_EQ(colors[1].bracketCount, 2);
    EXPECT_EQ(colors[1].color, kelo::Color(0.1, 0.2, 0.3, 1.0));
}

} // namespace
