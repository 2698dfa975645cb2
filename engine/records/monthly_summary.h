#pragma once

#include <map>
#include <string>
#include <string_view>

#include "engine/derived/units.h"
#include "engine/records/almanac_file.h"

namespace nimbry {

/// What a summary needs to know besides the almanac itself.
struct SummaryRequest {
    bool live = true;  ///< the month in progress; false: an archive
    int year = 0;      ///< of the rows' dates, which carry none: the station's, or "20" and the archive's two digits
    int DaySinceRain = 0;  ///< live only: whole days
    float LastRain = 0;    ///< live only: in the rain unit
};

/// The summary of a month: the whole text (`NBYSummary.txt`, CR LF line ends), and the value part of each of its lines
/// under the name of the template tag that prints it ("SUMMAXTEMP"). A tag without a line in this summary is empty.
struct MonthlySummary {
    std::string text;
    std::map<std::string, std::string, std::less<>> tags;
};

/// Works out the summary of an almanac whose values are in `units`. Extremes fall on the last of equal rows, means
/// leave days without a reading out; an almanac without rows gives a count of 0 and nothing else.
[[nodiscard]] MonthlySummary monthly_summary(const Almanac& almanac, const Units& units, const SummaryRequest& request);

/// A template line with every "~~SUM........~~" and "~~SUB........~~" of the summary replaced by its text. Anything
/// else passes unchanged, other markers included.
[[nodiscard]] std::string Sumresolvtag(std::string_view line, const MonthlySummary& summary);

}  // namespace nimbry
