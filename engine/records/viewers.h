#pragma once

#include <optional>
#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// The menu entries that show a record to the person at the screen. Each returns the file that the text window is to
// open, which is never a live one, or nothing after a balloon that says why not. A click sounds with each but
// mnuAlMonth(): there the window has sounded it before it asked for the file.

/// "Display Almanac": the almanac of the month, as `altemp.csv`.
[[nodiscard]] std::optional<std::string> mnuDisplayAlmanac(Copy& copy);

/// "Display Log File": the weather log, as `logtemp.csv`.
[[nodiscard]] std::optional<std::string> mnuDisplayLog(Copy& copy);

/// "Monthly Summary (choose file)", after the click and the choice: `AFname` is the file's name or path. A file
/// whose first line does not hold the word "Nimbry" is refused; else alanalyse() makes `NBYSummary.txt` of it.
[[nodiscard]] std::optional<std::string> mnuAlMonth(Copy& copy, const std::string& AFname);

/// "Monthly Summary (current month)": the same of the almanac in progress.
[[nodiscard]] std::optional<std::string> mnuAutoReport(Copy& copy);

}  // namespace nimbry
