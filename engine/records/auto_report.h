#pragma once

#include <string>

#include "engine/core/copy.h"
#include "engine/records/monthly_summary.h"

namespace nimbry {

/// The copy of an almanac that is read and shown, so that nobody holds the live file.
inline constexpr std::string_view almanac_copy = "altemp.csv";

/// The text of the last summary.
inline constexpr std::string_view summary_file = "NBYSummary.txt";

/// The summary of an almanac, as alanalyse() makes it, from its bytes. Writes nothing. Throws RunTimeError (index) for
/// a damaged row.
[[nodiscard]] MonthlySummary summarised(const Copy& copy, const std::string& AFname, std::string_view text);

/// Makes the summary of the month in progress, or, when its almanac has just been archived, of that archive. Without
/// either nothing is written. Throws as alanalyse() does.
void AutoGenreport(Copy& copy);

/// Analyses an almanac through its copy `altemp.csv`: writes `NBYSummary.txt`, and from `nimbrysummarytemplate.html`,
/// if there is one, the page `nimbrysummary.html`, built in `TempSummary.html`. `AFname` is the almanac's file; an
/// archive's name ("alOct26.csv") gives the year of its dates. Bears the tag "alanalyse".
void alanalyse(Copy& copy, const std::string& AFname);

}  // namespace nimbry
