#include "windows/palette_colours.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <string>

#include "tests/windows/screens.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

Box box_with(const char* text, Colour fore, Colour back) {
    Box box;
    box.text = text;
    box.fore = fore;
    box.back = back;
    return box;
}

struct ExactCase {
    Colour number;
    QColor colour;
};

TEST(ExactColour, ReadsTheNumberAsBlueGreenRed) {
    const ExactCase cases[]{{0x8080FF, QColor(255, 128, 128)}, {0xFF0000, QColor(0, 0, 255)},
                            {0xC0C0FF, QColor(255, 192, 192)}, {0x80FF80, QColor(128, 255, 128)},
                            {0xFF80FF, QColor(255, 128, 255)}, {65280, QColor(0, 255, 0)},
                            {255, QColor(255, 0, 0)},          {0, QColor(0, 0, 0)}};
    for (const ExactCase& c : cases) EXPECT_EQ(exact_colour(c.number), c.colour) << c.number;
}

TEST(Contrast, IsThatOfRelativeLuminance) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 0.001);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
    EXPECT_EQ(contrast(Qt::red, Qt::white), contrast(Qt::white, Qt::red));
}

TEST(BoxColours, AreLegibleInBothThemes) {
    for (const QPalette& palette : {QApplication::palette(), dark_palette()}) {
        for (const Colour fore : {colours::black, colours::red}) {
            for (const Colour back :
                 {Colour{0xFFFFFF}, colours::reading_back, colours::rain_back, colours::alarm_back}) {
                SCOPED_TRACE(std::to_string(fore) + " on " + std::to_string(back) +
                             (is_dark(palette) ? " dark" : " light"));
                const BoxColours looks = box_colours(box_with("1", fore, back), palette, ColourTable::legible);
                EXPECT_GE(contrast(looks.text, looks.back), 4.5);
            }
        }
        EXPECT_GE(contrast(muted_text(palette), panel_back(palette)), 4.5);
        EXPECT_GE(contrast(muted_text(palette), palette.color(QPalette::Window)), 4.5);
    }
}

TEST(BoxColours, TellFaultAndAlarmByAMarkToo) {
    const QPalette palette = QApplication::palette();
    const auto mark = [&](const Box& box) { return box_colours(box, palette, ColourTable::legible).mark; };
    EXPECT_EQ(mark(box_with("12", 0, 0xFFFFFF)), BoxMark::none);
    EXPECT_EQ(mark(box_with("12", 255, 0xFFFFFF)), BoxMark::fault);
    EXPECT_EQ(mark(box_with("Error", 0, 0x80FF80)), BoxMark::fault) << "the red is gone, the word is not";
    EXPECT_EQ(mark(box_with(" Error ", 0, 0x80FF80)), BoxMark::fault);
    EXPECT_EQ(mark(box_with("12", 0, 0xC0C0FF)), BoxMark::alarm);
    EXPECT_TRUE(box_colours(box_with("12", 0, 0xC0C0FF), palette, ColourTable::legible).bold_border);
    EXPECT_FALSE(box_colours(box_with("12", 0, 0x80FF80), palette, ColourTable::legible).bold_border);
}

TEST(StatusColour, IsLegibleOnThePill) {
    for (const Colour fore : {colours::green, colours::salmon, colours::blue}) {
        EXPECT_GE(contrast(status_colour(fore, ColourTable::legible), QColor::fromRgb(status_back)), 4.5) << fore;
    }
    EXPECT_EQ(status_colour(colours::salmon, ColourTable::as_printed), QColor(255, 128, 128));
    EXPECT_EQ(status_colour(colours::green, ColourTable::as_printed), QColor(0, 255, 0));
}

}  // namespace
}  // namespace nimbry::test
