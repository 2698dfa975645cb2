#pragma once

#include <functional>

#include "engine/core/weather_state.h"
#include "windows/setup_dialog.h"

class QGridLayout;

namespace nimbry::windows {

/// The alarm dialog (`frmAlarms`): a row for each threshold, with its check box, its scroll bar ("hsb" and the key) and
/// its value in the unit of display ("lbl" and the key).
class AlarmsWindow final : public SetupDialog {
    Q_OBJECT

public:
    /// `accepted` gets the values when somebody accepts. `state` must outlive the window.
    AlarmsWindow(const WeatherState& state, std::function<void(const AlarmsDialog&)> accepted,
                 QWidget* parent = nullptr);

    /// The state may have changed: units, changeover, or the values in force.
    void refresh();

protected:
    void load() override;
    void edited() override { show_texts(); }
    bool commit() override {
        accepted_(draft_.values);
        return true;
    }

private:
    void add_rows(QGridLayout& grid);
    void add_heading(QGridLayout& grid, const char* text);
    void add_row(QGridLayout& grid, AlarmId id);
    void add_switch(QGridLayout& grid, const char* name, const char* caption);
    void show_texts();

    const WeatherState& state_;
    std::function<void(const AlarmsDialog&)> accepted_;
    DialogDraft<AlarmsDialog> draft_;
};

}  // namespace nimbry::windows
