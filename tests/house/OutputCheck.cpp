#include "tests/house/OutputCheck.h"

#include <QFile>
#include <QImage>

namespace kelo::test {
namespace {

constexpr char pngSignature[] = "\x89PNG\r\n\x1a\n";
/// An empty chunk of type IEND: length, type, checksum.
const QByteArray pngEnd = QByteArray::fromHex("0000000049454e44ae426082");

/// Of the pixels, the part that must differ from the corner's: a model that fills the view covers
/// a third, a speck of noise does not reach a hundredth.
constexpr qint64 smallestShownPart = 100;

bool hasLineStartingWith(const QByteArray &content, const QByteArray &start)
{
    return content.startsWith(start) || content.contains('\n' + start);
}

} // namespace

std::string problemWithPNG(const QByteArray &content)
{
    if (!content.startsWith(QByteArray(pngSignature, sizeof pngSignature - 1)))
        return "does not start as a PNG";
    if (!content.endsWith(pngEnd)) return "ends before its end chunk";
    const QImage picture = QImage::fromData(content, "PNG").convertToFormat(QImage::Format_ARGB32);
    if (picture.isNull()) return "does not decode";
    const QRgb corner = picture.pixel(0, 0);
    qint64 shownCount = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            shownCount += picture.pixel(x, y) != corner;
    const qint64 pixelCount = qint64(picture.width()) * picture.height();
    return shownCount * smallestShownPart < pixelCount ? "shows nothing but one colour" : "";
}

std::string problemWithPDF(const QByteArray &content)
{
    if (!content.startsWith("%PDF-1.")) return "does not start as a PDF";
    if (!content.trimmed().endsWith("%%EOF")) return "ends before its end mark";
    // "/Type /Pages" is the list, which an empty document has too.
    const QByteArray dense = QByteArray(content).replace("/Type /", "/Type/");
    return dense.count("/Type/Page") > dense.count("/Type/Pages") ? "" : "has no page";
}

std::string problemWithOBJ(const QByteArray &content)
{
    for (const char *start : {"o ", "v ", "f "})
        if (!hasLineStartingWith(content, start))
            return std::string("has no line that starts with '") + start + "'";
    return content.endsWith('\n') ? "" : "ends within a line";
}

std::string problemWithFile(const std::string &path)
{
    const QString name = QString::fromStdString(path);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return "cannot be read";
    const QByteArray content = file.readAll();
    if (name.endsWith(QStringLiteral(".png"))) return problemWithPNG(content);
    if (name.endsWith(QStringLiteral(".pdf"))) return problemWithPDF(content);
    if (name.endsWith(QStringLiteral(".obj"))) return problemWithOBJ(content);
    return "is of a kind that cannot be checked";
}

} // namespace kelo::test
