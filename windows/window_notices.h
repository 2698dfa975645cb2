#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "engine/ports/notices.h"
#include "engine/ports/pauses.h"

namespace nimbry::windows {

class BalloonTip;
class Form1;

/// What the person at the screen is told and asked, in windows. Nothing here blocks: a box is an ordinary window, and
/// the conversation that asked waits for its answer while everything else goes on.
class WindowNotices : public Notices {
public:
    /// `pauses` must outlive this object.
    explicit WindowNotices(Pauses& pauses);
    ~WindowNotices() override;

    /// The main window, once there is one; it must outlive this object or be taken away with nullptr.
    void set_main_window(Form1* window);

    /// What shows one of the small windows. A window without an opener is not shown.
    void set_opener(const std::string& name, std::function<void()> open);

    void balloon(const Balloon& balloon) override;
    Answer box(const MessageBox& box) override;
    void show_window(const std::string& name) override;
    void progress(const std::string&) override {}  ///< the windows tell it
    void restore_main_window() override;
    void beep() override;

private:
    void show_balloon(const Balloon& balloon);

    /// Runs window work on the event loop: a conversation's own stack is too small for what a window system may do.
    void later(std::function<void()> work);

    Pauses& pauses_;
    QObject here_;  ///< what is still to run ends with this object
    Form1* main_window_ = nullptr;
    QPointer<BalloonTip> tip_;
    std::map<std::string, std::function<void()>> openers_;
};

}  // namespace nimbry::windows
