#include "tests/viewer/script/RandomScriptCampaign.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

// Three hundred random scripts in six tests; `random_scripts campaign` plays more of them.

namespace viewer::test {
namespace {

constexpr int seedsInATest = 50;

class RandomScripts : public testing::TestWithParam<int>
{};

TEST_P(RandomScripts, leaveTheDocumentSaneAndOpenGLWithoutAnErrorAfterEveryEvent)
{
    const QTemporaryDir folder;
    writeRandomScriptScene(folder.path());
    Campaign campaign;
    campaign.sceneFolder = folder.path();
    campaign.failureFolder = KELO_FAILED_SCRIPTS;
    const QString complaint = campaign.play(static_cast<std::uint64_t>(GetParam()), seedsInATest);
    EXPECT_EQ(complaint.toStdString(), "");
    EXPECT_EQ(campaign.playedEvents, 200u * seedsInATest);
}

INSTANTIATE_TEST_SUITE_P(FiftySeeds, RandomScripts, testing::Values(1, 51, 101, 151, 201, 251),
                         [](const auto &one) { return "from" + std::to_string(one.param); });

} // namespace
} // namespace viewer::test
