#include "engine/station/train_groups.h"

#include <algorithm>
#include <span>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/station/checksum.h"
#include "engine/station/digits.h"
#include "engine/station/group_layout.h"
#include "engine/station/groups.h"

namespace nimbry {

namespace {

using FrameBytes = std::span<const std::uint8_t>;

/// One group's bytes inside a train that has its full length.
template <const GroupSpan& Span>
auto group_of(const Bytes& train) {
    return FrameBytes(train).subspan<Span.first, Span.length>();
}

bool all_checksums_hold(const Bytes& train) {
    return std::all_of(train_spans.begin(), train_spans.end(), [&](const GroupSpan& span) {
        return checksum_holds(FrameBytes(train).subspan(span.first, span.length));
    });
}

void drop_frame(Copy& copy) {
    empty_line(copy);
    copy.state.comm.dworkingb.clear();
}

void refuse_frame(Copy& copy, FrameFault fault) {
    copy.state.comm.goodatab = false;
    refuse(copy.state.comm, fault);
    drop_frame(copy);
}

void split_wind(const DigitTable<54>& table, Readings& readings) {
    readings.rdatwindgd = field_text(table, digits_cf::gust_direction);
    readings.rdatwindad = field_text(table, digits_cf::average_direction);
    readings.rdatwindas = field_text(table, digits_cf::average, 1);
    readings.rdatwindgs = field_text(table, digits_cf::gust, 1);
}

}  // namespace

void refuse(CommState& comm, FrameFault fault) {
    comm.refusal = fault;
    switch (fault) {
        case FrameFault::train_overran:
        case FrameFault::wrong_length: ++comm.counters.wrong_length; break;
        case FrameFault::unknown_tag: ++comm.counters.unknown_tag; break;
        case FrameFault::before_first_train: ++comm.counters.before_first_train; break;
        case FrameFault::bad_checksum: ++comm.counters.bad_checksum; break;
        // Neither is a frame that failed a test of frames: the one never was a frame, the other is a good train.
        case FrameFault::buffer_overran:
        case FrameFault::impossible_date: break;
    }
}

std::string tag_of(const Bytes& frame) {
    std::string tag(2, '0');
    write_digits(std::span(frame).first(1), tag);
    return tag;
}

void empty_line(Copy& copy) {
    if (copy.state.settings.fromnet) return;
    copy.state.comm.counters.bytes_thrown_away += copy.ports.line.take().size();
}

std::optional<FrameFault> fill_train_tables(CommState& comm, const Bytes& train) {
    if (train.size() != train_length) return FrameFault::wrong_length;
    if (!all_checksums_hold(train)) return FrameFault::bad_checksum;
    fill(comm.Digits8F, group_of<span_8f>(train));
    fill(comm.Digits9F, group_of<span_9f>(train));
    fill(comm.DigitsAF, group_of<span_af>(train));
    fill(comm.DigitsBF, group_of<span_bf>(train));
    fill(comm.DigitsCF, group_of<span_cf>(train));
    return std::nullopt;
}

void docfgroup(Copy& copy) {
    tagged("docfgroup", [&] {
        CommState& comm = copy.state.comm;
        if (!copy.state.run.fullystarted) return;
        if (comm.RawBytes.size() != lone_length) return refuse_frame(copy, FrameFault::wrong_length);
        if (!checksum_holds(comm.RawBytes)) return refuse_frame(copy, FrameFault::bad_checksum);
        comm.goodatab = true;
        ++comm.counters.lone;
        fill(comm.DigitsCFLone, FrameBytes(comm.RawBytes).first<lone_length>());
        splitcf(copy.state);
        group_wg(copy);
    });
}

void domaingroup(Copy& copy) {
    tagged("domaingroup", [&] {
        CommState& comm = copy.state.comm;
        if (const auto fault = fill_train_tables(comm, comm.RawBytes)) return refuse_frame(copy, *fault);
        comm.goodatab = true;
        ++comm.counters.trains;
        splitdomain(copy.state);

        group_8f(copy);
        if (!copy.state.readings.HaveValidDate) {
            refuse(comm, FrameFault::impossible_date);
            return drop_frame(copy);
        }
        group_9f(copy);
        group_af(copy);
        group_bf(copy);
        group_cf(copy);
    });
}

void splitcf(WeatherState& state) {
    split_wind(state.comm.DigitsCFLone, state.readings);
}

void splitdomain(WeatherState& state) {
    const CommState& comm = state.comm;
    Readings& r = state.readings;

    r.rdattime = field_text(comm.Digits8F, digits_8f::hour) + ":" + field_text(comm.Digits8F, digits_8f::minute) + ":" +
                 field_text(comm.Digits8F, digits_8f::second);
    r.rdatday = numtext(Val(field_text(comm.Digits8F, digits_8f::day)));
    r.rdatmonth = month_name(field_digit(comm.Digits8F, digits_8f::month));
    r.rdathumidity = field_text(comm.Digits8F, digits_8f::outdoor_humidity);
    r.rdatinhumidity = field_text(comm.Digits8F, digits_8f::indoor_humidity);

    r.rdatotempsign = flag_set(comm.Digits9F, digits_9f::outdoor_minus) ? "-" : "+";
    r.rdatotemp = field_text(comm.Digits9F, digits_9f::outdoor, 1);
    r.rdatitempsign = flag_set(comm.Digits9F, digits_9f::indoor_minus) ? "-" : "+";
    r.rdatitemp = field_text(comm.Digits9F, digits_9f::indoor, 1);

    r.rdatbarometer = field_text(comm.DigitsAF, digits_af::barometer);
    r.rdatbarotrend = comm.DigitsAF(digits_af::trend.places[0]);
    r.rdatoutlook = static_cast<int>(Val(field_text(comm.DigitsAF, digits_af::outlook)));

    r.rdatpeakrain = field_text(comm.DigitsBF, digits_bf::rate);
    r.rdattotrain = field_text(comm.DigitsBF, digits_bf::total);

    split_wind(comm.DigitsCF, r);
}

}  // namespace nimbry
