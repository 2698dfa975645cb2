#include "windows/wind_rose.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "tests/windows/font_scale.h"
#include "tests/windows/sample_states.h"
#include "windows/wind_group.h"

namespace nimbry::test {
namespace {

using windows::wind_of;
using windows::WindRose;

TEST(WindRose, PointsTheNeedleAtTheAverageAndTheMarkAtTheGust) {
    WeatherState state;
    fill_with_a_plain_day(state);
    const WindRose::Wind wind = wind_of(state);
    EXPECT_TRUE(wind.shows_average);
    EXPECT_TRUE(wind.shows_gust);
    EXPECT_EQ(wind.average_degrees, 240);
    EXPECT_EQ(wind.gust_degrees, 225);
    EXPECT_EQ(wind.word, "SW");
}

TEST(WindRose, GrowsWithTheLetters) {
    EXPECT_EQ(WindRose().minimumSizeHint(), QSize(168, 168));
    const FontScale letters(2);
    const WindRose rose;
    EXPECT_EQ(rose.minimumSizeHint().width(), 10 * QFontMetrics(rose.font()).height());
    EXPECT_GT(rose.minimumSizeHint().width(), 168);
}

TEST(WindRose, HidesTheNeedleInACalm) {
    WeatherState state;
    fill_with_a_plain_day(state);
    state.panel.Text2[3].text = "Calm";
    const WindRose::Wind wind = wind_of(state);
    EXPECT_FALSE(wind.shows_average);
    EXPECT_TRUE(wind.shows_gust) << "the gust is not calm";
    EXPECT_EQ(wind.word, "Calm");
}

TEST(WindRose, HidesTheNeedleWhileTheSensorIsFaulty) {
    WeatherState state;
    fill_with_a_plain_day(state);
    state.panel.Text2[3].text = "Error";
    state.panel.Text2[6].text = "Error";
    const WindRose::Wind wind = wind_of(state);
    EXPECT_FALSE(wind.shows_average);
    EXPECT_FALSE(wind.shows_gust);
    EXPECT_EQ(wind.word, "Error");
}

TEST(WindRose, IsEmptyBeforeTheFirstReading) {
    WeatherState state;
    reset_main_panel(state);
    const WindRose::Wind wind = wind_of(state);
    EXPECT_FALSE(wind.shows_average);
    EXPECT_FALSE(wind.shows_gust);
    EXPECT_EQ(wind.word, "");
}

/// Where the rose is painted in the needle's colour, seen from the middle.
QPointF needle_centre(WindRose& rose) {
    const QImage image = rose.grab().toImage();
    const QColor needle(0x1A, 0x63, 0xAE);
    QPointF sum;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != needle) continue;
            sum += QPointF(x - image.width() / 2.0, y - image.height() / 2.0);
            ++count;
        }
    }
    return count == 0 ? QPointF() : sum / count;
}

TEST(WindRose, PaintsTheNeedleClockwiseFromNorth) {
    WindRose rose;
    rose.resize(200, 200);
    rose.show_wind({.average_degrees = 0, .gust_degrees = 0, .shows_average = true, .shows_gust = false, .word = {}});
    EXPECT_LT(needle_centre(rose).y(), -5) << "north is up";
    rose.show_wind({.average_degrees = 90, .gust_degrees = 0, .shows_average = true, .shows_gust = false, .word = {}});
    EXPECT_GT(needle_centre(rose).x(), 5) << "east is right";
    rose.show_wind({.average_degrees = 90, .gust_degrees = 0, .shows_average = false, .shows_gust = false, .word = {}});
    EXPECT_EQ(needle_centre(rose), QPointF());
}

}  // namespace
}  // namespace nimbry::test
