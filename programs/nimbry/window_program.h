#pragma once

#include <string>

namespace nimbry {

/// Runs a copy with its window in `folder` until it has gone. `device` is the serial device for this run, empty: by the
/// settings. nimbryctl can reach it when the caller has the lock of that folder. Returns the exit status. Needs the
/// QApplication.
[[nodiscard]] int run_with_window(const std::string& folder, const std::string& device, bool has_lock);

}  // namespace nimbry
