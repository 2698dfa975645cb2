#include "engine/station/train_writer.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "engine/derived/dates.h"
#include "engine/station/checksum.h"
#include "engine/station/group_layout.h"

namespace nimbry {

namespace {

/// Writes into the bytes of one group by digit number.
class GroupWriter {
public:
    explicit GroupWriter(std::span<std::uint8_t> group) : group_(group) {}

    /// Overwrites the bits of a digit that `mask` names.
    void bits(int place, unsigned value, unsigned mask = 15) {
        const auto index = static_cast<std::size_t>(place - 1);
        const unsigned shift = index % 2 == 0 ? 4 : 0;
        std::uint8_t& byte = group_[index / 2];
        byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | ((value & mask) << shift));
    }

    /// Writes a number in decimal digits; the first one may go beyond 9 where its mask says that it is a number of its
    /// own.
    void number(const DigitField& field, int value) {
        const std::size_t count = field.count();
        const int first_most = field.first_mask != 0 ? field.first_mask : 9;
        int unit = 1;
        for (std::size_t n = 1; n < count; ++n) unit *= 10;
        int rest = std::clamp(value, 0, first_most * unit + unit - 1);
        for (std::size_t n = 0; n < count; ++n, unit /= 10) {
            const unsigned mask = n == 0 && field.first_mask != 0 ? field.first_mask : 15U;
            bits(field.places[n], static_cast<unsigned>(rest / unit), mask);
            rest %= unit;
        }
    }

    /// Writes a field of one hexadecimal digit.
    void digit(const DigitField& field, int value) {
        bits(field.places[0], static_cast<unsigned>(std::clamp(value, 0, 15)));
    }

    void flag(const FlagField& field, bool on) { bits(field.place, on ? field.mask : 0U, field.mask); }

    void fault(const FaultMark& mark, bool on) {
        if (on) bits(mark.place, 0xE);
    }

    void moment(const MomentFields& fields, const RecordMoment& at) {
        number(fields.hour, at.hour);
        number(fields.minute, at.minute);
        number(fields.day, at.day);
        digit(fields.month, at.month);
    }

    /// Writes the magnitude and the sign of a temperature; `scale` is 10 for tenths.
    void signed_number(const DigitField& field, const FlagField& minus, double value, int scale) {
        number(field, static_cast<int>(std::lround(std::abs(value) * scale)));
        flag(minus, std::signbit(value));
    }

private:
    std::span<std::uint8_t> group_;
};

int tenths(double value) {
    return static_cast<int>(std::lround(value * 10));
}

void write_8f(GroupWriter out, const StationReadings& r) {
    using namespace digits_8f;
    out.number(second, r.clock.second);
    out.number(minute, r.clock.minute);
    out.number(hour, r.clock.hour);
    out.number(day, r.clock.day);
    out.digit(month, r.clock.month);
    const auto& h = r.humidity;
    out.number(indoor_humidity, h.indoor);
    out.number(outdoor_humidity, h.outdoor);
    out.fault(indoor_fault, h.indoor_fault);
    out.fault(outdoor_fault, h.outdoor_fault);
    out.flag(outdoor_over_range, h.outdoor_over_range);
    out.number(humidity_high, h.high);
    out.moment(humidity_high_at, h.high_at);
    out.flag(high_over_range, h.high_over_range);
    out.number(humidity_low, h.low);
    out.moment(humidity_low_at, h.low_at);
}

void write_9f(GroupWriter out, const StationReadings& r) {
    using namespace digits_9f;
    const auto& t = r.temperature;
    out.signed_number(indoor, indoor_minus, t.indoor, 10);
    out.signed_number(outdoor, outdoor_minus, t.outdoor, 10);
    out.fault(indoor_fault, t.indoor_fault);
    out.fault(outdoor_fault, t.outdoor_fault);
    out.signed_number(outdoor_high, outdoor_high_minus, t.high, 10);
    out.moment(outdoor_high_at, t.high_at);
    out.signed_number(outdoor_low, outdoor_low_minus, t.low, 10);
    out.moment(outdoor_low_at, t.low_at);
}

void write_af(GroupWriter out, const StationReadings& r) {
    using namespace digits_af;
    out.number(barometer, r.barometer.hpa);
    out.digit(trend, r.barometer.trend);
    out.digit(outlook, r.barometer.outlook);
}

void write_bf(GroupWriter out, const StationReadings& r) {
    using namespace digits_bf;
    out.number(rate, r.rain.rate_mm);
    out.number(total, r.rain.total_mm);
    out.moment(reset_at, r.rain.reset_at);
    out.flag(fault, r.rain.fault);
}

void write_cf(GroupWriter out, const StationReadings& r) {
    using namespace digits_cf;
    const auto& w = r.wind;
    out.number(gust, tenths(w.gust_ms));
    out.number(gust_direction, w.gust_direction);
    out.number(average, tenths(w.average_ms));
    out.number(average_direction, w.average_direction);
    out.number(record_gust, tenths(w.record_ms));
    out.number(record_direction, w.record_direction);
    out.moment(record_at, w.record_at);
    out.signed_number(chill, chill_minus, w.chill_c, 1);
    out.flag(low_battery, w.low_battery);
    out.bits(fault.place, static_cast<unsigned>(w.fault_bits), fault.mask);
}

/// The group `tag` inside a train or a lone wind group; empty when it is not there.
std::span<std::uint8_t> group_in(Bytes& frame, std::uint8_t tag) {
    if (frame.size() == lone_length && tag == span_cf.tag) return frame;
    if (frame.size() != train_length) return {};
    for (const GroupSpan& span : train_spans)
        if (span.tag == tag) return std::span(frame).subspan(span.first, span.length);
    return {};
}

}  // namespace

StationReadings::Moment station_moment(CivilTime time) {
    const DateParts parts = parts_of(time);
    return {parts.second, parts.minute, parts.hour, parts.day, parts.month};
}

Bytes write_train(const StationReadings& readings) {
    Bytes train(train_length, 0);
    for (const GroupSpan& span : train_spans) train[span.first] = span.tag;
    write_8f(GroupWriter(group_in(train, span_8f.tag)), readings);
    write_9f(GroupWriter(group_in(train, span_9f.tag)), readings);
    write_af(GroupWriter(group_in(train, span_af.tag)), readings);
    write_bf(GroupWriter(group_in(train, span_bf.tag)), readings);
    write_cf(GroupWriter(group_in(train, span_cf.tag)), readings);
    seal(train);
    return train;
}

Bytes write_lone_wind(const StationReadings& readings) {
    Bytes group(lone_length, 0);
    group[0] = span_cf.tag;
    write_cf(GroupWriter(group), readings);
    seal(group);
    return group;
}

void set_digit(Bytes& frame, std::uint8_t tag, int place, int value) {
    const auto group = group_in(frame, tag);
    if (place < 1 || static_cast<std::size_t>(place) > 2 * group.size()) return;
    GroupWriter(group).bits(place, static_cast<unsigned>(value));
}

void seal(Bytes& frame) {
    for (const GroupSpan& span : train_spans) {
        const auto group = group_in(frame, span.tag);
        if (!group.empty()) group.back() = checksum_of(group);
    }
}

void spoil_checksum(Bytes& frame, std::uint8_t tag) {
    const auto group = group_in(frame, tag);
    if (!group.empty()) group.back() = static_cast<std::uint8_t>(checksum_of(group) ^ 0x55);
}

}  // namespace nimbry
