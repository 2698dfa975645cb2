#pragma once

#include "engine/displays/setup_windows.h"

namespace nimbry {

/// The caption of a setup window that is locked.
inline constexpr const char* locked_caption = "Temporarily Locked";

/// A setup window as it is to be shown: as the state has it, and locked as in a changeover while a mail goes out.
[[nodiscard]] inline SetupWindow shown_window(SetupWindow window, bool mail_goes_out) {
    if (!mail_goes_out) return window;
    window.caption = locked_caption;
    window.enabled = false;
    return window;
}

}  // namespace nimbry
