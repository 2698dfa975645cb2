#include "engine/station/group_layout.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace nimbry {
namespace {

std::string digit(int place) {
    return "d" + std::to_string(place);
}

/// Makes the rows of the format page: "| d6 d3 d4 | gust, tenths of m/s |".
struct Rows {
    std::vector<std::string> rows;

    void operator()(const DigitField& field) {
        std::string digits;
        for (std::size_t n = 0; n < field.count(); ++n) {
            if (n > 0) digits += ' ';
            const bool masked = n == 0 && field.first_mask != 0 && field.first_mask != 15;
            digits += masked ? "(" + digit(field.places[n]) + " & " + std::to_string(field.first_mask) + ")"
                             : digit(field.places[n]);
        }
        add(digits, field.what);
    }
    void operator()(const MomentFields& at) {
        (*this)(at.hour);
        (*this)(at.minute);
        (*this)(at.day);
        (*this)(at.month);
    }
    void operator()(const FlagField& flag) {
        std::string bits;
        for (int bit = 0; bit < 4; ++bit)
            if ((flag.mask >> bit & 1) != 0) bits += (bits.empty() ? "" : " or ") + std::to_string(bit);
        add(digit(flag.place) + " bit " + bits, flag.what);
    }
    void operator()(const FaultMark& mark) { add(digit(mark.place) + " is E", mark.what); }

    void add(const std::string& digits, std::string_view what) {
        rows.push_back("| " + digits + " | " + std::string(what) + " |");
    }
};

/// The table rows below the heading "### TAG: ...", without the table's own two head lines.
std::vector<std::string> rows_of_page(const std::string& tag) {
    std::ifstream page(NIMBRY_SOURCE_DIR "/docs/formats/stream.md");
    std::vector<std::string> rows;
    std::string line;
    bool inside = false;
    while (std::getline(page, line)) {
        if (line.starts_with("###")) inside = line.starts_with("### " + tag + ":");
        const bool row = line.starts_with("| d") || line.starts_with("| (d");
        if (inside && row) rows.push_back(line);
    }
    return rows;
}

TEST(GroupLayout, TheFormatPageNamesEveryFieldWithItsDigits) {
    EXPECT_EQ(rows_of_page("8F"), digits_8f::each(Rows{}).rows);
    EXPECT_EQ(rows_of_page("9F"), digits_9f::each(Rows{}).rows);
    EXPECT_EQ(rows_of_page("AF"), digits_af::each(Rows{}).rows);
    EXPECT_EQ(rows_of_page("BF"), digits_bf::each(Rows{}).rows);
    EXPECT_EQ(rows_of_page("CF"), digits_cf::each(Rows{}).rows);
}

TEST(GroupLayout, SpansWithAGapAnOverlapOrAnotherLengthAreTold) {
    EXPECT_TRUE(back_to_back(train_spans, 141));
    EXPECT_FALSE(back_to_back(train_spans, 142));
    auto gap = train_spans;
    gap[1].first = 36;
    EXPECT_FALSE(back_to_back(gap, 141));
    auto overlap = train_spans;
    overlap[2].length = 32;
    EXPECT_FALSE(back_to_back(overlap, 141));
}

TEST(GroupLayout, ABitWithTwoMeaningsIsTold) {
    DigitUse use(span_bf);
    use(DigitField{"a temperature", {6, 3, 4}, 7});
    use(FlagField{"its sign", 6, 8});
    EXPECT_TRUE(use.sound());
    use(FlagField{"its tens again", 6, 4});
    EXPECT_FALSE(use.sound());
}

TEST(GroupLayout, ADigitOfTagOrChecksumIsTold) {
    for (const std::uint8_t place : {std::uint8_t{2}, std::uint8_t{27}}) {
        DigitUse use(span_bf);
        use(FlagField{"a flag", place, 1});
        EXPECT_FALSE(use.sound());
    }
    DigitUse last(span_bf);
    last(FlagField{"a flag in the last byte before the checksum", 26, 1});
    EXPECT_TRUE(last.sound());
}

}  // namespace
}  // namespace nimbry
