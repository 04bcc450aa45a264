#include "models/OBJReaderText.h"

#include <gtest/gtest.h>

#include <string>

namespace kelo {
namespace {

TEST(OBJReaderText, controlCharactersAndBytesThatAreNoUTF8AreEscaped)
{
    struct Case
    {
        const char *name;
        std::string text, shown;
    };
    const Case cases[] = {
        {"plain text stays", "tooth 8.obj", "tooth 8.obj"},
        {"letters beyond ASCII stay", "Zähne/歯.obj \xF0\x9F\xA6\xB7",
         "Zähne/歯.obj \xF0\x9F\xA6\xB7"},
        {"escape", "a\x1b[2Jb", "a\\x1b[2Jb"},
        {"line breaks and tabs", "a\nb\rc\td", "a\\x0ab\\x0dc\\x09d"},
        {"a zero byte", std::string("a\0b", 3), "a\\x00b"},
        {"delete", "\x7f", "\\x7f"},
        {"the control characters from 128 on",
         "\xC2\x9B"
         "31m\xC2\xA0",
         "\\xc2\\x9b31m\xC2\xA0"},
        {"marks that turn the direction of writing", "a\u202Eb\u2066c\u200Fd\u061Ce",
         "a\\xe2\\x80\\xaeb\\xe2\\x81\\xa6c\\xe2\\x80\\x8fd\\xd8\\x9ce"},
        {"a line separator, but no dash", "a\u2028b\u2014", "a\\xe2\\x80\\xa8b\u2014"},
        {"a byte that begins nothing", "\xFF\x80", "\\xff\\x80"},
        {"a character that is cut off", "\xE6\xAD", "\\xe6\\xad"},
        {"a form that is too long", "\xC0\x9B\xE0\x80\x9B", "\\xc0\\x9b\\xe0\\x80\\x9b"},
        {"half of a pair", "\xED\xA0\x80", "\\xed\\xa0\\x80"},
        {"beyond the last character", "\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}};
    for (const Case &c : cases)
        EXPECT_EQ(shownText(c.text, 1000), c.shown) << c.name;
}

TEST(OBJReaderText, aLongTextIsCutBetweenTwoCharacters)
{
    EXPECT_EQ(shownText("12345", 5), "12345");
    EXPECT_EQ(shownText("123456", 5), "12345...");
    EXPECT_EQ(shownText("1234ä", 5), "1234...");
    EXPECT_EQ(shownText(std::string(10'000'000, 'x'), longestShownToken),
              std::string(longestShownToken, 'x') + "...");
}

} // namespace
} // namespace kelo
