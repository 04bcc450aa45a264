#pragma once

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kelo::test {

/// A view that notes, for every frame that it draws, how a model looks in it.
class WatchedView : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;

    struct Frame
    {
        double shininess;
        HVOGLMaterial::OptionalColor color;
        std::shared_ptr<HVOGLMaterial> material;
        bool isStringing;         ///< an elastic is being strung
        std::size_t elasticCount; ///< placed ones
    };

    void drawRect(const Rect &dirtyRect) override
    {
        if (onNextFrame) std::exchange(onNextFrame, nullptr)();
        if (watched) {
            const auto material = watched->material();
            frames.push_back({material->shininess(), material->color(), material,
                              bracketSequence().has_value(),
                              documentModel()->elasticModels().size()});
        }
        DXOpenGL::drawRect(dirtyRect);
    }
    bool isInFullScreenMode() const override { return isFullScreen; }
    void exitFullScreenModeWithOptions() override
    {
        isFullScreen = false;
        log.push_back("exit full screen");
    }

    std::shared_ptr<DXGLightweightModel> watched;
    std::vector<Frame> frames;
    bool isFullScreen = false;
    std::vector<std::string> log;
    std::function<void()> onNextFrame; ///< as an event that a frame lets in
};

/// A full set of boxes in the elastics mode, in colours, with two sizes of elastics.
class ElasticFixture : public ViewFixture
{
protected:
    ElasticFixture()
    {
        for (const auto *models : {&document->bracketModels(), &document->buttonModels()}) {
            for (const auto &[key, model] : *models)
                model->setMaterial(HVOGLMaterial::materialWithColor(red));
        }
        document->setAvailableElasticsSizeTypes({{1, sizeType(1)}, {2, sizeType(2)}});
        view->setDocumentModel(document);
        view->setMouseMode(DXOpenGL::elasticsMode);
        keptPresenter = ContextMenuPresenter::setPresenter(
            [this](const std::shared_ptr<Menu> &opened, const Event &, OpenGLView &) {
                menu = opened;
            });
    }
    ~ElasticFixture() override
    {
        ContextMenuPresenter::setPresenter(keptPresenter);
        view->setDelegate(nullptr);
        document->setDelegate(nullptr);
    }

    static std::shared_ptr<ElasticsSizeType> sizeType(long typeID)
    {
        auto type = std::make_shared<ElasticsSizeType>();
        type->typeID = typeID;
        type->elasticsColor = {0.0, 1.0, 0.0, 1.0};
        return type;
    }
    std::shared_ptr<ElasticModel> placeElastic(const std::vector<std::string> &sequence)
    {
        auto elastic = std::make_shared<ElasticModel>(
            nullptr, document->availableElasticsSizeTypes().at(1), sequence);
        document->placeElasticModel(elastic);
        return elastic;
    }
    static MenuItem rowFor(const std::any &representedObject)
    {
        MenuItem item;
        item.representedObject = representedObject;
        return item;
    }
    DXGLightweightModel &bracket(const std::string &key)
    {
        return *document->bracketModels().at(key);
    }
    DXGLightweightModel &button(const std::string &key)
    {
        return *document->buttonModels().at(key);
    }

    /// Begins an elastic, as the elastic menu on this bracket or button does.
    void startOn(const std::string &name)
    {
        view->setFirstClickedToothName(name);
        view->setLastClickedToothName(name);
        MenuItem row = rowFor(document->availableElasticsSizeTypes().at(1));
        view->startElasticColorMenuItemSelected(row);
    }
    /// A pixel that shows what has this identifier; of all of them the one in the middle.
    Point placeOf(std::uint32_t identifier)
    {
        const auto pixels = view->pickIdentifiers();
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            if (pixels[i] == identifier) places.push_back(i);
        }
        if (places.empty()) {
            ADD_FAILURE() << "nothing of " << identifier << " can be seen";
            return {};
        }
        const std::size_t place = places[places.size() / 2];
        const auto width = static_cast<std::size_t>(view->deviceSize().width);
        return {static_cast<double>(place % width), static_cast<double>(place / width)};
    }
    void press(const Point &point)
    {
        view->elasticsMouseDown(eventAt(EventType::LeftMouseDown, point.x, point.y));
    }
    void clickBracket(const std::string &key)
    {
        press(placeOf(static_cast<std::uint32_t>(bracket(key).uniqueID())));
    }
    void clickElastic(std::uint32_t index) { press(placeOf(0x800000 + index)); }

    const Color red{1.0, 0.0, 0.0, 1.0};
    std::shared_ptr<DXDocumentModel> document = boxDocument();
    std::shared_ptr<WatchedView> view = makeView<WatchedView>(Rect{{0.0, 0.0}, {400.0, 300.0}});
    std::shared_ptr<Menu> menu;

private:
    ContextMenuPresenter::Presenter keptPresenter;
};

} // namespace kelo::test
