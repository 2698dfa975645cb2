// What must hold at the end of each day.

#include <malloc.h>

#include <algorithm>

#include "engine/derived/dates.h"
#include "tests/years/years.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

bool is_row(const std::string& line) {
    return !line.empty() && line.front() >= '0' && line.front() <= '9';
}

/// The almanac's rows, without its head.
std::vector<std::string> rows_in(const std::string& almanac) {
    std::vector<std::string> rows;
    for (std::size_t begin = 0; begin < almanac.size();) {
        const std::size_t end = std::min(almanac.find("\r\n", begin), almanac.size());
        std::string line = almanac.substr(begin, end - begin);
        if (is_row(line)) rows.push_back(std::move(line));
        begin = end + 2;
    }
    return rows;
}

/// "Oct26.csv": what a month's archives end in.
std::string archive_tail(const DateParts& date) {
    return month_name(date.month) + std::to_string(date.year % 100) + ".csv";
}

/// "alOct26.csv" and "logOct26.csv", not the copies of the viewers.
bool is_archive(const std::string& name) {
    return name.ends_with(".csv") && (name.starts_with("al") || name.starts_with("log")) &&
           name.find("temp") == std::string::npos;
}

}  // namespace

void Years::complain(const std::string& what) {
    complaints_.push_back(stamp_text(now()) + " " + what);
}

void Years::look() {
    wait_until_idle();
    look_at_archives();
    look_at_rows();
    look_at_copy();
    look_at_files();
    look_at_heap();
    ++days_;
}

// Which flags stand and what is waited for, in words; empty when nothing is under way.
std::string Years::busy() const {
    const WeatherState& s = world_->engine.state();
    struct Named {
        const char* name;
        const BusyFlag& flag;
    };
    std::string found;
    for (const Named& one : {Named{"GrafBusy", s.graphs.GrafBusy}, Named{"uloadftpbusy", s.publish.uloadftpbusy},
                             Named{"emailbusy", s.publish.emailbusy}, Named{"wubusy", s.publish.wubusy},
                             Named{"changebusy", s.comm.changebusy}, Named{"dworkingb", s.comm.dworkingb},
                             Named{"htmlGenBusy", s.reports.htmlGenBusy}, Named{"mailGenBusy", s.reports.mailGenBusy},
                             Named{"genuibusy", s.reports.genuibusy}, Named{"LocalSaveBusy", s.reports.LocalSaveBusy},
                             Named{"savingrafs", s.run.savingrafs}, Named{"tdaysaving", s.run.tdaysaving},
                             Named{"HandlingIPData", s.network.HandlingIPData}})
        if (one.flag) found += std::string(" ") + one.name;
    for (const std::string& what : s.run.waits) found += " (waits for " + what + ")";
    return found;
}

// A train that has lost a byte keeps the line waiting for it until the next one comes, so the trains go on.
void Years::wait_until_idle() {
    for (int second = 0; second < 300; ++second) {
        if (busy().empty()) return;
        if (now() >= next_train_) send_train();
        world_->run_for(1s);
    }
    complain("busy for five minutes:" + busy());
}

// The changeover cannot be counted on where something stood in its way, from the last save before it to the minute in
// which it is caught up.
bool Years::disturbed() const {
    return sound_deciders_ == 0 || std::any_of(spans_.begin(), spans_.end(), [&](const Span& span) {
               return span.from <= change_ + 2min && span.to >= change_ - 15min;
           });
}

// One row a day. Near a stop, a full disk or a silence the day may go without, or be closed again after the start.
void Years::look_at_rows() {
    const DateParts ended = parts_of(change_ - 1s);
    const std::vector<std::string> live = rows_in(world_->files.contents("nbextreme.log"));
    std::size_t all = live.size();
    std::string last = live.empty() ? "" : live.back();
    for (const auto& [name, bytes] : archives_) {
        if (!name.starts_with("al")) continue;
        const std::vector<std::string> archived = rows_in(bytes);
        all += archived.size();
        // A day that ends at nine on the first belongs to the month before.
        if (live.empty() && name == "al" + archive_tail(parts_of(change_ - 24h)) && !archived.empty())
            last = archived.back();
    }
    const auto more = static_cast<std::ptrdiff_t>(all) - static_cast<std::ptrdiff_t>(rows_before_);
    const bool first = days_ == 0;
    rows_before_ = all;
    if (first) return;
    if (more < 0) complain(std::to_string(-more) + " rows of the almanac are lost");
    if (disturbed()) {
        ++tally_["disturbed days with " + std::to_string(more) + " rows"];
        return;
    }
    ++tally_["days of one row"];
    if (more != 1) complain(std::to_string(more) + " rows for an undisturbed day");
    const std::string date = std::to_string(ended.day) + "," + month_name(ended.month) + ",";
    if (!last.starts_with(date)) complain("the day of " + date + " has the row " + last.substr(0, 20));
    if (std::count(last.begin(), last.end(), ',') != 33) complain("a row of another shape: " + last);
}

// What is archived stays as it is, and each month's log is there once the month is over.
void Years::look_at_archives() {
    for (const std::string& name : world_->files.names()) {
        if (!is_archive(name)) continue;
        const std::string bytes = world_->files.contents(name);
        const auto [known, is_new] = archives_.try_emplace(name, bytes);
        if (is_new) ++tally_["archives"];
        if (known->second != bytes) complain("the archive " + name + " has changed");
    }
    for (const auto& [name, bytes] : archives_)
        if (!world_->files.exists(name)) complain("the archive " + name + " is gone");
    if (days_ > 1 && parts_of(now()).day == 1) {
        const DateParts month = parts_of(now() - 24h);
        const std::string tail = archive_tail(month);
        if (!archives_.contains("log" + tail)) complain("there is no archive log" + tail);
        if (!disturbed() && end_ == DayEndHour::midnight && !archives_.contains("al" + tail))
            complain("there is no archive al" + tail);
    }
}

void Years::look_at_copy() {
    const WeatherState& state = world_->state();
    if (state.run.HaveError) complain("an error stands");
    if (state.run.DuplicateError) complain("a record routine has gone on after an error");
    if (!state.run.fullystarted) complain("the copy has not started fully");
    for (const TimerId timer :
         {TimerId::TimComFail, TimerId::TimerFTP, TimerId::TimUI, TimerId::timWU, TimerId::TimLog})
        if (!world_->copy().timers.running(timer))
            complain("the timer " + std::string(Timers::name(timer)) + " is lost");
    const ScriptedTransfers& servers = world_->transfers;
    if (servers.ftp.sent.empty() || servers.ftp.sent.back().at < world_->clock.monotonic() - 25min)
        complain("nothing is uploaded");
    if (servers.mails.empty()) complain("no mail has gone");
    if (servers.asked.empty() || servers.asked.back().at < world_->clock.monotonic() - 25min)
        complain("the weather services are not told");
}

void Years::look_at_files() {
    struct Kept {
        const char* name;
        std::chrono::minutes at_most;
    };
    for (const Kept& file : {Kept{"nimbry.dat", 32min}, Kept{"nimbrTDay.log", 40min}, Kept{"NimbData.txt", 4min},
                             Kept{"NimbData.csv", 4min}, Kept{"nimbryUI.txt", 4min}, Kept{"APRS.txt", 4min},
                             Kept{"nbyxauto.html", 25min}, Kept{"wxtext.txt", 4min}}) {
        const auto written = world_->files.modified(file.name);
        if (!written || *written < now() - file.at_most) complain(std::string(file.name) + " is not kept");
    }
    const std::size_t lines = world_->lines("nimbrTDay.log").size();
    if (lines != 33) complain("nimbrTDay.log has " + std::to_string(lines) + " lines");
}

// Away with what the world has recorded of the day; what is left is the copy's.
void Years::look_at_heap() {
    World& world = *world_;
    world.journal.clear();
    world.files.forget_calls();
    world.notices.balloons = {};
    world.notices.boxes = {};
    world.notices.windows = {};
    world.notices.lines = {};
    world.sounds.played = {};
    world.desktop.batches = {};
    world.datasock.sent = {};
    world.datasock.binds = {};
    world.streams.connects = {};
    world.streams.listens = {};
    world.transfers.ftp.sent = {};
    world.transfers.ftp.logins = {};
    world.transfers.mails = {};
    world.transfers.asked = {};
    world.transfers.reachability_asked = {};
    std::size_t files = 0;
    constexpr std::size_t copies_of_the_disk = 2;  // as it is, and as it was synced
    for (const std::string& name : world.files.names()) files += copies_of_the_disk * world.files.contents(name).size();
    for (const auto& [name, bytes] : archives_) files += bytes.size();
    const std::size_t used = mallinfo2().uordblks;
    constexpr std::size_t spare = std::size_t{1} << 20;
    constexpr std::size_t most_of_any_copy = std::size_t{12} << 20;
    heap_ = used - std::min(used, files);
    // After a whole day everything that is kept for a day is full, in this copy as in any other.
    const std::size_t most = heap_of_copy_ + spare;
    if (++looks_at_copy_ == 2) heap_of_copy_ = heap_;
    if ((looks_at_copy_ > 2 && heap_ > most) || heap_ > most_of_any_copy)
        complain("the heap has grown from " + std::to_string(heap_of_copy_) + " to " + std::to_string(heap_) +
                 " bytes");
}

}  // namespace nimbry::test
