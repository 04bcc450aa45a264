#pragma once

#include <QByteArray>
#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace viewer::test {

/// Whether any pixel is not grey.
inline bool hasColour(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.red() != pixel.green() || pixel.green() != pixel.blue()) return true;
        }
    }
    return false;
}

/// What a reader of a PDF document gets to see, by programs that know nothing of how it was made.
class PDFPages
{
public:
    explicit PDFPages(const QByteArray &pdf)
    {
        QFile file(path());
        if (file.open(QIODevice::WriteOnly)) file.write(pdf);
    }

    /// The text that can be selected and searched, page by page, each ended by a form feed.
    QString text() const
    {
        return QString::fromUtf8(output(QStringLiteral("pdftotext"), {"-layout", path(), "-"}));
    }

    /// Title, page size and the like.
    QString information() const
    {
        return QString::fromUtf8(output(QStringLiteral("pdfinfo"), {path()}));
    }

    /// Every page as a picture of 72 dots an inch.
    std::vector<QImage> pictures() const
    {
        output(QStringLiteral("pdftoppm"),
               {"-r", "72", "-png", path(), folder_.filePath(QStringLiteral("page"))});
        std::vector<QImage> pages;
        const QDir folder(folder_.path());
        for (const QString &name : folder.entryList({"page*.png"}, QDir::Files, QDir::Name))
            pages.emplace_back(folder.filePath(name));
        return pages;
    }

private:
    QString path() const { return folder_.filePath(QStringLiteral("document.pdf")); }

    static QByteArray output(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }

    QTemporaryDir folder_;
};

} // namespace viewer::test
