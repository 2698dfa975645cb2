#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

// The outermost frame of everything that happens in a copy: a tick, bytes on the line, a click, a conversation.

/// Runs `work` as one event of the copy. It does nothing once an exit or the report of an error has begun. An error
/// that leaves `work` is reported and ends the program (core/exits.h); it bears the tag of the routine that it passed,
/// or `tag`. WaitCancelled passes on to the one who started the conversation.
void run_event(Copy& copy, std::string_view tag, const std::function<void()>& work);

/// Starts `work` as such an event in a conversation of its own, and returns at its first wait. What it refers to must
/// outlive it.
void start_event(Copy& copy, std::string tag, std::function<void()> work);

}  // namespace nimbry
