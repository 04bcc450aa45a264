#pragma once

#include "keloOpenGL/keloOpenGL.h"
#include "tests/support/GLTest.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestSurface.h"
#include "viewer/script/Script.h"
#include "viewer/script/ScriptPlayer.h"
#include "viewer/treatment/OpenedTreatment.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace viewer::test {

/// The sample treatment in a view without a display, played on by scripts.
class ScriptFixture : public testing::Test
{
protected:
    ScriptFixture()
    {
        view = kelo::makeView<kelo::DXOpenGL>(kelo::Rect{{0.0, 0.0}, {800.0, 600.0}});
        CommandLine commandLine;
        commandLine.headless = true;
        treatment = std::make_unique<OpenedTreatment>(commandLine);
        treatment->callLog().logCallsOf(delegate);
        view->setDelegate(&delegate);
        treatment->showIn(*view);
        player = std::make_unique<ScriptPlayer>(*view, *clock);
    }
    ~ScriptFixture() override
    {
        player.reset();
        view->setDelegate(nullptr);
        view.reset();
        treatment.reset();
    }

    /// Plays lines that are all to succeed.
    void play(const QByteArray &text)
    {
        const ParsedScript script = parseScript(text);
        ASSERT_EQ(script.problems, QStringList());
        ASSERT_EQ(player->play(script).toStdString(), "");
        ASSERT_EQ(document().checkSanity(), std::vector<std::string>());
    }

    /// Plays lines of which one is to fail; returns the failure.
    std::string failureOf(const QByteArray &text)
    {
        const ParsedScript script = parseScript(text);
        EXPECT_EQ(script.problems, QStringList());
        return player->play(script).toStdString();
    }

    kelo::DXDocumentModel &document() const { return *treatment->document(); }
    const kelo::DXGLightweightModel &bracket(const std::string &key) const
    {
        return *document().bracketModels().at(key);
    }
    bool bracketIsShown(const std::string &key) const
    {
        return !bracket(key).hiddenPrimary() && !bracket(key).hiddenSecondary();
    }
    std::optional<long> colorOf(const std::string &key) const
    {
        const auto &colors = document().bracketColorsTypeIDs();
        const auto found = colors.find(key);
        return found == colors.end() ? std::nullopt : std::optional(found->second);
    }
    std::vector<std::vector<std::string>> bands() const
    {
        std::vector<std::vector<std::string>> sequences;
        for (const auto &elastic : document().elasticModels())
            sequences.push_back(elastic->bracketSequence());
        return sequences;
    }
    /// The row of the open menu with this title, or null.
    std::shared_ptr<kelo::MenuItem> row(const std::string &title) const
    {
        if (!player->openMenu()) return nullptr;
        for (const auto &item : player->openMenu()->items()) {
            if (!item->separator && item->title == title) return item;
        }
        return nullptr;
    }
    long typeIDOf(const std::string &colorLabel) const
    {
        for (const auto &[typeID, type] : document().availableBracketColorTypes()) {
            if (type->typeLabel == colorLabel) return typeID;
        }
        return -1;
    }

    kelo::test::TestSurface surface{kelo::SurfaceKind::Surfaceless};
    kelo::test::TestClock clock;
    std::shared_ptr<kelo::DXOpenGL> view;
    std::unique_ptr<OpenedTreatment> treatment;
    std::unique_ptr<ScriptPlayer> player;
    kelo::DXOpenGLDelegate delegate;
};

} // namespace viewer::test
