#include "viewer/output/StateReport.h"

#include "tests/viewer/support/ScriptFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using viewer::test::ScriptFixture;

class StateReport : public ScriptFixture
{
protected:
    QJsonObject state() const
    {
        const QByteArray text =
            viewer::stateAsJSON(*view, treatment->callLog(), player->openMenu().get());
        return QJsonDocument::fromJson(text).object();
    }

    /// The row of a menu object with this title, or an empty object.
    static QJsonObject rowOf(const QJsonValue &menu, const QString &title)
    {
        for (const QJsonValue row : menu["items"].toArray()) {
            if (row["title"] == title) return row.toObject();
        }
        return {};
    }
    static QJsonObject object(const char *text) { return QJsonDocument::fromJson(text).object(); }
    static QJsonArray array(const char *text) { return QJsonDocument::fromJson(text).array(); }

    /// The calls that were made since the first `count`.
    QJsonArray callsAfter(qsizetype count) const
    {
        QJsonArray later = state()["calls"].toArray();
        for (; count > 0; --count)
            later.removeFirst();
        return later;
    }
};

TEST_F(StateReport, beforeTheFirstClickNothingWasClicked)
{
    const QJsonObject now = state();
    for (const char *name :
         {"lastBracketColorTypeID", "firstClickedToothName", "lastClickedToothName",
          "currentEventToothName", "currentEventElasticIndex", "bracketSequence", "menu"}) {
        EXPECT_TRUE(now.contains(QLatin1String(name))) << name;
        EXPECT_TRUE(now[QLatin1String(name)].isNull()) << name;
    }
    EXPECT_EQ(now["elasticModels"].toArray().size(), 4) << "there are some to click on";
    EXPECT_EQ(now["lastActionType"], QJsonValue(0));
    EXPECT_EQ(now["repeatActionTimerRunning"], QJsonValue(false));
    EXPECT_EQ(now["mouseModeIsTemporary"], QJsonValue(false));
    EXPECT_EQ(now["calls"], QJsonValue(QJsonArray()));
    EXPECT_EQ(now["pending"].toObject(),
              object(R"({"bracketColorTypeIDUpdates": {}, "bracketVisibilityUpdates": {},
                         "buttonVisibilityUpdates": {}})"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, theElasticThatWasClickedIsNamedByItsPlace)
{
    play("mouth 30\nclick elastic 1\n");
    EXPECT_EQ(state()["currentEventElasticIndex"], QJsonValue(1));
    play("dismiss\nclick elastic 0\n");
    EXPECT_EQ(state()["currentEventElasticIndex"], QJsonValue(0));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, anElasticThatMovedUpToThePlaceOfARemovedOneWasNotClicked)
{
    play("mouth 30\nclick elastic 0\nmenu \"Remove Elastic\"\n");
    ASSERT_EQ(document().elasticModels().size(), 3u);
    EXPECT_TRUE(state()["currentEventElasticIndex"].isNull());
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, aClickOnABracketIsNoneOnAnElastic)
{
    play("mouth 30\nclick elastic 0\ndismiss\nmouth 0\nclick bracket 8\n");
    EXPECT_TRUE(state()["currentEventElasticIndex"].isNull());
    EXPECT_EQ(state()["currentEventToothName"], QJsonValue("8"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, anOpenMenuIsListedRowByRowAsItStandsAfterValidation)
{
    play("modifiers control\nclick bracket 8\n");
    const QJsonValue menu = state()["menu"];
    EXPECT_EQ(menu["title"], QJsonValue("BracketColorType Menu"));
    EXPECT_EQ(rowOf(menu, "Remove Bracket"),
              object(R"({"title": "Remove Bracket", "action": "removeBracketSelected:", "tag": -1,
                         "enabled": true, "checked": false, "indentation": 0, "image": [24, 24],
                         "submenu": null})"));
    // Two colours or two crosses: five points more each way.
    EXPECT_EQ(rowOf(menu, "Remove All Brackets"),
              object(R"({"title": "Remove All Brackets", "action": "removeAllBracketsSelected:",
                         "tag": 4, "enabled": true, "checked": false, "indentation": 0,
                         "image": [29, 29], "submenu": null})"));
    int separatorCount = 0;
    for (const QJsonValue row : menu["items"].toArray()) {
        if (row["separator"].isUndefined()) continue;
        EXPECT_EQ(row.toObject(), object(R"({"separator": true})"));
        ++separatorCount;
    }
    EXPECT_EQ(separatorCount, 3) << "before the button, the tooth and the removals";
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, aRowThatHoldsOtherRowsHasThemAsItsSubmenu)
{
    play("modifiers control\nclick bracket 8\n");
    const QJsonValue menu = state()["menu"];
    const QJsonObject holder = menu["items"].toArray().first().toObject();
    EXPECT_EQ(holder["title"], QJsonValue("Mark All Brackets"));
    EXPECT_EQ(holder["tag"], QJsonValue(1));
    EXPECT_EQ(holder["submenu"]["title"], QJsonValue("Color BracketColorType Sub Menu"));
    EXPECT_EQ(rowOf(holder["submenu"], "Red"),
              object(R"({"title": "Red", "action": "markAllBracketsSelected:", "tag": 4,
                         "enabled": true, "checked": false, "indentation": 0, "image": [29, 29],
                         "submenu": null})"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, theColourThatABracketHasIsCheckedAndDisabled)
{
    play("modifiers control\nclick bracket 8\nmenu \"Red\"\nadvance 4\nclick bracket 8\n");
    EXPECT_EQ(rowOf(state()["menu"], "Red"),
              object(R"({"title": "Red", "action": "bracketColorMenuItemSelected:", "tag": -1,
                         "enabled": false, "checked": true, "indentation": 2, "image": [24, 24],
                         "submenu": null})"));
    EXPECT_EQ(rowOf(state()["menu"], "Gold")["checked"], QJsonValue(false));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, whatTheDocumentHasNotReportedYetIsListedAndStaysToBeReported)
{
    play("modifiers control\nclick bracket 8\nmenu \"Red\"\n");
    document().toggleVisibilityOfButton("9l");
    const QJsonObject pending = state()["pending"].toObject();
    EXPECT_EQ(pending["bracketColorTypeIDUpdates"].toObject(),
              (QJsonObject{{"8", static_cast<qint64>(typeIDOf("Red"))}}));
    EXPECT_EQ(state()["pending"].toObject(), pending) << "the first reading took nothing";
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, anActionIsNamedAsLongAsClicksRepeatItAndAfter)
{
    play("modifiers control\nclick bracket 8\nmenu \"Red\"\n");
    QJsonObject now = state();
    EXPECT_EQ(now["repeatActionTimerRunning"], QJsonValue(true));
    EXPECT_EQ(now["lastBracketColorTypeID"], QJsonValue(static_cast<qint64>(typeIDOf("Red"))));
    EXPECT_EQ(now["lastClickedToothName"], QJsonValue("8"));
    EXPECT_EQ(now["mouseMode"], QJsonValue(5));
    EXPECT_EQ(now["mouseModeIsTemporary"], QJsonValue(true));
    EXPECT_EQ(now["permanentMouseMode"], QJsonValue(6));
    play("modifiers\nadvance 4\n");
    now = state();
    EXPECT_EQ(now["repeatActionTimerRunning"], QJsonValue(false));
    EXPECT_EQ(now["mouseMode"], QJsonValue(6));
    EXPECT_EQ(now["bracketColorsTypeIDs"].toObject(),
              (QJsonObject{{"8", static_cast<qint64>(typeIDOf("Red"))}}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, anElasticThatIsBeingStrungIsListedMemberByMember)
{
    play("click bracket 6\nmenu \"Start New Elastic\" > \"1/8\\\" 2 oz\"\nclick bracket 8\n");
    EXPECT_EQ(state()["bracketSequence"].toArray(), (QJsonArray{"6", "8"}));
    EXPECT_EQ(state()["firstClickedToothName"], QJsonValue("6"));
    play("key escape\n");
    EXPECT_TRUE(state()["bracketSequence"].isNull());
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, theCallsCarryTheirPlainArguments)
{
    play("modifiers control\nclick bracket 8\nmenu \"Remove Bracket\"\n");
    EXPECT_TRUE(callsAfter(0).contains(array(R"(["bracket:visibilityDidChange:", "8", false])")));
    play("modifiers\nadvance 4\n");
    qsizetype count = state()["calls"].toArray().size();
    play("click 400 590 clicks 2\n");
    EXPECT_EQ(callsAfter(count), (QJsonArray{array(R"(["toggleFullScreenMode:"])")}));
    ++count;
    // The sample's first elastic has a configuration, its third one has none.
    play("mouth 30\nclick elastic 0\nmenu \"Rename \\\"Class II right\\\" Elastic...\"\n");
    EXPECT_EQ(
        callsAfter(count),
        (QJsonArray{array(
            R"(["launchElasticsConfigAssociationSheetWithElasticModel:namingAction:", 1])")}));
    ++count;
    play("click elastic 2\nmenu \"Name This Elastic...\"\n");
    EXPECT_EQ(
        callsAfter(count),
        (QJsonArray{array(
            R"(["launchElasticsConfigAssociationSheetWithElasticModel:namingAction:", 0])")}));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, aPrintRequestIsListedWithItsDateAndItsElasticsAsOneCall)
{
    play("date 2026-02-28\nclick tool print\n");
    const QJsonArray call = state()["calls"].toArray().last().toArray();
    ASSERT_EQ(call.size(), 5);
    EXPECT_EQ(call[0], QJsonValue("printImagesLeft:front:right:forDate:elasticsLeft:front:right:"));
    EXPECT_EQ(call[1], QJsonValue("2026-02-28"));
    const auto brackets = [&call](int side) {
        QJsonArray lists;
        for (const QJsonValue elastic : call[side].toArray())
            lists.append(elastic["brackets"]);
        return lists;
    };
    EXPECT_EQ(brackets(2), array(R"([["6", "30"], ["3l", "30"]])"));
    EXPECT_EQ(brackets(3), array(R"([["6", "30"], ["11", "22", "21"]])"));
    EXPECT_EQ(brackets(4), array(R"([["11", "22", "21"], ["13", "14", "19", "20"]])"));
    EXPECT_EQ(call[2].toArray().first()["name"], QJsonValue("1/4\" 3.5 oz"));
    EXPECT_NO_GL_ERROR();
}

TEST_F(StateReport, fullScreenIsKnownWithoutADisplay)
{
    EXPECT_EQ(state()["fullScreen"], QJsonValue(false));
    play("fullscreen on\n");
    EXPECT_EQ(state()["fullScreen"], QJsonValue(true));
    play("fullscreen off\n");
    EXPECT_EQ(state()["fullScreen"], QJsonValue(false));
    EXPECT_NO_GL_ERROR();
}

} // namespace
