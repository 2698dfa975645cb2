#pragma once

#include <optional>

#include "engine/core/copy.h"
#include "engine/ports/notices.h"

namespace nimbry {

// When the weather day ends. The options of the units dialog for it act when they are clicked, because what is held of
// the day counts from the old hour.

/// What is asked before the day's end moves to midnight or to 9.00am (OK or Cancel); nothing when it lies there
/// already.
[[nodiscard]] std::optional<MessageBox> changeover_question(const MainSettings& settings, bool midnight);

/// Moves the day's end: today's record starts again with the present rain counter, yesterday goes with its file, mail
/// is switched off and its times are cleared, the captions follow, and the graphs start afresh. The keys are written at
/// once, for what was deleted is gone at once too.
void change_changeover(Copy& copy, bool midnight);

/// A click on `optMidnight` or `optNineam`: asks, and on OK moves the day's end. True when it has moved; otherwise the
/// other option is to be shown again. May wait.
bool choose_changeover(Copy& copy, bool midnight);

/// What a click on `optonehour` tells.
[[nodiscard]] MessageBox one_hour_warning();

/// A click on `optonehour`: the day that ends at 9.00am ends at 10.00am, or no longer does. In force and written at
/// once, and no record is touched. With a day that ends at midnight only the key changes.
void set_one_hour(Copy& copy, bool one_hour);

}  // namespace nimbry
