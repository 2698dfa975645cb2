#include "engine/control/json_text.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry {
namespace {

TEST(JsonTextTest, QuotesBackslashesAndControlCharactersAreEscaped) {
    EXPECT_EQ(json_string("a \"b\" \\ c\r\n\td"), R"("a \"b\" \\ c\r\n\td")");
    EXPECT_EQ(json_string(std::string("\0\x01\x1F", 3)), R"("\u0000\u0001\u001f")");
    EXPECT_EQ(json_string(""), R"("")");
    EXPECT_EQ(json_string("+12.3 °C"), R"("+12.3 °C")");
}

TEST(JsonTextTest, AnObjectHoldsItsFieldsInTheirOrder) {
    EXPECT_EQ(JsonObject().text(), "{}");
    EXPECT_EQ(JsonObject().field("b", json_string("x")).flag("a", true).field("n", "12").field("o", "{}").text(),
              R"({"b":"x","a":true,"n":12,"o":{}})");
    EXPECT_EQ(JsonObject().flag("a", false).field("nothing", "null").text(), R"({"a":false,"nothing":null})");
}

}  // namespace
}  // namespace nimbry
