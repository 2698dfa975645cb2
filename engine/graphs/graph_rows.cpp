#include "engine/graphs/graph_rows.h"

#include <algorithm>
#include <cmath>

#include "engine/derived/number_text.h"

namespace nimbry {

std::string number_line(float value) {
    return (value < 0 ? "-" : " ") + numtext(std::fabs(value)) + " \r\n";
}

void GraphRow::set_gdata(int s, float value) {
    values_[static_cast<std::size_t>(s)] = value;
    lines_.clear();
}

std::string GraphRow::gtime() const {
    return trimmed(stamp_);
}

void GraphRow::set_gtime(std::string_view stamp) {
    stamp_ = stamp.substr(0, stamp_width);
    stamp_.resize(stamp_width, ' ');
    lines_.clear();
}

const std::string& GraphRow::lines() const {
    if (lines_.empty()) {
        lines_ = stamp_ + "\r\n";
        for (const float value : values_) lines_ += number_line(value);
    }
    return lines_;
}

void GraphRows::set_windsamples(int count) {
    windsamples_ = std::clamp(count, 0, pmm1);
    for (int s = 0; s < series::count; ++s) row(0).set_gdata(s, static_cast<float>(windsamples_));
}

void GraphRows::append(const GraphRow& sample) {
    if (windsamples_ >= pmm1) {
        move_down(1);
    } else {
        set_windsamples(windsamples_ + 1);
    }
    row(windsamples_) = sample;
}

void GraphRows::age(int minutes) {
    if (minutes <= 0 || windsamples_ == 0) return;
    GraphRow last = row(windsamples_);
    last.set_gtime(unknown_time);
    int first_filled = windsamples_ + 1;
    if (windsamples_ + minutes >= pmm1) {
        // Kept on purpose: the rows move by the whole gap also when some of it would have found room above them.
        first_filled = std::max(1, windsamples_ - minutes + 1);
        move_down(std::min(minutes, pmm1));
        set_windsamples(pmm1);
    } else {
        set_windsamples(windsamples_ + minutes);
    }
    for (int r = first_filled; r <= windsamples_; ++r) row(r) = last;
}

void GraphRows::clear() {
    std::fill(rows_.begin(), rows_.end(), GraphRow{});
    first_ = 0;
    windsamples_ = 0;
}

// Row 0 stays where it is.
void GraphRows::move_down(int by) {
    first_ = (first_ + by) % pmm1;
}

}  // namespace nimbry
