#include "viewer/output/PictureFile.h"

#include "keloOpenGL/keloOpenGL.h"
#include "viewer/files/OutputFile.h"

#include <QBuffer>
#include <QImage>

namespace viewer {

QByteArray pictureAsPNG(const QImage &picture)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (picture.isNull() || !picture.save(&buffer, "PNG")) return {};
    return png;
}

QString writePicture(kelo::DXOpenGL &view, const QString &file)
{
    return writeWhatWasMade(file, pictureAsPNG(view.grabImage()),
                            QStringLiteral("the view could not be drawn"));
}

} // namespace viewer
