#pragma once

#include "engine/core/main_settings.h"

namespace nimbry {

/// When a weather day ends.
enum class DayEnd { midnight, nine, ten };

/// When it ends by the settings: at midnight, or at 9.00am, which `AddOneHour` moves to 10.00am.
[[nodiscard]] inline DayEnd selected_day_end(const MainSettings& settings) {
    if (settings.tmidnight) return DayEnd::midnight;
    return settings.AddOneHour ? DayEnd::ten : DayEnd::nine;
}

}  // namespace nimbry
