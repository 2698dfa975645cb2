#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace nimbry {

/// The ten series of samples. Each is fed by the reading box of its number, `Text2(s)`.
namespace series {
inline constexpr int outdoor_temperature = 0, dew_point = 1, outdoor_humidity = 2, average_wind = 3, barometer = 4,
                     rain_rate = 5, gust = 6, direction = 7, indoor_temperature = 8, indoor_humidity = 9;
inline constexpr int count = 10;
}  // namespace series

/// The highest row that a series holds: a day of one sample a minute. A sample past it scrolls the day down by one.
inline constexpr int pmm1 = 1440;

/// The stamp of a row whose time is not known.
inline constexpr std::string_view unknown_time = "??";

/// One row of the store: a sample of every series and the time they were taken at. It keeps its own eleven lines of the
/// file: they are formatted anew only after a change, and go along when the day scrolls.
class GraphRow {
public:
    static constexpr std::size_t stamp_width = 20;

    [[nodiscard]] float gdata(int s) const { return values_[static_cast<std::size_t>(s)]; }
    void set_gdata(int s, float value);

    /// The stamp without its padding: "05 Oct 2026 14:00:33", "??", or empty.
    [[nodiscard]] std::string gtime() const;
    /// Keeps the first 20 characters, padded with blanks.
    void set_gtime(std::string_view stamp);

    /// The stamp's line and then the ten numbers', each number between blanks, CR LF after every line.
    [[nodiscard]] const std::string& lines() const;

private:
    std::array<float, series::count> values_{};
    std::string stamp_ = std::string(stamp_width, ' ');
    mutable std::string lines_;  // empty: to be formatted
};

/// A number as a line of the file: a blank or "-", its digits, a blank.
///   number_line(12.5F) = " 12.5 \r\n"   number_line(-3) = "-3 \r\n"
[[nodiscard]] std::string number_line(float value);

/// The day of samples. Rows 1 to `windsamples` are samples, the oldest first; row 0 is the row of counts: in every
/// series the number of the highest row in use. Every series has a value in every row in use.
class GraphRows {
public:
    [[nodiscard]] float gdata(int s, int r) const { return row(r).gdata(s); }
    [[nodiscard]] std::string gtime(int r) const { return row(r).gtime(); }
    [[nodiscard]] int windsamples() const { return windsamples_; }
    [[nodiscard]] const GraphRow& row(int r) const { return rows_[place(r)]; }
    /// For filling a row; `r` is 0 to pmm1. What stands in row 0 is overwritten by set_windsamples().
    [[nodiscard]] GraphRow& row(int r) { return rows_[place(r)]; }

    /// Sets the number of rows in use, kept within 0 to pmm1, and the row of counts.
    void set_windsamples(int count);

    /// Adds a row behind the last one. In a full store every row moves down by one and the oldest is lost.
    void append(const GraphRow& sample);

    /// Lets `minutes` (0 or more) of unknown time pass over a store that is not empty: the last row, with the stamp
    /// "??", is repeated behind it. Where the gap does not fit in behind the samples, the rows move down by `minutes`,
    /// and everything above them is filled.
    void age(int minutes);

    /// Empties every stamp, every value and every count.
    void clear();

private:
    void move_down(int by);
    /// Rows 1 to pmm1 are a ring: a full store moves down by a row each minute, and no row is copied for that.
    [[nodiscard]] std::size_t place(int r) const {
        if (r == 0) return 0;
        const int at = r + first_;
        return static_cast<std::size_t>(at > pmm1 ? at - pmm1 : at);
    }

    std::vector<GraphRow> rows_ = std::vector<GraphRow>(pmm1 + 1);
    int first_ = 0;  // how far row 1 has gone round, 0 to pmm1 - 1
    int windsamples_ = 0;
};

}  // namespace nimbry
