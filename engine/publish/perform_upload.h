#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// The transfer itself, the line being there: logs in, sends one file after the other, takes leave. How it went is in
/// UploadState. The first file that does not get there ends it; those already sent stay on the server.
///
/// In this order: the pages (none while `FTPRemoteFile` has no dot), the two pictures, `wx.wml`, the monthly summary if
/// it is a fresh one, `nimbryraw.txt`, the additional files of the settings, and the files of the list `NBYFiles.txt`,
/// which is deleted at its end. Files that are not there are passed over. Around each step the watchdog runs
/// (ftp_watchdog.h). Waits.
void PerformUpload(Copy& copy);

/// Nothing can be started from the seven buttons of the panel while an upload runs. Enabling leaves "Additional" off
/// while its window is open (additional_window.h).
void enable_panel_buttons(WeatherState& state, bool enabled);

}  // namespace nimbry
