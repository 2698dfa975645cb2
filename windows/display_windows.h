#pragma once

#include <functional>
#include <memory>

#include "engine/core/weather_state.h"
#include "windows/additional_window.h"

class QWidget;

namespace nimbry::windows {

class BigWindow;
class MarqueeWindow;

/// The further displays beside the main window, each made when it is first shown.
class DisplayWindows {
public:
    struct Actions {
        AdditionalWindow::Actions additional{};
        std::function<void()> big_closed{};
        std::function<void(const MarqueeDialog&)> accept_marquee{};
    };

    /// `state` must outlive this object; `parent` is the main window, which owns the additional data window. The
    /// large-type window has no parent: it stays when the main window goes out of the way.
    DisplayWindows(const WeatherState& state, Actions actions, QWidget* parent);
    ~DisplayWindows();
    DisplayWindows(const DisplayWindows&) = delete;
    DisplayWindows& operator=(const DisplayWindows&) = delete;

    void show_additional();
    void show_big();

    /// The state may have changed.
    void refresh();

private:
    void show_marquee();

    const WeatherState& state_;
    Actions actions_;
    QWidget* parent_;
    AdditionalWindow* additional_ = nullptr;
    std::unique_ptr<BigWindow> big_;
    MarqueeWindow* marquee_ = nullptr;  ///< owned by the large-type window
};

}  // namespace nimbry::windows
