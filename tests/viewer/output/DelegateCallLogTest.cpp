#include "viewer/output/DelegateCallLog.h"

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestSurface.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QJsonDocument>

namespace {

using viewer::DelegateCallLog;

/// As the state has it, so that a failure shows what differs.
std::string text(const QJsonArray &array)
{
    return QJsonDocument(array).toJson(QJsonDocument::Compact).toStdString();
}

std::string array(const char *json)
{
    return text(QJsonDocument::fromJson(json).array());
}

class DelegateCalls : public testing::Test
{
protected:
    std::string lastCall() const { return text(log.calls().last().toArray()); }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Surfaceless};
    DelegateCallLog log;
    kelo::DXOpenGLDelegate delegate;
};

TEST_F(DelegateCalls, everyOperationOfTheDocumentIsOneLineWithItsPlainArguments)
{
    kelo::DXDocumentModel document;
    const auto &operations = *log.delegate();
    operations.tooth_visibilityDidChange("8", true);
    operations.bracket_visibilityDidChange("8", false);
    operations.button_visibilityDidChange("8l", true);
    operations.bracketUpdatesAvailable(document);
    operations.buttonUpdatesAvailable(document);
    operations.elasticModelPlaced(nullptr);
    operations.elasticModelRemoved(nullptr);
    operations.elasticModelColorDidChange(nullptr);
    operations.elasticModelsRefactoredAroundBrackets({"8", "9l"});
    EXPECT_EQ(text(log.calls()), array(R"([["tooth:visibilityDidChange:", "8", true],
                                     ["bracket:visibilityDidChange:", "8", false],
                                     ["button:visibilityDidChange:", "8l", true],
                                     ["bracketUpdatesAvailable:"],
                                     ["buttonUpdatesAvailable:"],
                                     ["elasticModelPlaced:"],
                                     ["elasticModelRemoved:"],
                                     ["elasticModelColorDidChange:"],
                                     ["elasticModelsRefactoredAroundBrackets:", ["8", "9l"]]])"));
}

TEST_F(DelegateCalls, everyOperationOfTheViewIsOneLineAndLeavesModelsOut)
{
    const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {20.0, 10.0}});
    kelo::DXDocumentModel document;
    log.logCallsOf(delegate);
    delegate.DXOpenGL_willUpdateDocumentModel(*view, document);
    delegate.DXOpenGL_didUpdateDocumentModel(*view, document);
    delegate.toggleFullScreenMode(*view);
    delegate.launchElasticsConfigAssociationSheetWithElasticModel_namingAction(nullptr, 1);
    EXPECT_EQ(text(log.calls()), array(R"([["DXOpenGL:willUpdateDocumentModel:"],
                  ["DXOpenGL:didUpdateDocumentModel:"],
                  ["toggleFullScreenMode:"],
                  ["launchElasticsConfigAssociationSheetWithElasticModel:namingAction:", 1]])"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(DelegateCalls, aPrintRequestHasItsDateAndItsListsButNoPictures)
{
    log.logCallsOf(delegate);
    const kelo::ElasticDescriptions left{
        {kelo::Color{1.0, 0.5, 0.25, 1.0}, "1/4\" 2 oz", {"6", "30"}}};
    const kelo::ElasticDescriptions front{{std::nullopt, "", {"8l", "9"}}};
    delegate.printImagesLeft_front_right_forDate_elasticsLeft_front_right(
        QImage(), QImage(), QImage(), QDate(2026, 2, 28).startOfDay(), left, front, {});
    EXPECT_EQ(lastCall(), array(R"(["printImagesLeft:front:right:forDate:elasticsLeft:front:right:",
                        "2026-02-28",
                        [{"color": [1, 0.5, 0.25, 1], "name": "1/4\" 2 oz",
                          "brackets": ["6", "30"]}],
                        [{"color": null, "name": "", "brackets": ["8l", "9"]}],
                        []])"));
}

TEST_F(DelegateCalls, aCallOfTheViewIsListedBeforeItIsPassedOn)
{
    const auto view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {20.0, 10.0}});
    qsizetype listedBefore = -1;
    delegate.toggleFullScreenMode = [&](kelo::DXOpenGL &) { listedBefore = log.calls().size(); };
    log.logCallsOf(delegate);
    delegate.toggleFullScreenMode(*view);
    EXPECT_EQ(listedBefore, 1);
    EXPECT_EQ(log.calls().size(), 1);
    EXPECT_NO_GL_ERROR();
}

} // namespace
