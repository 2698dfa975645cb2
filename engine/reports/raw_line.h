#pragma once

#include <string>
#include <vector>

#include "engine/core/copy.h"

namespace nimbry {

/// The present weather as data for other programs: 39 metric values in the order of docs/formats/raw-line.md. A value
/// that is not known is empty; the highest gust since the last generation is then "0".
[[nodiscard]] std::vector<std::string> raw_values(const Copy& copy);

/// The values as the line of `nimbryraw.txt`: joined by "|", with CR LF.
[[nodiscard]] std::string raw_line(const Copy& copy);

/// The same values and the name of the changeover as the line of `NimbData.txt` and `NimbData.csv`: joined by ",".
[[nodiscard]] std::string data_line(const Copy& copy);

/// Overwrites a small text file for other programs, unless one of them has it open: then it keeps its old contents
/// until the next time. Throws RunTimeError.
void rewrite_if_free(Files& files, const std::string& name, std::string_view text);

}  // namespace nimbry
