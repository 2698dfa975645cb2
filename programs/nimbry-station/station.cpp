#include "programs/nimbry-station/station.h"

#include <algorithm>
#include <utility>

namespace nimbry::simulator {

Station::Station(StationPlay play) : play_(std::move(play)), console_(play_.seed, play_.start), damage_(play_.seed) {}

std::optional<Deed> Station::next(LineTime now) {
    // Asked again means that the last frame is out, perhaps later than planned.
    if (frame_sent_) line_free_ = std::max(line_free_, now + frame_pause);
    frame_sent_ = false;
    for (;;) {
        if (step_is_due()) {
            if (auto deed = take_step()) return deed;
            continue;
        }
        if (silent_ || !plugged_) {
            if (step_ == play_.scenario.size()) return std::nullopt;
            skip_frames_before(play_.scenario[step_].at);
            continue;
        }
        const LineTime due = line_time(frame_moment());
        const LineTime at = std::max({due, line_free_, now});
        const long frame = frame_;
        skip_frames_that_are_late(at);
        if (frame_ == frame) return send_frame(at);
    }
}

LineTime Station::line_time(Seconds station) const {
    return LineTime(station) / play_.speed;
}

bool Station::step_is_due() const {
    return step_ < play_.scenario.size() && play_.scenario[step_].at <= frame_moment();
}

/// Does the next step of the scenario; nothing when it leaves the line alone.
std::optional<Deed> Station::take_step() {
    const Step& step = play_.scenario[step_++];
    console_.live_to(play_.start + step.at);
    const LineTime at = std::max(line_time(step.at), line_free_ - frame_pause);
    const auto act = [&]<typename Kind>(const Kind& action) -> std::optional<Deed> {
        if constexpr (std::is_same_v<Kind, FlipBits> || std::is_same_v<Kind, DropBytes>) {
            damage_.await(action);
        } else if constexpr (std::is_same_v<Kind, StrayBytes>) {
            if (action.before) {
                damage_.await(action);
            } else if (plugged_ && !silent_) {
                Deed deed{.what = Deed::What::send, .at = at, .bytes = damage_.bytes_of(action)};
                line_free_ = std::max(line_free_, at + byte_time * static_cast<long>(deed.bytes.size()));
                return deed;
            }
        } else if constexpr (std::is_same_v<Kind, Silence>) {
            silent_ = action.on;
        } else if constexpr (std::is_same_v<Kind, Plug>) {
            if (plugged_ == action.in) return std::nullopt;
            plugged_ = action.in;
            return Deed{.what = plugged_ ? Deed::What::replug : Deed::What::unplug, .at = at};
        } else {
            console_.apply(action);
        }
        return std::nullopt;
    };
    return std::visit(act, step.action);
}

Deed Station::send_frame(LineTime at) {
    console_.live_to(play_.start + frame_moment());
    const bool train = frame_ % 2 == 0;
    ++frame_;
    const Bytes frame = train ? console_.train() : console_.lone_wind();
    Deed deed{.what = Deed::What::send, .at = at, .bytes = damage_.strike(frame)};
    line_free_ = at + byte_time * static_cast<long>(deed.bytes.size()) + frame_pause;
    frame_sent_ = true;
    return deed;
}

/// Leaves out as many pairs of frames as would otherwise come a whole round or more too late.
void Station::skip_frames_that_are_late(LineTime at) {
    const LineTime round = line_time(2 * frame_spacing);
    frame_ += 2 * ((at - line_time(frame_moment())) / round);
}

void Station::skip_frames_before(Seconds moment) {
    while (frame_moment() < moment) ++frame_;
}

}  // namespace nimbry::simulator
