#pragma once

#include <string>
#include <vector>

#include "engine/ports/clock.h"

namespace nimbry {

/// A passing notice beside a box of the main window.
struct Balloon {
    std::string title;
    std::string text;                   ///< lines joined by CR LF
    std::string icon = "!";             ///< "i" information, "x" error, "!" warning; "i9", "x9", "!9" second style
    std::string anchor = "TxtHeatInd";  ///< name of the box it stands at
    Milliseconds closes_after{5000};    ///< zero: stays until it is closed
    bool bShowClose = false;            ///< with a close mark; one that stays has it anyway
    int lHeight = 1620;                 ///< twips; the least, a long text makes it taller
    int lWidth = 4680;                  ///< twips; the least
};

/// The choices of a message box.
enum class Choices { ok, ok_cancel, yes_no, retry_cancel };
enum class Answer { ok, yes, no, retry, cancel, other };

/// A message box.
struct MessageBox {
    std::string title = "Nimbry";
    std::string text;        ///< lines joined by CR LF
    std::string icon = "!";  ///< "!" warning, "?" question, "i" information, "x" error
    Choices choices = Choices::ok;
    std::string detail{};        ///< what the text has no place for, such as the name of a device: stands below it
    std::string other_choice{};  ///< caption of one more button, "&" before its letter; it answers `other`
};

/// All that a box tells, where one text is wanted: the text and, in a line of its own, the detail.
[[nodiscard]] inline std::string whole_text(const MessageBox& box) {
    return box.detail.empty() ? box.text : box.text + "\r\n" + box.detail;
}

/// What the person at the screen is told and asked. Without a window a notice is one line on standard error, and a box
/// is answered at once: `ok`, or the safe answer (`no`, `cancel`) where there is a choice.
class Notices {
public:
    virtual ~Notices() = default;

    /// Shows a balloon; one that is showing is replaced. Does not wait and does not take the focus.
    virtual void balloon(const Balloon& balloon) = 0;

    /// Asks, and waits for the answer while other events run (Pauses).
    virtual Answer box(const MessageBox& box) = 0;

    /// Shows one of the small windows by its name ("NimbrySensor", "NimbryDisplay", ...), if it is not showing already.
    virtual void show_window(const std::string& name) = 0;

    /// How something long goes on, a line each time: for a program without a window, where no window tells it.
    virtual void progress(const std::string& line) = 0;

    /// Brings the main window back if it is hidden or minimised.
    virtual void restore_main_window() = 0;

    /// The system's short warning tone.
    virtual void beep() = 0;
};

/// Sounds, by the name of a WAV file in the program's folder ("click.WAV"). A missing file or device is silent.
class Sounds {
public:
    virtual ~Sounds() = default;
    virtual void play(const std::string& file) = 0;
};

}  // namespace nimbry
