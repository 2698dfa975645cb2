#include "engine/displays/setup_windows.h"

namespace nimbry {

void lock_setup_windows(SetupWindows& windows) {
    for (SetupWindow* window : {&windows.Form2, &windows.FTP, &windows.Units}) {
        if (!window->open) continue;
        window->caption = "Temporarily Locked";
        window->enabled = false;
    }
}

void unlock_setup_windows(SetupWindows& windows) {
    const SetupWindows usual;
    const auto unlock = [](SetupWindow& window, const SetupWindow& as_usual) {
        if (window.enabled) return;
        window.caption = as_usual.caption;
        window.enabled = true;
    };
    unlock(windows.Form2, usual.Form2);
    unlock(windows.FTP, usual.FTP);
    unlock(windows.Units, usual.Units);
}

}  // namespace nimbry
