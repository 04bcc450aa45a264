#include "tests/support/PictureComparison.h"

#include <QDir>

#include <algorithm>
#include <cstdlib>

namespace kelo::test {
namespace {

constexpr int enlargement = 8;

int difference(int a, int b)
{
    return a < b ? b - a : a - b;
}

std::string written(const QImage &picture, const QString &folder, const QString &fileName)
{
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(fileName);
    return picture.save(path) ? path.toStdString() : "(" + path.toStdString() + " not written)";
}

} // namespace

PictureDifference differenceOfPictures(const QImage &actual, const QImage &expected)
{
    const QImage one = actual.convertToFormat(QImage::Format_RGB888);
    const QImage other = expected.convertToFormat(QImage::Format_RGB888);
    PictureDifference found;
    found.pixelCount = static_cast<std::size_t>(one.width()) * one.height();
    found.picture = QImage(one.size(), QImage::Format_RGB888);
    for (int y = 0; y < one.height(); ++y) {
        const uchar *a = one.constScanLine(y);
        const uchar *b = other.constScanLine(y);
        uchar *shown = found.picture.scanLine(y);
        for (int x = 0; x < one.width(); ++x) {
            int largest = 0;
            for (int channel = 0; channel < 3; ++channel) {
                const int i = 3 * x + channel;
                const int apart = difference(a[i], b[i]);
                largest = std::max(largest, apart);
                shown[i] = static_cast<uchar>(std::min(255, enlargement * apart));
            }
            found.largestDifference = std::max(found.largestDifference, largest);
            if (largest > channelTolerance) ++found.differentPixelCount;
        }
    }
    return found;
}

testing::AssertionResult isThePictureKeptAs(const std::string &name, const QImage &actual)
{
    const QString fileName = QString::fromStdString(name) + QStringLiteral(".png");
    if (const char *folder = std::getenv("KELO_KEEP_PICTURES")) {
        return testing::AssertionFailure()
               << "kept as " << written(actual, QString::fromLocal8Bit(folder), fileName)
               << "; look at it before it becomes the expected picture";
    }
    return isTheKeptPicture(name, actual);
}

testing::AssertionResult isTheKeptPicture(const std::string &name, const QImage &actual)
{
    const QString fileName = QString::fromStdString(name) + QStringLiteral(".png");
    const QString folder = QStringLiteral(KELO_BUILD_DIR "/pictures");
    const QImage expected(QStringLiteral(KELO_KEPT_PICTURES "/") + fileName);
    if (expected.isNull() || expected.size() != actual.size()) {
        return testing::AssertionFailure() << "there is no picture of this size kept as " << name
                                           << "; this one is " << written(actual, folder, fileName);
    }
    const PictureDifference found = differenceOfPictures(actual, expected);
    if (found.isSmall()) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << found.differentPixelCount << " of " << found.pixelCount << " pixels differ, by up to "
           << found.largestDifference << "; the picture is " << written(actual, folder, fileName)
           << ", the difference "
           << written(found.picture, folder,
                      QString::fromStdString(name) + QStringLiteral("-difference.png"));
}

} // namespace kelo::test
