#include "engine/graphs/graph_kind.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace nimbry {
namespace {

struct KindCase {
    GraphKind kind;
    const char* name;
    const char* title;
    const char* inches_title;  ///< in Fahrenheit, knots, inches of mercury, inches
    std::vector<const char*> legends, outdoor_legends;
    std::vector<int> series;
};

const KindCase cases[] = {
    {GraphKind::temperature,
     "temperature",
     "Temperature \260C",
     "Temperature \260F",
     {"Outdoor", "Dew Point", "Indoor"},
     {"Outdoor", "Dew Point"},
     {0, 1, 8}},
    {GraphKind::humidity, "humidity", "Humidity %", "Humidity %", {"Outdoor", "Indoor"}, {"Outdoor"}, {2, 9}},
    {GraphKind::wind, "wind", "Wind Speed km/h", "Wind Speed KT", {"Average", "Gust"}, {"Average", "Gust"}, {3, 6}},
    {GraphKind::barometer, "barometer", "Barometer mB", "Barometer In.Hg", {""}, {""}, {4}},
    {GraphKind::rain, "rain", "Rainfall mm/Hr", "Rainfall In./Hr", {""}, {""}, {5}},
    {GraphKind::direction, "direction", "Wind Direction \xB0", "Wind Direction \xB0", {""}, {""}, {7}},
};

TEST(GraphKind, EachHasItsTitleWithTheUnitInForceAndItsLegend) {
    Units other;
    other.temperature_text = degrees('F');
    other.wind_text = "KT";
    other.barometer_text = "In.Hg";
    other.rain_text = "In.";
    for (const KindCase& c : cases) {
        SCOPED_TRACE(c.title);
        EXPECT_EQ(graph_name(c.kind), c.name);
        EXPECT_EQ(graph_title(c.kind, Units{}), c.title);
        EXPECT_EQ(graph_title(c.kind, other), c.inches_title);
        const auto with_indoor = graph_series(c.kind, true);
        ASSERT_EQ(with_indoor.size(), c.legends.size());
        for (std::size_t n = 0; n < with_indoor.size(); ++n) {
            EXPECT_EQ(with_indoor[n].legend, c.legends[n]);
            EXPECT_EQ(with_indoor[n].s, c.series[n]);
        }
        const auto without = graph_series(c.kind, false);
        ASSERT_EQ(without.size(), c.outdoor_legends.size());
        for (std::size_t n = 0; n < without.size(); ++n) EXPECT_EQ(without[n].legend, c.outdoor_legends[n]);
    }
}

TEST(GraphKind, EverySeriesIsDrawnOnce) {
    std::multiset<int> drawn;
    for (const KindCase& c : cases)
        for (const GraphSeries& each : graph_series(c.kind, true)) drawn.insert(each.s);
    EXPECT_EQ(drawn, (std::multiset<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(GraphKind, TwoSeriesOfOnePaneNeverLookTheSame) {
    for (const KindCase& c : cases) {
        std::set<SeriesLook> looks;
        for (const GraphSeries& each : graph_series(c.kind, true)) looks.insert(each.look);
        EXPECT_EQ(looks.size(), graph_series(c.kind, true).size()) << c.title;
    }
}

TEST(GraphKind, TheFirstSevenCharactersOfATitleTellIt) {
    for (const KindCase& c : cases) {
        EXPECT_EQ(graph_of_title(c.title), c.kind) << c.title;
        EXPECT_EQ(graph_of_title(std::string(c.title).substr(0, 7)), c.kind) << c.title;
    }
    EXPECT_EQ(graph_of_title("Wind Spectacle"), GraphKind::wind);
    EXPECT_EQ(graph_of_title("Wind Disaster"), GraphKind::direction);
    EXPECT_EQ(graph_of_title("Wind"), GraphKind::temperature);
    EXPECT_EQ(graph_of_title(""), GraphKind::temperature);
}

TEST(GraphKind, TheyFollowEachOtherRoundAndRound) {
    EXPECT_EQ(graph_after(GraphKind::temperature, 1), GraphKind::humidity);
    EXPECT_EQ(graph_after(GraphKind::humidity, 1), GraphKind::wind);
    EXPECT_EQ(graph_after(GraphKind::wind, 1), GraphKind::barometer);
    EXPECT_EQ(graph_after(GraphKind::barometer, 1), GraphKind::rain);
    EXPECT_EQ(graph_after(GraphKind::rain, 1), GraphKind::direction);
    EXPECT_EQ(graph_after(GraphKind::direction, 1), GraphKind::temperature);
    EXPECT_EQ(graph_after(GraphKind::barometer, 5), GraphKind::wind);
    EXPECT_EQ(graph_after(GraphKind::rain, 0), GraphKind::rain);
}

TEST(GraphKind, TheWordsAboveTheSmallPanesAreAllDifferent) {
    std::set<std::string_view> words;
    for (const KindCase& c : cases) words.insert(graph_word(c.kind));
    EXPECT_EQ(words.size(), 6U);
}

}  // namespace
}  // namespace nimbry
