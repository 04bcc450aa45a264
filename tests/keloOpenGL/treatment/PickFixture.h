#pragma once

#include "platform/gl.h"

#include "document/DXDocumentModel.h"
#include "document/ElasticModel.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloOpenGL/picking/PickPass.h"
#include "keloOpenGL/treatment/DXOpenGL.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelo::test {

/// The identifiers of every pixel of a view, row after row from the bottom.
struct IdentifierPicture
{
    PixelSize size;
    std::vector<std::uint32_t> identifiers;
    std::uint32_t at(int column, int row) const
    {
        return identifiers[static_cast<std::size_t>(row) * static_cast<std::size_t>(size.width) +
                           static_cast<std::size_t>(column)];
    }
};

/// Places an elastic over hooks, without telling anybody.
inline void addElastic(DXDocumentModel &document, const std::vector<std::string> &keys)
{
    const auto size = std::make_shared<ElasticsSizeType>();
    size->elasticsColor = {0.9, 0.5, 0.2, 1.0};
    document.elasticModels().push_back(std::make_shared<ElasticModel>(nullptr, size, keys));
}

/// A treatment view whose picks can be compared with a pass over the whole picture.
class PickView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;

    /// What a pick reads at every pixel, by one pass without scissor and with every model.
    IdentifierPicture fullPass()
    {
        openGLContext().makeCurrentContext();
        resizeGL();
        const PixelSize size = deviceSize();
        const OffscreenTarget::Binding binding(fullTarget, size, pickFormats());
        EXPECT_TRUE(binding.isBound());
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glDepthMask(GL_TRUE);
        glDisable(GL_DITHER);
        glDisable(GL_SCISSOR_TEST);
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        updateModelView();
        setIsInColorPickMode(true);
        glDisable(GL_LIGHTING);
        drawContent();
        drawExtraContent();
        setIsInColorPickMode(false);
        const auto count = static_cast<std::size_t>(size.width) * size.height;
        std::vector<GLubyte> bytes(count * 4);
        glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
        glPopAttrib();
        IdentifierPicture picture{size, std::vector<std::uint32_t>(count)};
        for (std::size_t i = 0; i < count; ++i)
            picture.identifiers[i] =
                bytes[i * 4] * 65536u + bytes[i * 4 + 1] * 256u + bytes[i * 4 + 2];
        return picture;
    }

    /// The pixels of the view's own buffer as they are now.
    std::vector<GLubyte> ownBuffer()
    {
        openGLContext().makeCurrentContext();
        const PixelSize size = deviceSize();
        std::vector<GLubyte> bytes(static_cast<std::size_t>(size.width) * size.height * 4);
        glReadPixels(0, 0, size.width, size.height, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
        return bytes;
    }

    bool picksOffScreen = true;
    bool leavesOutModels = true;
    std::uint64_t neverDrawn = 0; ///< the unique identifier of a model that picks miss
    bool failsWhileDrawing = false;
    mutable int drawnModels = 0;
    int drawnPictures = 0;

    void drawExtraContent() override
    {
        if (failsWhileDrawing) throw std::runtime_error("failed while drawing");
        DXOpenGL::drawExtraContent();
    }

    void drawRect(const Rect &dirtyRect) override
    {
        ++drawnPictures;
        DXOpenGL::drawRect(dirtyRect);
    }

protected:
    bool canPickOffScreen() const override
    {
        return picksOffScreen && DXOpenGL::canPickOffScreen();
    }
    bool shouldDrawForColorSelection(const DXGLightweightModel &model,
                                     const Matrix &jawTransform) const override
    {
        const bool draws =
            model.uniqueID() != neverDrawn &&
            (!leavesOutModels || DXOpenGL::shouldDrawForColorSelection(model, jawTransform));
        drawnModels += draws ? 1 : 0;
        return draws;
    }

private:
    OffscreenTarget fullTarget;
};

} // namespace kelo::test
