#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "engine/setup/units_dialog.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::day_text;
using test::MemoryFiles;
using test::WeatherDays;

const CivilTime change = at(11, 1, 0, 0);

const std::string head = "This file used Midnight changeover times\r\n";
const std::string old_row =
    "30,Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,"
    "00:00,0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,0,5,2.5\r\n";
const std::string old_log = "30,Oct,23:45:02,+12.3,54,+3.3,+11.2,n.a.,11,200,15,225,1013,Steady,0,123,+21.5,45\r\n";

/// The last minutes of a month: the weather log is written and archived, the day and its almanac are closed, new units
/// are chosen, pages and small files are made.
struct Night {
    Night() : days(change - 3min, "tmidnight=True\r\ntnineam=False\r\nfwrtlog=True\r\nLogMin=2\r\n") {
        MemoryFiles& files = days.world.files;
        files.put("nbextreme.log", head + old_row);
        files.put("nbextreme.bak", head);
        files.put("alSep26.csv", "september\r\n");
        files.put("logSep26.csv", "september\r\n");
        files.put("nimbry.dat", old_log);
        files.put("nimbrTDay.log", day_text("31 Oct 2026 23:54:00", 33));
        files.put("nimbrYDay.log", day_text("30 Oct 2026 23:58:50", 32));
        files.put("wxtexttemplate.txt", "It is ~~WEBOUTTEMP~~.\r\n");
        files.forget_calls();
    }
    /// Five minutes, or until the program is dead.
    void live() {
        days.world.begin_start();
        for (CivilTime t = change - 3min + 5s; t < change + 2min && !dead(); t += 10s) {
            days.train(t);
            if (t == change - 2min + 5s) choose_knots();
            days.world.run_for(9s);
        }
    }
    void choose_knots() {
        days.world.act([this] {
            UnitsDialog dialog = units_dialog(days.world.state().settings);
            dialog.optWindkph = false;
            dialog.optWindknots = true;
            accept_units(days.world.copy(), dialog);
        });
    }
    /// From the n-th disk call on (0: the first) nothing reaches the disk any more.
    void die_at(std::size_t n) {
        constexpr std::size_t more_than_a_night_has = 20'000;
        for (std::size_t call = 1; call <= more_than_a_night_has; ++call)
            days.world.files.fail_call(n + call, FileResult::failed);
        lives = n;
    }
    [[nodiscard]] bool dead() const { return days.world.files.calls().size() > lives; }

    WeatherDays days;
    std::size_t lives = static_cast<std::size_t>(-1);  // calls until its death
};

/// The start after it, eight minutes into the new month; twice if the first was refused for a torn file.
std::unique_ptr<WeatherDays> started_after(const test::World& dead) {
    std::unique_ptr<WeatherDays> next;
    for (int tries = 0; tries < 2; ++tries) {
        auto started = std::make_unique<WeatherDays>(change + 8min);
        started->inherit(next == nullptr ? dead : next->world);
        started->start();
        started->trains(change + 8min, change + 8min + 40s);
        next = std::move(started);
        if (!next->world.engine.gone()) break;
    }
    return next;
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
}

std::size_t place_of(const std::vector<MemoryFiles::Call>& calls, const std::string& operation,
                     const std::string& name) {
    for (std::size_t n = 0; n < calls.size(); ++n)
        if (calls[n].operation == operation && calls[n].name == name) return n;
    ADD_FAILURE() << "no " << operation << " of " << name;
    return 0;
}

/// The disk calls of a night that nothing happens in.
std::vector<MemoryFiles::Call> sound_night() {
    Night night;
    night.live();
    EXPECT_EQ(night.days.changeovers(), 1);
    EXPECT_EQ(count(night.days.world.files.contents("alOct26.csv"), "\r\n31,Oct,"), 1U);
    EXPECT_TRUE(night.days.world.files.exists("logOct26.csv"));
    return night.days.world.files.calls();
}

enum class Death { kill, power_cut };

/// What every death leaves, whenever it comes.
void expect_nothing_of_value_is_lost(const WeatherDays& days) {
    const MemoryFiles& files = days.world.files;
    EXPECT_EQ(files.contents("alSep26.csv"), "september\r\n");
    EXPECT_EQ(files.contents("logSep26.csv"), "september\r\n");
    EXPECT_EQ(count(files.contents("nbextreme.log") + files.contents("alOct26.csv"), old_row), 1U);
    EXPECT_EQ(count(files.contents("nimbry.dat") + files.contents("logOct26.csv"), old_log), 1U);
    EXPECT_EQ(files.contents("Nimbry.ini").find("[Main]"), 0U);
    EXPECT_NE(files.contents("Nimbry.ini").find("LogMin=2\r\n"), std::string::npos);
    EXPECT_FALSE(days.world.engine.gone());
    EXPECT_EQ(days.world.lines("nimbrYDay.log").size(), 32U);
}

class PowerLoss : public testing::TestWithParam<Death> {};

TEST_P(PowerLoss, AtAnyDiskCallOfAMonthsLastNightTheNextStartComesUpAndNothingOfValueIsLost) {
    const auto calls = sound_night();
    ASSERT_GT(calls.size(), 40U);
    // From the save that tells that the day is over to its row: only here the row can be lost.
    const std::size_t row = place_of(calls, "append", "nbextreme.log");
    const std::size_t synced = place_of(calls, "sync", "nbextreme.log");
    const std::size_t archived = place_of(calls, "sync", "alOct26.csv");
    std::size_t saved = row;
    while (saved > 0 && (calls[saved].operation != "rewrite" || calls[saved].name != "nimbrTDay.log")) --saved;
    ASSERT_GT(saved, 0U);

    for (std::size_t n = 0; n < calls.size(); ++n) {
        if (calls[n].operation == "read") continue;  // the disk is as at the next change
        SCOPED_TRACE(std::to_string(n) + ": " + calls[n].operation + " " + calls[n].name + " " + calls[n].other);
        Night night;
        night.die_at(n);
        night.live();
        ASSERT_TRUE(night.dead());
        if (GetParam() == Death::power_cut) night.days.world.files.power_cut();
        const auto next = started_after(night.days.world);
        expect_nothing_of_value_is_lost(*next);

        // Tomorrow is closed as ever.
        next->trains(change + 24h - 30s, change + 24h - 10s);
        const MemoryFiles& files = next->world.files;
        const std::string almanacs = files.contents("nbextreme.log") + files.contents("alOct26.csv");
        EXPECT_EQ(count(almanacs, "\r\n1,Nov,"), 1U);

        const std::size_t rows = count(almanacs, "\r\n31,Oct,");
        if (GetParam() == Death::kill) {
            EXPECT_EQ(rows, n > saved && n <= row ? 0U : 1U);
        } else {
            // Today's file is older than the change then: the day is closed, again if its row is there.
            EXPECT_EQ(rows, n > synced ? 2U : 1U);
        }
        if (n > archived) {
            EXPECT_TRUE(files.contents("alOct26.csv").starts_with(head + old_row + "31,Oct,"));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Deaths, PowerLoss, testing::Values(Death::kill, Death::power_cut), [](const auto& death) {
    return std::string(death.param == Death::kill ? "Kill" : "PowerCut");
});

}  // namespace
}  // namespace nimbry
