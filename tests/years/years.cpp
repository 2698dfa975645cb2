#include "tests/years/years.h"

#include <algorithm>
#include <array>

#include "engine/setup/units_dialog.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

constexpr seconds half_a_day = 12h, quiet_hours = 2h;
constexpr const char* local_folder = "/local";

std::string settings(DayEndHour end, bool rolls_over_on_the_last) {
    const std::string day_end = end == DayEndHour::midnight ? "tmidnight=True\r\ntnineam=False\r\n"
                                : end == DayEndHour::ten    ? "AddOneHour=True\r\n"
                                                            : "";
    const std::string rolls_over = rolls_over_on_the_last ? "alRoll=905\r\n" : "alRoll=5\r\n";
    // A mail is due in the quiet hours of each kind of day.
    return "[Main]\r\nHasRun=True\r\nfwrtlog=True\r\nLogMin=15\r\nbcastnet=True\r\nnumofentries=1\r\n"
           "iplist(1)=192.168.1.20\r\nLatitude=51.5\r\nLongitude=-0.1\r\n" +
           day_end + rolls_over +
           "[Alarms]\r\nfAOuTempHi=True\r\nfAOuTempLo=True\r\nfAOuHumHi=True\r\nfABarHi=True\r\nfABarLo=True\r\n"
           "AWindHi=7\r\nfAWindHi=True\r\nfARainHi=True\r\nfARainAm=True\r\nfADewLo=True\r\nfADewCu=True\r\n"
           "fASound=True\r\nfAMail=True\r\n"
           "[FTP]\r\nFTPen=True\r\nFTPServer=ftp.example.org\r\nFTPRemoteFile=weather.htm\r\nFTPUser=me\r\n"
           "FTPPass=secret\r\nFTPMins=10\r\nUploadCount=3\r\nAdditional_Files=extra.txt\r\nEMailEn=True\r\n"
           "MailServer=mail.example.org\r\nMailTo=me@example.org\r\nMailMyAddr=me@example.org\r\nnumofentries=4\r\n"
           "MailList(1)=*CHANGE*\r\nMailList(2)=11:30\r\nMailList(3)=20:30\r\nMailList(4)=21:30\r\n"
           "WUactive=True\r\nWUuser=me\r\nWUpass=secret\r\nHWactive=True\r\nHWuser=me\r\nHWpass=secret\r\n"
           "APRSactive=True\r\nAPRSuser=N0CALL\r\nLocalSave=True\r\nLocalPath=/local\r\nMailReport=True\r\n";
}

void furnish(MemoryFiles& files, const std::string& settings) {
    files.add_folder(local_folder);
    files.put("Nimbry.ini", settings);
    files.put("myhtml.html", "<p>~~WEBOUTTEMP~~ ~~WEBBAR~~</p>\r\n");
    files.put("myhtml1.html", "<p>~~WEBRAINTOD~~</p>\r\n");
    files.put("mail_template.txt", "It is ~~WEBOUTTEMP~~.\r\n");
    files.put("mail_co_template.txt", "The day had ~~WEBOUTTEMP~~.\r\n");
    files.put("mail_alm_template.txt", "Now ~~WEBOUTTEMP~~.\r\n");
    files.put("wxtexttemplate.txt", "It is ~~WEBOUTTEMP~~.\r\n");
    files.put("nimbrysummarytemplate.html", "<p>~~SUBRAINDYS~~</p>\r\n");
    files.put("extra.txt", "extra\r\n");
}

/// Everything that the disk of a world holds stands on this one, and for good: it may be the same, which the system has
/// written back by then.
void move_in(const World& from, MemoryFiles& to) {
    to.add_folder(local_folder);
    for (const std::string& name : from.files.names()) to.put(name, from.files.contents(name));
}

/// A train as a bad line delivers it.
void damage(Bytes& train, Chance& chance) {
    const auto at = [&] { return static_cast<std::size_t>(chance.below(static_cast<int>(train.size()))); };
    switch (chance.below(3)) {
        case 0: train[at()] ^= static_cast<std::uint8_t>(1U << chance.below(8)); break;
        case 1: train.erase(train.begin() + static_cast<std::ptrdiff_t>(at())); break;
        default:
            train.insert(train.begin() + static_cast<std::ptrdiff_t>(at()), static_cast<std::uint8_t>(at()));
            break;
    }
}

using SensorFault = void (*)(StationReadings&);
constexpr std::array<SensorFault, 6> sensor_faults{
    [](StationReadings& r) { r.temperature.outdoor_fault = true; },
    [](StationReadings& r) { r.humidity.outdoor_fault = true; },
    [](StationReadings& r) { r.temperature.indoor_fault = true; },
    [](StationReadings& r) { r.humidity.indoor_fault = true; },
    [](StationReadings& r) { r.rain.fault = true; },
    [](StationReadings& r) { r.wind.fault_bits = 4; },
};

}  // namespace

Years::Years(std::chrono::local_days begin, DayEndHour end, std::uint32_t seed)
    : chance_(seed),
      weather_(seed),
      end_(end),
      rolls_over_on_the_last_(chance_.one_in(2)),
      change_(begin + std::chrono::hours{static_cast<int>(end)}) {
    ++tally_[rolls_over_on_the_last_ ? "months that end on their last day" : "months that end on the next one's first"];
    // The first day is lived from its second half on: there is no changeover to be missed.
    start_world(change_ + 5min);
    plan_day();
}

Years::~Years() = default;

void Years::start_world(CivilTime at) {
    auto next = std::make_unique<World>(at);
    if (world_ != nullptr) {
        move_in(*world_, next->files);
    } else {
        furnish(next->files, settings(end_, rolls_over_on_the_last_));
    }
    world_ = std::move(next);
    world_began_ = at;
    looks_at_copy_ = 0;
    world_instant_ = world_->clock.monotonic();
    if (disk_full_) world_->files.refuse_changes(FileResult::disk_full);
    mend_servers();
    for (const char* host : {"cwop.aprs.net", "rotate.aprs2.net"}) {
        world_->streams.answer(host, 23, [](const ScriptedPeerPtr& server) {
            server->say("# a server\r\n");
            server->on_heard([](ScriptedPeer& peer, const std::string&) { peer.say("# logresp N0CALL verified\r\n"); });
        });
    }
    world_->begin_start();
    next_train_ = at + 3s + chance_.within(10s);
}

void Years::advance_to(CivilTime moment) {
    world_->pauses.pause_until(world_instant_ + (moment - world_began_));
}

// One thing that lasts, at some time of the day that is not quiet. Returns its end.
CivilTime Years::plan(seconds latest, seconds longest, const char* what, std::function<void()> begin,
                      std::function<void()> end) {
    const CivilTime from = change_ - half_a_day + chance_.within(latest);
    const CivilTime to = std::min(from + 1min + chance_.within(longest), change_ + half_a_day - quiet_hours);
    ++tally_[what];
    actions_.push_back({from, [this, what, begin = std::move(begin)] {
                            tell(std::string("begin: ") + what);
                            begin();
                        }});
    actions_.push_back({to, [this, what, end = std::move(end)] {
                            tell(std::string("end: ") + what);
                            end();
                        }});
    return to;
}

void Years::plan_stop() {
    const bool close_to_the_change = chance_.one_in(5);
    const CivilTime at = close_to_the_change ? change_ - 3min + chance_.within(6min)
                                             : change_ - half_a_day + chance_.within(22h - 30min);
    const auto how = static_cast<Stop>(chance_.below(4));
    if (how == Stop::power_cut) {
        actions_.push_back({at - 40s, [this] { move_in(*world_, world_->files); }});
        spans_.push_back({at - 1min, at});
    }
    actions_.push_back({at, [this, how] { restart(how); }});
}

void Years::plan_day() {
    constexpr seconds latest = 21h, longest = 5h;
    actions_.clear();
    spans_.clear();
    sound_deciders_ = early_trains_ = 0;
    surely_early_ = mail_train_ = false;
    if (chance_.one_in(2)) plan_stop();
    if (chance_.one_in(6)) plan_stop();
    if (chance_.one_in(4)) {
        const SensorFault fault = sensor_faults[static_cast<std::size_t>(chance_.below(sensor_faults.size()))];
        plan(
            latest, longest, "failed sensors", [this, fault] { sensor_fault_ = fault; },
            [this] { sensor_fault_ = nullptr; });
    }
    if (chance_.one_in(3))
        plan(
            latest, longest, "troubles with servers", [this] { trouble_servers(); }, [this] { mend_servers(); });
    if (chance_.one_in(8)) {
        const auto from = std::make_shared<CivilTime>();
        plan(
            latest, 2h, "silences", [this, from] { silent_ = true, *from = now(); },
            [this, from] {
                silent_ = false, spans_.push_back({*from, now() + 1min});
            });
    }
    if (chance_.one_in(10)) {
        const CivilTime room = plan(
            latest, 3h, "full disks", [this] { fill_disk(); }, [this] { make_room(); });
        actions_.push_back({room + 3min, [this] { look_after_full_disk(); }});
    }
    if (chance_.one_in(12)) {
        const auto from = std::make_shared<CivilTime>();
        plan(
            latest, 10min, "pulled adapters", [this, from] { world_->unplug(), *from = now(); },
            [this, from] {
                for (const std::string& device : world_->line.found) world_->line.plug_in(device);
                for (int port = 0; port < 4; ++port) world_->line.plug_in("/dev/ttyS" + std::to_string(port));
                spans_.push_back({*from, now() + 5min});
            });
    }
    if (chance_.one_in(10))
        actions_.push_back({change_ - half_a_day + chance_.within(latest), [this] { change_units(); }});
    std::stable_sort(actions_.begin(), actions_.end(), [](const Action& a, const Action& b) { return a.at < b.at; });
}

void Years::fill_disk() {
    disk_full_ = true;
    disk_full_from_ = now();
    left_with_room_ = false;
    ++torn_files_;
    for (const char* name : {"nbextreme.log", "nimbry.dat"}) stood_[name] = world_->files.contents(name);
    world_->files.refuse_changes(FileResult::disk_full);
}

void Years::make_room() {
    disk_full_ = false;
    disk_full_until_ = now();
    spans_.push_back({disk_full_from_, now() + 1min});
    world_->files.allow();
}

void Years::trouble_servers() {
    servers_troubled_ = true;
    ScriptedTransfers& servers = world_->transfers;
    switch (chance_.below(5)) {
        case 0: servers.ftp.connect = {.end = {.status = 5002}, .after = 30s}; break;
        case 1: servers.ftp.connect.after = std::nullopt; break;
        case 2: servers.ftp.put = {.end = {.fault = "553 Could not create file."}}; break;
        case 3: servers.ftp.put.after = std::nullopt; break;
        default: servers.online = false; break;
    }
    servers.mail_steps.assign(static_cast<std::size_t>(chance_.below(5)), {.fault = "550 No such user", .after = 5s});
    servers.web_steps.assign(static_cast<std::size_t>(chance_.below(20)), {.status = 500});
}

void Years::mend_servers() {
    ScriptedTransfers& servers = world_->transfers;
    servers.ftp.connect = {.end = {.status = 3000}};
    servers.ftp.put = {};
    servers.online = true;
    servers.mail_steps.clear();
    servers.web_steps.clear();
}

void Years::change_units() {
    ++tally_["new units"];
    graphs_began_ = now();  // the samples in the old ones go
    const bool us = chance_.one_in(2);
    world_->act([this, us] {
        UnitsDialog dialog = units_dialog(world_->state().settings);
        dialog.optTempC = dialog.optBarmb = dialog.optRainmm = dialog.optWindkph = !us;
        dialog.optTempF = dialog.optBarinhg = dialog.optRainin = dialog.optWindmph = us;
        dialog.optBarhpa = dialog.optWindms = dialog.optWindknots = false;
        accept_units(world_->copy(), dialog);
    });
}

void Years::restart(Stop how) {
    static constexpr std::array<const char*, 4> names{"exits by the menu", "exits with the session", "kills",
                                                      "power cuts"};
    ++tally_[names[static_cast<std::size_t>(how)]];
    tell(names[static_cast<std::size_t>(how)]);
    const CivilTime from = now();
    if (how == Stop::menu || how == Stop::session_end) {
        world_->act([this, how] { how == Stop::menu ? world_->engine.menu_exit() : world_->engine.window_close(); });
        for (int second = 0; second < 600 && !world_->engine.gone(); ++second) world_->run_for(1s);
        if (!world_->engine.gone()) complain("an exit has not ended in ten minutes");
    } else if (how == Stop::power_cut) {
        ++torn_files_;
        stood_.clear();
        world_->files.power_cut(chance_.number());
    }
    const seconds away = chance_.one_in(2) ? 5s + chance_.within(1min) : 1min + chance_.within(30min);
    start_world(now() + away);
    spans_.push_back({from, now() + 30s});
}

// The copy may leave by itself while the disk is full, and once more for an error that has begun then; and where what a
// full disk or a power cut has left of a day's file cannot be read: once, as the file is put aside. Its supervisor
// starts it anew.
void Years::look_after_unexpected_exit() {
    if (!world_->engine.gone()) return;
    const std::string why = world_->state().run.ExitWord;
    constexpr seconds an_exit_takes = 2min;
    const bool full = why.starts_with("Unrecoverable error 61 ");
    const bool begun_while_full = full && now() < disk_full_until_ + an_exit_takes && !left_with_room_;
    // One that breaks off, or two of which the lines that are left break off within a number.
    const bool torn = why.find("problem with your extremes") != std::string::npos ||
                      why.starts_with("Unrecoverable error 13 encountered in ResYesterday");
    tell("the copy leaves by itself: " + why);
    if (disk_full_ ? full || torn : begun_while_full) {
        ++tally_["exits on a full disk"];
        left_with_room_ = !disk_full_;
    } else if (torn && torn_files_ > 0) {
        --torn_files_;
        ++tally_["exits for a torn file"];
    } else {
        complain("the copy has left by itself: " + why);
    }
    const CivilTime from = now();
    start_world(from + 30s);
    spans_.push_back({from, now() + 30s});
}

void Years::send_train() {
    using half_minutes = std::chrono::duration<int, std::ratio<30>>;
    const CivilTime moment = now();
    // The station's own pace around the changeover and in the minute of the mail, which goes in its first ten seconds;
    // one when the graphs take their sample, and one that ends this, is enough for the rest of a minute.
    const auto within = [&](CivilTime from, CivilTime to) { return moment >= from && moment <= to; };
    const CivilTime mail = change_ + half_a_day - 30min;
    const bool close = within(change_ - 10min, change_ + 3min) || within(mail - 2min, mail + 1min);
    // No station keeps ten seconds exactly, so that two trains may come in the change's last ten.
    next_train_ = close ? moment + 9s + chance_.within(3s) : std::chrono::floor<half_minutes>(moment) + 35s;
    if (silent_) return;
    StationReadings readings = weather_.at(moment);
    if (sensor_fault_) sensor_fault_(readings);
    Bytes train = write_train(readings);
    const bool damaged = chance_.one_in(100);
    if (within(change_ - 30s, change_ + 90s) || within(mail - 15s, mail + 15s))
        tell(damaged ? "a damaged train" : "a train");
    if (damaged) {
        damage(train, chance_);
        ++tally_["damaged trains"];
    } else if (moment >= change_ - 10s && moment < change_ + 1min) {
        ++sound_deciders_;
        if (moment < change_) ++early_trains_;
        if (moment < change_ && !after_damage_) surely_early_ = true;
    } else if (moment >= mail && moment < mail + 10s && !after_damage_) {
        mail_train_ = true;
    }
    after_damage_ = damaged;
    world_->send(train);
    ++tally_["trains"];
    if (chance_.one_in(20))
        world_->pauses.after(4s, [this, readings] {
            world_->line.arrive(write_lone_wind(readings));
            world_->engine.line_readable();
        });
}

void Years::live_a_day() {
    const CivilTime end = change_ + half_a_day;
    story_.clear();
    program_log_before_ = world_->files.contents("nbyprog.log").size();
    for (std::size_t next = 0;;) {
        const bool acts = next < actions_.size() && actions_[next].at <= next_train_;
        const CivilTime moment = acts ? actions_[next].at : next_train_;
        if (moment >= end) break;
        advance_to(moment);
        look_after_unexpected_exit();
        if (acts) {
            actions_[next++].act();
        } else if (now() >= next_train_) {
            send_train();
        }
    }
    advance_to(end);
    look_after_unexpected_exit();
    look();
    change_ += 24h;
    plan_day();
}

}  // namespace nimbry::test
