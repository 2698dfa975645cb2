#include "engine/records/day_extremes.h"

namespace nimbry {

void DayExtremes::reset_values() {
    const DayExtremes fresh;
    maxtemp = fresh.maxtemp;
    mintemp = fresh.mintemp;
    maxhum = fresh.maxhum;
    minhum = fresh.minhum;
    maxrain = fresh.maxrain;
    maxbar = fresh.maxbar;
    minbar = fresh.minbar;
    maxwind = fresh.maxwind;
    maxdew = fresh.maxdew;
    mindew = fresh.mindew;
    maxintemp = fresh.maxintemp;
    minintemp = fresh.minintemp;
    minwc = fresh.minwc;
    maxhi = fresh.maxhi;
}

bool DayExtremes::outdoor_record_missing() const {
    const DayExtremes fresh;
    return maxtemp == fresh.maxtemp || mintemp == fresh.mintemp || maxhum == fresh.maxhum || minhum == fresh.minhum ||
           maxrain == fresh.maxrain || maxbar == fresh.maxbar || minbar == fresh.minbar || maxwind == fresh.maxwind;
}

}  // namespace nimbry
