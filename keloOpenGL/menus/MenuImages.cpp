#include "keloOpenGL/menus/MenuImages.h"

#include "models/BundleKey.h"
#include "platform/settings/ResourceBundle.h"
#include "platform/settings/VersionChecker.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace kelo {
namespace {

constexpr double singleSize = 24.0;
constexpr double doubleSize = 29.0;
constexpr double doubleShift = 5.0; ///< between the two pieces of a double image

/// As fine as the finest screen has it, and never coarser than 2, so that a picture of the menu can
/// be enlarged. Whole, so that the images of 29 points have whole pixels too.
int pixelsPerPoint()
{
    constexpr double least = 2.0;
    const bool hasScreens = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    return static_cast<int>(
        std::ceil(std::max(least, hasScreens ? qGuiApp->devicePixelRatio() : 1.0)));
}

QColor asQColor(const Color &color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

/// A gradient's centre in its rectangle: (-1, -1) is the lower left corner, (1, 1) the upper right.
struct RelativeCenter
{
    double x, y;
};

/// Outwards from the centre to the corner that is furthest from it.
QRadialGradient radialGradient(const QRectF &rect, RelativeCenter center)
{
    const QPointF middle(rect.center().x() + center.x * rect.width() / 2.0,
                         rect.center().y() + center.y * rect.height() / 2.0);
    const double dx = std::max(middle.x() - rect.left(), rect.right() - middle.x());
    const double dy = std::max(middle.y() - rect.top(), rect.bottom() - middle.y());
    return QRadialGradient(middle, std::hypot(dx, dy));
}

void drawSwatch(QPainter &painter, const QRectF &rect, const Color &color)
{
    QRadialGradient gradient = radialGradient(rect, {-0.75, 0.75});
    gradient.setColorAt(
        0.0, asQColor(color.blendedColorWithFraction_ofColor(0.625, Color::whiteColor())));
    gradient.setColorAt(
        1.0, asQColor(color.blendedColorWithFraction_ofColor(0.25, Color::blackColor())));
    painter.fillRect(rect, gradient);
    constexpr double frameWidth = 1.0;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(asQColor(Color::calibratedWhite(0.125, 1.0)), frameWidth, Qt::SolidLine,
                        Qt::SquareCap, Qt::MiterJoin));
    constexpr double half = frameWidth / 2.0; // the frame lies inside the rectangle
    painter.drawRect(rect.adjusted(half, half, -half, -half));
}

QPainterPath closedPath(const QPolygonF &corners)
{
    QPainterPath path;
    path.addPolygon(corners);
    path.closeSubpath();
    return path;
}

QPainterPath plusPath()
{
    return closedPath({{0.5, 8.5},
                       {0.5, 15.5},
                       {8.5, 15.5},
                       {8.5, 23.5},
                       {15.5, 23.5},
                       {15.5, 15.5},
                       {23.5, 15.5},
                       {23.5, 8.5},
                       {15.5, 8.5},
                       {15.5, 0.5},
                       {8.5, 0.5},
                       {8.5, 8.5}});
}

void drawPlus(QPainter &painter, const QPainterPath &path, RelativeCenter center)
{
    QRadialGradient gradient = radialGradient(path.boundingRect(), center);
    gradient.setColorAt(0.0, QColor::fromRgbF(0.625f, 1.0f, 0.75f));
    gradient.setColorAt(0.5, QColor::fromRgbF(0.375f, 0.875f, 0.40625f));
    gradient.setColorAt(1.0, QColor::fromRgbF(0.0f, 0.75f, 0.0625f));
    painter.fillPath(path, gradient);
    painter.strokePath(path, QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

constexpr double crossScale = 1.5;

/// Moved before it is scaled, in its own units.
QPainterPath crossPath(double dx, double dy)
{
    const QPainterPath path = closedPath({{5, 16},
                                          {2, 13},
                                          {7, 9},
                                          {0, 3},
                                          {3, 0},
                                          {9, 6},
                                          {12, 0},
                                          {16, 3},
                                          {11, 9},
                                          {15, 13},
                                          {13, 15},
                                          {9, 12}});
    return QTransform::fromScale(crossScale, crossScale).map(path.translated(dx, dy));
}

void drawCross(QPainter &painter, const QPainterPath &path)
{
    QRadialGradient gradient = radialGradient(path.boundingRect(), {-0.75, 0.75});
    gradient.setColorAt(0.0, QColor::fromRgbF(0.875f, 0.625f, 0.25f));
    gradient.setColorAt(1.0, QColor::fromRgbF(1.0f, 0.375f, 0.0f));
    painter.fillPath(path, gradient);
    painter.strokePath(path, QPen(Qt::black, 0.75, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
}

MenuImagePointer drawnImage(double size, int scale, const std::function<void(QPainter &)> &draw)
{
    const int pixels = static_cast<int>(size) * scale;
    const auto image =
        std::make_shared<QImage>(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image->fill(Qt::transparent);
    QPainter painter(image.get());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, -scale);
    painter.translate(0.0, -size);
    draw(painter);
    painter.end();
    image->setDevicePixelRatio(scale);
    return image;
}

enum class Motif { Swatch, DoubleSwatch, Plus, WidePlus, Cross, DoubleCross, Pencil };

/// What makes an image the one that it is.
struct ImageKey
{
    Motif motif;
    std::array<std::uint64_t, 4> color{}; ///< of a swatch
    std::string file{};                   ///< that the image was read from
    int scale = pixelsPerPoint();
    bool isOfNewerDesktop = VersionChecker::isMountainLionOrLater();
    auto operator<=>(const ImageKey &) const = default;
};

/// The components' bits: unlike numbers they have an order whatever they are.
std::array<std::uint64_t, 4> bitsOf(const Color &color)
{
    return {std::bit_cast<std::uint64_t>(color.red), std::bit_cast<std::uint64_t>(color.green),
            std::bit_cast<std::uint64_t>(color.blue), std::bit_cast<std::uint64_t>(color.alpha)};
}

/// The image as it was made before, or as `make` makes it now: a menu is opened with every click,
/// and its swatches took most of the time that this needed. Null is not kept.
MenuImagePointer keptImage(const ImageKey &key,
                           const std::function<MenuImagePointer(const ImageKey &)> &make)
{
    // Four times what the standard catalogue's colours and sizes need; a host that goes on
    // inventing colours begins anew. 4 MB at two pixels a point.
    constexpr std::size_t most = 400;
    static std::map<ImageKey, MenuImagePointer> kept;
    const auto found = kept.find(key);
    if (found != kept.end()) return found->second;
    MenuImagePointer image = make(key);
    if (kept.size() >= most) kept.clear();
    if (image) kept.emplace(key, image);
    return image;
}

MenuImagePointer keptImage(const ImageKey &key, double size,
                           const std::function<void(QPainter &)> &draw)
{
    return keptImage(key, [&](const ImageKey &) { return drawnImage(size, key.scale, draw); });
}

/// The older desktops' pair of plusses.
void drawDoublePlus(QPainter &painter)
{
    const QPainterPath back = plusPath().translated(0.0, doubleShift);
    drawPlus(painter, back, {-0.3333, 0.3333});
    drawPlus(painter, back.translated(doubleShift, -doubleShift), {-0.75, 0.75});
}

MenuImagePointer pencilFromFile(const ImageKey &key)
{
    const QImage picture(QString::fromStdString(key.file));
    if (picture.isNull()) return nullptr;
    const int pixels = static_cast<int>(singleSize) * key.scale;
    const auto image = std::make_shared<QImage>(
        picture.scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    image->setDevicePixelRatio(key.scale);
    return image;
}

} // namespace

void drawColorMenuItemImageWithColor(QPainter &painter, const Color &color)
{
    drawSwatch(painter, {0.0, 0.0, singleSize, singleSize}, color);
}

void drawDoubleColorMenuItemImageWithColor(QPainter &painter, const Color &color)
{
    drawSwatch(painter, {0.0, doubleShift, singleSize, singleSize}, color);
    drawSwatch(painter, {doubleShift, 0.0, singleSize, singleSize}, color);
}

void drawAddMenuItemImage(QPainter &painter)
{
    drawPlus(painter, plusPath(), {-0.3333, 0.3333});
}

void drawRemoveMenuItemImage(QPainter &painter)
{
    drawCross(painter, crossPath(0.0, 0.0));
}

void drawDoubleRemoveMenuItemImage(QPainter &painter)
{
    const QPainterPath back = crossPath(0.0, 10.0 / 3.0);
    drawCross(painter, back);
    drawCross(painter, back.translated(doubleShift, -doubleShift));
}

MenuImagePointer colorMenuItemImage(const Color &color)
{
    return keptImage({Motif::Swatch, bitsOf(color)}, singleSize, [&color](QPainter &painter) {
        drawColorMenuItemImageWithColor(painter, color);
    });
}

MenuImagePointer doubleColorMenuItemImage(const Color &color)
{
    const ImageKey key{Motif::DoubleSwatch, bitsOf(color)};
    return keptImage(key, doubleSize, [&color](QPainter &painter) {
        drawDoubleColorMenuItemImageWithColor(painter, color);
    });
}

MenuImagePointer addMenuItemImage()
{
    return keptImage({Motif::Plus}, singleSize, drawAddMenuItemImage);
}

MenuImagePointer placeAllMenuItemImage()
{
    // The newer desktops draw a single plus, on purpose.
    return keptImage({Motif::WidePlus}, doubleSize,
                     VersionChecker::isMountainLionOrLater() ? drawAddMenuItemImage
                                                             : drawDoublePlus);
}

MenuImagePointer removeMenuItemImage()
{
    return keptImage({Motif::Cross}, singleSize, drawRemoveMenuItemImage);
}

MenuImagePointer doubleRemoveMenuItemImage()
{
    return keptImage({Motif::DoubleCross}, doubleSize, drawDoubleRemoveMenuItemImage);
}

MenuImagePointer pencilMenuItemImage()
{
    const auto bundle = ResourceBundle::bundleWithIdentifier(keloOpenGLBundleKey);
    const auto path = bundle ? bundle->pathForResource_ofType("pencil_edit", "png") : std::nullopt;
    return keptImage({.motif = Motif::Pencil, .file = path.value_or("")}, pencilFromFile);
}

} // namespace kelo
