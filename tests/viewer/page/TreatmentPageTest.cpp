#include "viewer/page/TreatmentPage.h"

#include "tests/keloOpenGL/ViewFixture.h"
#include "tests/viewer/support/PDFPages.h"

#include <QBuffer>
#include <QLocale>
#include <QPdfWriter>

#include <gtest/gtest.h>

using namespace viewer;
using viewer::test::hasColour;
using viewer::test::PDFPages;

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
            {QString("Colour %1").arg(i), kelo::Color(0.5, 0.5, 0.5, 1.0), {"8"}});
    EXPECT_EQ(pagesOf(page, a4), 1);
    int elasticCount = 1;
    while (pagesOf(pageWith(elasticCount + 1), a4) == 1)
        ++elasticCount;
    for (PrintedSide *side : {&page.right, &page.front, &page.left})
        side->elastics = elastics(elasticCount); // fills the first page to its end
    EXPECT_EQ(pagesOf(page, a4), 2);
}

TEST(TreatmentPage, aRowHigherThanASheetGoesOnOnTheNextOnesToItsEnd)
{
    TreatmentPage page = pageWith(1);
    page.front.elastics[0].name = std::string(40000, 'x') + " y";
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    EXPECT_EQ(text.count('x'), 40000);
    EXPECT_TRUE(text.contains("y: 6 \u2013 30"));
    const int sheets = pagesOf(page, a4);
    EXPECT_GT(sheets, 10) << "770 lines, about 45 on a sheet";
    EXPECT_TRUE(text.contains(QString("Page %1 of %1").arg(sheets)));
}

TEST(TreatmentPage, everyWordOfARowThatIsBrokenBetweenSheetsIsThereOnce)
{
    TreatmentPage page = pageWith(1);
    std::string &name = page.left.elastics[0].name;
    name.clear();
    for (int i = 10000; i < 13000; ++i)
        name += std::to_string(i) + " ";
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    for (int i = 10000; i < 13000; ++i)
        ASSERT_EQ(text.count(QString::number(i)), 1) << i;
}

TEST(TreatmentPage, aLegendHigherThanASheetGoesOnOnTheNextOne)
{
    TreatmentPage page = pageWith(1);
    for (int i = 1000; i < 1400; ++i)
        page.bracketColors.push_back(
            {QString("Colour %1").arg(i), kelo::Color(0.5, 0.5, 0.5, 1.0), {"8"}});
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    for (int i = 1000; i < 1400; ++i)
        ASSERT_EQ(text.count(QString("Colour %1:").arg(i)), 1) << i;
    const QStringList sheets = text.split(QChar::FormFeed, Qt::SkipEmptyParts);
    ASSERT_GT(sheets.size(), 3);
    EXPECT_FALSE(sheets[0].contains("Brackets"));
    for (int i = 1; i < sheets.size(); ++i)
        EXPECT_TRUE(sheets[i].contains("Brackets")) << i;
}

TEST(TreatmentPage, aFurtherSheetHasHeadingsOnlyOfTheSidesThatGoOn)
{
    TreatmentPage page = pageWith(1);
    page.front.elastics = elastics(40);
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    const QStringList sheets = text.split(QChar::FormFeed, Qt::SkipEmptyParts);
    ASSERT_EQ(sheets.size(), 2);
    for (const char *heading : {"Right", "Front", "Left"})
        EXPECT_TRUE(sheets[0].contains(heading)) << heading;
    EXPECT_TRUE(sheets[1].contains("Front"));
    EXPECT_FALSE(sheets[1].contains("Right"));
    EXPECT_FALSE(sheets[1].contains("Left"));
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

TEST(TreatmentPage, aGreyPageHasNoColour)
{
    TreatmentPage page = pageWith(3);
    page.right.picture.fill(Qt::red);
    page.bracketColors = {{"Light blue", kelo::Color(0.5, 0.8, 1.0, 1.0), {"6", "11"}}};
    const auto inColour = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
    ASSERT_EQ(inColour.size(), 1u);
    EXPECT_TRUE(hasColour(inColour[0]));
    page.greyscale = true;
    const auto inGrey = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
    ASSERT_EQ(inGrey.size(), 1u);
    EXPECT_FALSE(hasColour(inGrey[0]));
}

TEST(TreatmentPage, aGreyPageSaysTheSameInWords)
{
    TreatmentPage page = pageWith(3);
    page.bracketColors = {{"Light blue", kelo::Color(0.5, 0.8, 1.0, 1.0), {"6", "11"}},
                          {"Red", kelo::Color(1.0, 0.0, 0.0, 1.0), {"8"}}};
    const QString inColour = PDFPages(treatmentPageAsPDF(page, a4)).text();
    page.greyscale = true;
    EXPECT_EQ(PDFPages(treatmentPageAsPDF(page, a4)).text(), inColour);
    EXPECT_TRUE(inColour.contains("Light blue: 6, 11"));
    EXPECT_TRUE(inColour.contains("Red: 8"));
}

TEST(TreatmentPage, thePicturesStandInTheOrderRightFrontLeft)
{
    TreatmentPage page = pageWith(0);
    page.right.picture.fill(Qt::red);
    page.front.picture.fill(Qt::green);
    page.left.picture.fill(Qt::blue);
    const auto pages = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
    ASSERT_EQ(pages.size(), 1u);
    const int middle = pages[0].width() / 2;
    // A4 landscape is 842 points wide; the pictures begin a hand below the top.
    const auto at = [&](int x) { return pages[0].pixelColor(x, 150); };
    EXPECT_GT(at(100).red(), 200);
    EXPECT_LT(at(100).green(), 60);
    EXPECT_GT(at(middle).green(), 200);
    EXPECT_LT(at(middle).red(), 60);
    EXPECT_GT(at(740).blue(), 200);
    EXPECT_LT(at(740).red(), 60);
}

TEST(TreatmentPage, itsTextCanBeSelectedAndSearched)
{
    TreatmentPage page = pageWith(2);
    page.bracketColors = {{"Light blue", kelo::Color(0.5, 0.8, 1.0, 1.0), {"6", "11"}}};
    page.notation = ToothNotation::FDI;
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    EXPECT_TRUE(text.contains(QLocale().toString(QDate(2026, 11, 20), QLocale::LongFormat)))
        << text.toStdString();
    for (const char *words : {"Sample Patient (S-1)", "Right", "Front", "Left", "Brackets",
                              "Light blue: 13, 23", "1/4\" 3.5 oz: 13 \u2013 46"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(words)))
            << words << " in " << text.toStdString();
    EXPECT_FALSE(text.contains("Page 1"));
}

TEST(TreatmentPage, severalPagesAreNumbered)
{
    const QString text = PDFPages(treatmentPageAsPDF(pageWith(40), a4)).text();
    const QStringList pages = text.split(QChar::FormFeed, Qt::SkipEmptyParts);
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages[0].contains("Page 1 of 2"));
    EXPECT_TRUE(pages[1].contains("Page 2 of 2"));
    EXPECT_TRUE(pages[1].contains("Sample Patient (S-1)"));
    EXPECT_EQ(text.count("3.5 oz"), 3 * 40);
}

/// A long name, one without a space, and one that reads from the right.
QStringList names()
{
    return {QString("Maria Magdalena Anastasia Konstantinopoulou-Featherstonehaugh ").repeated(4),
            QString(300, 'W'), QString::fromUtf8("\u05d9\u05e2\u05dc \u05db\u05d4\u05df")};
}

/// Letters, digits and signs, without what only arranges them.
QString withoutSpaces(const QString &text)
{
    QString letters;
    for (const QChar character : text) {
        if (!character.isSpace() && character.category() != QChar::Other_Format)
            letters += character;
    }
    return letters;
}

TEST(TreatmentPage, namesThatAreLongOrReadFromTheRightAreThereFromBeginningToEnd)
{
    for (const QString &name : names()) {
        TreatmentPage page = pageWith(1);
        page.patientName = name;
        page.patientIdentifier.clear();
        QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
        // The date is next to the first line.
        const QString date = QLocale().toString(page.date, QLocale::LongFormat);
        ASSERT_EQ(text.count(date), 1) << text.toStdString();
        text.remove(date);
        EXPECT_TRUE(withoutSpaces(text).contains(withoutSpaces(name))) << text.toStdString();
    }
}

TEST(TreatmentPage, aNameOfAnyLengthLeavesRoomForTheLists)
{
    // Without spaces: broken into lines as a whole, a million letters take hours.
    TreatmentPage page = pageWith(1);
    page.patientName = QString(1'000'000, 'Q');
    page.patientIdentifier = QString(1'000'000, 'K');
    const QString text = PDFPages(treatmentPageAsPDF(page, a4)).text();
    const int sheets = pagesOf(page, a4);
    EXPECT_LE(sheets, 2);
    EXPECT_EQ(text.count('Q'), 300 * sheets);
    EXPECT_EQ(text.count('K'), 300 * sheets);
    EXPECT_EQ(text.count("3.5 oz"), 3);
}

TEST(TreatmentPage, namesThatAreLongOrReadFromTheRightKeepClearOfTheDate)
{
    TreatmentPage page = pageWith(1);
    page.patientName.clear();
    page.patientIdentifier.clear();
    const auto withoutName = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
    ASSERT_EQ(withoutName.size(), 1u);
    // Above the headings there is only the date: 15 mm are 42 points, its line is 13 high.
    const int top = 42;
    const int bottom = 54;
    int first = withoutName[0].width();
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < first; ++x) {
            if (withoutName[0].pixelColor(x, y) != QColor(Qt::white)) first = x;
        }
    }
    ASSERT_LT(first, withoutName[0].width() - 42 - 40) << "the date is there";
    ASSERT_GT(first, withoutName[0].width() / 2);
    for (const QString &name : names()) {
        page.patientName = name;
        const auto pages = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
        ASSERT_EQ(pages.size(), 1u);
        const QRect date(first - 4, top, pages[0].width() - first + 4, bottom - top);
        EXPECT_EQ(pages[0].copy(date), withoutName[0].copy(date)) << name.toStdString();
    }
}

TEST(TreatmentPage, namesThatAreLongOrReadFromTheRightStayOnThePage)
{
    for (const QString &name : names()) {
        TreatmentPage page = pageWith(1);
        page.patientName = name;
        const auto pages = PDFPages(treatmentPageAsPDF(page, a4)).pictures();
        ASSERT_EQ(pages.size(), 1u) << name.toStdString();
        // 15 mm are 42 points: nothing is painted in the margins.
        for (int y = 0; y < pages[0].height(); ++y) {
            for (const int x : {20, 38, pages[0].width() - 39, pages[0].width() - 20})
                ASSERT_EQ(pages[0].pixelColor(x, y), QColor(Qt::white)) << x << ", " << y;
        }
    }
}

TEST(TreatmentPage, thePaperIsTheOneThatWasAskedFor)
{
    const auto informationOf = [](QPageSize::PageSizeId size,
                                  QPageLayout::Orientation orientation) {
        return PDFPages(treatmentPageAsPDF(pageWith(1), layoutOf(size, orientation))).information();
    };
    EXPECT_TRUE(
        informationOf(QPageSize::A4, QPageLayout::Landscape).contains("842 x 595 pts (A4)"));
    EXPECT_TRUE(informationOf(QPageSize::A4, QPageLayout::Portrait).contains("595 x 842 pts (A4)"));
    EXPECT_TRUE(informationOf(QPageSize::Letter, QPageLayout::Landscape)
                    .contains("792 x 612 pts (letter)"));
    EXPECT_TRUE(
        informationOf(QPageSize::Letter, QPageLayout::Portrait).contains("612 x 792 pts (letter)"));
    EXPECT_TRUE(informationOf(QPageSize::A4, QPageLayout::Landscape)
                    .contains("Treatment of Sample Patient, "));
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
    EXPECT_EQ(colors[0].teeth, (std::vector<std::string>{"7"}));
    EXPECT_EQ(colors[1].label, "Red");
    EXPECT_EQ(colors[1].teeth, (std::vector<std::string>{"6", "8"}));
    EXPECT_EQ(colors[1].color, kelo::Color(0.1, 0.2, 0.3, 1.0));
}

} // namespace
