#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/world/generated_weather.h"
#include "tests/world/world.h"

namespace nimbry::test {

/// When the weather day ends.
enum class DayEndHour { midnight = 0, nine = 9, ten = 10 };

/// Random numbers that are the same on every machine for the same seed.
class Chance {
public:
    explicit Chance(std::uint32_t seed) : generator_(seed) {}
    /// 0 to `end` - 1.
    int below(int end) { return static_cast<int>(generator_() % static_cast<unsigned>(end)); }
    std::uint32_t number() { return static_cast<std::uint32_t>(generator_()); }
    bool one_in(int many) { return below(many) == 0; }
    std::chrono::seconds within(std::chrono::seconds span) {
        return std::chrono::seconds{below(static_cast<int>(span.count()))};
    }

private:
    std::mt19937 generator_;
};

/// A copy with everything switched on that lives through day after day of generated weather in which things go wrong:
/// damaged trains, failed sensors, a silent station, a pulled adapter, servers that refuse or fall silent, a full disk,
/// new units, exits, kills and power cuts. A day here runs from twelve hours before its changeover to twelve hours
/// behind it; its last two hours are always quiet, and at its end everything is looked at.
class Years {
public:
    /// `begin` is the first day of the calendar. All chance comes from `seed`.
    Years(std::chrono::local_days begin, DayEndHour end, std::uint32_t seed);
    ~Years();

    void live_a_day();

    /// What went against a law, a line each.
    [[nodiscard]] const std::vector<std::string>& complaints() const { return complaints_; }
    /// What happened on the day that was lived last: what went wrong, the trains around the change, and the lines of
    /// the program log.
    [[nodiscard]] std::vector<std::string> story() const;
    /// How often what happened, for the report.
    [[nodiscard]] const std::map<std::string, int>& tally() const { return tally_; }
    /// The bytes on the heap at the last look, those of the disk's files not counted.
    [[nodiscard]] std::size_t heap() const { return heap_; }

private:
    struct Action {
        CivilTime at;
        std::function<void()> act;
    };
    struct Span {
        CivilTime from, to;
    };
    enum class Stop { menu, session_end, kill, power_cut };

    void plan_day();
    CivilTime plan(std::chrono::seconds latest, std::chrono::seconds longest, const char* what,
                   std::function<void()> begin, std::function<void()> end);
    void plan_stop();
    void fill_disk();
    void make_room();
    void restart(Stop how);
    void start_world(CivilTime at);
    void look_after_unexpected_exit();
    void trouble_servers();
    void mend_servers();
    void change_units();
    void advance_to(CivilTime moment);
    void send_train();
    [[nodiscard]] bool disturbed() const;
    [[nodiscard]] bool calm() const { return spans_.empty(); }

    void look();
    void look_after_full_disk();
    void look_at_rows();
    void look_at_archives();
    void look_at_log();
    void look_at_copy();
    void look_at_timers();
    void look_at_alarms();
    void look_at_servers();
    void look_at_files();
    void look_at_heap();
    void wait_until_idle();
    [[nodiscard]] std::string busy() const;
    void complain(const std::string& what);
    void tell(const std::string& what);
    [[nodiscard]] CivilTime now() const { return world_->clock.computer_time(); }

    Chance chance_;
    GeneratedWeather weather_;
    DayEndHour end_;
    bool rolls_over_on_the_last_;
    CivilTime change_;  // of the day that is lived
    std::unique_ptr<World> world_;
    CivilTime world_began_;
    Instant world_instant_;
    CivilTime next_train_;

    std::vector<Action> actions_;
    std::vector<Span> spans_;  // in which no day can be expected to be closed
    bool silent_ = false;
    bool disk_full_ = false;
    CivilTime disk_full_from_{}, disk_full_until_{};
    bool left_with_room_ = false;                // by an error that the full disk had begun, once there was room again
    std::map<std::string, std::string> stood_;   // what the files that only grow held when the disk was full
    int torn_files_ = 0;                         // refused starts that a full disk or a power cut may still cause
    int sound_deciders_ = 0, early_trains_ = 0;  // of them, in the ten seconds before the change
    bool after_damage_ = false;                  // of the last train, which may take the next with it
    bool surely_early_ = false;                  // one of them cannot have been missed
    bool mail_train_ = false;                    // nor one in the ten seconds in which the last mail of the day was due
    std::function<void(StationReadings&)> sensor_fault_;

    std::size_t rows_before_ = 0, log_lines_before_ = 0;
    bool calm_yesterday_ = false, alarm_mailed_yesterday_ = false;
    CivilTime graphs_began_{};
    bool servers_troubled_ = false;  // on this day
    std::string last_almanac_;       // the archive that came last
    std::map<std::string, std::string> archives_;
    std::size_t heap_ = 0, heap_of_copy_ = 0;
    int days_ = 0;
    int looks_at_copy_ = 0;  // since its start
    std::vector<std::string> complaints_;
    std::vector<std::string> story_;
    std::size_t program_log_before_ = 0;  // its bytes when the day began
    std::map<std::string, int> tally_;
};

}  // namespace nimbry::test
