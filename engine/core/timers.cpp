#include "engine/core/timers.h"

#include <algorithm>

namespace nimbry {

namespace {

struct TimerRow {
    TimerId id;
    std::string_view name;
    Milliseconds interval;
};

constexpr std::array<TimerRow, timer_count> rows{{
    {TimerId::TimComFail, "TimComFail", Milliseconds{60000}},
    {TimerId::Timer2, "Timer2", Milliseconds{1500}},
    {TimerId::TimAlarm, "TimAlarm", Milliseconds{27000}},
    {TimerId::TimDisplay, "TimDisplay", Milliseconds{3900}},
    {TimerId::TimerFTP, "TimerFTP", Milliseconds{10000}},
    {TimerId::TimUI, "TimUI", Milliseconds{60000}},
    {TimerId::GrFailTimer, "GrFailTimer", Milliseconds{10000}},
    {TimerId::timWU, "timWU", Milliseconds{60000}},
    {TimerId::TimLog, "TimLog", Milliseconds{60000}},
    {TimerId::TimFTPTOT, "TimFTPTOT", Milliseconds{50000}},
    {TimerId::Timer1, "Timer1", Milliseconds{4000}},
}};

constexpr std::size_t index(TimerId id) {
    return static_cast<std::size_t>(id);
}

constexpr bool rows_stand_in_the_order_of_their_ids() {
    for (std::size_t i = 0; i < timer_count; ++i) {
        if (index(rows[i].id) != i) return false;
    }
    return true;
}
static_assert(rows_stand_in_the_order_of_their_ids());

}  // namespace

Milliseconds Timers::interval(TimerId id) {
    return rows[index(id)].interval;
}

std::string_view Timers::name(TimerId id) {
    return rows[index(id)].name;
}

void Timers::start(TimerId id, Instant now) {
    due_[index(id)] = now + interval(id);
}

void Timers::start_if_stopped(TimerId id, Instant now) {
    if (!running(id)) start(id, now);
}

void Timers::stop(TimerId id) {
    due_[index(id)].reset();
}

void Timers::stop_all() {
    due_.fill(std::nullopt);
}

bool Timers::running(TimerId id) const {
    return due_[index(id)].has_value();
}

std::optional<Instant> Timers::due(TimerId id) const {
    return due_[index(id)];
}

std::optional<Instant> Timers::wake_at() const {
    std::optional<Instant> first;
    for (const std::optional<Instant>& due : due_) {
        if (due && (!first || *due < *first)) first = due;
    }
    return first;
}

std::optional<TimerId> Timers::take_due(Instant now) {
    const std::optional<Instant> first = wake_at();
    if (!first || *first > now) return std::nullopt;
    const TimerId id = rows[static_cast<std::size_t>(std::find(due_.begin(), due_.end(), first) - due_.begin())].id;
    start(id, now);
    return id;
}

}  // namespace nimbry
