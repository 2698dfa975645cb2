#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace nimbry {

// The station's five groups as data: how long each is, where it lies in the train, and which digits hold which reading.
// Whoever reads a group and whoever writes one use these tables, and docs/formats/stream.md is tested against them.
//
// Digits are hexadecimal and counted from 1: byte k of a group holds digit 2k+1 (high half) and digit 2k+2 (low half).
// Digits 1 and 2 are the tag, the last two are the checksum. The digits of a number need not lie side by side.

/// Where one group lies in the train. `first` is the index of its tag byte.
struct GroupSpan {
    std::uint8_t tag;
    std::size_t first;
    std::size_t length;  ///< bytes, with tag and checksum
};

inline constexpr GroupSpan span_8f{0x8F, 0, 35};    ///< clock and humidity
inline constexpr GroupSpan span_9f{0x9F, 35, 34};   ///< temperature
inline constexpr GroupSpan span_af{0xAF, 69, 31};   ///< barometer
inline constexpr GroupSpan span_bf{0xBF, 100, 14};  ///< rain
inline constexpr GroupSpan span_cf{0xCF, 114, 27};  ///< wind; also sent alone between the trains

inline constexpr std::array train_spans{span_8f, span_9f, span_af, span_bf, span_cf};

inline constexpr std::size_t lone_length = 27;    ///< bytes of a lone wind group
inline constexpr std::size_t train_length = 141;  ///< bytes of a train

/// True when the spans follow each other without a gap and end at `total`.
template <std::size_t Count>
[[nodiscard]] constexpr bool back_to_back(const std::array<GroupSpan, Count>& spans, std::size_t total) {
    std::size_t next = 0;
    for (const GroupSpan& span : spans) {
        if (span.first != next) return false;
        next += span.length;
    }
    return next == total;
}
static_assert(back_to_back(train_spans, train_length), "the five groups fill the train with no gap");
static_assert(span_cf.length == lone_length, "a lone wind group is the last group of a train");

/// A number in a group: its digits, the most significant first, and what they count.
struct DigitField {
    std::string_view what;                 ///< the reading with its unit, as the format page calls it
    std::array<std::uint8_t, 4> places{};  ///< digit numbers; 0 after the last one
    /// 0: the first digit is taken as it stands. Otherwise only these bits of it belong to the number, and what they
    /// give is written in decimal.
    std::uint8_t first_mask = 0;

    [[nodiscard]] constexpr std::size_t count() const {
        std::size_t n = 0;
        while (n < places.size() && places[n] != 0) ++n;
        return n;
    }
};

/// One bit of a digit, or several of which any counts. Mask 1 is bit 0, mask 8 is bit 3.
struct FlagField {
    std::string_view what;
    std::uint8_t place;
    std::uint8_t mask;
};

/// A digit that reads "E" instead of a number when its sensor is not heard.
struct FaultMark {
    std::string_view what;
    std::uint8_t place;
};
inline constexpr char fault_mark_digit = 'E';

/// When one of the station's own records was made: it keeps no year.
struct MomentFields {
    DigitField hour, minute, day, month;  ///< month is one hexadecimal digit, 1 to 12
};

/// Group 8F: the station's clock and the two humidities.
namespace digits_8f {
inline constexpr DigitField second{"second", {3, 4}};
inline constexpr DigitField minute{"minute", {5, 6}};
inline constexpr DigitField hour{"hour", {7, 8}};
inline constexpr DigitField day{"day of the month", {9, 10}};
inline constexpr DigitField month{"month, hexadecimal", {12}};
inline constexpr DigitField indoor_humidity{"indoor humidity, percent", {17, 18}};
inline constexpr DigitField outdoor_humidity{"outdoor humidity, percent", {41, 42}};
inline constexpr DigitField humidity_high{"record high outdoor humidity, percent", {43, 44}};
inline constexpr MomentFields humidity_high_at{{"hour of the record high", {47, 48}},
                                               {"minute of the record high", {45, 46}},
                                               {"day of the record high", {49, 50}},
                                               {"month of the record high, hexadecimal", {52}}};
inline constexpr DigitField humidity_low{"record low outdoor humidity, percent", {54, 51}};
inline constexpr MomentFields humidity_low_at{{"hour of the record low", {58, 55}},
                                              {"minute of the record low", {56, 53}},
                                              {"day of the record low", {60, 57}},
                                              {"month of the record low, hexadecimal", {59}}};
inline constexpr FlagField outdoor_over_range{"outdoor humidity is over range: a reading of 97 means 100", 65, 1};
inline constexpr FlagField high_over_range{"record high is over range: 97 means 100", 66, 8};
inline constexpr FaultMark indoor_fault{"indoor humidity is not heard", 17};
inline constexpr FaultMark outdoor_fault{"outdoor humidity is not heard", 41};

/// Shows every field of the group to `visit`, in the order of the format page.
template <class Visitor>
constexpr Visitor each(Visitor visit) {
    visit(second);
    visit(minute);
    visit(hour);
    visit(day);
    visit(month);
    visit(indoor_humidity);
    visit(outdoor_humidity);
    visit(humidity_high);
    visit(humidity_high_at);
    visit(humidity_low);
    visit(humidity_low_at);
    visit(outdoor_over_range);
    visit(high_over_range);
    visit(indoor_fault);
    visit(outdoor_fault);
    return visit;
}
}  // namespace digits_8f

/// Group 9F: indoor and outdoor temperature, degrees C in tenths. Bit 3 of a temperature's first digit is its sign; the
/// sign is kept apart from the digits, so the station can send "-0.0".
namespace digits_9f {
inline constexpr DigitField indoor{"indoor temperature, tenths of a degree C", {6, 3, 4}, 7};
inline constexpr FlagField indoor_minus{"indoor temperature is negative", 6, 8};
inline constexpr DigitField outdoor{"outdoor temperature, tenths of a degree C", {36, 33, 34}, 7};
inline constexpr FlagField outdoor_minus{"outdoor temperature is negative", 36, 8};
inline constexpr DigitField outdoor_high{"record high outdoor temperature, tenths of a degree C", {37, 38, 35}, 7};
inline constexpr FlagField outdoor_high_minus{"record high outdoor temperature is negative", 37, 8};
inline constexpr MomentFields outdoor_high_at{{"hour of the record high", {41, 42}},
                                              {"minute of the record high", {39, 40}},
                                              {"day of the record high", {43, 44}},
                                              {"month of the record high, hexadecimal", {46}}};
inline constexpr DigitField outdoor_low{"record low outdoor temperature, tenths of a degree C", {47, 48, 45}, 7};
inline constexpr FlagField outdoor_low_minus{"record low outdoor temperature is negative", 47, 8};
inline constexpr MomentFields outdoor_low_at{{"hour of the record low", {51, 52}},
                                             {"minute of the record low", {49, 50}},
                                             {"day of the record low", {53, 54}},
                                             {"month of the record low, hexadecimal", {56}}};
inline constexpr FaultMark indoor_fault{"indoor temperature is not heard", 3};
inline constexpr FaultMark outdoor_fault{"outdoor temperature is not heard", 33};

/// Shows every field of the group to `visit`, in the order of the format page.
template <class Visitor>
constexpr Visitor each(Visitor visit) {
    visit(indoor);
    visit(indoor_minus);
    visit(outdoor);
    visit(outdoor_minus);
    visit(outdoor_high);
    visit(outdoor_high_minus);
    visit(outdoor_high_at);
    visit(outdoor_low);
    visit(outdoor_low_minus);
    visit(outdoor_low_at);
    visit(indoor_fault);
    visit(outdoor_fault);
    return visit;
}
}  // namespace digits_9f

/// Group AF: the barometer and the station's forecast.
namespace digits_af {
inline constexpr DigitField barometer{"barometer, whole hectopascals", {12, 9, 10, 7}};
inline constexpr DigitField trend{"trend: 1 rising, 2 steady, 4 falling", {13}};
inline constexpr DigitField outlook{"forecast: 1 sunny, 2 cloudy, 4 partly cloudy, 8 rain or snow", {14}};

/// Shows every field of the group to `visit`, in the order of the format page.
template <class Visitor>
constexpr Visitor each(Visitor visit) {
    visit(barometer);
    visit(trend);
    visit(outlook);
    return visit;
}
}  // namespace digits_af

/// Group BF: rain.
namespace digits_bf {
inline constexpr DigitField rate{"rain rate, whole mm per hour", {6, 3, 4}, 15};
inline constexpr DigitField total{"total rain counter, whole mm", {13, 14, 11, 12}};
inline constexpr MomentFields reset_at{{"hour of the counter's last reset", {17, 18}},
                                       {"minute of the counter's last reset", {15, 16}},
                                       {"day of the counter's last reset", {19, 20}},
                                       {"month of the counter's last reset, hexadecimal", {22}}};
inline constexpr FlagField fault{"rain sensor fault", 25, 8};

/// Shows every field of the group to `visit`, in the order of the format page.
template <class Visitor>
constexpr Visitor each(Visitor visit) {
    visit(rate);
    visit(total);
    visit(reset_at);
    visit(fault);
    return visit;
}
}  // namespace digits_bf

/// Group CF: wind, in a train and alone.
namespace digits_cf {
inline constexpr DigitField gust{"gust, tenths of m/s", {6, 3, 4}};
inline constexpr DigitField gust_direction{"gust direction, degrees", {7, 8, 5}};
inline constexpr DigitField average{"average speed, tenths of m/s", {12, 9, 10}};
inline constexpr DigitField average_direction{"average direction, degrees", {13, 14, 11}};
inline constexpr DigitField record_gust{"record gust, tenths of m/s", {18, 15, 16}};
inline constexpr DigitField record_direction{"direction of the record gust, degrees", {19, 20, 17}};
inline constexpr MomentFields record_at{{"hour of the record gust", {23, 24}},
                                        {"minute of the record gust", {21, 22}},
                                        {"day of the record gust", {25, 26}},
                                        {"month of the record gust, hexadecimal", {28}}};
inline constexpr DigitField chill{"wind chill by the station, whole degrees C", {33, 34}};
inline constexpr FlagField chill_minus{"wind chill is negative", 43, 2};
inline constexpr FlagField low_battery{"low battery", 47, 8};
inline constexpr FlagField fault{"wind sensor fault: either bit", 51, 12};

/// Shows every field of the group to `visit`, in the order of the format page.
template <class Visitor>
constexpr Visitor each(Visitor visit) {
    visit(gust);
    visit(gust_direction);
    visit(average);
    visit(average_direction);
    visit(record_gust);
    visit(record_direction);
    visit(record_at);
    visit(chill);
    visit(chill_minus);
    visit(low_battery);
    visit(fault);
    return visit;
}
}  // namespace digits_cf

/// Visits the fields of a group and tells whether they are sound: every digit lies between the tag and the checksum,
/// and no bit has two meanings. A fault mark is a value of a number's digit and takes no bits of its own.
class DigitUse {
public:
    constexpr explicit DigitUse(const GroupSpan& span) : last_payload_(2 * span.length - 2) {}

    constexpr void operator()(const DigitField& field) {
        for (std::size_t n = 0; n < field.count(); ++n) {
            const bool masked = n == 0 && field.first_mask != 0;
            take(field.places[n], masked ? field.first_mask : std::uint8_t{15});
        }
    }
    constexpr void operator()(const MomentFields& at) {
        (*this)(at.hour);
        (*this)(at.minute);
        (*this)(at.day);
        (*this)(at.month);
    }
    constexpr void operator()(const FlagField& flag) { take(flag.place, flag.mask); }
    constexpr void operator()(const FaultMark& mark) {
        if (used_[mark.place] == 0) sound_ = false;
    }

    [[nodiscard]] constexpr bool sound() const { return sound_; }

private:
    constexpr void take(std::uint8_t place, std::uint8_t bits) {
        if (place < 3 || place > last_payload_ || (used_[place] & bits) != 0) sound_ = false;
        used_[place] = static_cast<std::uint8_t>(used_[place] | bits);
    }

    std::size_t last_payload_;
    std::array<std::uint8_t, 256> used_{};
    bool sound_ = true;
};
static_assert(digits_8f::each(DigitUse(span_8f)).sound());
static_assert(digits_9f::each(DigitUse(span_9f)).sound());
static_assert(digits_af::each(DigitUse(span_af)).sound());
static_assert(digits_bf::each(DigitUse(span_bf)).sound());
static_assert(digits_cf::each(DigitUse(span_cf)).sound());

}  // namespace nimbry
