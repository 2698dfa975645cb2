#pragma once

#include <gtest/gtest.h>

#include <span>
#include <string>

#include "engine/station/checksum.h"
#include "engine/station/digits.h"
#include "engine/station/group_layout.h"

namespace nimbry::simulator {

/// A train or a lone wind group, taken apart by the engine's own tables.
class Decoded {
public:
    explicit Decoded(const Bytes& frame) {
        const std::span<const std::uint8_t> bytes(frame);
        if (frame.size() == lone_length) fill(wind, bytes.subspan<0, 27>());
        if (frame.size() != train_length) return;
        fill(clock, bytes.subspan<0, 35>());
        fill(temperature, bytes.subspan<35, 34>());
        fill(barometer, bytes.subspan<69, 31>());
        fill(rain, bytes.subspan<100, 14>());
        fill(wind, bytes.subspan<114, 27>());
    }

    /// "23:58:02 31/A": the clock with its day and hexadecimal month.
    [[nodiscard]] std::string clock_text() const {
        using namespace digits_8f;
        return field_text(clock, hour) + ":" + field_text(clock, minute) + ":" + field_text(clock, second) + " " +
               field_text(clock, day) + "/" + field_text(clock, month);
    }
    /// "-04.7".
    [[nodiscard]] std::string outdoor_text() const {
        using namespace digits_9f;
        return (flag_set(temperature, outdoor_minus) ? "-" : "+") + field_text(temperature, outdoor, 1);
    }
    [[nodiscard]] std::string indoor_text() const {
        using namespace digits_9f;
        return (flag_set(temperature, indoor_minus) ? "-" : "+") + field_text(temperature, indoor, 1);
    }

    DigitTable<70> clock;
    DigitTable<68> temperature;
    DigitTable<62> barometer;
    DigitTable<28> rain;
    DigitTable<54> wind;
};

/// How many of a frame's groups have a wrong checksum.
inline int wrong_checksums(const Bytes& frame) {
    int wrong = 0;
    for (const GroupSpan& span : train_spans) {
        const bool lone = frame.size() == lone_length;
        if (lone && span.tag != span_cf.tag) continue;
        const auto group = std::span(frame).subspan(lone ? 0 : span.first, span.length);
        wrong += checksum_holds(group) ? 0 : 1;
    }
    return wrong;
}

}  // namespace nimbry::simulator
