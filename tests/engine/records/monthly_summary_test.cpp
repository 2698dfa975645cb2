#include "engine/records/monthly_summary.h"

#include <gtest/gtest.h>

#include "engine/core/main_settings.h"
#include "engine/core/run_time_error.h"
#include "engine/records/almanac_statistics.h"

namespace nimbry {
namespace {

const std::string row1 =
    "1,Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,00:00,"
    "0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,0,5,2.5\r\n";
const std::string row2 =
    "2,Oct,+18,15:30,+7.4,08:59,95,07:00,50,14:00,+10.2,10:30,+5.2,04:00,+23.1,19:00,+18.2,06:00,+6.3,03:00,-999,00:00,"
    "12,10:30,1015,09:30,1003,09:00,54,10:30,350,3.5,0,3.5\r\n";
const std::string row3 =
    "3,Oct,+15.3,12:00,-0.4,09:00,96,09:01,48,16:00,+8,12:30,-2.1,08:00,+21.7,20:00,+17.4,08:30,-3.2,07:45,+24.6,14:00,"
    "6,11:11,1021,08:59,1009,14:00,36,13:13,10,0.7,0,0.7\r\n";
const std::string nine_head =
    "This is the Nimbry raw almanac file of daily extremes.\r\n\r\nThis file used 9.00am changeover times\r\n"
    "Each entry details the extreme conditions\r\n\r\n\r\nDATE,MONTH\r\n\r\n";

std::string with_field(const std::string& row, AlmanacColumn column, const std::string& value) {
    std::size_t from = 0;
    for (std::size_t n = 0; n < static_cast<std::size_t>(column); ++n) from = row.find(',', from) + 1;
    const std::size_t end = std::min(row.find(',', from), row.find('\r', from));
    return row.substr(0, from) + value + row.substr(end);
}

MonthlySummary summary_of(const std::string& text, const SummaryRequest& request = {true, 2026, 0, 0.7F}) {
    return monthly_summary(read_almanac(text, DayEnd::nine), units_from({}), request);
}

std::string tag_of(const std::string& text, std::string_view tag) {
    return summary_of(text).tags.find(tag)->second;
}

// Worked out by hand from the three rows.
TEST(MonthlySummary, TellsAWholeMonthInProgress) {
    EXPECT_EQ(summary_of(nine_head + row1 + row2 + row3).text,
              "Nimbry monthly summary for the current month\r\n"
              "------------------------------------------------------------\r\n"
              "\r\n"
              "There are 3 entries in the selected almanac file\r\n"
              "covering the period 30 September to 03 October.\r\n"
              "(Entries are for the 24 hours ending at 9.00 am on the indicated dates)\r\n"
              "\r\n"
              "Maximums and minimums\r\n"
              "Maximum temperature: +18 \260C at 15:30:00 on 01 October\r\n"
              "Minimum temperature: -0.4 \260C at 09:00:00 on 03 October\r\n"
              "Maximum humidity: 97 % at 06:00:00 on 01 October\r\n"
              "Minimum humidity: 48 % at 16:00:00 on 02 October\r\n"
              "Maximum dew point: +10.2 \260C at 10:30:00 on 01 October\r\n"
              "Minimum dew point: -2.1 \260C at 08:00:00 on 03 October\r\n"
              "Minimum wind chill: -3.2 \260C at 07:45:00 on 03 October\r\n"
              "Maximum heat index: +24.6 \260C at 14:00:00 on 02 October\r\n"
              "Maximum barometric pressure: 1021 mB at 08:59:00 on 03 October\r\n"
              "Minimum barometric pressure: 1003 mB at 09:00:00 on 02 October\r\n"
              "Maximum wind gust: 54 km/h, 350\xB0 at 10:30:00 on 01 October\r\n"
              "Maximum indoor temperature: +23.1 \260C at 19:00:00 on 01 October\r\n"
              "Minimum indoor temperature: +17.4 \260C at 08:30:00 on 03 October\r\n"
              "\r\n"
              "Averages\r\n"
              "Average maximum temperature: +16.2 \260C\r\n"
              "Average minimum temperature: +4.4 \260C\r\n"
              "Average temperature: +10.3 \260C\r\n"
              "Average maximum humidity: 96 %\r\n"
              "Average minimum humidity: 50.7 %\r\n"
              "Average humidity: 73.3 %\r\n"
              "Average maximum dew point: +9.3 \260C\r\n"
              "Average minimum dew point: +2.4 \260C\r\n"
              "Average dew point: +5.9 \260C\r\n"
              "Average minimum wind chill: +2.7 \260C\r\n"
              "Average maximum heat index: +24.6 \260C\r\n"
              "Average maximum barometric pressure: 1018.3 mB\r\n"
              "Average minimum barometric pressure: 1008.3 mB\r\n"
              "Average barometric pressure: 1013.3 mB\r\n"
              "Average maximum indoor temperature: +22.4 \260C\r\n"
              "Average minimum indoor temperature: +17.8 \260C\r\n"
              "Average indoor temperature: +20.1 \260C\r\n"
              "Average of daily peak wind gusts: 37.2 km/h\r\n"
              "Average of daily peak wind gust direction: 195\xB0\r\n"
              "\r\n"
              "Rainfall summary:\r\n"
              "Total rainfall for 30 September to 03 October: 4.2 mm\r\n"
              "Number of rainfall days: 2\r\n"
              "Maximum peak rainfall rate: 12 mm/hour at 10:30:00 on 01 October\r\n"
              "Days Since Rain: 0\r\n"
              "Last rainfall amount: 0.7 mm\r\n");
}

TEST(MonthlySummary, AnArchiveIsTitledByItsMonthAndKnowsNoDaysSinceRain) {
    const MonthlySummary summary = summary_of(nine_head + row1, {false, 2026, 4, 9});
    EXPECT_EQ(summary.text.substr(0, summary.text.find('\r')), "Nimbry monthly summary for October 2026");
    EXPECT_EQ(summary.text.find("Days Since Rain"), std::string::npos);
    EXPECT_EQ(summary.tags.find("SUBDAYSNRN")->second, "");
    EXPECT_EQ(summary.tags.find("SUBLSTRAIN")->second, "");
}

TEST(MonthlySummary, AnEmptyAlmanacHasACountOfZeroAndNothingElse) {
    EXPECT_EQ(summary_of(nine_head).text, "Nimbry monthly summary for the current month\r\n" + std::string(60, '-') +
                                              "\r\n\r\nThere are 0 entries in the selected almanac file\r\n");
}

struct DayEndCase {
    const char *name, *head;
    DayEnd fallback, day_end;
};

TEST(MonthlySummary, TheHeadNamesTheDaysEndAndTheSelectionStandsInForASilentOne) {
    const DayEndCase cases[] = {
        {"midnight", "This file used Midnight changeover times", DayEnd::nine, DayEnd::midnight},
        {"nine", "This file used 9.00am changeover times", DayEnd::ten, DayEnd::nine},
        {"ten", "This file used 10.00am changeover times", DayEnd::nine, DayEnd::ten},
        {"silent", "This file used times", DayEnd::ten, DayEnd::ten},
    };
    for (const DayEndCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(read_almanac(std::string(c.head) + "\r\n" + row1, c.fallback).day_end, c.day_end);
    }
}

struct MomentCase {
    const char* name;
    DayEnd day_end;
    const char *date, *month, *time, *clock, *day;
};

TEST(MonthlySummary, AnExtremeAfterTheDaysEndBelongsToTheDayBefore) {
    const MomentCase cases[] = {
        {"nine sharp stays", DayEnd::nine, "5", "Oct", "09:00", "09:00:00", "05 October"},
        {"a minute past nine goes back", DayEnd::nine, "5", "Oct", "09:01", "09:01:00", "04 October"},
        {"half past ten of a nine file goes back", DayEnd::nine, "5", "Oct", "10:30", "10:30:00", "04 October"},
        {"ten sharp stays", DayEnd::ten, "5", "Oct", "10:00", "10:00:00", "05 October"},
        {"a minute past ten goes back", DayEnd::ten, "5", "Oct", "10:01", "10:01:00", "04 October"},
        {"midnight files never go back", DayEnd::midnight, "5", "Oct", "23:59", "23:59:00", "05 October"},
        {"over a month's end", DayEnd::nine, "1", "Oct", "12:00", "12:00:00", "30 September"},
        {"no such date", DayEnd::nine, "31", "Feb", "12:00", "* Invalid time or date *", " ?? "},
        {"29 February in a common year", DayEnd::nine, "29", "Feb", "08:00", "* Invalid time or date *", " ?? "},
        {"no month", DayEnd::nine, "3", "", "12:00", "* Invalid time or date *", " ?? "},
        {"no time", DayEnd::nine, "3", "Oct", "", "* Invalid time or date *", " ?? "},
        {"an hour that is none", DayEnd::nine, "3", "Oct", "24:00", "* Invalid time or date *", " ?? "},
        {"letters for a time", DayEnd::nine, "3", "Oct", "ab:cd", "* Invalid time or date *", " ?? "},
    };
    for (const MomentCase& c : cases) {
        SCOPED_TRACE(c.name);
        AlmanacRow row;
        row.fields[0] = c.date;
        row.fields[1] = c.month;
        const Moment moment = moment_of(row, c.time, c.day_end, 2026);
        EXPECT_EQ(moment.time, c.clock);
        EXPECT_EQ(moment.date, c.day);
    }
}

TEST(MonthlySummary, OfEqualValuesTheLastRowStands) {
    const std::string later = with_field(with_field(row3, AlmanacColumn::max_temperature, "+18"),
                                         AlmanacColumn::max_temperature_time, "08:15");
    EXPECT_EQ(tag_of(nine_head + row2 + later, "SUMMAXTEMP"), "+18 \260C at 08:15:00 on 03 October");
    const std::string low = with_field(with_field(row3, AlmanacColumn::min_temperature, "+7.4"),
                                       AlmanacColumn::min_temperature_time, "04:04");
    EXPECT_EQ(tag_of(nine_head + row2 + low, "SUMMINTEMP"), "+7.4 \260C at 04:04:00 on 03 October");
}

TEST(MonthlySummary, WithoutAnyHeatIndexItSaysSo) {
    const MonthlySummary summary = summary_of(nine_head + row1 + row2);
    EXPECT_NE(summary.text.find("\r\nThere are no valid heat index entries in the almanac\r\n"), std::string::npos);
    EXPECT_EQ(summary.tags.find("SUMMAXHIND")->second, "There are no valid heat index entries in the almanac");
    EXPECT_EQ(summary.tags.find("SUBAVMAXHI")->second, "n.a.");
}

struct MarkCase {
    const char* name;
    AlmanacColumn column;
    const char *mark, *tag, *average_tag;
};

TEST(MonthlySummary, DaysWithoutAReadingAreLeftOutInEveryUnit) {
    const MarkCase cases[] = {
        {"maximum, Celsius", AlmanacColumn::max_temperature, "-999", "SUMMAXTEMP", "SUMAVMXTMP"},
        {"maximum, Fahrenheit", AlmanacColumn::max_temperature, "-1766.2", "SUMMAXTEMP", "SUMAVMXTMP"},
        {"minimum, Celsius", AlmanacColumn::min_temperature, "+999", "SUMMINTEMP", "SUMAVMNTMP"},
        {"minimum, Fahrenheit", AlmanacColumn::min_temperature, "+1830.2", "SUMMINTEMP", "SUMAVMNTMP"},
        {"humidity", AlmanacColumn::min_humidity, "999", "SUMMINHUMI", "SUMAVMNHUM"},
        {"dew point", AlmanacColumn::min_dew_point, "+999", "SUMMINDEWP", "SUMAVMINDP"},
        {"wind chill", AlmanacColumn::min_chill, "+1830.2", "SUMMINCHIL", "SUBAVMINWC"},
        {"indoor temperature", AlmanacColumn::max_indoor, "-999", "SUMAXINTMP", "SUBAVMXITP"},
        {"pressure, mB", AlmanacColumn::min_barometer, "9999", "SUMMINBARO", "SUBAVMNBAR"},
        {"pressure maximum, mB", AlmanacColumn::max_barometer, "-999", "SUMMAXBARO", "SUBAVMXBAR"},
        {"pressure, inches", AlmanacColumn::min_barometer, "295.26", "SUMMINBARO", "SUBAVMNBAR"},
        {"pressure maximum, inches", AlmanacColumn::max_barometer, "-29.5", "SUMMAXBARO", "SUBAVMXBAR"},
    };
    for (const MarkCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string marked = with_field(row3, c.column, c.mark);
        EXPECT_EQ(tag_of(nine_head + marked, c.tag), "- No Valid Data -");
        EXPECT_EQ(tag_of(nine_head + marked, c.average_tag), "n.a.");
        EXPECT_EQ(tag_of(nine_head + row1 + marked, c.tag), tag_of(nine_head + row1, c.tag));
        EXPECT_EQ(tag_of(nine_head + row1 + marked, c.average_tag), tag_of(nine_head + row1, c.average_tag));
    }
}

TEST(MonthlySummary, AReal999MillibarsCounts) {
    const std::string deep = with_field(row3, AlmanacColumn::min_barometer, "999");
    EXPECT_EQ(tag_of(nine_head + row1 + deep, "SUMMINBARO"), "999 mB at 14:00:00 on 02 October");
    EXPECT_EQ(tag_of(nine_head + row1 + deep, "SUBAVMNBAR"), "1006 mB");  // (1013 + 999) / 2
}

TEST(MonthlySummary, BearingsAreAveragedAsPlainNumbers) {
    EXPECT_EQ(tag_of(nine_head + row2 + row3, "SUBMXAWDIR"), "180\xB0");
}

TEST(MonthlySummary, APeakRateWithoutAReadingIsLeftOut) {
    for (const char* mark : {"-999", "-39.33"}) {
        const std::string marked = with_field(row3, AlmanacColumn::max_rain_rate, mark);
        EXPECT_EQ(tag_of(nine_head + marked, "SUBMXRNRAT"), "zero");
        EXPECT_EQ(tag_of(nine_head + row2 + marked, "SUBMXRNRAT"), "12 mm/hour at 10:30:00 on 01 October");
    }
}

TEST(MonthlySummary, AMidnightFileCoversItsOwnDates) {
    std::string head = nine_head;
    head.replace(head.find("9.00am"), 6, "Midnight");
    EXPECT_EQ(tag_of(head + row1 + row2, "SUBPERCOVD"), "01 October to 02 October");
    EXPECT_EQ(tag_of(head + row1 + row2, "SUBCHGTIME"), "Midnight");
    EXPECT_EQ(tag_of(head + row1 + row2, "SUMMAXWIND"), "54 km/h, 350\xB0 at 10:30:00 on 02 October");
    head.replace(head.find("Midnight"), 8, "10.00am");
    EXPECT_EQ(tag_of(head + row1 + row2, "SUBPERCOVD"), "30 September to 02 October");
    EXPECT_EQ(tag_of(head + row1 + row2, "SUBCHGTIME"), "10.00 am");
}

TEST(MonthlySummary, ADryMonthHasNoPeakRate) {
    const MonthlySummary summary = summary_of(nine_head + row1);
    EXPECT_NE(summary.text.find("\r\nMaximum peak rainfall rate recorded is zero\r\n"), std::string::npos);
    EXPECT_EQ(summary.tags.find("SUBRAINDYS")->second, "0");
    EXPECT_EQ(summary.tags.find("SUBDAYWTRN")->second, "1");
}

TEST(Almanac, ARowTooShortIsAnIndexError) {
    EXPECT_THROW((void)read_almanac("1,Oct,+15.2\r\n", DayEnd::nine), RunTimeError);
    const std::string one_short = row1.substr(0, row1.rfind(',')) + "\r\n";
    EXPECT_THROW((void)read_almanac(one_short, DayEnd::nine), RunTimeError);
}

TEST(Almanac, RowsBeyondTheTableAreIgnored) {
    std::string text = nine_head;
    for (int n = 0; n < 40; ++n) text += row1;
    EXPECT_EQ(read_almanac(text, DayEnd::nine).rows.size(), 33U);
}

TEST(SummaryTemplate, EveryTagIsReplacedAndEverythingElsePasses) {
    const MonthlySummary summary = summary_of(nine_head + row1 + row2 + row3);
    EXPECT_EQ(Sumresolvtag("<b>~~SUBCHGTIME~~</b> ~~SUBPERCOVD~~ ~~WEBOUTTEMP~~", summary),
              "<b>9.00 am</b> 30 September to 03 October ~~WEBOUTTEMP~~");
    EXPECT_EQ(Sumresolvtag("~~~SUBRAINDYS~~~", summary), "~2~");
    EXPECT_EQ(Sumresolvtag("~~SUBRAINDYS~", summary), "~~SUBRAINDYS~");
    EXPECT_EQ(Sumresolvtag("~~SUB", summary), "~~SUB");
    EXPECT_EQ(Sumresolvtag("", summary), "");
    EXPECT_EQ(summary.tags.size(), 40U);
}

}  // namespace
}  // namespace nimbry
