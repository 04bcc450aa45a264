#pragma once

#include "document/ElasticModel.h"
#include "keloOpenGL/menus/TreatmentMenus.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>

#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace kelo::test {

/// What an image is said to be: "swatch 1 0 0", "plus" and so on; "none" without one.
inline std::string kindOf(const std::shared_ptr<const QImage> &image)
{
    return image ? image->text("kind").toStdString() : "none";
}

inline std::shared_ptr<const QImage> imageOfKind(const std::string &kind)
{
    auto image = std::make_shared<QImage>(1, 1, QImage::Format_RGB32);
    image->setText("kind", QString::fromStdString(kind));
    return image;
}

inline std::string swatchKind(const char *kind, const Color &color)
{
    char text[80];
    std::snprintf(text, sizeof text, "%s %g %g %g", kind, color.red, color.green, color.blue);
    return text;
}

/// Images that say what they are instead of showing it.
inline MenuImageSource namedImages()
{
    return {[](const Color &color) { return imageOfKind(swatchKind("swatch", color)); },
            [](const Color &color) { return imageOfKind(swatchKind("two swatches", color)); },
            [] { return imageOfKind("plus"); },
            [] { return imageOfKind("plus for all"); },
            [] { return imageOfKind("cross"); },
            [] { return imageOfKind("two crosses"); },
            [] { return imageOfKind("pencil"); }};
}

constexpr std::uint64_t noElastic = std::numeric_limits<std::uint64_t>::max();

/// A small catalogue in a document with a box under every key, all brackets and buttons placed.
class MenuFixture : public testing::Test
{
protected:
    MenuFixture()
    {
        // The natural order of identifiers is not the order of display.
        addColor(1, 30, "Red", {1, 0, 0, 1});
        addColor(2, 10, "Blue", {0, 0, 1, 1});
        addColor(3, 20, "Green", {0, 1, 0, 1});
        document->setAvailableBracketColorTypes(colors);
        addSize(1, 2, "Large", {0.5, 0, 0, 1});
        addSize(2, 1, "Small", {0, 0.5, 0, 1});
        document->setAvailableElasticsSizeTypes(sizes);
        classTwo->typeID = 7;
        classTwo->typeLabel = "Class II";
        classTwo->elasticsSizeTypeID = 2;
        classTwo->bracketSequence = "6,30";
        unsized->typeID = 8;
        unsized->typeLabel = "Unsized";
        unsized->bracketSequence = "8,25";
        nowhere->typeID = 9;
        nowhere->typeLabel = "Nowhere";
        document->setAvailableElasticsConfigTypes({nowhere, classTwo, unsized});
        for (const auto &[key, bracket] : document->bracketModels())
            bracket->setMaterial(HVOGLMaterial::materialWithColor(Color::whiteColor()));
        context.document = document.get();
        context.toothName = "8";
        context.elasticIndex = noElastic;
    }

    void addColor(long typeID, long order, const char *label, std::array<double, 4> color)
    {
        auto type = std::make_shared<BracketColorType>();
        type->typeID = typeID;
        type->displayOrder = order;
        type->typeLabel = label;
        type->bracketColor = color;
        colors[typeID] = type;
    }
    void addSize(long typeID, long order, const char *label, std::array<double, 4> color)
    {
        auto type = std::make_shared<ElasticsSizeType>();
        type->typeID = typeID;
        type->displayOrder = order;
        type->typeLabel = label;
        type->elasticsColor = color;
        sizes[typeID] = type;
    }
    void placeElastic(const std::shared_ptr<ElasticsConfigType> &configuration, long sizeID)
    {
        document->placeElasticModel(std::make_shared<ElasticModel>(
            configuration, sizes.at(sizeID), std::vector<std::string>{"6", "30"}));
    }
    DXGLightweightModel &bracket(const char *key) { return *document->bracketModels().at(key); }
    DXGLightweightModel &button(const char *key) { return *document->buttonModels().at(key); }
    DXGLightweightModel &tooth(const char *key) { return *document->toothModels().at(key); }

    DXDocumentModel::BracketColorTypes colors;
    DXDocumentModel::ElasticsSizeTypes sizes;
    std::shared_ptr<ElasticsConfigType> classTwo = std::make_shared<ElasticsConfigType>();
    std::shared_ptr<ElasticsConfigType> unsized = std::make_shared<ElasticsConfigType>();
    std::shared_ptr<ElasticsConfigType> nowhere = std::make_shared<ElasticsConfigType>();
    std::shared_ptr<DXDocumentModel> document = boxDocument();
    MenuContext context;
    std::vector<std::string> chosen; ///< the selectors of what was chosen
    TreatmentMenus menus{namedImages(), [this](const std::string &selector) {
                             return [this, selector](MenuItem &) { chosen.push_back(selector); };
                         }};
};

} // namespace kelo::test
