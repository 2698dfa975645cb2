#include "engine/derived/code_page.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry {
namespace {

TEST(CodePageTest, EveryByteHasACharacterOfItsOwnAndComesBackFromIt) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(byte_of(character_of(static_cast<unsigned char>(byte))), static_cast<char>(byte)) << byte;
    }
}

TEST(CodePageTest, TheUpperControlsAreThoseOfWindows1252) {
    // The code page's table, written down as text.
    EXPECT_EQ(utf8_text("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"), "€‚ƒ„…†‡ˆ‰Š‹ŒŽ");
    EXPECT_EQ(utf8_text("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"), "‘’“”•–—˜™š›œžŸ");
    EXPECT_EQ(utf8_text("\xA1\xB0\xB5\xC4\xDF\xE9\xFF"), "¡°µÄßéÿ");
    for (const int open : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        EXPECT_EQ(character_of(static_cast<unsigned char>(open)), static_cast<char16_t>(open));
    }
}

TEST(CodePageTest, ACharacterThatThePageDoesNotHaveIsAQuestionMark) {
    for (const char16_t missing : {u'→', u'Ł', u'ź', u'\u0080', u'\u009F', u'\uFFFD', char16_t{0xD83C}}) {
        EXPECT_EQ(byte_of(missing), '?') << static_cast<unsigned>(missing);
    }
}

struct Utf8Case {
    const char* what;
    std::string bytes;
    bool proper;
};

class Utf8Test : public testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8Test, IsToldFromOtherBytes) {
    SCOPED_TRACE(GetParam().what);
    EXPECT_EQ(is_utf8(GetParam().bytes), GetParam().proper);
}

INSTANTIATE_TEST_SUITE_P(Cases, Utf8Test,
                         testing::Values(Utf8Case{"nothing", "", true}, Utf8Case{"plain letters", "Nimbry.ini", true},
                                         Utf8Case{"two bytes", "\xC3\xBC", true},
                                         Utf8Case{"three bytes", "\xE2\x82\xAC", true},
                                         Utf8Case{"four bytes", "\xF0\x9F\x8C\xA7", true},
                                         Utf8Case{"the last character of all", "\xF4\x8F\xBF\xBF", true},
                                         Utf8Case{"one beyond the last", "\xF4\x90\x80\x80", false},
                                         Utf8Case{"a byte of Windows-1252 alone", "f\xFCr", false},
                                         Utf8Case{"a following byte alone", "\xBC", false},
                                         Utf8Case{"a first byte at the end", "a\xC3", false},
                                         Utf8Case{"three bytes cut short", "\xE2\x82", false},
                                         Utf8Case{"a slash in two bytes", "\xC0\xAF", false},
                                         Utf8Case{"a slash in three bytes", "\xE0\x80\xAF", false},
                                         Utf8Case{"two bytes spelled as four", "\xF0\x82\x82\xAC", false},
                                         Utf8Case{"half a pair", "\xED\xA0\x80", false},
                                         Utf8Case{"the character before the pairs", "\xED\x9F\xBF", true},
                                         Utf8Case{"the byte FE", "\xFE", false}));

TEST(CodePageTest, ANameThatIsProperUtf8StaysAndAnyOtherIsAText) {
    EXPECT_EQ(utf8_name("für uns"), "für uns");
    EXPECT_EQ(utf8_name("f\xFCr uns"), "für uns");
    EXPECT_EQ(utf8_name("/dev/ttyS0"), "/dev/ttyS0");
}

}  // namespace
}  // namespace nimbry
