#include "programs/nimbry-station/scenario.h"

#include <algorithm>
#include <charconv>

#include "engine/derived/number_text.h"
#include "engine/station/group_layout.h"
#include "programs/nimbry-station/scenario_line.h"
#include "programs/nimbry-station/times.h"

namespace nimbry::simulator {
namespace {

using std::chrono::seconds;

constexpr seconds full_day = std::chrono::hours(24);

seconds duration(Words& words, std::string_view what) {
    const std::string_view word = words.take(what);
    const auto length = parse_duration(word);
    if (!length) throw NotUnderstood("there is no duration " + quoted(word) + "; one is written 90s, 10m or 1h30m");
    return *length;
}

int read_whole_number(std::string_view word, int low, int high, std::string_view what) {
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || value < low || value > high) {
        throw NotUnderstood(std::string(what) + " is " + numtext(low) + " to " + numtext(high) + ", not " +
                            quoted(word));
    }
    return value;
}

Reading reading(std::string_view word) {
    const auto found = reading_named(word);
    if (!found) throw NotUnderstood("there is no reading " + quoted(word));
    return *found;
}

Fault fault(std::string_view word) {
    const auto found = fault_named(word);
    if (!found) throw NotUnderstood("there is no fault " + quoted(word));
    return *found;
}

const GroupSpan& group(std::string_view word) {
    unsigned tag = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), tag, 16);
    const auto found = std::ranges::find(train_spans, tag, &GroupSpan::tag);
    if (error != std::errc() || end != word.data() + word.size() || found == train_spans.end()) {
        throw NotUnderstood("there is no group " + quoted(word) + "; they are 8F, 9F, AF, BF and CF");
    }
    return *found;
}

Target target(Words& words) {
    if (words.take_if("lone")) return {Target::Kind::lone_group, 0xCF};
    return {Target::Kind::train_group, group(words.take("the group")).tag};
}

/// "[in GROUP]".
Target optional_target(Words& words) {
    return words.take_if("in") ? target(words) : Target{};
}

/// Reads one line's action into steps. An action that is bounded by "for DURATION" becomes two.
class LineReader {
public:
    LineReader(Words& words, seconds at, std::vector<Step>& steps) : words_(words), at_(at), steps_(steps) {}

    void read() {
        const std::string_view verb = words_.take("what happens");
        if (verb == "set") {
            hold();
        } else if (verb == "release") {
            release();
        } else if (verb == "fault") {
            const Fault named = fault(words_.take("the fault"));
            bounded(BeginFault{named}, EndFault{named});
        } else if (verb == "mend") {
            const std::string_view word = words_.take("the fault");
            add(word == "all" ? EndFault{} : EndFault{fault(word)});
        } else if (verb == "flip") {
            const int count = damage_count();
            add(FlipBits{count, optional_target(words_)});
        } else if (verb == "drop") {
            const int count = damage_count();
            add(DropBytes{count, optional_target(words_)});
        } else if (verb == "stray") {
            stray();
        } else if (verb == "digit") {
            digit();
        } else if (verb == "silence") {
            bounded(Silence{true}, Silence{false});
        } else if (verb == "speak") {
            add(Silence{false});
        } else if (verb == "reset") {
            reset();
        } else if (verb == "unplug") {
            bounded(Plug{false}, Plug{true});
        } else if (verb == "replug") {
            add(Plug{true});
        } else if (verb == "clock") {
            turn_clock();
        } else {
            throw NotUnderstood("nothing is called " + quoted(verb));
        }
        if (!words_.empty()) throw NotUnderstood("nothing may follow here: " + quoted(words_.peek()));
    }

private:
    void add(Action action) { steps_.push_back({at_, std::move(action)}); }

    /// The action now, and with "for DURATION" the one that ends it.
    void bounded(Action begin, Action end) {
        add(std::move(begin));
        if (words_.take_if("for")) steps_.push_back({at_ + duration(words_, "the duration"), std::move(end)});
    }

    void hold() {
        const Reading named = reading(words_.take("the reading"));
        const ReadingInfo& info = reading_infos[static_cast<std::size_t>(named)];
        const std::string_view word = words_.take("the value");
        const auto value = parse_number(word);
        if (!value || *value < info.low || *value > info.high) {
            throw NotUnderstood(std::string(info.name) + " is " + numtext(info.low) + " to " + numtext(info.high) +
                                " (" + std::string(info.unit) + "), not " + quoted(word));
        }
        const seconds over = words_.take_if("over") ? duration(words_, "the duration") : seconds(0);
        bounded(HoldReading{named, *value, over}, ReleaseReading{named});
    }

    void release() {
        const std::string_view word = words_.take("the reading");
        if (word == "digits") {
            add(ReleaseDigits{});
        } else {
            add(word == "all" ? ReleaseReading{} : ReleaseReading{reading(word)});
        }
    }

    int damage_count() { return read_whole_number(words_.take("the count"), 1, 1000, "the count"); }

    void stray() {
        StrayBytes stray;
        if (words_.take_if("hex")) {
            do {
                stray.bytes.push_back(hex_byte(words_.take("the byte")));
            } while (!words_.empty() && words_.peek() != "before");
        } else {
            stray.random_count = damage_count();
        }
        if (words_.take_if("before")) stray.before = target(words_);
        add(std::move(stray));
    }

    static std::uint8_t hex_byte(std::string_view word) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
        if (error != std::errc() || word.size() != 2 || end != word.data() + 2) {
            throw NotUnderstood("a byte is two hexadecimal digits, not " + quoted(word));
        }
        return static_cast<std::uint8_t>(value);
    }

    void digit() {
        const GroupSpan& span = group(words_.take("the group"));
        const int last = static_cast<int>(2 * span.length) - 2;
        const int place = read_whole_number(words_.take("the digit's number"), 3, last, "the digit's number");
        const std::string_view word = words_.take("the digit");
        unsigned value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
        if (error != std::errc() || word.size() != 1) {
            throw NotUnderstood("a digit is 0 to 9 or A to F, not " + quoted(word));
        }
        add(SetDigit{span.tag, place, static_cast<int>(value)});
    }

    void reset() {
        const std::string_view word = words_.take("what is reset");
        if (word == "rain") {
            add(ResetRain{});
        } else if (word == "records") {
            add(ResetRecords{});
        } else {
            throw NotUnderstood("rain or records can be reset, not " + quoted(word));
        }
    }

    void turn_clock() {
        const std::string_view word = words_.take("how far");
        const bool back = word.starts_with('-');
        const auto by = parse_duration(word.substr(word.empty() ? 0 : 1));
        if ((!back && !word.starts_with('+')) || !by) {
            throw NotUnderstood("the clock is turned by +1h or -30m, not by " + quoted(word));
        }
        add(TurnClock{back ? -*by : *by});
    }

    Words& words_;
    seconds at_;
    std::vector<Step>& steps_;
};

/// "+1h30m", "08:15[:30]" or "2026-10-31 23:58[:00]", as seconds after the start.
seconds when(Words& words, CivilTime start) {
    const std::string_view word = words.take("the time");
    if (word.starts_with('+')) {
        const auto offset = parse_duration(word.substr(1));
        if (!offset)
            throw NotUnderstood("there is no duration " + quoted(word) + "; one is written +90s, +10m or +1h30m");
        return *offset;
    }
    if (const auto time_of_day = parse_time_of_day(word)) {
        const seconds into_day = start - std::chrono::floor<std::chrono::days>(start);
        const seconds ahead = *time_of_day - into_day;
        return ahead < seconds(0) ? ahead + full_day : ahead;  // already past: tomorrow
    }
    const std::string whole = std::string(word) + " " + std::string(words.peek());
    const auto moment = parse_moment(whole);
    if (!moment) {
        throw NotUnderstood("there is no time " + quoted(word) +
                            "; one is written +10m, 08:15:00 or 2026-10-31 08:15:00");
    }
    (void)words.take("the time");
    if (*moment < start) throw NotUnderstood("the time " + quoted(whole) + " lies before the station's start");
    return *moment - start;
}

}  // namespace

ScenarioReading read_scenario(std::string_view text, CivilTime start) {
    ScenarioReading result;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t length = std::min(text.find('\n'), text.size());
        Words words(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        if (words.empty()) continue;
        try {
            if (!words.take_if("at")) throw NotUnderstood("a line begins with 'at', not " + quoted(words.peek()));
            const seconds at = when(words, start);
            LineReader(words, at, result.steps).read();
        } catch (const NotUnderstood& why) {
            result.steps.clear();
            result.error = ScenarioError{number, why.what()};
            return result;
        }
    }
    std::ranges::stable_sort(result.steps, {}, &Step::at);
    return result;
}

}  // namespace nimbry::simulator
