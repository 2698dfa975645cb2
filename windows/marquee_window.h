#pragma once

#include <functional>

#include "engine/core/weather_state.h"
#include "windows/setup_dialog.h"

namespace nimbry::windows {

/// The dialog `FrmMarquee`: a check box for each reading that the big display's line can go through, in its order.
class MarqueeWindow final : public SetupDialog {
    Q_OBJECT

public:
    /// `accepted` gets the values when somebody accepts. `state` must outlive the window.
    MarqueeWindow(const WeatherState& state, std::function<void(const MarqueeDialog&)> accepted,
                  QWidget* parent = nullptr);

    /// The state may have changed: changeover, or the values in force.
    void refresh();

protected:
    void load() override;
    bool commit() override {
        accepted_(draft_.values);
        return true;
    }

private:
    void show_captions();

    const WeatherState& state_;
    std::function<void(const MarqueeDialog&)> accepted_;
    DialogDraft<MarqueeDialog> draft_;
};

}  // namespace nimbry::windows
