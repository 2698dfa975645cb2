#pragma once

#include <string>

namespace nimbry {

/// One of the setup windows, as the engine has to know it.
struct SetupWindow {
    std::string caption;
    bool open = false;     ///< it is showing; set by whoever shows it, cleared when it closes
    bool enabled = true;   ///< off while a changeover runs or a mail goes out, with the caption "Temporarily Locked"
    bool hidden = false;   ///< open, but out of the way while what its forced button asked for runs
    bool awaited = false;  ///< whoever opened it waits for its end, and applies what is accepted
};

/// The three setup windows that a running cycle takes notice of. They hold up nothing: data is taken while they are
/// open.
struct SetupWindows {
    SetupWindow Form2{"Nimbry Setup"};  ///< comms and files; also the first-run window
    SetupWindow FTP{"Nimbry FTP / Email Setup"};
    SetupWindow Units{"Nimbry Units Setup"};

    [[nodiscard]] bool any_open() const { return Form2.open || FTP.open || Units.open; }
};

/// Locks the windows that are open.
void lock_setup_windows(SetupWindows& windows);

/// Gives locked windows back to their users, with their own captions.
void unlock_setup_windows(SetupWindows& windows);

}  // namespace nimbry
