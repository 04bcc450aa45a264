#pragma once

#include "platform/gl.h"

#include "document/ElasticModel.h"
#include "keloOpenGL/treatment/DXOpenGL.h"
#include "models/HVOGLMaterial.h"
#include "platform/presenters/Alert.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelo::test {

inline const QDateTime printedDay(QDate(2026, 11, 20), QTime(0, 0));

/// A view of a computer that may lack what printing needs, which can be told to fail, and which
/// notes what it does while it draws.
class PrintingView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;
    bool isInFullScreenMode() const override { return fullScreen; }
    void exitFullScreenModeWithOptions() override
    {
        fullScreen = false;
        if (whenLeavingFullScreen) whenLeavingFullScreen();
        DXOpenGL::exitFullScreenModeWithOptions();
    }
    void drawContent() override
    {
        flushSuppressedWhileDrawing.push_back(openGLContext().isFlushSuppressed());
        if (whileDrawing) whileDrawing();
        DXOpenGL::drawContent();
    }
    std::function<void()> whileDrawing;
    std::function<void()> whenLeavingFullScreen;
    std::vector<bool> flushSuppressedWhileDrawing;
    bool fullScreen = false;
    std::optional<std::string> extensions;
    std::optional<unsigned> status;

protected:
    std::string openGLExtensions() const override
    {
        return extensions.value_or(DXOpenGL::openGLExtensions());
    }
    unsigned framebufferStatus() const override
    {
        return status.value_or(DXOpenGL::framebufferStatus());
    }
};

/// Boxes with red brackets, a delegate that takes copies of what is printed, and alerts that are
/// kept instead of shown.
class PrintingFixture : public ViewFixture
{
protected:
    PrintingFixture()
    {
        document = boxDocument();
        for (const auto &[key, bracket] : document->bracketModels())
            bracket->setMaterial(HVOGLMaterial::materialWithColor(Color{1.0, 0.0, 0.0, 1.0}));
        size = std::make_shared<ElasticsSizeType>();
        size->typeID = 1;
        size->typeLabel = "1/4\" 3.5 oz";
        size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        document->setAvailableElasticsSizeTypes({{1, size}});
        view->setDocumentModel(document);
        view->setDelegate(&delegate);
        view->setCurrentDate(printedDay);
        view->setDisplayedDate(printedDay);
        delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right =
            [this](const QImage &leftImage, const QImage &frontImage, const QImage &rightImage,
                   const QDateTime &printedDate, const ElasticDescriptions &leftElastics,
                   const ElasticDescriptions &frontElastics,
                   const ElasticDescriptions &rightElastics) {
                ++prints;
                bytesPerLine = {leftImage.bytesPerLine(), frontImage.bytesPerLine(),
                                rightImage.bytesPerLine()};
                left = leftImage.copy();
                front = frontImage.copy();
                right = rightImage.copy();
                date = printedDate;
                elastics = {leftElastics, frontElastics, rightElastics};
                wasInFullScreen = view->isInFullScreenMode();
            };
        keptPresenter =
            AlertPresenter::setPresenter([this](const Alert &alert) { alerts.push_back(alert); });
    }
    ~PrintingFixture() override { AlertPresenter::setPresenter(keptPresenter); }

    void place(const std::vector<std::string> &keys)
    {
        document->placeElasticModel(std::make_shared<ElasticModel>(nullptr, size, keys));
    }

    static bool hasRed(const QImage &image)
    {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.red() > 60 && pixel.red() > pixel.green() + 40 &&
                    pixel.red() > pixel.blue() + 40)
                    return true;
            }
        }
        return false;
    }

    std::shared_ptr<DXDocumentModel> document;
    std::shared_ptr<ElasticsSizeType> size;
    DXOpenGLDelegate delegate;
    AlertPresenter::Presenter keptPresenter;
    std::vector<Alert> alerts;
    int prints = 0;
    QImage left, front, right;
    std::vector<qsizetype> bytesPerLine;
    QDateTime date;
    std::vector<ElasticDescriptions> elastics;
    bool wasInFullScreen = false;
    std::shared_ptr<PrintingView> view = makeView<PrintingView>(Rect{{0.0, 0.0}, {400.0, 300.0}});
};

} // namespace kelo::test
