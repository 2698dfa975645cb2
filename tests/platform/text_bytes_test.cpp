#include "platform/text_bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry::platform {
namespace {

std::string every_byte() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

TEST(TextBytesTest, EveryByteComesBackFromUnicode) {
    const QString text = unicode(every_byte());
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(engine_text(text), every_byte());
    EXPECT_EQ(engine_text_of_utf8(utf8(every_byte())), every_byte());
}

TEST(TextBytesTest, BytesStandForTheCharactersOfWindows1252) {
    // The code page's table, written down as text.
    EXPECT_EQ(unicode("\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E"), QStringLiteral("€‚ƒ„…†‡ˆ‰Š‹ŒŽ"));
    EXPECT_EQ(unicode("\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F"), QStringLiteral("‘’“”•–—˜™š›œžŸ"));
    EXPECT_EQ(unicode("\xA0\xB0\xB5\xC4\xDF\xE9\xFF"), QStringLiteral("\u00A0°µÄßéÿ"));
    for (const int open : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        EXPECT_EQ(unicode(std::string(1, static_cast<char>(open))), QString(QChar(open)));
    }
}

TEST(TextBytesTest, TheDegreeSignIsOneByteAndTwoInUtf8) {
    EXPECT_EQ(utf8("+9.8 \260C"), "+9.8 \xC2\260C");
    EXPECT_EQ(engine_text_of_utf8("+9.8 \xC2\260C"), "+9.8 \260C");
}

TEST(TextBytesTest, ACharacterThatThePageDoesNotHaveIsOneQuestionMark) {
    EXPECT_EQ(engine_text(QStringLiteral("a→b")), "a?b");
    EXPECT_EQ(engine_text(QStringLiteral("Łódź")), "?\363d?");
    EXPECT_EQ(engine_text(QStringLiteral("☔🌧.")), "??.") << "the second takes two units";
    EXPECT_EQ(engine_text(QString(QChar(0xD83C))), "?") << "half a pair";
}

TEST(TextBytesTest, BytesThatAreNoUtf8AreQuestionMarks) {
    EXPECT_EQ(engine_text_of_utf8("a\377b"), "a?b");
}

TEST(TextBytesTest, LineEndsAndZeroBytesPass) {
    const std::string text("a\r\nb\0c", 6);
    EXPECT_EQ(unicode(text).size(), 6);
    EXPECT_EQ(engine_text(unicode(text)), text);
    EXPECT_EQ(utf8(""), "");
}

}  // namespace
}  // namespace nimbry::platform
