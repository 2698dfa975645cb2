#include "tests/world/stream_player.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/displays/box_list.h"

namespace nimbry::test {

namespace {

using namespace std::chrono_literals;
using Span = MonotonicClock::duration;

constexpr std::string_view words(FrameFault fault) {
    switch (fault) {
        case FrameFault::train_overran: return "the train overran";
        case FrameFault::buffer_overran: return "too many bytes";
        case FrameFault::unknown_tag: return "a foreign tag";
        case FrameFault::before_first_train: return "before the first train";
        case FrameFault::wrong_length: return "the length does not fit the tag";
        case FrameFault::bad_checksum: return "a wrong checksum";
        case FrameFault::impossible_date: return "an impossible date";
    }
    return "";
}

/// The readings whose changes are told, with what they are.
struct Told {
    std::string_view box, what;
};
constexpr Told told[] = {{"Text2(0)", "temperature"},
                         {"Text2(2)", "humidity"},
                         {"Text2(8)", "indoor temperature"},
                         {"Text2(9)", "indoor humidity"},
                         {"Text2(4)", "barometer"},
                         {"TxtBarTrend", "trend"},
                         {"TxtForecast", "forecast"},
                         {"Text2(1)", "dew point"},
                         {"TxtHeatInd", "heat index"},
                         {"Text2(5)", "rain rate"},
                         {"Text2(6)", "gust"},
                         {"Text2(7)", "gust direction"},
                         {"Text2(3)", "average wind"},
                         {"TxtWinDir", "wind direction"},
                         {"TxtWindChill", "wind chill"},
                         {"TxtWindHiG", "record gust"},
                         {"TxtRainTot", "rain counter"},
                         {"TxtRainToday", "rain of the day"},
                         {"TxtRainLH", "rain of the last hour"},
                         {"txtWetBulb", "wet bulb"},
                         {"txtCloudBase", "cloud base"}};

std::string utf8(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '\xB0' ? std::string("\xC2\xB0") : std::string(1, c);
    return result;
}

std::string wind_words(const Readings& r) {
    return "gust " + r.rdatwindgs + " m/s from " + r.rdatwindgd + ", average " + r.rdatwindas + " m/s from " +
           r.rdatwindad;
}

std::string train_words(const Readings& r) {
    return r.rdattime + " " + r.rdatday + " " + r.rdatmonth + ", outside " + r.rdatotempsign + r.rdatotemp + " C " +
           r.rdathumidity + " %, inside " + r.rdatitempsign + r.rdatitemp + " C " + r.rdatinhumidity + " %, " +
           r.rdatbarometer + " hPa trend " + r.rdatbarotrend + " forecast " + std::to_string(r.rdatoutlook) +
           ", rain " + r.rdatpeakrain + " mm/h of " + r.rdattotrain + " mm, " + wind_words(r);
}

/// Looks at a copy after each of its events and writes down what has changed.
class Listener {
public:
    explicit Listener(World& world) : world_(world), begin_(world.clock.monotonic()) { look(); }

    /// Looks, and writes what is new.
    void look() {
        WeatherState& state = world_.state();
        CommState& comm = state.comm;
        std::vector<std::string> news;
        if (comm.counters.trains != counted_.trains) news.push_back("train: " + train_words(state.readings));
        if (comm.counters.lone != counted_.lone) news.push_back("lone wind: " + wind_words(state.readings));
        counted_ = comm.counters;
        if (comm.refusal) news.push_back("refused: " + std::string(words(*comm.refusal)));
        comm.refusal.reset();
        for (const Told& reading : told) {
            const std::string text = find_box(state, reading.box)->text;
            if (changed(reading.box, text)) news.push_back(std::string(reading.what) + " " + utf8(trimmed_left(text)));
        }
        look_at_alarms(news);
        if (changed("battery", state.panel.lblLowBattery.visible ? "low" : "")) {
            news.push_back(state.panel.lblLowBattery.visible ? "the battery is low" : "the battery is not low");
        }
        const std::string status = state.panel.lblStatus.text + (state.panel.Lamp.fore == 0 ? ", dark" : ", lit");
        if (changed("status", status)) news.push_back("status: " + status);
        for (; notices_ < world_.notices.balloons.size(); ++notices_) {
            const Balloon& balloon = world_.notices.balloons[notices_].what;
            news.push_back("notice: " + balloon.title + ": " + one_line(balloon.text));
        }
        for (; windows_ < world_.notices.windows.size(); ++windows_)
            news.push_back("window: " + world_.notices.windows[windows_]);
        const std::vector<std::string> midnights = world_.lines("rnslm.dat");
        for (; midnight_lines_ < midnights.size(); ++midnight_lines_)
            news.push_back("rnslm.dat: " + midnights[midnight_lines_]);
        const std::vector<std::string> log = world_.log();
        for (; log_lines_ < log.size(); ++log_lines_) news.push_back("log: " + log[log_lines_]);
        for (const std::string& line : news) text_ += time_text() + line + "\n";
    }

    [[nodiscard]] std::string finish() {
        const CommState& comm = world_.state().comm;
        text_ += "in all: " + std::to_string(comm.counters.trains) + " trains, " + std::to_string(comm.counters.lone) +
                 " lone, " + std::to_string(comm.counters.bytes_thrown_away) + " bytes thrown away" +
                 (comm.dworkingb ? ", a frame half read\n" : "\n");
        return std::move(text_);
    }

private:
    static std::string trimmed_left(const std::string& text) {
        return text.substr(std::min(text.find_first_not_of(' '), text.size()));
    }
    static std::string one_line(std::string text) {
        for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n"))
            text.replace(at, 2, " / ");
        return text;
    }

    void look_at_alarms(std::vector<std::string>& news) {
        WeatherState& state = world_.state();
        for (const Told& reading : told) {
            const bool alarm = find_box(state, reading.box)->back == colours::alarm_back;
            if (changed("colour of " + std::string(reading.box), alarm ? "alarm" : ""))
                news.push_back(std::string(reading.what) + (alarm ? " in alarm" : " no longer in alarm"));
        }
        const std::string& sentence = state.alarms.AlarmReason;
        if (changed("alarm", sentence)) news.push_back("alarm: " + (sentence.empty() ? "none" : sentence));
        if (changed("alarm mail", state.alarms.AlarmMailSent ? "sent" : "") && state.alarms.AlarmMailSent)
            news.push_back("an alarm mail");
        const std::vector<std::string>& played = world_.sounds.played;
        if (sounds_ != played.size())
            news.push_back("sound: " + played.back() + ", times " + std::to_string(played.size() - sounds_));
        sounds_ = played.size();
    }

    bool changed(std::string_view what, const std::string& text) {
        std::string& last = last_[std::string(what)];
        if (last == text) return false;
        last = text;
        return true;
    }

    /// Seconds with three decimals, "   1.060  ".
    [[nodiscard]] std::string time_text() const {
        const auto ms = std::chrono::floor<Milliseconds>(world_.clock.monotonic() - begin_).count();
        const std::string text = std::to_string(ms / 1000) + "." + padded(static_cast<int>(ms % 1000), 3);
        return std::string(8 - std::min<std::size_t>(text.size(), 8), ' ') + text + "  ";
    }

    World& world_;
    Instant begin_;
    CommState::Counters counted_;
    std::map<std::string, std::string> last_;
    std::size_t sounds_ = 0;
    std::size_t notices_ = 0;
    std::size_t windows_ = 0;
    std::size_t midnight_lines_ = 0;
    std::size_t log_lines_ = 0;
    std::string text_;
};

/// Scripts the stream's pieces; returns when the last byte comes.
Span script(World& world, const StreamFile& stream, const std::function<void()>& after_each) {
    const Instant begin = world.clock.monotonic();
    Span end = stream.lasts;
    const auto arrive = [&](Span at, Bytes bytes) {
        end = std::max(end, at);
        world.pauses.at(begin + at, [&world, &after_each, bytes = std::move(bytes)] {
            world.line.arrive(bytes);
            world.engine.line_readable();
            after_each();
        });
    };
    for (const StreamPiece& piece : stream.pieces) {
        if (piece.fault) {
            end = std::max(end, piece.at);
            world.pauses.at(begin + piece.at, [&world, &after_each, fault = *piece.fault] {
                if (fault == LineFault::gone) world.line.close();
                world.engine.line_fault(fault);
                after_each();
            });
        } else if (stream.pace == Span::zero()) {
            arrive(piece.at, piece.bytes);
        } else {
            Span at = piece.at;
            for (const std::uint8_t byte : piece.bytes) {
                arrive(at, {byte});
                at += stream.pace;
            }
        }
    }
    return end;
}

}  // namespace

void play(World& world, const StreamFile& stream, const std::function<void()>& after_each) {
    world.pauses.set_wake_source([&] { return world.engine.wake_at(); },
                                 [&] {
                                     world.engine.wake();
                                     after_each();
                                 });
    const Span end = script(world, stream, after_each) + 1s;
    // What conversations do in their own time shows at the next tenth of a second.
    for (const Instant begin = world.clock.monotonic(); world.clock.monotonic() < begin + end;) {
        world.run_for(100ms);
        after_each();
    }
    world.pauses.set_wake_source([&] { return world.engine.wake_at(); }, [&] { world.engine.wake(); });
}

std::string events_of(const StreamFile& stream, const std::string& more_settings) {
    World world(stream.clock - 2s);
    // A notice names the port: the same on each system.
    world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nSerialPort1=/dev/ttyS0\r\n" + more_settings);
    world.start();
    Listener listener(world);
    play(world, stream, [&] { listener.look(); });
    return listener.finish();
}

}  // namespace nimbry::test
