#pragma once

#include <optional>
#include <vector>

#include "engine/station/stream_file.h"
#include "programs/nimbry-station/source.h"
#include "programs/nimbry-station/station.h"

namespace nimbry::simulator {

/// The head of a recording of this play; it holds no pieces yet. Its clock is the station's at the start, so that the
/// year that a train does not name is the right one when the recording is read.
[[nodiscard]] StreamFile recording_of(const StationPlay& play);

/// What a recording keeps of a deed: bytes, or a device that has gone. Nothing of a cable put in again: the next bytes
/// tell that.
[[nodiscard]] std::optional<StreamPiece> piece_of(const Deed& deed);

/// Plays a recorded stream once. At a higher speed pauses shrink, but none below frame_pause that was longer, so that
/// what was a frame stays one. Where the recorded device went away the cable is pulled, and put in again a second
/// before the next bytes or half way to them, whichever is later. Other faults of a line cannot be played and are left
/// out.
class Recording : public Source {
public:
    Recording(const StreamFile& stream, int speed);

    [[nodiscard]] std::optional<Deed> next(LineTime now) override;

private:
    std::vector<Deed> deeds_;
    std::size_t next_ = 0;
};

}  // namespace nimbry::simulator
