#include "platform/settings/UserDefaults.h"

#include "tests/support/FileWrites.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

using namespace kelo;

namespace {

enum class Store { InMemory, Settings };

/// Both kinds of store must behave alike. The settings are written into a temporary folder.
class UserDefaultsTest : public testing::TestWithParam<Store>
{
protected:
    UserDefaultsTest()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path());
        previous_ = UserDefaults::setStandardUserDefaults(
            GetParam() == Store::InMemory ? UserDefaults::inMemory() : nullptr);
    }
    ~UserDefaultsTest() override { UserDefaults::setStandardUserDefaults(std::move(previous_)); }

    /// The store as the program finds it when it is started again.
    UserDefaults &reopened()
    {
        if (GetParam() == Store::Settings) UserDefaults::setStandardUserDefaults(nullptr);
        return UserDefaults::standardUserDefaults();
    }
    UserDefaults &store() { return UserDefaults::standardUserDefaults(); }

private:
    QTemporaryDir folder_;
    std::unique_ptr<UserDefaults> previous_;
};

std::string nameOfStore(const testing::TestParamInfo<Store> &info)
{
    return info.param == Store::InMemory ? "inMemory" : "settings";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Stores, UserDefaultsTest,
                         testing::Values(Store::InMemory, Store::Settings), nameOfStore);

TEST_P(UserDefaultsTest, anEmptyStoreHasNeitherBytesNorTextAndZeroForANumber)
{
    EXPECT_FALSE(store().dataForKey("Model color"));
    EXPECT_FALSE(store().stringForKey("Model color"));
    EXPECT_EQ(store().floatForKey("Model shininess"), 0.0f);
}

TEST_P(UserDefaultsTest, bytesComeBackAsTheyWere)
{
    UserDefaults::Bytes bytes;
    for (int value = 0; value < 256; ++value)
        bytes.push_back(static_cast<std::uint8_t>(value));
    store().setData_forKey(bytes, "Model color");
    EXPECT_EQ(reopened().dataForKey("Model color"), bytes);
}

TEST_P(UserDefaultsTest, noBytesAreStillBytes)
{
    store().setData_forKey({}, "empty");
    EXPECT_EQ(reopened().dataForKey("empty"), UserDefaults::Bytes{});
}

TEST_P(UserDefaultsTest, floatsRoundTripExactly)
{
    const float values[] = {32.0f,
                            0.1f,
                            -0.0f,
                            1.0f / 3.0f,
                            16777217.0f,
                            std::nextafter(1.0f, 2.0f),
                            std::numeric_limits<float>::max(),
                            std::numeric_limits<float>::min(),
                            std::numeric_limits<float>::denorm_min(),
                            -std::numeric_limits<float>::infinity()};
    for (const float value : values) {
        store().setFloat_forKey(value, "number");
        const float read = reopened().floatForKey("number");
        EXPECT_EQ(std::memcmp(&read, &value, sizeof value), 0) << value << " came back as " << read;
    }
    store().setFloat_forKey(std::numeric_limits<float>::quiet_NaN(), "number");
    EXPECT_TRUE(std::isnan(reopened().floatForKey("number")));
}

TEST_P(UserDefaultsTest, textComesBackAsItWas)
{
    const std::string texts[] = {"",           "plain",       " blanks at the ends ",
                                 "@at",        "a,b;c=d",     "Zähne \xF0\x9F\xA6\xB7",
                                 "two\nlines", "\"quoted\\\""};
    for (const std::string &text : texts) {
        store().setString_forKey(text, "text");
        EXPECT_EQ(reopened().stringForKey("text"), text);
    }
}

TEST_P(UserDefaultsTest, anyTextIsAKeyAndKeysThatLookAlikeAreDifferent)
{
    const std::string keys[] = {"",     "a",     "A", "a/b",         "/a",      "a/", "a//b",
                                "a\\b", "a%2Fb", "%", "Model color", "General", "ä"};
    for (const std::string &key : keys)
        store().setString_forKey("value of " + key, key);
    UserDefaults &again = reopened();
    for (const std::string &key : keys)
        EXPECT_EQ(again.stringForKey(key), "value of " + key);
}

TEST_P(UserDefaultsTest, aRemovedKeyIsGoneAndNoOther)
{
    store().setString_forKey("1", "a");
    store().setString_forKey("2", "a/b");
    store().removeObjectForKey("a");
    store().removeObjectForKey("never there");
    EXPECT_FALSE(reopened().stringForKey("a"));
    EXPECT_EQ(store().stringForKey("a/b"), "2");
}

TEST_P(UserDefaultsTest, whatABatchSetsCanBeReadInsideAndAfterwards)
{
    store().setString_forKey("old", "removed");
    store().performBatch([this] {
        store().setString_forKey("1", "a");
        store().setFloat_forKey(2.5f, "b");
        store().removeObjectForKey("removed");
        EXPECT_EQ(store().stringForKey("a"), "1");
        EXPECT_FALSE(store().stringForKey("removed"));
    });
    UserDefaults &again = reopened();
    EXPECT_EQ(again.stringForKey("a"), "1");
    EXPECT_EQ(again.floatForKey("b"), 2.5f);
    EXPECT_FALSE(again.stringForKey("removed"));
}

TEST_P(UserDefaultsTest, aBatchThatThrowsKeepsWhatItHasSetUntilThen)
{
    EXPECT_THROW(store().performBatch([this] {
        store().setString_forKey("1", "a");
        throw std::runtime_error("in the middle");
    }),
                 std::runtime_error);
    EXPECT_EQ(reopened().stringForKey("a"), "1");
    store().setString_forKey("2", "a");
    EXPECT_EQ(reopened().stringForKey("a"), "2") << "the batch is over";
}

TEST_P(UserDefaultsTest, aValueOfAnotherKindReplacesTheOneBefore)
{
    store().setData_forKey({1, 2}, "key");
    EXPECT_FALSE(store().stringForKey("key")) << "bytes are no text";
    EXPECT_EQ(store().floatForKey("key"), 0.0f);
    store().setString_forKey("text", "key");
    EXPECT_FALSE(reopened().dataForKey("key")) << "text is no bytes";
    EXPECT_EQ(store().floatForKey("key"), 0.0f) << "text that is no number";
}

TEST_P(UserDefaultsTest, aNumberCanBeReadAsTextAndTextThatIsANumberAsANumber)
{
    store().setFloat_forKey(0.1f, "number");
    EXPECT_EQ(reopened().stringForKey("number"), "0.1");
    store().setString_forKey("12.5", "text");
    EXPECT_EQ(reopened().floatForKey("text"), 12.5f);
    store().setString_forKey("12.5 mm", "text");
    EXPECT_EQ(store().floatForKey("text"), 0.0f);
}

TEST(UserDefaults, theSettingsAreThoseOfTheRunningApplication)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    const QString organization = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    QCoreApplication::setOrganizationName(QStringLiteral("Practice"));
    QCoreApplication::setApplicationName(QStringLiteral("Chairside"));
    auto previous = UserDefaults::setStandardUserDefaults(nullptr);
    UserDefaults::standardUserDefaults().setString_forKey("value", "key");
    const QSettings settings(QSettings::NativeFormat, QSettings::UserScope,
                             QStringLiteral("Practice"), QStringLiteral("Chairside"));
    EXPECT_EQ(settings.value(QStringLiteral("key")).toString(), QStringLiteral("value"));
    UserDefaults::setStandardUserDefaults(std::move(previous));
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setApplicationName(application);
}

TEST(UserDefaults, aBatchIsOneWriteAndASettingOutsideOfOneIsOneEach)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    const QString organization = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    QCoreApplication::setOrganizationName(QStringLiteral("Practice"));
    QCoreApplication::setApplicationName(QStringLiteral("Chairside"));
    ASSERT_TRUE(QDir(folder.path()).mkpath("Practice"));
    auto previous = UserDefaults::setStandardUserDefaults(nullptr);
    UserDefaults &store = UserDefaults::standardUserDefaults();
    test::FileWrites writes(folder.filePath("Practice").toStdString());
    store.setString_forKey("1", "a");
    store.setString_forKey("2", "a");
    EXPECT_EQ(writes.countOf("Chairside.conf"), 2);
    store.performBatch([&] {
        for (int i = 0; i < 10; ++i)
            store.setFloat_forKey(static_cast<float>(i), "key " + std::to_string(i));
        store.performBatch([&] { store.removeObjectForKey("a"); });
        EXPECT_EQ(writes.countOf("Chairside.conf"), 0);
    });
    EXPECT_EQ(writes.countOf("Chairside.conf"), 1);
    store.setString_forKey("3", "a");
    EXPECT_EQ(writes.countOf("Chairside.conf"), 1);
    UserDefaults::setStandardUserDefaults(std::move(previous));
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setApplicationName(application);
}

TEST(UserDefaults, withoutAnOrganisationTheLibrarysNameStandsIn)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    const QString application = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(QStringLiteral("Chairside"));
    auto previous = UserDefaults::setStandardUserDefaults(nullptr);
    UserDefaults::standardUserDefaults().setString_forKey("value", "key");
    const QSettings settings(QSettings::NativeFormat, QSettings::UserScope,
                             QStringLiteral("keloOpenGL"), QStringLiteral("Chairside"));
    EXPECT_EQ(settings.value(QStringLiteral("key")).toString(), QStringLiteral("value"));
    UserDefaults::setStandardUserDefaults(std::move(previous));
    QCoreApplication::setApplicationName(application);
}

TEST(UserDefaults, replacingTheStandardStoreGivesBackTheOneBefore)
{
    auto previous = UserDefaults::setStandardUserDefaults(UserDefaults::inMemory());
    const UserDefaults *mine = &UserDefaults::standardUserDefaults();
    const auto back = UserDefaults::setStandardUserDefaults(std::move(previous));
    EXPECT_EQ(back.get(), mine);
}
