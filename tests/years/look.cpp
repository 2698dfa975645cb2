// What must hold at the end of each day.

#include <malloc.h>

#include <algorithm>
#include <utility>

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

// Said again and again, it is told once.
void Years::tell(const std::string& what) {
    if (story_.empty() || !story_.back().ends_with(what)) story_.push_back(stamp_text(now()) + " " + what);
}

std::vector<std::string> Years::story() const {
    std::vector<std::string> story = story_;
    const std::string log = world_->files.contents("nbyprog.log");
    std::size_t from = program_log_before_ <= log.size() ? program_log_before_ : 0;
    while (from < log.size()) {
        const std::size_t end = std::min(log.find("\r\n", from), log.size());
        story.push_back("log: " + log.substr(from, end - from));
        from = end + 2;
    }
    return story;
}

void Years::look() {
    wait_until_idle();
    look_at_archives();
    look_at_rows();
    look_at_log();
    look_at_copy();
    look_at_timers();
    look_at_alarms();
    look_at_servers();
    look_at_files();
    look_at_heap();
    calm_yesterday_ = calm();
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

// Some minutes after a full disk the copy is back, and what stood in the files that only grow stands there, or in their
// archives. A row or a line that a power cut had torn need not.
void Years::look_after_full_disk() {
    const bool hears = !silent_ && world_->line.is_open() && now() - world_began_ > 2min;
    if (hears && !world_->state().run.fullystarted) complain("the copy is not back after a full disk");
    for (const auto& [name, stood] : std::exchange(stood_, {})) {
        const std::string whole = stood.substr(0, stood.rfind('\n') + 1);
        const auto names = world_->files.names();
        const bool kept = std::any_of(names.begin(), names.end(), [&, &here = name](const std::string& other) {
            return (other == here || is_archive(other)) && world_->files.contents(other).starts_with(whole);
        });
        if (!kept) complain("a full disk has cost lines of " + name);
    }
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
        if (live.empty() && name == last_almanac_ && !archived.empty()) last = archived.back();
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
    // Each train of the last ten seconds closes the day, unless the one before it has kept the copy busy until then.
    const bool twice = more == 2 && early_trains_ == 2;
    ++tally_[twice ? "days of two rows, with two trains in the last ten seconds" : "days of one row"];
    if (more != 1 && !twice) complain(std::to_string(more) + " rows for an undisturbed day");
    // A day that is closed in the first minute of the next one is told with that one's month.
    const std::string in_time = std::to_string(ended.day) + "," + month_name(ended.month) + ",";
    const std::string late = std::to_string(ended.day) + "," + month_name(parts_of(change_).month) + ",";
    const bool right = (early_trains_ > 0 && last.starts_with(in_time)) || (!surely_early_ && last.starts_with(late));
    if (!right) complain("the day of " + in_time + " has the row " + last.substr(0, 20));
    if (std::count(last.begin(), last.end(), ',') != 33) complain("a row of another shape: " + last);
    // The day is closed in the local folder too.
    if (!live.empty() && world_->files.contents("/local/nbextreme.log") != world_->files.contents("nbextreme.log"))
        complain("the local almanac is another one");
}

// Four lines an hour, here or in the archives, the hours without a copy or without room excepted.
void Years::look_at_log() {
    constexpr std::ptrdiff_t commas = 17;
    for (const std::string& line : rows_in(world_->files.contents("nimbry.dat")))
        if (std::count(line.begin(), line.end(), ',') > commas)
            complain("two lines of the weather log in one: " + line);
    const auto lines_in = [](const std::string& log) { return rows_in(log).size(); };
    std::size_t all = lines_in(world_->files.contents("nimbry.dat"));
    for (const auto& [name, bytes] : archives_)
        if (name.starts_with("log")) all += lines_in(bytes);
    const auto more = static_cast<std::ptrdiff_t>(all) - static_cast<std::ptrdiff_t>(log_lines_before_);
    log_lines_before_ = all;
    if (days_ == 0) return;
    // A minute in which a day is closed does not count, and a day here is some seconds longer or shorter.
    constexpr std::ptrdiff_t most = 97, of_a_calm_day = 94, of_any = 60;
    if (more > most || more < (calm() ? of_a_calm_day : of_any))
        complain("the weather log has got " + std::to_string(more) + " lines");
}

// What is archived stays as it is, and each month's log is there once the month is over.
void Years::look_at_archives() {
    for (const std::string& name : world_->files.names()) {
        if (!is_archive(name)) continue;
        const std::string bytes = world_->files.contents(name);
        const auto [known, is_new] = archives_.try_emplace(name, bytes);
        if (is_new) ++tally_["archives"];
        if (is_new && name.starts_with("al")) last_almanac_ = name;
        if (known->second != bytes) complain("the archive " + name + " has changed");
    }
    for (const auto& [name, bytes] : archives_)
        if (!world_->files.exists(name)) complain("the archive " + name + " is gone");
    const int day = parts_of(now()).day;
    const DateParts month = parts_of(now() - std::chrono::days{day});
    const std::string name = month_name(month.month);
    if (days_ > 1 && day == 1 && !archives_.contains("log" + archive_tail(month)))
        complain("there is no archive log" + archive_tail(month));
    if (days_ <= 3 || disturbed()) return;
    // The almanac of a month whose end was disturbed is archived with the next row. A December that is archived in
    // January has that year's name, so that the next December waits until January for another.
    const std::string almanac = "al" + archive_tail(month);
    const bool taken = last_almanac_ != almanac && archives_.contains(almanac);
    if (taken && day < 3) ++tally_["archives that wait for a name"];
    if (day <= 3 && !(taken && day < 3) && !last_almanac_.starts_with("al" + name))
        complain("there is no almanac of " + name);
    if (day != 1) return;
    ++tally_["summaries"];
    // A month that ended yesterday has given way to the new one.
    const std::string of = world_->files.exists("nbextreme.log") ? "the current month" : name;
    if (world_->files.contents("NBYSummary.txt").find("summary for " + of) == std::string::npos)
        complain("there is no summary for " + of);
}

void Years::look_at_copy() {
    const WeatherState& state = world_->state();
    if (state.run.HaveError) complain("an error stands");
    if (state.run.DuplicateError) complain("a record routine has gone on after an error");
    if (!state.run.fullystarted) complain("the copy has not started fully");
    // Some minutes have no sound train.
    constexpr int a_day = 1440, of_two_days = 1400;
    const int samples = state.graphs.rows.windsamples();
    const bool full = calm() && calm_yesterday_ && now() - graphs_began_ > 48h;
    if (samples > a_day || (full && samples < of_two_days))
        complain("the graphs have " + std::to_string(samples) + " samples");
}

// Those that run for good do; of the others each stands for something that is under way.
void Years::look_at_timers() {
    const WeatherState& state = world_->state();
    const auto runs = [&](TimerId timer) { return world_->copy().timers.running(timer); };
    for (const TimerId timer : {TimerId::TimComFail, TimerId::TimerFTP, TimerId::TimUI, TimerId::timWU, TimerId::TimLog,
                                TimerId::GrFailTimer})
        if (!runs(timer)) complain("the timer " + std::string(Timers::name(timer)) + " is lost");
    struct Cause {
        TimerId timer;
        bool stands;
    };
    const auto& boxes = state.panel.Text2;
    const bool alarm =
        state.panel.TxtRainToday.back == colours::alarm_back ||
        std::any_of(boxes.begin(), boxes.end(), [](const Box& reading) { return reading.back == colours::alarm_back; });
    for (const Cause& cause :
         {Cause{TimerId::Timer2, state.panel.Lamp.fore == colours::red},
          Cause{TimerId::TimDisplay, state.status_message.open}, Cause{TimerId::TimAlarm, alarm},
          Cause{TimerId::TimFTPTOT, static_cast<bool>(state.publish.uloadftpbusy)}, Cause{TimerId::Timer1, false}})
        if (runs(cause.timer) != cause.stands)
            complain("the timer " + std::string(Timers::name(cause.timer)) + (cause.stands ? " is lost" : " runs on"));
}

// An alarm of the day was heard and mailed, once in some hours; without one there was neither.
void Years::look_at_alarms() {
    const auto& mails = world_->transfers.mails;
    const auto& played = world_->sounds.played;
    const auto mailed = std::count_if(mails.begin(), mails.end(),
                                      [](const Mail& mail) { return mail.body.find("Now ") != std::string::npos; });
    const bool heard = std::find(played.begin(), played.end(), "Nimbry.WAV") != played.end();
    if (heard) ++tally_["days with alarms"];
    tally_["alarm mails"] += static_cast<int>(mailed);
    constexpr int most = 15;  // two trains a minute, and 210 of them between two mails
    if (calm() && mailed > most) complain(std::to_string(mailed) + " mails of alarms");
    if (calm() && mailed > 0 && !heard) complain("an alarm was mailed and not heard");
    if (calm() && !servers_troubled_ && heard && mailed == 0 && !alarm_mailed_yesterday_)
        complain("an alarm was heard and not mailed");
    alarm_mailed_yesterday_ = mailed > 0;
    servers_troubled_ = false;
}

void Years::look_at_servers() {
    const ScriptedTransfers& servers = world_->transfers;
    if (servers.ftp.sent.empty() || servers.ftp.sent.back().at < world_->clock.monotonic() - 25min)
        complain("nothing is uploaded");
    if (servers.mails.empty() && mail_train_) complain("no mail has gone");
    if (servers.asked.empty() || servers.asked.back().at < world_->clock.monotonic() - 25min)
        complain("the weather services are not told");
    const auto& groups = world_->datasock.sent;
    if (groups.empty() || groups.back().host != "192.168.1.20") complain("the clients are sent nothing");
}

void Years::look_at_files() {
    struct Kept {
        const char* name;
        std::chrono::minutes at_most;
    };
    for (const Kept& file : {Kept{"nimbry.dat", 32min}, Kept{"nimbrTDay.log", 40min}, Kept{"NimbData.txt", 4min},
                             Kept{"NimbData.csv", 4min}, Kept{"nimbryUI.txt", 4min}, Kept{"APRS.txt", 4min},
                             Kept{"nbyxauto.html", 25min}, Kept{"wxtext.txt", 4min}, Kept{"/local/nimbry.dat", 32min},
                             Kept{"/local/weather.htm", 25min}, Kept{"/local/weather1.htm", 25min}}) {
        const auto written = world_->files.modified(file.name);
        if (!written || *written < now() - file.at_most) complain(std::string(file.name) + " is not kept");
    }
    const std::size_t today = world_->lines("nimbrTDay.log").size();
    if (today != 33) complain("nimbrTDay.log has " + std::to_string(today) + " lines");
    const std::size_t yesterday = world_->lines("nimbrYDay.log").size();
    if (world_->files.exists("nimbrYDay.log") && yesterday != 32)
        complain("nimbrYDay.log has " + std::to_string(yesterday) + " lines");
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
