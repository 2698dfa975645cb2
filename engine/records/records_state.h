#pragma once

#include <optional>
#include <string>

#include "engine/records/day_extremes.h"

namespace nimbry {

/// The records' own state. Yesterday has no record of its own: its file is read into `day`, shown, and then overwritten
/// by today's.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct RecordsState {
    DayExtremes day;                     ///< the weather day's extremes
    DayExtremes yesterday;               ///< what yesterday's column shows; reset values where it shows none
    std::optional<float> rainyesterday;  ///< the same of the day's rain, mm
    int DaySinceRain = 0;                ///< whole days without rain
    float LastRain = 0;  ///< amount of the most recent day with rain; kept on purpose: in the rain unit of that day
    bool unitschanged = false;  ///< set by whoever changes a unit: the next cycle shows the records in the new ones
    bool doingreset = true;     ///< (kept) a reset of the day is in progress
    bool TFileOK = false;       ///< (kept) today's file was fresh when it was read
    bool YFileBad = false;      ///< (kept) yesterday's file is there, but stale

    bool ChangeTriggered = false;  ///< the changeover of this change time is done
    bool coMailSent = false;       ///< the changeover has sent mail, so this cycle's scheduled mails are passed over

    /// Date and month of the next almanac row, where a missed changeover knows better than the station's clock; else
    /// empty.
    std::string row_date, row_month;
    bool alarchiving = false;      ///< the almanac is being archived
    std::string alarchmessage;     ///< (kept) what was said of an almanac that was archived late
    bool summary_uploaded = true;  ///< clear: a fresh summary page waits to be uploaded

    int log_minutes = 0;  ///< minutes since the last line of the weather log
};

}  // namespace nimbry
