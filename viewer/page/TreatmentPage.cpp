#include "viewer/page/TreatmentPage.h"

#include "viewer/files/OutputFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace viewer {
namespace {

/// Points of 1/72 inch throughout: the painter is scaled to them.
constexpr double pointsPerInch = 72.0;
constexpr double gap = 10.0;
constexpr double colorSwatchSize = 8.0;
constexpr double lineSpacing = 3.0;
constexpr double footerHeight = 16.0;
constexpr int headingSize = 16;
constexpr int labelSize = 11;
constexpr int textSize = 9;
constexpr std::size_t sideCount = 3;

/// Words that are longer than a line, as names of configurations may be, are broken too.
QTextOption wrapped()
{
    QTextOption option(Qt::AlignLeft | Qt::AlignTop);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

/// The texts' context for translators.
struct TreatmentPageText
{
    Q_DECLARE_TR_FUNCTIONS(TreatmentPage)
};

QFont fontOfSize(int points, bool bold = false)
{
    QFont font;
    font.setPixelSize(points); // one unit of the painter is one point
    font.setBold(bold);
    return font;
}

/// In characters: a heading of two such names leaves room for the lists below it on every paper.
constexpr qsizetype longestHeadingName = 300;

/// A name as the heading has it. The heading is on every sheet, and a database may hold a name of
/// any length.
QString headingName(const QString &name)
{
    return name.size() <= longestHeadingName ? name
                                             : name.left(longestHeadingName) + QStringLiteral("…");
}

QColor asQColor(const kelo::Color &color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

/// A row of a list: a swatch with a text beside it.
struct Row
{
    QColor swatch;
    QString text;
    double height = 0.0; ///< with the space after it
};

/// What one sheet has: which rows of each side, and which of the legend.
struct Sheet
{
    std::array<std::size_t, sideCount> firstRow{};
    std::array<std::size_t, sideCount> endRow{};
    std::size_t firstColor = 0;
    std::size_t endColor = 0;
    double top = 0.0; ///< of the lists
    bool hasPictures = false;
};

std::vector<Row> rowsOfElastics(const kelo::ElasticDescriptions &elastics, ToothNotation notation)
{
    std::vector<Row> rows;
    for (const kelo::ElasticDescription &elastic : elastics) {
        const QString teeth = toothNames(elastic.brackets, notation);
        const QString size = QString::fromStdString(elastic.name);
        rows.push_back({asQColor(elastic.color.value_or(kelo::Color::whiteColor())),
                        size.isEmpty() ? teeth : TreatmentPageText::tr("%1: %2").arg(size, teeth)});
    }
    return rows;
}

std::vector<Row> rowsOfColors(const std::vector<PrintedColor> &colors, ToothNotation notation)
{
    std::vector<Row> rows;
    for (const PrintedColor &color : colors)
        rows.push_back({asQColor(color.color),
                        TreatmentPageText::tr("%1: %2").arg(
                            color.label, toothNames(color.teeth, notation, QStringLiteral(", ")))});
    return rows;
}

/// Measures, breaks into sheets, and paints.
class PagePainter
{
public:
    PagePainter(const TreatmentPage &page, QPagedPaintDevice &device)
        : page_(page), device_(device), painter_(&device)
    {
        if (!painter_.isActive()) return;
        const double scale = device.logicalDpiX() / pointsPerInch;
        painter_.scale(scale, scale);
        size_ = QSizeF(device.width() / scale, device.height() / scale);
        columnWidths();
        for (std::size_t side = 0; side < sideCount; ++side) {
            rows_[side] = rowsOfElastics(sides_[side]->elastics, page.notation);
            measure(rows_[side], columns_[side].width(), bottom() - listTop(false));
        }
        legend_ = rowsOfColors(page.bracketColors, page.notation);
        measure(legend_, size_.width() / legendColumns - gap, bottom() - legendTop(listTop(false)));
    }

    int paint()
    {
        if (!painter_.isActive()) return 0;
        const std::vector<Sheet> sheets = brokenIntoSheets();
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            if (i > 0 && !device_.newPage()) return 0;
            paintSheet(sheets[i], i + 1, sheets.size());
        }
        return painter_.end() ? static_cast<int>(sheets.size()) : 0;
    }

private:
    static constexpr std::size_t legendColumns = 3;

    /// The columns are as wide as their pictures are to one another, so that all three are at one
    /// scale.
    void columnWidths()
    {
        const double available = size_.width() - (sideCount - 1) * gap;
        double total = 0.0;
        for (const PrintedSide *side : sides_)
            total += std::max(1, side->picture.width());
        double x = 0.0;
        for (std::size_t i = 0; i < sideCount; ++i) {
            const QImage &picture = sides_[i]->picture;
            const double width = available * std::max(1, picture.width()) / total;
            const double height =
                picture.isNull() ? 0.0 : width * picture.height() / picture.width();
            columns_[i] = QRectF(x, 0.0, width, height);
            x += width + gap;
        }
    }

    QRectF textRect(double x, double y, double width) const
    {
        return {x, y, width, size_.height()};
    }

    double textHeight(const QFont &font, double width, const QString &text)
    {
        painter_.setFont(font);
        return painter_.boundingRect(textRect(0.0, 0.0, width), text, wrapped()).height();
    }

    double rowHeight(const QString &text, double width)
    {
        const double height =
            textHeight(fontOfSize(textSize), width - colorSwatchSize - lineSpacing, text);
        return std::max(height, colorSwatchSize) + lineSpacing;
    }

    /// Gives each row its height; one that is higher than a sheet becomes several, broken between
    /// lines.
    void measure(std::vector<Row> &rows, double width, double sheetHeight)
    {
        std::vector<Row> measured;
        for (const Row &row : rows) {
            if (const double height = rowHeight(row.text, width); height <= sheetHeight) {
                measured.push_back({row.swatch, row.text, height});
                continue;
            }
            for (const QString &piece : piecesOf(row.text, width, sheetHeight))
                measured.push_back({row.swatch, piece, rowHeight(piece, width)});
        }
        rows = std::move(measured);
    }

    QStringList piecesOf(const QString &text, double width, double height)
    {
        // One line less than there is room for: the piece is broken into lines again.
        const double lineHeight = textHeight(fontOfSize(textSize), width, QStringLiteral("X"));
        const int lineCount = std::max(1, static_cast<int>(height / lineHeight) - 1);
        QTextLayout layout(text, fontOfSize(textSize), &device_);
        layout.setTextOption(wrapped());
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
            line.setLineWidth(width - colorSwatchSize - lineSpacing);
        layout.endLayout();
        QStringList pieces;
        for (int first = 0; first < layout.lineCount(); first += lineCount) {
            const int end = std::min(first + lineCount, layout.lineCount());
            const QTextLine last = layout.lineAt(end - 1);
            const int start = layout.lineAt(first).textStart();
            pieces << text.mid(start, last.textStart() + last.textLength() - start);
        }
        return pieces;
    }

    QString dateText() const { return QLocale().toString(page_.date, QLocale::LongFormat); }

    QString patientText() const
    {
        const QString name = headingName(page_.patientName);
        const QString identifier = headingName(page_.patientIdentifier);
        return identifier.isEmpty() ? name : TreatmentPageText::tr("%1 (%2)").arg(name, identifier);
    }

    double dateWidth()
    {
        painter_.setFont(fontOfSize(labelSize));
        return painter_.fontMetrics().horizontalAdvance(dateText()) + gap;
    }

    double headerHeight()
    {
        return textHeight(fontOfSize(headingSize, true), size_.width() - dateWidth(),
                          patientText()) +
               gap;
    }

    double labelHeight() { return textHeight(fontOfSize(labelSize, true), size_.width(), "X"); }

    double picturesHeight() const
    {
        double height = 0.0;
        for (const QRectF &column : columns_)
            height = std::max(height, column.height());
        return height;
    }

    double bottom() const { return size_.height() - footerHeight; }

    double listTop(bool hasPictures)
    {
        return headerHeight() + labelHeight() + lineSpacing +
               (hasPictures ? picturesHeight() + gap : 0.0);
    }

    /// Of the legend's first row, under lists that end at `listEnd`.
    double legendTop(double listEnd) { return listEnd + gap + labelHeight() + lineSpacing; }

    /// How many of the legend's rows from `first` on have room between `y` and the sheet's end.
    std::size_t endOfColors(std::size_t first, double y) const
    {
        std::size_t end = first;
        while (end < legend_.size()) {
            const std::size_t lineEnd = std::min(end + legendColumns, legend_.size());
            for (std::size_t i = end; i < lineEnd; ++i) {
                if (y + legend_[i].height > bottom()) return end;
            }
            y += lineHeight(end, lineEnd);
            end = lineEnd;
        }
        return end;
    }

    double lineHeight(std::size_t first, std::size_t end) const
    {
        double height = 0.0;
        for (std::size_t i = first; i < end; ++i)
            height = std::max(height, legend_[i].height);
        return height;
    }

    /// The legend is below the lists where there is room for all of it, else on sheets of its
    /// own.
    void takeColors(Sheet &sheet, double listEnd)
    {
        const std::size_t end = endOfColors(sheet.firstColor, legendTop(listEnd));
        const bool isOnItsOwn = !sheet.hasPictures && listEnd == sheet.top;
        if (end == legend_.size())
            sheet.endColor = end;
        else if (isOnItsOwn) // a line that has no room on an empty sheet is printed all the same
            sheet.endColor =
                std::max(end, std::min(sheet.firstColor + legendColumns, legend_.size()));
    }

    std::vector<Sheet> brokenIntoSheets()
    {
        std::vector<Sheet> sheets;
        std::array<std::size_t, sideCount> next{};
        std::size_t nextColor = 0;
        bool isComplete = false;
        do {
            Sheet sheet;
            sheet.hasPictures = sheets.empty();
            sheet.top = listTop(sheet.hasPictures);
            double lowest = sheet.top;
            isComplete = true;
            for (std::size_t side = 0; side < sideCount; ++side) {
                double y = sheet.top;
                sheet.firstRow[side] = next[side];
                const auto &rows = rows_[side];
                // A row that has no room on an empty sheet is printed all the same.
                while (next[side] < rows.size() &&
                       (y + rows[next[side]].height <= bottom() ||
                        (!sheet.hasPictures && next[side] == sheet.firstRow[side])))
                    y += rows[next[side]++].height;
                sheet.endRow[side] = next[side];
                isComplete = isComplete && next[side] == rows.size();
                lowest = std::max(lowest, y);
            }
            sheet.firstColor = sheet.endColor = nextColor;
            if (isComplete) takeColors(sheet, lowest);
            nextColor = sheet.endColor;
            sheets.push_back(sheet);
        } while (!isComplete || nextColor < legend_.size());
        return sheets;
    }

    void paintSheet(const Sheet &sheet, std::size_t number, std::size_t count)
    {
        // Measuring chooses fonts, so it comes first.
        const QRectF patientRect = textRect(0.0, 0.0, size_.width() - dateWidth());
        painter_.setPen(Qt::black);
        painter_.setFont(fontOfSize(headingSize, true));
        painter_.drawText(patientRect, patientText(), wrapped());
        painter_.setFont(fontOfSize(labelSize));
        painter_.drawText(QRectF(0.0, 0.0, size_.width(), size_.height()),
                          Qt::AlignRight | Qt::AlignTop, dateText());

        double lowest = sheet.top;
        for (std::size_t side = 0; side < sideCount; ++side)
            lowest = std::max(lowest, paintSide(sheet, side));
        if (sheet.firstColor < sheet.endColor) paintLegend(sheet, lowest + gap);
        if (count > 1) {
            painter_.setFont(fontOfSize(textSize));
            painter_.drawText(QRectF(0.0, bottom(), size_.width(), footerHeight),
                              Qt::AlignRight | Qt::AlignBottom,
                              TreatmentPageText::tr("Page %1 of %2")
                                  .arg(QString::number(number), QString::number(count)));
        }
    }

    double paintSide(const Sheet &sheet, std::size_t side)
    {
        static constexpr const char *labels[] = {
            QT_TRANSLATE_NOOP("TreatmentPage", "Right"),
            QT_TRANSLATE_NOOP("TreatmentPage", "Front"),
            QT_TRANSLATE_NOOP("TreatmentPage", "Left"),
        };
        // On a further sheet a heading without rows would read like a side without elastics.
        if (!sheet.hasPictures && sheet.firstRow[side] == sheet.endRow[side]) return sheet.top;
        const QRectF &column = columns_[side];
        double y = headerHeight();
        painter_.setFont(fontOfSize(labelSize, true));
        painter_.drawText(textRect(column.left(), y, column.width()),
                          TreatmentPageText::tr(labels[side]), wrapped());
        y += labelHeight() + lineSpacing;
        if (sheet.hasPictures)
            painter_.drawImage(column.translated(0.0, y), printedPicture(sides_[side]->picture));
        y = sheet.top;
        for (std::size_t i = sheet.firstRow[side]; i < sheet.endRow[side]; ++i) {
            paintRow(rows_[side][i], column.left(), y, column.width());
            y += rows_[side][i].height;
        }
        return y;
    }

    QColor printedColor(const QColor &color) const
    {
        if (!page_.greyscale) return color;
        const int brightness = qGray(color.rgb());
        return {brightness, brightness, brightness};
    }

    QImage printedPicture(const QImage &picture) const
    {
        return page_.greyscale ? picture.convertToFormat(QImage::Format_Grayscale8) : picture;
    }

    void paintRow(const Row &row, double x, double y, double width)
    {
        painter_.setPen(QPen(Qt::black, 0.5));
        painter_.setBrush(printedColor(row.swatch));
        painter_.drawRect(QRectF(x, y + 1.0, colorSwatchSize, colorSwatchSize));
        painter_.setFont(fontOfSize(textSize));
        const double textX = x + colorSwatchSize + lineSpacing;
        painter_.drawText(textRect(textX, y, width - colorSwatchSize - lineSpacing), row.text,
                          wrapped());
    }

    void paintLegend(const Sheet &sheet, double y)
    {
        painter_.setFont(fontOfSize(labelSize, true));
        painter_.drawText(textRect(0.0, y, size_.width()), TreatmentPageText::tr("Brackets"),
                          wrapped());
        y += labelHeight() + lineSpacing;
        const double width = size_.width() / legendColumns;
        for (std::size_t first = sheet.firstColor; first < sheet.endColor; first += legendColumns) {
            const std::size_t end = std::min(first + legendColumns, sheet.endColor);
            for (std::size_t i = first; i < end; ++i)
                paintRow(legend_[i], static_cast<double>(i - first) * width, y, width - gap);
            y += lineHeight(first, end);
        }
    }

    const TreatmentPage &page_;
    QPagedPaintDevice &device_;
    QPainter painter_;
    QSizeF size_;
    std::array<const PrintedSide *, sideCount> sides_{&page_.right, &page_.front, &page_.left};
    std::array<QRectF, sideCount> columns_; ///< of the pictures, from y = 0
    std::array<std::vector<Row>, sideCount> rows_;
    std::vector<Row> legend_;
};

} // namespace

std::vector<PrintedColor> bracketColorsInUse(const kelo::DXDocumentModel &document)
{
    std::map<long, std::vector<std::string>> teeth;
    for (const auto &[key, typeID] : document.bracketColorsTypeIDs()) {
        const auto found = document.bracketModels().find(key);
        const bool isShown = found != document.bracketModels().end() &&
                             !found->second->hiddenPrimary() && !found->second->hiddenSecondary();
        if (isShown && typeID != kelo::noBracketColorTypeID) teeth[typeID].push_back(key);
    }
    std::vector<std::shared_ptr<kelo::BracketColorType>> types;
    for (const auto &[typeID, type] : document.availableBracketColorTypes()) {
        if (teeth.contains(typeID) && type->bracketColor) types.push_back(type);
    }
    std::stable_sort(types.begin(), types.end(), [](const auto &a, const auto &b) {
        return a->displayOrder < b->displayOrder;
    });
    std::vector<PrintedColor> colors;
    for (const auto &type : types) {
        const auto &[red, green, blue, alpha] = *type->bracketColor;
        colors.push_back({QString::fromStdString(type->typeLabel),
                          kelo::Color(red, green, blue, alpha), teeth.at(type->typeID)});
    }
    return colors;
}

int paintTreatmentPage(const TreatmentPage &page, QPagedPaintDevice &device)
{
    return PagePainter(page, device).paint();
}

QByteArray treatmentPageAsPDF(const TreatmentPage &page, const QPageLayout &layout)
{
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageLayout(layout);
    writer.setTitle(TreatmentPageText::tr("Treatment of %1, %2")
                        .arg(headingName(page.patientName),
                             QLocale().toString(page.date, QLocale::LongFormat)));
    writer.setCreator(QStringLiteral("treatment-viewer"));
    return paintTreatmentPage(page, writer) > 0 ? pdf : QByteArray();
}

QString writeTreatmentPage(const TreatmentPage &page, const QPageLayout &layout,
                           const QString &path)
{
    return writeWhatWasMade(path, treatmentPageAsPDF(page, layout),
                            QStringLiteral("the page could not be made"));
}

} // namespace viewer
