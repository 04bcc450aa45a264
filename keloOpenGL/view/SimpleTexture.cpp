#include "platform/gl.h"

#include "keloOpenGL/view/SimpleTexture.h"

#include "platform/view/OpenGLContext.h"

#include <QImage>
#include <QImageReader>

namespace kelo {

std::shared_ptr<SimpleTexture> SimpleTexture::textureWithFile(const std::string &path)
{
    const std::shared_ptr<SimpleTexture> texture(new SimpleTexture);
    return texture->initWithFile(path) ? texture : nullptr;
}

bool SimpleTexture::initWithFile(const std::string &path)
{
    // Bytes in the order red, green, blue, alpha, rows without padding, top row first.
    const QImage picture = QImageReader(QString::fromStdString(path))
                               .read()
                               .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    context_ = OpenGLContext::currentContext();
    if (picture.isNull() || context_.expired()) return false;
    width_ = static_cast<unsigned>(picture.width());
    height_ = static_cast<unsigned>(picture.height());
    glGenTextures(1, &textureName);
    glBindTexture(GL_TEXTURE_RECTANGLE, textureName);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_RECTANGLE, 0, GL_RGBA8, picture.width(), picture.height(), 0, GL_RGBA,
                 GL_UNSIGNED_INT_8_8_8_8_REV, picture.constBits());
    return true;
}

SimpleTexture::~SimpleTexture()
{
    if (const auto context = context_.lock()) context->deleteTexture(textureName);
}

void SimpleTexture::bind() const
{
    glEnable(GL_TEXTURE_RECTANGLE);
    glBindTexture(GL_TEXTURE_RECTANGLE, context_.expired() ? 0 : textureName);
}

void SimpleTexture::unbind()
{
    glDisable(GL_TEXTURE_RECTANGLE);
    glBindTexture(GL_TEXTURE_RECTANGLE, 0);
}

} // namespace kelo
