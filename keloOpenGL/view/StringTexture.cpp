#include "platform/gl.h"

#include "keloOpenGL/view/StringTexture.h"

#include "platform/view/OpenGLContext.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kelo {
namespace {

constexpr Color opaqueWhite{1.0, 1.0, 1.0, 1.0};
constexpr Color transparentWhite{1.0, 1.0, 1.0, 0.0};

bool canDrawText()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

/// One texel a point, whatever the desktop's resolution is: sizes of text and of the view are both
/// in points then.
QFont fontFor(const TextAttributes &attributes)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(attributes.pointSize))));
    return font;
}

QColor asQColor(const Color &color)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

/// The text drawn at the origin, in bytes red, green, blue, alpha, top row first.
QImage pictureOf(const AttributedString &string, const QSize &size)
{
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(fontFor(string.attributes));
    painter.setPen(asQColor(string.attributes.foregroundColor));
    painter.drawText(QRectF(QPointF(0.0, 0.0), QSizeF(size)), Qt::AlignLeft | Qt::AlignTop,
                     QString::fromStdString(string.text));
    return picture;
}

} // namespace

StringTexture::StringTexture(AttributedString string, OptionalColor textColor,
                             OptionalColor boxColor, OptionalColor borderColor)
    : string_(std::move(string)),
      textColor_(textColor),
      boxColor_(boxColor),
      borderColor_(borderColor)
{}

StringTexture::StringTexture(std::string text, const TextAttributes &attributes,
                             OptionalColor textColor, OptionalColor boxColor,
                             OptionalColor borderColor)
    : StringTexture(AttributedString{std::move(text), attributes}, textColor, boxColor, borderColor)
{}

StringTexture::StringTexture(AttributedString string)
    : StringTexture(std::move(string), opaqueWhite, transparentWhite, transparentWhite)
{}

StringTexture::StringTexture(std::string text, const TextAttributes &attributes)
    : StringTexture(AttributedString{std::move(text), attributes})
{}

StringTexture::~StringTexture()
{
    deleteTexture();
}

void StringTexture::deleteTexture()
{
    const auto context = cgl_ctx.lock();
    if (texName_ == 0 || !context) return;
    context->deleteTexture(texName_);
    texName_ = 0;
    cgl_ctx.reset();
}

std::optional<Size> StringTexture::stringSize() const
{
    if (!canDrawText()) return std::nullopt;
    if (string_.text.empty()) return Size{};
    const QSizeF size =
        QFontMetricsF(fontFor(string_.attributes)).size(0, QString::fromStdString(string_.text));
    return Size{size.width(), size.height()};
}

Size StringTexture::texSize()
{
    if (texName_ == 0) genTexture();
    return texSize_;
}

void StringTexture::genTexture()
{
    const auto size = stringSize();
    if (!size || !OpenGLContext::currentContext()) return;
    const QSize texels(static_cast<int>(std::ceil(size->width)),
                       static_cast<int>(std::ceil(size->height)));
    const QImage picture = texels.isEmpty() ? QImage() : pictureOf(string_, texels);
    glEnable(GL_TEXTURE_RECTANGLE);
    glGenTextures(1, &texName_);
    glBindTexture(GL_TEXTURE_RECTANGLE, texName_);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_RECTANGLE, 0, GL_RGBA8, picture.width(), picture.height(), 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, picture.constBits());
    texSize_ = {static_cast<double>(picture.width()), static_cast<double>(picture.height())};
}

void StringTexture::drawWithBounds(const Rect &bounds)
{
    if (texName_ == 0) genTexture();
    if (texName_ == 0) return;
    glBindTexture(GL_TEXTURE_RECTANGLE, texName_);
    const auto corner = [](double s, double t, double x, double y) {
        glTexCoord2d(s, t);
        glVertex2d(x, y);
    };
    const auto &[x, y] = bounds.origin;
    const auto &[width, height] = bounds.size;
    glBegin(GL_QUADS);
    corner(0.0, 0.0, x, y);
    corner(0.0, texSize_.height, x, y + height);
    corner(texSize_.width, texSize_.height, x + width, y + height);
    corner(texSize_.width, 0.0, x + width, y);
    glEnd();
}

void StringTexture::drawAtPoint(const Point &point)
{
    if (texName_ == 0) genTexture();
    if (texName_ != 0) drawWithBounds({point, texSize_});
}

void StringTexture::forgetDynamicFrame()
{
    if (!staticFrame_) frameSize_ = {};
}

void StringTexture::setString(AttributedString string)
{
    deleteTexture();
    string_ = std::move(string);
    forgetDynamicFrame();
}

void StringTexture::setString_withAttributes(std::string text, const TextAttributes &attributes)
{
    setString({std::move(text), attributes});
}

void StringTexture::setTextColor(OptionalColor color)
{
    deleteTexture();
    textColor_ = color;
}

void StringTexture::setBoxColor(OptionalColor color)
{
    deleteTexture();
    boxColor_ = color;
}

void StringTexture::setBorderColor(OptionalColor color)
{
    deleteTexture();
    borderColor_ = color;
}

void StringTexture::setMargins(const Size &margins)
{
    deleteTexture();
    marginSize_ = margins;
    forgetDynamicFrame();
}

Size StringTexture::frameSize()
{
    if (!staticFrame_ && frameSize_ == Size{}) {
        const Size text = stringSize().value_or(Size{});
        frameSize_ = {text.width + 2.0 * marginSize_.width, text.height + 2.0 * marginSize_.height};
    }
    return frameSize_;
}

void StringTexture::useStaticFrame(const Size &size)
{
    deleteTexture();
    frameSize_ = size;
    staticFrame_ = true;
}

void StringTexture::useDynamicFrame()
{
    if (!staticFrame_) return;
    deleteTexture();
    staticFrame_ = false;
    frameSize_ = {};
}

} // namespace kelo
