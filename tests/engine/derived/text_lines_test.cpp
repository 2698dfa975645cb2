#include "engine/derived/text_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry {
namespace {

using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

Lines lines_of(std::string_view text, LineEnds ends) {
    Lines lines;
    while (!text.empty()) lines.emplace_back(take_line(text, ends));
    return lines;
}

TEST(TakeLine, EndsALineWhereItsRuleSaysSo) {
    struct Case {
        const char* law;
        std::string text;
        Lines all, newline;
    };
    const std::vector<Case> cases{
        {"CR LF ends a line", "a\r\nb\r\n", {"a", "b"}, {"a", "b"}},
        {"LF does", "a\nb\n", {"a", "b"}, {"a", "b"}},
        {"a CR alone is one of all ends, and no newline", "a\rb\n", {"a", "b"}, {"a\rb"}},
        {"the last line needs no end", "a\r\nb", {"a", "b"}, {"a", "b"}},
        {"an empty line is a line", "\r\n\na", {"", "", "a"}, {"", "", "a"}},
        {"a torn CR LF is an end", "a\r", {"a"}, {"a"}},
        {"of two CR one belongs to the newline", "a\r\r\nb", {"a", "", "b"}, {"a\r", "b"}},
        {"LF CR is two ends, or an end and a line of nothing", "a\n\r", {"a", ""}, {"a", ""}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_THAT(lines_of(c.text, LineEnds::all), ElementsAreArray(c.all));
        EXPECT_THAT(lines_of(c.text, LineEnds::newline), ElementsAreArray(c.newline));
    }
}

}  // namespace
}  // namespace nimbry
