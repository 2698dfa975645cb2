#pragma once

#include <string>
#include <string_view>

#include "engine/core/copy.h"
#include "engine/core/run_time_error.h"

namespace nimbry {

// An error that costs only the work in hand: a line of the program log, and the program goes on.

/// "Error 61 encountered in updategraphs."
[[nodiscard]] std::string soft_error_text(ErrorNumber number, std::string_view routine);

/// Writes that line; nothing where the log cannot be written either.
void log_soft_error(Copy& copy, ErrorNumber number, std::string_view routine);

}  // namespace nimbry
