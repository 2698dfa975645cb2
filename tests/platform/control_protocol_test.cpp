#include "platform/control_protocol.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry::platform {
namespace {

using Words = std::vector<std::string>;
using Kind = AnswerPiece::Kind;

TEST(ControlProtocolTest, ARequestIsOneLineOfJson) {
    EXPECT_EQ(request_line({"boxes", "Text2(0)"}), "{\"arguments\":[\"boxes\",\"Text2(0)\"]}\n");
    EXPECT_EQ(request_line({}), "{\"arguments\":[]}\n");
}

TEST(ControlProtocolTest, ArgumentsArriveAsTheyWereGiven) {
    for (const Words& words : {Words{}, Words{"status", "--json"}, Words{"set", "Main", "WebComment", "a \"b\"\n\\ ü"},
                               Words{"set", "Main", "WebComment", ""}}) {
        EXPECT_EQ(parse_request(request_line(words)), words);
    }
}

TEST(ControlProtocolTest, AnythingElseIsNoRequest) {
    for (const char* line :
         {"", "\n", "status\n", "{}\n", "[]\n", "{\"arguments\":\"status\"}\n", "{\"arguments\":[1]}\n",
          "{\"arguments\":[\"status\"", "{\"arguments\":[\"a\",null]}\n", "\xFF\xFE\n"}) {
        EXPECT_EQ(parse_request(line), std::nullopt) << line;
    }
}

TEST(ControlProtocolTest, EveryKindOfPieceArrivesAsItWasSent) {
    EXPECT_EQ(answer_line({Kind::out, "+1 °C\n", 0}), "{\"out\":\"+1 °C\\n\"}\n");
    EXPECT_EQ(answer_line({Kind::status, "", 1}), "{\"status\":1}\n");
    for (const Kind kind : {Kind::out, Kind::err}) {
        const auto piece = parse_answer(answer_line({kind, "two\nlines ü", 0}));
        ASSERT_TRUE(piece);
        EXPECT_EQ(piece->kind, kind);
        EXPECT_EQ(piece->text, "two\nlines ü");
    }
    const auto screen = parse_answer(answer_line({Kind::screen, "", 0, {"wide\n°", "small"}}));
    ASSERT_TRUE(screen);
    EXPECT_EQ(screen->kind, Kind::screen);
    EXPECT_EQ(screen->layouts, (std::vector<std::string>{"wide\n°", "small"}));
    const auto end = parse_answer(answer_line({Kind::status, "", 2}));
    ASSERT_TRUE(end);
    EXPECT_EQ(end->kind, Kind::status);
    EXPECT_EQ(end->status, 2);
}

TEST(ControlProtocolTest, AnythingElseIsNoPiece) {
    for (const char* line : {"", "{}", "{\"out\":1}", "{\"screen\":\"text\"}", "{\"screen\":[]}", "{\"screen\":[1]}",
                             "{\"status\":\"0\"}", "out", "[]"}) {
        EXPECT_FALSE(parse_answer(line)) << line;
    }
}

}  // namespace
}  // namespace nimbry::platform
