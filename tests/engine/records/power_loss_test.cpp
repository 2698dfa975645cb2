#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "engine/derived/text_lines.h"
#include "engine/graphs/graph_file.h"
#include "engine/records/data_log.h"
#include "engine/setup/units_dialog.h"
#include "tests/engine/records/weather_days.h"
#include "tests/world/front_day.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::day_text;
using test::MemoryFiles;
using test::WeatherDays;

const std::string midnight = "tmidnight=True\r\ntnineam=False\r\n";
const std::string ten = "AddOneHour=True\r\n";
const std::string on_the_last = "alRoll=905\r\n";
const std::string local = "[FTP]\r\nLocalSave=True\r\nLocalPath=/local\r\n";
const std::string everything =
    "[Alarms]\r\nfAOuTempHi=True\r\nfABarHi=True\r\nAWindHi=2\r\nfAWindHi=True\r\nfASound=True\r\nfAMail=True\r\n" +
    local +
    "FTPen=True\r\nFTPServer=ftp.example.org\r\nFTPRemoteFile=weather.htm\r\nFTPUser=me\r\nFTPPass=secret\r\n"
    "FTPMins=2\r\nUploadCount=3\r\nEMailEn=True\r\nMailServer=mail.example.org\r\nMailTo=me@example.org\r\n"
    "MailMyAddr=me@example.org\r\nnumofentries=1\r\nMailList(1)=*CHANGE*\r\nWUactive=True\r\nWUuser=me\r\n"
    "WUpass=secret\r\nMailReport=True\r\n";

struct NightCase {
    const char* name;
    CivilTime change;
    std::string keys, sections;
    std::string row, next_row;     // how the rows of its day and of the next begin
    bool closes_the_almanac;       // it is a month's last
    bool graphs_of_a_day = false;  // are there when it begins
};

const std::vector<NightCase> nights{
    {"Midnight", at(11, 1, 0, 0), midnight, "", "31,Oct,", "1,Nov,", true},
    {"NineOnTheFirst", at(11, 1, 9, 0), "", "", "1,Nov,", "2,Nov,", true},
    {"TenOnTheLast", at(10, 31, 10, 0), ten + on_the_last, "", "31,Oct,", "1,Nov,", true},
    {"NineInTheMonth", at(10, 31, 9, 0), "", local, "31,Oct,", "1,Nov,", false},
    {"LocalFolder", at(11, 1, 0, 0), midnight, local, "31,Oct,", "1,Nov,", true},
    {"Everything", at(11, 1, 0, 0), midnight, everything, "31,Oct,", "1,Nov,", true},
    {"FullGraphs", at(10, 31, 9, 0), "", "", "31,Oct,", "1,Nov,", false, true},
};

const std::string old_log = "30,Oct,23:45:02,+12.3,54,+3.3,+11.2,n.a.,11,200,15,225,1013,Steady,0,123,+21.5,45\r\n";
const std::string old_row =
    "30,Oct,+15.2,14:05,+6.1,05:40,97,06:00,54,15:10,+9.8,13:00,+4.1,06:41,+22.5,18:00,+17.9,07:10,+5,06:50,-999,"
    "00:00,0,08:00,1019,08:00,1013,20:00,21.6,16:20,225,0,5,2.5\r\n";
const std::string head = "This file used Midnight changeover times\r\n";

// Today's file of a day that had its warmest hour long ago.
std::string warm_day(CivilTime stamp) {
    std::string text = day_text(stamp_text(stamp), 33);
    const std::size_t warmest = text.find("\r\n") + 2;
    return text.replace(warmest, 1, "25.5");
}

// A graph file of 1440 samples, saved at their end.
std::string graphs_of_a_day(CivilTime end) {
    WeatherState state;
    test::fill_with_a_front(state, end);
    return graph_file_text(state.graphs, end);
}

// The samples that a start at `now` can have of a disk: all of a whole file, none of a torn one.
int samples_on(const MemoryFiles& disk, CivilTime now) {
    GraphState graphs;
    const auto outcome = read_graph_file(disk.contents(std::string(graph_file)), now, graphs);
    return outcome == GraphFileOutcome::loaded ? graphs.rows.windsamples() : 0;
}

/// The disk before one of its changes.
struct Death {
    MemoryFiles::Call call;
    MemoryFiles disk;
    CivilTime station_time;
};

/// A night from the start of a copy to its exit: the weather log is written, and archived if a month is over, new units
/// are chosen, the day and its almanac are closed, pages and small files are made.
class Night {
public:
    explicit Night(const NightCase& night)
        : change(night.change), days(change - 7min, "fwrtlog=True\r\nLogMin=2\r\n" + night.keys + night.sections) {
        MemoryFiles& files = days.world.files;
        files.add_folder("/local");
        files.put("nbextreme.log", head + old_row);
        files.put("nbextreme.bak", head);
        files.put("alSep26.csv", "september\r\n");
        files.put("logSep26.csv", "september\r\n");
        files.put("nimbry.dat", old_log);
        files.put("/local/nbextreme.log", head);
        files.put("/local/nimbry.dat", old_log);
        files.put("nimbrTDay.log", warm_day(change - 8min));
        files.put("nimbrYDay.log", day_text(stamp_text(change - 24h - 70s), 32));
        files.put("wxtexttemplate.txt", "It is ~~WEBOUTTEMP~~.\r\n");
        files.put("myhtml.html", "<p>~~WEBOUTTEMP~~</p>\r\n");
        files.put("mail_template.txt", "It is ~~WEBOUTTEMP~~.\r\n");
        files.put("mail_co_template.txt", "It was ~~WEBOUTTEMP~~.\r\n");
        if (night.graphs_of_a_day) files.put(std::string(graph_file), graphs_of_a_day(change - 8min));
        files.put("nimbrysummarytemplate.html", "<p>~~SUBRAINDYS~~</p>\r\n");
        days.world.transfers.ftp.connect = {.end = {.status = 3000}};
        days.world.transfers.online = true;
        files.before_each_change([this](const MemoryFiles::Call& call) { deaths.push_back({call, disk(), now_}); });
        live();
        deaths.push_back({{.operation = "end", .name = "", .other = "", .at = {}}, disk(), now_});
    }

    /// The number of the first such call.
    [[nodiscard]] std::size_t place_of(const std::string& operation, const std::string& name) const {
        const auto found = std::find_if(deaths.begin(), deaths.end(), [&](const Death& death) {
            return death.call.operation == operation && death.call.name == name;
        });
        EXPECT_NE(found, deaths.end()) << "no " << operation << " of " << name;
        return static_cast<std::size_t>(found - deaths.begin());
    }
    [[nodiscard]] const MemoryFiles& end() const { return deaths.back().disk; }

    const CivilTime change;
    WeatherDays days;
    std::vector<Death> deaths;

private:
    void live() {
        days.world.begin_start();
        for (now_ = change - 7min + 5s; now_ < change + 4min; now_ += 10s) {
            days.train(now_);
            if (now_ == change - 2min + 5s) choose_knots();
            days.world.run_for(9s);
        }
        days.world.act([this] { days.world.engine.menu_exit(); });
        days.world.run_for(2min);
        EXPECT_TRUE(days.world.engine.gone());
    }
    void choose_knots() {
        days.world.act([this] {
            UnitsDialog dialog = units_dialog(days.world.state().settings);
            dialog.optWindkph = false;
            dialog.optWindknots = true;
            accept_units(days.world.copy(), dialog);
        });
    }
    [[nodiscard]] MemoryFiles disk() const {
        MemoryFiles copy = days.world.files;
        copy.before_each_change({});
        copy.forget_calls();
        return copy;
    }

    CivilTime now_{};
};

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
}

std::string almanacs(const MemoryFiles& files) {
    return files.contents("alOct26.csv") + files.contents("nbextreme.log");
}

/// The rows that begin so and have all their fields.
std::size_t rows_of(const MemoryFiles& files, const std::string& beginning) {
    const std::string text = almanacs(files);
    std::size_t found = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", at), text.size());
        const std::string line = text.substr(at, end - at);
        at = end + 2;
        constexpr int fields = 34;
        if (line.starts_with(beginning) && std::count(line.begin(), line.end(), ',') == fields - 1) ++found;
    }
    return found;
}

/// The most commas that a line beginning with a digit has.
std::ptrdiff_t longest_entry(std::string_view log) {
    std::ptrdiff_t most = 0;
    while (!log.empty()) {
        const std::string_view line = take_line(log);
        if (!line.empty() && line.front() >= '0' && line.front() <= '9')
            most = std::max(most, std::count(line.begin(), line.end(), ','));
    }
    return most;
}

std::string first_line(const std::string& text) {
    return text.substr(0, text.find("\r\n"));
}

/// The stamp of a day's file, if all its lines are there.
std::optional<CivilTime> whole_day(const std::string& text, std::size_t lines) {
    std::size_t last = 0;
    for (std::size_t n = 1; n < lines; ++n) {
        const std::size_t end = text.find('\n', last);
        if (end == std::string::npos) return std::nullopt;
        last = end + 1;
    }
    if (last == text.size()) return std::nullopt;
    return parse_stamp(first_line(text));
}

/// The start after a death, eight minutes into the new day; twice if the first was refused for a torn file.
std::unique_ptr<WeatherDays> started_after(const MemoryFiles& disk, CivilTime change) {
    std::unique_ptr<WeatherDays> next;
    for (int tries = 0; tries < 2; ++tries) {
        auto started = std::make_unique<WeatherDays>(change + 8min);
        started->world.files.add_folder("/local");
        started->inherit(next == nullptr ? disk : next->world.files);
        started->start();
        started->trains(change + 8min, change + 8min + 10s);
        started->world.run_for(5s);  // a damaged file is waited over
        started->trains(change + 8min + 20s, change + 8min + 40s);
        next = std::move(started);
        if (!next->world.engine.gone()) break;
    }
    return next;
}

class PowerLoss : public testing::TestWithParam<NightCase> {
protected:
    const NightCase& night = GetParam();
    Night sound{night};
    const std::size_t row_written = sound.place_of("append", "nbextreme.log") + 1;
    const std::size_t row_synced = sound.place_of("sync", "nbextreme.log");
    const std::size_t backup_synced = sound.place_of("sync", "nbextreme.bak");
    const std::size_t yesterday_synced = sound.place_of("sync", "nimbrYDay.log");
    const std::size_t saved = sound.place_of("rewrite", "nimbrTDay.log");
    const std::string row = row_at_the_end();

    [[nodiscard]] std::string row_at_the_end() const {
        const std::string text = almanacs(sound.end());
        const std::size_t begin = text.find("\r\n" + night.row) + 2;
        return text.substr(begin, text.find("\r\n", begin) + 2 - begin);
    }
    [[nodiscard]] std::size_t knots_written() const {
        const auto found = std::find_if(sound.deaths.begin(), sound.deaths.end(), [](const Death& death) {
            return death.disk.contents("Nimbry.ini").find("fWindknots=True") != std::string::npos;
        });
        return static_cast<std::size_t>(found - sound.deaths.begin());
    }

    /// What is on the disk after every death before the n-th change, before anybody has mended anything.
    void expect_all_that_is_promised(const MemoryFiles& disk, std::size_t n) const {
        EXPECT_EQ(disk.contents("alSep26.csv"), "september\r\n");
        EXPECT_EQ(disk.contents("logSep26.csv"), "september\r\n");
        EXPECT_EQ(count(almanacs(disk), old_row), 1U);
        EXPECT_EQ(count(disk.contents("nimbry.dat") + disk.contents("logOct26.csv"), old_log), 1U);
        // A month that has its name is whole.
        for (const char* archive : {"alOct26.csv", "logOct26.csv", "/local/alOct26.csv", "/local/logOct26.csv"}) {
            if (disk.exists(archive)) {
                EXPECT_EQ(disk.contents(archive), sound.end().contents(archive)) << archive;
            }
        }
        const std::string ini = disk.contents("Nimbry.ini");
        EXPECT_EQ(ini.find("[Main]"), 0U);
        EXPECT_NE(ini.find("LogMin=2\r\n"), std::string::npos);
        EXPECT_EQ(ini.find("fWindknots=True") != std::string::npos, n >= knots_written());
        if (n > backup_synced) {
            EXPECT_EQ(disk.contents("nbextreme.bak"), head + old_row);
        }
        if (n > row_synced) {
            EXPECT_EQ(count(almanacs(disk), row), 1U);
        }
        if (n > yesterday_synced) {
            EXPECT_EQ(whole_day(disk.contents("nimbrYDay.log"), 32), sound.change - 5s - 1min);
        }
    }

    /// The next start comes up with it, and closes the day if it finds it open.
    void expect_that_life_goes_on(const MemoryFiles& disk) const {
        const std::size_t rows = rows_of(disk, night.row);
        const auto today = whole_day(disk.contents("nimbrTDay.log"), 33);
        const bool open = today && *today < sound.change - 10s;
        const auto next = started_after(disk, sound.change);
        ASSERT_FALSE(next->world.engine.gone());
        const MemoryFiles& files = next->world.files;
        // The start has taken one sample of its own.
        EXPECT_NEAR(next->world.state().graphs.rows.windsamples(), samples_on(disk, sound.change + 8min), 2);
        // What a cut has torn of the weather log does not take the next line with it.
        writelog(next->world.copy());
        for (const char* log : {"nimbry.dat", "logOct26.csv", "/local/nimbry.dat", "/local/logOct26.csv"})
            EXPECT_LE(longest_entry(files.contents(log)), 17) << log;
        EXPECT_EQ(rows_of(files, night.row), rows + (open ? 1 : 0));
        if (open) {
            EXPECT_NE(almanacs(files).find("\r\n" + night.row + "+25.5,1,"), std::string::npos);
        }
        if (open) {
            EXPECT_EQ(whole_day(files.contents("nimbrYDay.log"), 32), sound.change + 8min + 10s - 1min);
        }
        EXPECT_EQ(count(almanacs(files), old_row), 1U);
        // A day that is lost begins anew, and not with what the day before it had.
        if (!today) {
            EXPECT_EQ(next->world.state().records.day.maxtemp, 12.3F);
        }

        next->trains(sound.change + 24h - 30s, sound.change + 24h - 10s);
        EXPECT_EQ(rows_of(files, night.next_row), 1U);
        EXPECT_TRUE(whole_day(files.contents("nimbrTDay.log"), 33));
        EXPECT_TRUE(whole_day(files.contents("nimbrYDay.log"), 32));
        EXPECT_FALSE(next->world.engine.gone());
    }

    /// Kills the copy before each change of the night, lets `happen` to the disk what then does, and starts the next.
    void at_each_death(const std::function<void(MemoryFiles&, std::size_t n)>& happen) {
        std::set<std::string> seen;
        for (std::size_t n = 0; n < sound.deaths.size(); ++n) {
            const Death& death = sound.deaths[n];
            SCOPED_TRACE(std::to_string(n) + ": " + death.call.operation + " " + death.call.name + " " +
                         death.call.other);
            MemoryFiles disk = death.disk;
            happen(disk, n);
            expect_all_that_is_promised(disk, n);
            std::string all;
            for (const std::string& name : disk.names())
                if (name != "nbyprog.log") all += name + "\n" + disk.contents(name) + "\n";
            if (seen.insert(all).second) expect_that_life_goes_on(disk);
            if (HasFailure()) return;
        }
    }
};

// So that the laws below are about something.
TEST_P(PowerLoss, ANightThatNothingHappensInHasItAll) {
    EXPECT_EQ(sound.days.changeovers(), 1);
    EXPECT_GT(sound.deaths.size(), 60U);
    EXPECT_TRUE(row.starts_with(night.row + "+25.5,1,")) << row;
    EXPECT_EQ(sound.end().exists("alOct26.csv"), night.closes_the_almanac);
    EXPECT_EQ(sound.end().exists("logOct26.csv"), sound.change >= at(11, 1, 0, 0));
    if (night.sections.empty()) return;
    EXPECT_EQ(sound.end().exists("/local/alOct26.csv"), night.closes_the_almanac);
    EXPECT_EQ(sound.end().contents("/local/alOct26.csv"), sound.end().contents("alOct26.csv"));
    EXPECT_EQ(sound.end().exists("/local/logOct26.csv"), sound.change >= at(11, 1, 0, 0));
    if (night.sections == local) return;
    EXPECT_FALSE(sound.days.world.transfers.mails.empty());
    EXPECT_FALSE(sound.days.world.transfers.ftp.sent.empty());
    const auto& played = sound.days.world.sounds.played;
    EXPECT_NE(std::find(played.begin(), played.end(), "Nimbry.WAV"), played.end());
}

// What is written stays, and today's file is of the last 30 trains.
TEST_P(PowerLoss, AKillLosesNothingOfWhatWasWritten) {
    at_each_death([&](MemoryFiles& disk, std::size_t n) {
        if (n >= row_written) {
            EXPECT_EQ(count(almanacs(disk), row), 1U);
        }
        const auto today = whole_day(disk.contents("nimbrTDay.log"), 33);
        ASSERT_TRUE(today);
        if (n > saved) {
            EXPECT_GE(*today, sound.deaths[n].station_time - 5min);
        }
    });
}

TEST_P(PowerLoss, ACutLeavesWhatWasSynced) {
    at_each_death([](MemoryFiles& disk, std::size_t) { disk.power_cut(); });
}

TEST_P(PowerLoss, ACutThatTearsAndReordersCostsNoMore) {
    constexpr std::uint32_t choices = 8;
    for (std::uint32_t choice = 0; choice < choices && !HasFailure(); ++choice) {
        SCOPED_TRACE("choice " + std::to_string(choice));
        at_each_death([&](MemoryFiles& disk, std::size_t n) {
            disk.power_cut(static_cast<std::uint32_t>(n) * choices + choice);
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Nights, PowerLoss, testing::ValuesIn(nights),
                         [](const auto& night) { return std::string(night.param.name); });

}  // namespace
}  // namespace nimbry
