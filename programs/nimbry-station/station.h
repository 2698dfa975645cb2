#pragma once

#include <cstdint>
#include <vector>

#include "programs/nimbry-station/console.h"
#include "programs/nimbry-station/damage.h"
#include "programs/nimbry-station/scenario.h"
#include "programs/nimbry-station/source.h"

namespace nimbry::simulator {

/// How a station is played.
struct StationPlay {
    std::uint64_t seed = 1;
    CivilTime start{};  ///< what its clock shows when the play begins
    int speed = 1;      ///< how many times faster than real its time runs, 1 or more
    std::vector<Step> scenario;
};

/// The first frame comes this long after the start, so that whoever waits for the line has opened it.
inline constexpr std::chrono::seconds first_frame_after{2};
/// A train and a lone wind group take turns, this far apart in the station's time.
inline constexpr std::chrono::seconds frame_spacing{5};

/// The station on its line: a train every ten seconds of its own time with a lone wind group half way between, and
/// whatever the scenario brings. The line's bytes and pauses keep their real length at any speed; when the line cannot
/// carry all frames (above 33 times real), whole pairs of train and lone group are left out and the clock stays right.
class Station : public Source {
public:
    explicit Station(StationPlay play);

    [[nodiscard]] std::optional<Deed> next(LineTime now) override;

private:
    using Seconds = std::chrono::seconds;

    [[nodiscard]] LineTime line_time(Seconds station) const;
    [[nodiscard]] Seconds frame_moment() const { return first_frame_after + frame_ * frame_spacing; }
    [[nodiscard]] bool step_is_due() const;
    [[nodiscard]] std::optional<Deed> take_step();
    [[nodiscard]] Deed send_frame(LineTime at);
    void skip_frames_that_are_late(LineTime at);
    void skip_frames_before(Seconds moment);

    StationPlay play_;
    Console console_;
    Damage damage_;
    std::size_t step_ = 0;     ///< the next of the scenario
    long frame_ = 0;           ///< the next on the line; trains are the even ones
    LineTime line_free_{0};    ///< when a frame may begin again
    bool frame_sent_ = false;  ///< the last deed was a frame
    bool silent_ = false;
    bool plugged_ = true;
};

}  // namespace nimbry::simulator
