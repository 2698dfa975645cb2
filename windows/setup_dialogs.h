#pragma once

#include <functional>

#include "engine/core/weather_state.h"
#include "engine/setup/comment_dialog.h"
#include "engine/setup/rain_days_dialog.h"
#include "engine/sun/location_dialog.h"
#include "windows/comms_window.h"
#include "windows/internet_window.h"
#include "windows/units_window.h"

class QWidget;

namespace nimbry::windows {

class AlarmsWindow;
class CommentWindow;
class LocationWindow;
class RainDaysWindow;

/// The setup windows, one of each, made when it is first shown.
class SetupDialogs {
public:
    /// Where accepted values go.
    struct Actions {
        std::function<void(const AlarmsDialog&)> accept_alarms{};
        std::function<void(const LocationDialog&)> accept_location{};
        UnitsWindow::Actions units{};
        CommsWindow::Actions comms{};
        InternetWindow::Actions internet{};
        std::function<void(Comment, const CommentDialog&)> accept_comment{};
        std::function<void(const RainDaysDialog&)> accept_rain_days{};
    };

    /// `state` must outlive this object; `parent` is the main window, which owns the windows.
    SetupDialogs(const WeatherState& state, Actions actions, QWidget* parent);

    void show_alarms();
    void show_location();
    void show_units();
    void show_comms();
    void show_internet();
    void show_comment(Comment which);
    void show_rain_days();

    /// The state may have changed.
    void refresh();

private:
    const WeatherState& state_;
    Actions actions_;
    QWidget* parent_;
    AlarmsWindow* alarms_ = nullptr;
    LocationWindow* location_ = nullptr;
    UnitsWindow* units_ = nullptr;
    CommsWindow* comms_ = nullptr;
    InternetWindow* internet_ = nullptr;
    CommentWindow* comment_ = nullptr;
    CommentWindow* comment2_ = nullptr;
    RainDaysWindow* rain_days_ = nullptr;
};

}  // namespace nimbry::windows
