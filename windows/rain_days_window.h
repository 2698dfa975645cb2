#pragma once

#include <QLabel>
#include <QLineEdit>
#include <functional>

#include "engine/core/weather_state.h"
#include "engine/setup/rain_days_dialog.h"
#include "windows/setup_dialog.h"

namespace nimbry::windows {

/// The days-since-rain editor (`NimbryEditDSR`). `cmdDone` accepts and always closes; what is no number of days is left
/// aside.
class RainDaysWindow final : public SetupDialog {
    Q_OBJECT

public:
    /// `state` must outlive the window.
    RainDaysWindow(const WeatherState& state, std::function<void(const RainDaysDialog&)> accepted,
                   QWidget* parent = nullptr);

protected:
    void load() override;
    void opened() override;
    bool commit() override;

private:
    const WeatherState& state_;
    std::function<void(const RainDaysDialog&)> accepted_;
    RainDaysDialog values_;
    QLineEdit days_, amount_;
    QLabel unit_;
};

}  // namespace nimbry::windows
