#pragma once

#include <string>

#include "engine/ports/notices.h"

namespace nimbry {

/// Runs a copy with its window in `folder` until it has gone. `device` is the serial device for this run, empty: by the
/// settings. nimbryctl can reach it when the caller has the lock of that folder. `sounds`, which must outlive the call,
/// plays for it; nullptr: the machine does. Returns the exit status. Needs the QApplication.
[[nodiscard]] int run_with_window(const std::string& folder, const std::string& device, bool has_lock,
                                  Sounds* sounds = nullptr);

}  // namespace nimbry
