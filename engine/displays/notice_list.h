#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "engine/ports/clock.h"
#include "engine/ports/notices.h"

namespace nimbry {

/// One balloon or message box that was shown.
struct Notice {
    CivilTime time;  ///< the computer's
    std::string title;
    std::string text;  ///< lines joined by CR LF
    std::string icon;
};

/// The last notices, oldest first.
struct NoticeList {
    static constexpr std::size_t capacity = 50;
    std::deque<Notice> notices;

    /// Adds one; the oldest goes when there are more than `capacity`.
    void add(Notice notice);
};

/// Passes everything on to another Notices, and keeps each balloon and each box in a list.
class NoticeRecorder : public Notices {
public:
    /// All three must outlive this object.
    NoticeRecorder(Notices& shown_by, NoticeList& list, const Clock& clock)
        : shown_by_(shown_by), list_(list), clock_(clock) {}

    void balloon(const Balloon& balloon) override;
    Answer box(const MessageBox& box) override;
    void show_window(const std::string& name) override { shown_by_.show_window(name); }
    void progress(const std::string& line) override { shown_by_.progress(line); }
    void restore_main_window() override { shown_by_.restore_main_window(); }
    void beep() override { shown_by_.beep(); }

private:
    Notices& shown_by_;
    NoticeList& list_;
    const Clock& clock_;
};

}  // namespace nimbry
