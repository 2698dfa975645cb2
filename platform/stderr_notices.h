#pragma once

#include <string>
#include <string_view>

#include "engine/ports/notices.h"

namespace nimbry::platform {

/// What a program without a window tells: each balloon and each box is one line on standard error, written at once.
/// Boxes are answered at once: `ok`, or the safe answer where there is a choice.
class StderrNotices : public Notices {
public:
    void balloon(const Balloon& balloon) override;
    Answer box(const MessageBox& box) override;
    /// The small windows have no text of their own here: nothing is shown.
    void show_window(const std::string& name) override;
    void progress(const std::string& line) override;
    void restore_main_window() override {}
    void beep() override {}
};

/// A notice as one line of UTF-8 without its line end: title, ": ", text, with each line end of the text as " / ".
///   stderr_line("Nimbry", "COM Port Error,\r\nClick Retry") = "Nimbry: COM Port Error, / Click Retry"
[[nodiscard]] std::string stderr_line(std::string_view title, std::string_view text);

/// Writes one line to standard error, unbuffered. A standard error that cannot be written is passed over.
void write_line_to_stderr(std::string_view line);

/// A program without sound.
class SilentSounds : public Sounds {
public:
    void play(const std::string&) override {}
};

}  // namespace nimbry::platform
