#include "models/OBJReaderNumbers.h"

#include "models/OBJReader.h"
#include "tests/models/OBJReaderMesh.h"
#include "tests/support/CommaLocale.h"

#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace kelo {
namespace {

/// Compares value, what was consumed, and where the reader stops, with the C library's `strtof`.
void expectFloatAsStrtof(const std::string &token)
{
    std::string line = token + "\n";
    char *p = line.data();
    float value = 12345;
    obj::CLocale locale;
    const obj::Conversion conversion = obj::readFloat(p, value, locale);
    char *stopped = nullptr;
    const float expected = std::strtof(token.c_str(), &stopped);
    const bool any = stopped != token.c_str();
    ASSERT_EQ(conversion.any, any) << token;
    ASSERT_EQ(conversion.whole, any && stopped == token.c_str() + token.size()) << token;
    ASSERT_EQ(p, line.data() + token.size()) << token;
    ASSERT_EQ(line, token + "\n") << "the text is left as it was";
    if (any)
        ASSERT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(expected))
            << token;
    else
        ASSERT_EQ(value, 12345) << token;
}

const char *const unusualForms[] = {"0",
                                    "-0",
                                    "+0",
                                    "-0.0",
                                    "1.",
                                    ".5",
                                    "-.5",
                                    ".",
                                    "-",
                                    "+",
                                    "",
                                    "e5",
                                    "1e",
                                    "1e+",
                                    "1e-",
                                    "1e5",
                                    "1E5",
                                    "1e+5",
                                    "1e-5",
                                    "1e005",
                                    "1e00005",
                                    "1e22",
                                    "1e23",
                                    "1e-22",
                                    "1e-23",
                                    "1e38",
                                    "3.4028235e38",
                                    "3.4028236e38",
                                    "3.5e38",
                                    "1e39",
                                    "1e999",
                                    "-1e999",
                                    "1e9999",
                                    "1e99999999999999999999",
                                    "1e-999",
                                    "1e-45",
                                    "7e-46",
                                    "1.17549435e-38",
                                    "1.1754943e-38",
                                    "0e99999",
                                    "0x10",
                                    "0x1.8p3",
                                    "0X1P-149",
                                    "0x",
                                    "0xg",
                                    "-0x1p127",
                                    "0x1.fffffffp127",
                                    "inf",
                                    "INF",
                                    "-inf",
                                    "infinity",
                                    "infinit",
                                    "infinityx",
                                    "nan",
                                    "-nan",
                                    "NaN",
                                    "nan(",
                                    "nan(1)",
                                    "nan(123)",
                                    "nan()",
                                    "nan(x.y)",
                                    "1.5abc",
                                    "1,5",
                                    "1.5.5",
                                    "--1",
                                    "+-1",
                                    "1e5e5",
                                    "1_000",
                                    "\v1",
                                    "\f-2.5",
                                    "\v",
                                    "1\v",
                                    "9007199254740992",
                                    "9007199254740993",
                                    "9007199254740991",
                                    "18446744073709551615",
                                    "18446744073709551616",
                                    "9999999999999999999",
                                    "99999999999999999999",
                                    "0.0000000000000000001",
                                    "0.00000000000000000001",
                                    "000000000000000000000000000001",
                                    "0.1000000000000000000000000000000000"};

TEST(OBJReaderNumbers, theUnusualFormsConvertAsStrtofDoes)
{
    for (const char *token : unusualForms)
        expectFloatAsStrtof(token);
    expectFloatAsStrtof(std::string(10'000, '1'));
    expectFloatAsStrtof("0." + std::string(10'000, '0') + "1");
    expectFloatAsStrtof(std::string("1\0", 2) + "5");
}

TEST(OBJReaderNumbers, middlesOfTwoFloatsRoundToEvenOrAsTheirNextDigitSays)
{
    // 2^24 + 1 is the middle of two floats; the doubles nearest to the longer ones are that middle.
    for (const char *token : {"16777217",
                              "16777217.0000000001",
                              "16777216.9999999999",
                              "16777219",
                              "16777219.0000000001",
                              "1677721700000000001e-11",
                              "1677721699999999999e-11",
                              "-16777217.000000001",
                              "0.50000002980232238769531250",
                              "1.00000005960464477539",
                              "1.0000000596046448",
                              "1.000000059604645",
                              "1.00000017881393432617",
                              "8388608.5",
                              "8388609.5",
                              "8388608.500000001",
                              "8388608.4999999999",
                              "16777217e0",
                              "16777217e10",
                              "33554434.00000001"})
        expectFloatAsStrtof(token);
}

TEST(OBJReaderNumbers, randomNumbersOfEveryLengthConvertAsStrtofDoes)
{
    std::mt19937_64 random(20090720);
    const auto below = [&random](unsigned bound) { return unsigned(random() % bound); };
    const auto digits = [&](unsigned most) {
        std::string text;
        for (unsigned n = below(most + 1); n != 0; --n)
            text += char('0' + below(10));
        return text;
    };
    for (int i = 0; i < 300'000 && !testing::Test::HasFatalFailure(); ++i) {
        std::string token;
        if (below(2)) token += "+-"[below(2)];
        token += digits(12);
        if (below(4)) token += "." + digits(14);
        if (below(4) == 0) {
            token += "eE"[below(2)];
            if (below(2)) token += "+-"[below(2)];
            token += digits(3);
        }
        if (below(50) == 0) token += "xpinf(.e+-"[below(10)];
        expectFloatAsStrtof(token);
    }
}

TEST(OBJReaderNumbers, randomMiddlesOfTwoFloatsConvertAsStrtofDoes)
{
    std::mt19937_64 random(7);
    char token[64];
    for (int i = 0; i < 100'000 && !testing::Test::HasFatalFailure(); ++i) {
        // A float of moderate size, half a unit in its last place further, and the two neighbours
        // that the digits allow.
        const float base =
            std::bit_cast<float>(std::uint32_t(0x3f800000u + random() % (12u << 23))); // 1 to 4096
        const float next = std::bit_cast<float>(std::bit_cast<std::uint32_t>(base) + 1);
        const double middle = (double(base) + double(next)) / 2;
        for (const char *format : {"%.12f", "%.13f", "%.14f", "%.15f", "%.16f", "%.17f"}) {
            std::snprintf(token, sizeof token, format, middle);
            expectFloatAsStrtof(token);
        }
    }
}

/// Compares value, what was consumed, and where the reader stops, with `strtol` base 10.
void expectFaceNumberAsStrtol(const std::string &token)
{
    static_assert(sizeof(long) == 8);
    const std::string line = token + "/";
    const char *p = line.c_str();
    std::int64_t value = 12345;
    const obj::Conversion conversion = obj::readFaceNumber(p, value);
    char *stopped = nullptr;
    const long expected = std::strtol(token.c_str(), &stopped, 10);
    const bool any = stopped != token.c_str();
    ASSERT_EQ(conversion.any, any) << token;
    ASSERT_EQ(conversion.whole, any && stopped == token.c_str() + token.size()) << token;
    ASSERT_EQ(p, line.c_str() + token.size()) << token;
    ASSERT_EQ(value, any ? expected : 12345) << token;
}

TEST(OBJReaderNumbers, faceNumbersConvertAsStrtolDoes)
{
    for (const char *token : {"1",
                              "0",
                              "-1",
                              "+1",
                              "00017",
                              "",
                              "-",
                              "+",
                              "x",
                              "1x",
                              "1.5",
                              "-+1",
                              "--1",
                              "\v12",
                              "\f-3",
                              "\v\f+4",
                              "\v",
                              "999999999999999999",
                              "1000000000000000000",
                              "9223372036854775806",
                              "9223372036854775807",
                              "9223372036854775808",
                              "9223372036854775809",
                              "18446744073709551616",
                              "-9223372036854775807",
                              "-9223372036854775808",
                              "-9223372036854775809",
                              "99999999999999999999999",
                              "-99999999999999999999999",
                              "0x10",
                              "1e5",
                              "\xa0"
                              "1"})
        expectFaceNumberAsStrtol(token);
    expectFaceNumberAsStrtol(std::string("1\0", 2) + "5");
    std::mt19937_64 random(3);
    for (int i = 0; i < 100'000; ++i) {
        std::string token(random() % 4 == 0 ? "-" : "");
        for (unsigned n = random() % 22; n != 0; --n)
            token += char('0' + random() % 10);
        expectFaceNumberAsStrtol(token);
    }
}

TEST(OBJReaderNumbers, aLocaleWithADecimalCommaChangesNothing)
{
    const test::TemporaryFile file(
        "v 1.5 2.25e1 0x1.8p1\nv 16777217.5 1,5 3.14159265358979323846\n");
    const test::CommaLocale locale;
    ASSERT_TRUE(locale.set);
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    ASSERT_EQ(std::strtof("1.5", nullptr), 1.0f) << "the C library follows the locale";
    ASSERT_EQ(std::strtof("1,5", nullptr), 1.5f);

    OBJVertex *vertices = nullptr;
    std::uint32_t *indexes = nullptr;
    std::uint32_t vertexCount = 0, indexCount = 0;
    ASSERT_TRUE(loadOBJFile(file.path.c_str(), &vertices, &vertexCount, &indexes, &indexCount));
    ASSERT_EQ(vertexCount, 2u);
    EXPECT_EQ(vertices[0].position[0], 1.5f);
    EXPECT_EQ(vertices[0].position[1], 22.5f);
    EXPECT_EQ(vertices[0].position[2], 3.0f) << "the C library's own path";
    EXPECT_EQ(vertices[1].position[0], 16777218.0f);
    EXPECT_EQ(vertices[1].position[1], 1.0f) << "a comma ends the number";
    EXPECT_EQ(vertices[1].position[2], 3.14159265358979323846f);
    std::free(vertices);
    std::free(indexes);
}

} // namespace
} // namespace kelo
