#pragma once

#include "document/DXDocumentModel.h"
#include "keloModel/TreatmentNote.h"
#include "models/DXGLightweightModel.h"
#include "models/HVOGLMaterial.h"
#include "tests/support/TestClock.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kelo::test {

using Keys = std::vector<std::string>;

inline std::shared_ptr<DXGLightweightModel> emptyModel()
{
    return std::make_shared<DXGLightweightModel>(nullptr, 0, nullptr, 0);
}

inline DXDocumentModel::Models emptyModels(const Keys &keys)
{
    DXDocumentModel::Models models;
    for (const std::string &key : keys)
        models[key] = emptyModel();
    return models;
}

inline Keys joined(Keys first, const Keys &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// A delegate that writes down what it is told, one string a call: "bracket 8 hidden".
struct RecordingDelegate : DXDocumentModelDelegate
{
    RecordingDelegate()
    {
        const auto visibility = [this](const char *kind) {
            return [this, kind](const std::string &key, bool visible) {
                calls.push_back(std::string(kind) + ' ' + key + (visible ? " visible" : " hidden"));
            };
        };
        tooth_visibilityDidChange = visibility("tooth");
        bracket_visibilityDidChange = visibility("bracket");
        button_visibilityDidChange = visibility("button");
        bracketUpdatesAvailable = [this](DXDocumentModel &) { calls.push_back("bracket updates"); };
        buttonUpdatesAvailable = [this](DXDocumentModel &) { calls.push_back("button updates"); };
        const auto aboutElastic = [this](const char *what) {
            return [this, what](const std::shared_ptr<ElasticModel> &elastic) {
                calls.push_back(what);
                lastElastic = elastic;
            };
        };
        elasticModelPlaced = aboutElastic("placed");
        elasticModelRemoved = aboutElastic("removed");
        elasticModelColorDidChange = aboutElastic("color");
        elasticModelsRefactoredAroundBrackets = [this](const Keys &keys) {
            std::string text = "refactored";
            for (const std::string &key : keys)
                text += ' ' + key;
            calls.push_back(text);
        };
    }

    std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

    std::vector<std::string> calls;
    std::shared_ptr<ElasticModel> lastElastic;
};

/// A document with all 28 teeth, brackets and buttons and both gums, on a clock that the test
/// moves.
class DocumentFixture : public testing::Test
{
protected:
    DocumentFixture()
    {
        const Keys teeth =
            joined(TreatmentNote::upperToothNameKeys(), TreatmentNote::lowerToothNameKeys());
        const Keys buttons = joined(TreatmentNote::upperLingualButtonNameKeys(),
                                    TreatmentNote::lowerLingualButtonNameKeys());
        document->setUpperGumModel(emptyModel());
        document->setLowerGumModel(emptyModel());
        document->setToothModels(emptyModels(teeth));
        document->setBracketModels(emptyModels(teeth));
        document->setButtonModels(emptyModels(buttons));
        document->setDelegate(&delegate);
    }

    std::shared_ptr<DXGLightweightModel> tooth(const std::string &key) const
    {
        return document->toothModels().at(key);
    }
    std::shared_ptr<DXGLightweightModel> bracket(const std::string &key) const
    {
        return document->bracketModels().at(key);
    }
    std::shared_ptr<DXGLightweightModel> button(const std::string &key) const
    {
        return document->buttonModels().at(key);
    }

    std::shared_ptr<ElasticModel> place(const Keys &sequence)
    {
        const auto elastic = std::make_shared<ElasticModel>(nullptr, nullptr, sequence);
        document->placeElasticModel(elastic);
        delegate.calls.clear();
        return elastic;
    }

    TestClock clock;
    RecordingDelegate delegate;
    std::shared_ptr<DXDocumentModel> document = std::make_shared<DXDocumentModel>();
};

} // namespace kelo::test
