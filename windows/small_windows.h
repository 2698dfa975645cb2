#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

class QWidget;

namespace nimbry::windows {

class AboutWindow;
class HelpWindow;
class SensorWindow;
class StatusWindow;
class SyncWindow;
class TextWindow;
class WindowNotices;

/// The small windows beside the main one, each made when it is first shown.
class SmallWindows {
public:
    /// `state` must outlive this object; `parent` is the main window.
    SmallWindows(const WeatherState& state, QWidget* parent);
    ~SmallWindows();
    SmallWindows(const SmallWindows&) = delete;
    SmallWindows& operator=(const SmallWindows&) = delete;

    /// Gives the notices the windows that they open by name. `notices` must not outlive this object.
    void offer_to(WindowNotices& notices);

    void show_about(std::string_view version_stamp);
    void show_help();
    /// Shows a text file, 8-bit bytes as they stand in it, in a window of its own, which every later look at the same
    /// file uses again.
    void show_file(const std::string& name, std::string_view bytes);
    void show_sensor_window();

    /// The user has closed the window of the conversation with the FTP server.
    void on_debug_closed(std::function<void()> closed) { debug_closed_ = std::move(closed); }

    /// Opens and closes what the model says is open or closed.
    void refresh() { binding_.refresh(); }

private:
    void show_status();
    void show_sync();
    void open_debug(bool open);

    const WeatherState& state_;
    QWidget* parent_;
    BoxBinding binding_;
    std::function<void()> debug_closed_;
    // Owned by the main window.
    AboutWindow* about_ = nullptr;
    HelpWindow* help_ = nullptr;
    SensorWindow* sensor_ = nullptr;
    StatusWindow* status_ = nullptr;
    SyncWindow* sync_ = nullptr;
    TextWindow* debug_ = nullptr;
    std::map<std::string, TextWindow*> files_;  ///< by the file's name
};

}  // namespace nimbry::windows
