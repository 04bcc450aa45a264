#include "platform/gl.h"

#include "keloOpenGL/treatment/DXOpenGL.h"

#include "document/ElasticModel.h"
#include "keloModel/BracketColorType.h"
#include "keloModel/ElasticsSizeType.h"
#include "keloOpenGL/view/SimpleTexture.h"
#include "keloOpenGL/view/StringTexture.h"
#include "tests/keloOpenGL/ViewFixture.h"

#include <QImage>
#include <QLocale>

#include <algorithm>
#include <ctime>
#include <limits>

namespace {

using namespace kelo;

const QDateTime today(QDate(2026, 11, 20), QTime(0, 0));
const QDateTime yesterday(QDate(2026, 11, 19), QTime(0, 0));

/// The clock of a user in another zone while the object lives, as TZ describes it.
class UserInTimeZone
{
public:
    explicit UserInTimeZone(const char *zone)
        : kept_(qgetenv("TZ")), wasSet_(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~UserInTimeZone()
    {
        if (wasSet_)
            qputenv("TZ", kept_);
        else
            qunsetenv("TZ");
        tzset();
    }
    UserInTimeZone(const UserInTimeZone &) = delete;
    UserInTimeZone &operator=(const UserInTimeZone &) = delete;

private:
    QByteArray kept_;
    bool wasSet_;
};

/// Counts the changes of the mode, which making a label goes with.
class ViewUnderTest : public DXOpenGL
{
public:
    using DXOpenGL::DXOpenGL;
    void setMouseMode(long mode) override
    {
        ++modeChanges;
        DXOpenGL::setMouseMode(mode);
    }
    int modeChanges = 0;
};

class DXOpenGLState : public kelo::test::ViewFixture
{
protected:
    std::shared_ptr<ViewUnderTest> view = makeView<ViewUnderTest>(Rect{{0.0, 0.0}, {200.0, 150.0}});
};

TEST_F(DXOpenGLState, aNewViewHasWhiteLightTurnedByTwentyDegrees)
{
    EXPECT_EQ(view->lightRotation(), (HVOGLBasicView::Rotation{20.0f, 1.0f, 1.0f, 1.0f}));
    // The colours are the initialiser's until the view is awake, which restores the defaults.
    const DXOpenGL bare(Rect{{0.0, 0.0}, {200.0, 150.0}});
    EXPECT_EQ(bare.ambientColor(), Color::whiteColor());
    EXPECT_EQ(bare.diffuseColor(), Color::whiteColor());
    EXPECT_EQ(bare.specularColor(), Color::whiteColor());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aNewViewHasNoNamesNoDatesAndNoTimers)
{
    EXPECT_EQ(view->delegate(), nullptr);
    EXPECT_FALSE(view->currentDate().isValid());
    EXPECT_FALSE(view->approvedDate().isValid());
    EXPECT_FALSE(view->displayedDate().isValid());
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_EQ(view->dateStringTexture(), nullptr);
    EXPECT_EQ(view->firstClickedToothName(), std::nullopt);
    EXPECT_EQ(view->lastClickedToothName(), std::nullopt);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
    EXPECT_EQ(view->currentEventElasticIndex(), 0u);
    EXPECT_EQ(view->bracketSequence(), std::nullopt);
    EXPECT_EQ(view->lastClickedElasticID(), 0u);
    EXPECT_EQ(view->lastBracketColorTypeID(), std::nullopt);
    EXPECT_EQ(view->lastElasticsSizeTypeID(), std::nullopt);
    EXPECT_EQ(ActionType(view->lastActionType()), ActionType::ColorBracket);
    EXPECT_EQ(view->repeatActionTimerInterval(), 0.0);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, everyNewViewResetsTheNamingAction)
{
    elasticConfigNamingAction = 1;
    const DXOpenGL another(Rect{{0.0, 0.0}, {10.0, 10.0}});
    EXPECT_EQ(elasticConfigNamingAction, 0);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, messagesPersistForTenSecondsUntilAHostSaysOtherwise)
{
    EXPECT_EQ(gMsgPresistance, 10.0);
}

TEST_F(DXOpenGLState, theNotFoundIndexIsTheLargestSignedNumber)
{
    EXPECT_EQ(noElasticIndex, static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()));
}

TEST_F(DXOpenGLState, aNewViewHasThePicturesOfItsFiveTools)
{
    EXPECT_NE(view->bracketToolTexture(), nullptr);
    EXPECT_NE(view->bracketToolSelectedTexture(), nullptr);
    EXPECT_NE(view->elasticsToolTexture(), nullptr);
    EXPECT_NE(view->elasticsToolSelectedTexture(), nullptr);
    EXPECT_NE(view->printButtonTexture(), nullptr);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aDelegateIsAReferenceThatCanBeTakenAway)
{
    DXOpenGLDelegate delegate;
    view->setDelegate(&delegate);
    EXPECT_EQ(view->delegate(), &delegate);
    view->setDelegate(nullptr);
    EXPECT_EQ(view->delegate(), nullptr);
}

TEST_F(DXOpenGLState, namesAndDatesAreKeptAsTheyAreSet)
{
    view->setFirstClickedToothName("6");
    view->setLastClickedToothName("30");
    view->setCurrentEventToothName("8l");
    view->setCurrentDate(today);
    view->setApprovedDate(yesterday);
    EXPECT_EQ(view->firstClickedToothName(), "6");
    EXPECT_EQ(view->lastClickedToothName(), "30");
    EXPECT_EQ(view->currentEventToothName(), "8l");
    EXPECT_EQ(view->currentDate(), today);
    EXPECT_EQ(view->approvedDate(), yesterday);
    view->setCurrentEventToothName(std::nullopt);
    EXPECT_EQ(view->currentEventToothName(), std::nullopt);
}

TEST_F(DXOpenGLState, todaysDateWithNoApprovalDateSwitchesTheViewIntoElasticsMode)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anyOtherDateSwitchesTheViewToTheRotateMode)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    ASSERT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    view->setDisplayedDate(yesterday);
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anApprovedTreatmentSwitchesTheViewToTheRotateModeOnItsOwnDay)
{
    view->setMouseMode(DXOpenGL::colorMode);
    view->setCurrentDate(today);
    view->setApprovedDate(today);
    view->setDisplayedDate(today);
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_EQ(view->mouseMode(), DXOpenGL::rotateMode);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, anotherMomentOfTheSameDayIsNotToday)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today.addSecs(1));
    EXPECT_FALSE(view->displayedDateIsToday());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theSameInstantInAnotherTimeZoneIsToday)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today.toUTC());
    EXPECT_TRUE(view->displayedDateIsToday());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theSameDisplayedDateAgainChangesNothing)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    view->setMouseMode(DXOpenGL::colorMode);
    view->modeChanges = 0;
    const auto label = view->dateStringTexture();
    view->setNeedsDisplay(false);
    view->setDisplayedDate(today);
    EXPECT_EQ(view->dateStringTexture(), label);
    EXPECT_EQ(view->modeChanges, 0);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::colorMode);
    EXPECT_FALSE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theLabelSaysTodayOrTheDateInTheLocalesShortForm)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    ASSERT_NE(view->dateStringTexture(), nullptr);
    EXPECT_EQ(view->dateStringTexture()->text(), "Today");
    view->setNeedsDisplay(false);
    view->setDisplayedDate(yesterday);
    EXPECT_EQ(view->dateStringTexture()->text(),
              QLocale().toString(QDate(2026, 11, 19), QLocale::ShortFormat).toStdString());
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theLabelHasTheDayOfTheUsersTimeZone)
{
    // Eight in the evening in Greenwich is the next morning nine hours to the east.
    const UserInTimeZone user("JST-9");
    const QDateTime moment(QDate(2026, 11, 20), QTime(20, 0), Qt::UTC);
    view->setDisplayedDate(moment);
    const std::string day =
        QLocale().toString(QDate(2026, 11, 21), QLocale::ShortFormat).toStdString();
    EXPECT_EQ(view->dateStringTexture()->text(), day);
    view->setDisplayedDate({});
    view->setDisplayedDate(moment.toOffsetFromUtc(-3 * 3600));
    EXPECT_EQ(view->dateStringTexture()->text(), day);
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aNegativeRepeatIntervalYieldsARepeatPeriodOfThreeSeconds)
{
    view->setRepeatActionTimerInterval(-0.5);
    EXPECT_EQ(view->repeatActionTimerInterval(), 3.0);
    view->restartRepeatActionTimer();
    clock->advance(2.9);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    clock->advance(0.2);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, aRepeatIntervalOfZeroExpiresOnTheNextPassOfTheRunLoop)
{
    view->restartRepeatActionTimer();
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    clock->advance(0.0);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, restartingTheRepeatTimerBeginsAFullPeriod)
{
    view->setRepeatActionTimerInterval(2.0);
    view->restartRepeatActionTimer();
    clock->advance(1.5);
    view->restartRepeatActionTimer();
    clock->advance(1.5);
    EXPECT_TRUE(view->repeatActionTimerIsRunning());
    clock->advance(0.6);
    EXPECT_FALSE(view->repeatActionTimerIsRunning());
}

TEST_F(DXOpenGLState, theEndOfTheRepeatPeriodRestoresThePermanentMode)
{
    view->setMouseMode(DXOpenGL::elasticsMode);
    view->setRepeatActionTimerInterval(1.0);
    view->restartRepeatActionTimer();
    view->setTemporaryMouseMode(DXOpenGL::colorMode);
    clock->advance(1.1);
    EXPECT_EQ(view->mouseMode(), DXOpenGL::elasticsMode);
    EXPECT_FALSE(view->mouseModeIsTemporary());
}

TEST_F(DXOpenGLState, aViewThatEndsInARepeatPeriodTakesItsTimerAlong)
{
    view->setRepeatActionTimerInterval(1.0);
    view->restartRepeatActionTimer();
    view.reset();
    clock->advance(2.0); // a timer left behind would call the view that is gone
}

TEST_F(DXOpenGLState, theLabelIsWhiteTextOf36PointsWithoutABoxOrABorder)
{
    for (const QDateTime &date : {yesterday, today}) {
        view->setCurrentDate(today);
        view->setDisplayedDate(date);
        const auto label = view->dateStringTexture();
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->string().attributes.foregroundColor, Color::whiteColor());
        EXPECT_EQ(label->string().attributes.pointSize, 36.0);
        EXPECT_EQ(label->textColor(), Color::whiteColor());
        ASSERT_TRUE(label->boxColor() && label->borderColor());
        EXPECT_EQ(label->boxColor()->alpha, 0.0);
        EXPECT_EQ(label->borderColor()->alpha, 0.0);
    }
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aTurnWritesTheViewsRotationAndAsksForARedraw)
{
    view->setWorldRotationAngle_axis(0.0, 0.0, 0.0, 1.0);
    view->setNeedsDisplay(false);
    view->rotateByDegrees(30.0f);
    EXPECT_NEAR(view->worldRotation()[0], 30.0f, 1e-4f);
    EXPECT_NEAR(view->worldRotation()[3], 1.0f, 1e-6f);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, theRepeatTimersExpiryForgetsTheColourUntilAMenuSetsOne)
{
    const auto document = kelo::test::boxDocument();
    const auto color = std::make_shared<BracketColorType>();
    color->typeID = 4;
    color->bracketColor = {1.0, 0.0, 0.0, 1.0};
    document->setAvailableBracketColorTypes({{4, color}});
    view->setDocumentModel(document);
    view->setRepeatActionTimerInterval(3.0);
    MenuItem row;
    row.representedObject = color;
    const auto colorTooth8 = [&] {
        view->setLastClickedToothName("8");
        view->bracketColorMenuItemSelected(row);
    };
    const auto clickTooth9 = [&] {
        const auto identifiers = view->pickIdentifiers();
        const auto bracket = document->bracketModels().at("9")->uniqueID();
        const auto found = std::find(identifiers.begin(), identifiers.end(), bracket);
        ASSERT_NE(found, identifiers.end());
        const auto index = found - identifiers.begin();
        const auto width = view->deviceSize().width;
        view->colorMouseDown(eventAt(EventType::LeftMouseDown, static_cast<double>(index % width),
                                     static_cast<double>(index / width)));
    };
    const auto colorOf9 = [&] {
        const auto &colors = document->bracketColorsTypeIDs();
        const auto found = colors.find("9");
        return found == colors.end() ? std::nullopt : std::optional<long>(found->second);
    };
    colorTooth8();
    clickTooth9();
    ASSERT_EQ(colorOf9(), 4) << "within the period the colour is repeated";
    clock->advance(3.1);
    ASSERT_FALSE(view->repeatActionTimerIsRunning());
    EXPECT_EQ(view->lastBracketColorTypeID(), std::nullopt);
    // A period that something else began: the action is still the colouring, without a colour.
    view->restartRepeatActionTimer();
    clickTooth9();
    EXPECT_EQ(colorOf9(), std::nullopt);
    colorTooth8();
    clickTooth9();
    EXPECT_EQ(colorOf9(), 4) << "a menu set one again";
    EXPECT_NO_GL_ERROR();
}

/// Notes the names that are deleted. One at a time.
class RecordedDeletions
{
public:
    RecordedDeletions()
    {
        // An entry point is looked up by its first call, which would then call the replacement.
        glDeleteBuffers(0, nullptr);
        glDeleteTextures(0, nullptr);
        keptBuffers_ = epoxy_glDeleteBuffers;
        keptTextures_ = epoxy_glDeleteTextures;
        current = this;
        epoxy_glDeleteBuffers = [](GLsizei count, const GLuint *names) {
            current->buffers.insert(current->buffers.end(), names, names + count);
            current->keptBuffers_(count, names);
        };
        epoxy_glDeleteTextures = [](GLsizei count, const GLuint *names) {
            current->textures.insert(current->textures.end(), names, names + count);
            current->keptTextures_(count, names);
        };
    }
    ~RecordedDeletions()
    {
        epoxy_glDeleteBuffers = keptBuffers_;
        epoxy_glDeleteTextures = keptTextures_;
        current = nullptr;
    }
    std::vector<GLuint> buffers, textures;

private:
    static inline RecordedDeletions *current = nullptr;
    PFNGLDELETEBUFFERSPROC keptBuffers_ = nullptr;
    PFNGLDELETETEXTURESPROC keptTextures_ = nullptr;
};

/// Names that a context has, in ascending order.
template<class Asked>
std::vector<GLuint> namesOf(Asked asked)
{
    std::vector<GLuint> names;
    for (GLuint name = 1; name < 1000; ++name) {
        if (asked(name) == GL_TRUE) names.push_back(name);
    }
    return names;
}

TEST_F(DXOpenGLState, aViewThatEndsDeletesItsBuffersAndThePicturesOfItsTools)
{
    const auto buffers = [] { return namesOf([](GLuint name) { return glIsBuffer(name); }); };
    const auto textures = [] { return namesOf([](GLuint name) { return glIsTexture(name); }); };
    // Without a document, and so without models, all buffers are the view's own.
    view->setCurrentDate(today);
    view->display();
    const auto toolsAlone = buffers();
    ASSERT_EQ(toolsAlone.size(), 2u) << "the tools' vertices and indices";
    const auto document = kelo::test::boxDocument();
    view->setDocumentModel(document);
    view->display();
    const auto withModels = buffers();
    const auto size = std::make_shared<ElasticsSizeType>();
    size->elasticsColor = {0.0, 1.0, 0.0, 1.0};
    document->placeElasticModel(
        std::make_shared<ElasticModel>(nullptr, size, std::vector<std::string>{"6", "27"}));
    view->display();
    std::vector<GLuint> expected = toolsAlone;
    for (const GLuint name : buffers()) {
        if (std::find(withModels.begin(), withModels.end(), name) == withModels.end())
            expected.push_back(name);
    }
    ASSERT_EQ(expected.size(), 3u) << "the bands' vertices; their indices are the tools' buffer";
    const auto pictures = textures();
    ASSERT_EQ(pictures.size(), 5u);

    RecordedDeletions deleted;
    view.reset();
    std::sort(deleted.buffers.begin(), deleted.buffers.end());
    std::sort(deleted.textures.begin(), deleted.textures.end());
    std::erase(deleted.buffers, 0u); // the buffer that is never made
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(deleted.buffers, expected);
    EXPECT_EQ(deleted.textures, pictures);
    view = makeView<ViewUnderTest>(Rect{{0.0, 0.0}, {200.0, 150.0}});
    EXPECT_NO_GL_ERROR();
}

TEST_F(DXOpenGLState, aLostContextBringsTheLabelAndTheToolsBack)
{
    view->setCurrentDate(today);
    view->setDisplayedDate(today);
    const QImage before = view->grabImage();
    view->loseContext();
    EXPECT_EQ(view->grabImage(), before);
    EXPECT_NO_GL_ERROR();
}

} // namespace
