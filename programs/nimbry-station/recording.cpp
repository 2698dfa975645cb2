#include "programs/nimbry-station/recording.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace nimbry::simulator {
namespace {

constexpr LineTime replugged_before{std::chrono::seconds(1)};

LineTime length_of(const Deed& deed) {
    return deed.pace * static_cast<long>(deed.bytes.size());
}

/// A recorded pause at a speed.
LineTime shortened(LineTime pause, int speed) {
    return pause <= frame_pause ? std::max(pause, LineTime(0)) : std::max(frame_pause, pause / speed);
}

}  // namespace

StreamFile recording_of(const StationPlay& play) {
    StreamFile stream;
    stream.shows = "a simulated station, seed " + std::to_string(play.seed) + ", speed " + std::to_string(play.speed);
    if (!play.scenario.empty()) stream.shows += ", with a scenario";
    stream.from = "recorded by nimbry-station";
    stream.clock = play.start;
    stream.pace = byte_time;
    return stream;
}

std::optional<StreamPiece> piece_of(const Deed& deed) {
    StreamPiece piece;
    piece.at = deed.at;
    piece.bytes = deed.bytes;
    if (deed.what == Deed::What::unplug) piece.fault = LineFault::gone;
    if (piece.bytes.empty() && !piece.fault) return std::nullopt;
    return piece;
}

Recording::Recording(const StreamFile& stream, int speed) {
    LineTime recorded_end{0}, played_end{0};
    bool plugged = true;
    for (const StreamPiece& piece : stream.pieces) {
        const LineTime pause = shortened(piece.at - recorded_end, speed);
        Deed deed{.what = Deed::What::send, .at = played_end + pause, .bytes = piece.bytes, .pace = stream.pace};
        if (piece.fault) {
            if (piece.fault != LineFault::gone || !plugged) continue;
            deed.what = Deed::What::unplug;
            plugged = false;
        } else if (!plugged) {
            deeds_.push_back({.what = Deed::What::replug, .at = deed.at - std::min(replugged_before, pause / 2)});
            plugged = true;
        }
        recorded_end = piece.at + length_of(deed);
        played_end = deed.at + length_of(deed);
        deeds_.push_back(std::move(deed));
    }
}

std::optional<Deed> Recording::next(LineTime) {
    if (next_ == deeds_.size()) return std::nullopt;
    return deeds_[next_++];
}

}  // namespace nimbry::simulator
