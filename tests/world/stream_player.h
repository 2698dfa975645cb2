#pragma once

#include <functional>
#include <string>

#include "engine/station/stream_file.h"
#include "tests/world/world.h"

namespace nimbry::test {

/// Plays a stream, from now on, to the copy of a world that has been started, and one second more. `after_each` is
/// called after every event of the copy.
void play(World& world, const StreamFile& stream, const std::function<void()>& after_each);

/// Plays a stream to a whole copy of Nimbry in virtual time and tells what the copy makes of it, a line an event: each
/// frame with its readings, each refusal with its reason, the main readings as they change, the status label and the
/// lamp, the battery, alarms, sounds, notices and windows, and lines of the program log and of the midnight file. Times
/// are seconds from the start of the stream; the degree sign is UTF-8.
///
/// The copy has been running for two seconds when the stream begins, alone, without a window, with the settings of a
/// first run; `more_settings` are further sections of its configuration file.
[[nodiscard]] std::string events_of(const StreamFile& stream, const std::string& more_settings = "");

}  // namespace nimbry::test
