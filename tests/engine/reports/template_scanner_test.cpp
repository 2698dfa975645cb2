#include "engine/reports/template_scanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/run_time_error.h"

namespace nimbry::test {
namespace {

/// Every marker becomes its ten characters in brackets.
std::string filled(std::string_view page) {
    std::string out;
    fill_template(
        page, [](std::string_view marker) { return "[" + std::string(marker.substr(2, 10)) + "]"; }, out);
    return out;
}

struct ScanCase {
    const char* law;
    std::string page, filled;
};

TEST(TemplateScanner, MarkersAndNothingElseAreReplaced) {
    const std::vector<ScanCase> cases{
        {"an empty template gives an empty page", "", ""},
        {"text without a tilde passes", "no tag\r\nhere", "no tag\r\nhere"},
        {"a marker alone", "~~WEBOUTTEMP~~", "[WEBOUTTEMP]"},
        {"markers side by side", "~~WEBOUTTEMP~~~~WEBDATENOW~~", "[WEBOUTTEMP][WEBDATENOW]"},
        {"two on one line", "a ~~WEBOUTTEMP~~ b ~~WEBDATENOW~~ c", "a [WEBOUTTEMP] b [WEBDATENOW] c"},
        {"the second byte is not looked at", "~xWEBOUTTEMP~~", "[WEBOUTTEMP]"},
        {"nor are the ten of the name", "~\r\n345678901~~!", "[\n345678901]!"},
        {"a block without its two tildes is copied", "~~WEBOUTTEMP~x", "~~WEBOUTTEMP~x"},
        {"one tilde at its end is not enough", "~~WEBOUTTEMPx~", "~~WEBOUTTEMPx~"},
        {"a lone tilde hides the marker behind it", "a~b~~WEBOUTTEMP~~ and 13 more", "a~b~~WEBOUTTEMP~~ and 13 more"},
        {"a tag split by a line end is a block of 14 bytes like any other", "~~WEBOUT\r\nTEMP~~ and so on, further",
         "~~WEBOUT\r\nTEMP~~ and so on, further"},
        {"three tildes open a block one byte early, and its last tilde opens another", "~~~WEBOUTTEMP~~1234567890123",
         "~~~WEBOUTTEMP~~1234567890123"},
        {"the tildes of a block open nothing", "~1~~45678901~~x", "[~~45678901]x"},
        {"exactly 13 bytes behind a tilde are enough", "~123456789abcd", "~123456789abcd"},
    };
    for (const ScanCase& row : cases) {
        EXPECT_EQ(filled(row.page), row.filled) << row.law;
    }
}

TEST(TemplateScanner, EveryByteOutsideMarkersPassesUnchanged) {
    std::string page;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '~') page += static_cast<char>(byte);
    EXPECT_EQ(filled(page), page);
    EXPECT_EQ(filled(page + "~~WEBOUTTEMP~~" + page), page + "[WEBOUTTEMP]" + page);
}

TEST(TemplateScanner, FewerThanThirteenBytesBehindATildeAreAnEndTooSoon) {
    const std::string whole = "~~WEBOUTTEMP~~";
    for (std::size_t length = 1; length < marker_length; ++length) {
        std::string out;
        const std::string page = "before" + whole.substr(0, length);
        try {
            fill_template(
                page, [](std::string_view) { return std::string("tag"); }, out);
            FAIL() << "no error at " << length;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, ErrorNumber::past_end) << length;
        }
        EXPECT_EQ(out, "before");
    }
}

TEST(TemplateScanner, WhatAMarkerAppendsByItselfStandsBeforeItsText) {
    std::string out = "head ";
    fill_template(
        "a~~1234567890~~b",
        [&](std::string_view) {
            out += "<by itself>";
            return std::string("<text>");
        },
        out);
    EXPECT_EQ(out, "head a<by itself><text>b");
}

TEST(TemplateScanner, TheTextOfATagIsNotScannedAgain) {
    std::string out;
    fill_template(
        "~~1234567890~~", [](std::string_view) { return std::string("~~WEBOUTTEMP~~~"); }, out);
    EXPECT_EQ(out, "~~WEBOUTTEMP~~~");
}

}  // namespace
}  // namespace nimbry::test
