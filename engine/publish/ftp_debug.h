#pragma once

#include <string_view>

#include "engine/core/copy.h"
#include "engine/ports/transfers.h"

namespace nimbry {

// The conversation with the FTP server, for somebody who wants to know why it does not work. No password is in it.

/// The file that takes the conversation, with `LogFTPResponses` on: a line for each reply, after the command that it
/// answers and a blank.
inline constexpr std::string_view ftp_log_file = "NimbryFTPLOG.txt";

/// What the debug window keeps, in bytes. Older lines leave it at its top.
inline constexpr std::size_t debug_text_kept = 64'000;

/// Adds text to the debug window, which is empty and stays so while it is closed (menu entry `mnuFTPdebug`).
void add_to_debug_window(WeatherState& state, std::string_view text);

/// The debug window has been opened or closed: it starts empty each time.
void clear_debug_window(WeatherState& state);

/// The server has said something: into the debug window, two lines, and into the file if it is wanted. A file that
/// cannot be written is passed over.
void response_event(Copy& copy, const FtpExchange& exchange);

}  // namespace nimbry
