#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// Makes the summary of the month in progress, or, when its almanac has just been archived, of that archive. Without
/// either nothing is written. Throws as alanalyse() does.
void AutoGenreport(Copy& copy);

/// Analyses an almanac through its copy `altemp.csv`: writes `NBYSummary.txt`, and from `nimbrysummarytemplate.html`,
/// if there is one, the page `nimbrysummary.html`, built in `TempSummary.html`. `AFname` is the almanac's file; an
/// archive's name ("alOct26.csv") gives the year of its dates. Bears the tag "alanalyse".
void alanalyse(Copy& copy, const std::string& AFname);

}  // namespace nimbry
