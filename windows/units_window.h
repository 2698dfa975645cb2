#pragma once

#include <functional>

#include "engine/core/weather_state.h"
#include "engine/setup/units_dialog.h"
#include "windows/setup_dialog.h"

class QGroupBox;

namespace nimbry::windows {

/// The units dialog (`frmSetupUnits`). The options of the changeover act when they are clicked and always show what is
/// in force; everything else waits for "Done".
class UnitsWindow final : public SetupDialog {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> opened{};  ///< to warn of what a change affects
        std::function<void()> closed{};
        std::function<void(const UnitsDialog&)> accepted{};                   ///< "Done"
        std::function<void(UnitsDialog&, bool first_day)> choose_rollover{};  ///< may leave the dialog unchanged
        std::function<void(bool midnight)> choose_changeover{};
        std::function<void(bool one_hour)> set_one_hour{};
    };

    /// `state` must outlive the window.
    UnitsWindow(const WeatherState& state, Actions actions, QWidget* parent = nullptr);

    /// The state may have changed: the changeover, or the values in force; a changeover or a mail locks the window.
    void refresh();

protected:
    void load() override;
    void opened() override { actions_.opened(); }
    void closed() override { actions_.closed(); }
    bool commit() override;

private:
    QGroupBox* changeover_group();
    QGroupBox* rollover_group();
    void show_in_force();

    const WeatherState& state_;
    Actions actions_;
    DialogDraft<UnitsDialog> draft_;
};

}  // namespace nimbry::windows
