#include "engine/records/day_files.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {

namespace {

// Lines 19 and 20, which stand in the middle of the extremes and differ between the two files.
struct RainLines {
    std::string raintoday;
    std::string line20;
};

class LineWriter {
public:
    void text(std::string_view line) { text_.append(line).append(line_end); }
    void number(float value) { text(numtext(value)); }
    void record(float value, const std::string& time) {
        number(value);
        text(time);
    }
    [[nodiscard]] std::string take() { return std::move(text_); }

private:
    std::string text_;
};

// No reading comes near; what a damaged line spells beyond it could not be shown in every unit.
constexpr float furthest = 1e9F;

class LineReader {
public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    std::string text() {
        if (rest_.empty()) throw RunTimeError{ErrorNumber::past_end};
        return trimmed(take_line(rest_, LineEnds::newline));
    }
    float number() {
        const std::optional<float> value = single();
        if (!value || std::abs(*value) > furthest) throw RunTimeError{ErrorNumber::type_mismatch};
        return *value;
    }
    // A line that gives 0 instead of an error; within what an int can hold.
    int whole_or_zero() { return static_cast<int>(std::clamp(number_or_zero(), -furthest, furthest)); }
    float number_or_zero() { return single().value_or(0.0F); }
    void record(float& value, std::string& time) {
        value = number();
        time = text();
    }

private:
    // Nothing for a line without a number, or with one that no single holds.
    std::optional<float> single() {
        const std::string line = text();
        if (!IsNumeric(line)) return std::nullopt;
        const double value = Val(repcomma(line));
        if (std::abs(value) > double{std::numeric_limits<float>::max()}) return std::nullopt;
        return static_cast<float>(value);
    }
    std::string_view rest_;
};

void write_extremes(LineWriter& out, CivilTime stamp, const DayExtremes& day, const RainLines& rain) {
    out.text(stamp_text(stamp));
    out.record(day.maxtemp, day.maxtemptime);
    out.record(day.mintemp, day.mintemptime);
    out.record(day.maxhum, day.maxhumtime);
    out.record(day.minhum, day.minhumtime);
    out.record(day.maxrain, day.maxraintime);
    out.record(day.maxbar, day.maxbartime);
    out.record(day.minbar, day.minbartime);
    out.record(day.maxwind, day.maxwindtime);
    out.text(day.maxwindir);
    out.text(rain.raintoday);
    out.text(rain.line20);
    out.record(day.maxdew, day.maxdewtime);
    out.record(day.mindew, day.mindewtime);
    out.record(day.maxintemp, day.maxintemptime);
    out.record(day.minintemp, day.minintemptime);
    out.record(day.minwc, day.minwctime);
    out.record(day.maxhi, day.maxhitime);
}

// Reads what write_extremes wrote; `line20` is asked to read its own line.
template <class Line20>
void read_extremes(LineReader& in, DayExtremes& day, float& raintoday, Line20 line20) {
    in.text();  // the stamp; day_file_stamp() judges it
    in.record(day.maxtemp, day.maxtemptime);
    in.record(day.mintemp, day.mintemptime);
    in.record(day.maxhum, day.maxhumtime);
    in.record(day.minhum, day.minhumtime);
    in.record(day.maxrain, day.maxraintime);
    in.record(day.maxbar, day.maxbartime);
    in.record(day.minbar, day.minbartime);
    in.record(day.maxwind, day.maxwindtime);
    day.maxwindir = in.text();
    raintoday = in.number();
    line20(in);
    in.record(day.maxdew, day.maxdewtime);
    in.record(day.mindew, day.mindewtime);
    in.record(day.maxintemp, day.maxintemptime);
    in.record(day.minintemp, day.minintemptime);
    in.record(day.minwc, day.minwctime);
    in.record(day.maxhi, day.maxhitime);
}

}  // namespace

std::string today_text(CivilTime stamp, const TodayRecord& record) {
    LineWriter out;
    write_extremes(out, stamp, record.extremes, {numtext(record.raintoday), numtext(record.DaySinceRain)});
    out.number(record.LastRain);
    return out.take();
}

std::string yesterday_text(CivilTime stamp, const YesterdayRecord& record) {
    LineWriter out;
    write_extremes(out, stamp, record.extremes, {numtext(record.raintoday), numtext(record.rainatchange)});
    return out.take();
}

CivilTime day_file_stamp(std::string_view text) {
    const auto stamp = parse_stamp(LineReader(text).text());
    if (!stamp) throw RunTimeError{ErrorNumber::type_mismatch};
    return *stamp;
}

TodayRecord read_today(std::string_view text) {
    TodayRecord record;
    LineReader in(text);
    read_extremes(in, record.extremes, record.raintoday,
                  [&](LineReader& line) { record.DaySinceRain = line.whole_or_zero(); });
    record.LastRain = in.number_or_zero();
    return record;
}

YesterdayRecord read_yesterday(std::string_view text) {
    YesterdayRecord record;
    LineReader in(text);
    read_extremes(in, record.extremes, record.raintoday,
                  [&](LineReader& line) { record.rainatchange = line.number(); });
    return record;
}

}  // namespace nimbry
