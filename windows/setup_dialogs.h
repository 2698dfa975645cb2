#pragma once

#include <functional>

#include "engine/core/weather_state.h"

class QWidget;

namespace nimbry::windows {

class AlarmsWindow;

/// The setup windows, one of each, made when it is first shown.
class SetupDialogs {
public:
    /// Where accepted values go.
    struct Actions {
        std::function<void(const AlarmsDialog&)> accept_alarms;
    };

    /// `state` must outlive this object; `parent` is the main window, which owns the windows.
    SetupDialogs(const WeatherState& state, Actions actions, QWidget* parent);

    void show_alarms();

    /// The state may have changed.
    void refresh();

private:
    const WeatherState& state_;
    Actions actions_;
    QWidget* parent_;
    AlarmsWindow* alarms_ = nullptr;
};

}  // namespace nimbry::windows
