#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/core/weather_state.h"
#include "engine/setup/comms_dialog.h"
#include "windows/setup_dialog.h"

class QGroupBox;

namespace nimbry::windows {

class SettingBar;

/// The communications dialog (`Form2`): the serial port and its device, the roles on the network, the data log. It is
/// also the window that a newcomer sees first.
class CommsWindow final : public SetupDialog {
    Q_OBJECT

public:
    struct Actions {
        std::function<std::vector<std::string>()> serial_devices{};  ///< to choose from; asked when the window opens
        std::function<void()> opened{};
        std::function<void()> closed{};
        std::function<void(bool& role)> ticked_role{};    ///< may untick it again
        std::function<void(CommsDialog&)> add_address{};  ///< takes `txtIP` to the list, or tells why not
        std::function<bool(CommsDialog&)> accepted{};     ///< false: the window stays; may change the dialog
    };

    /// `state` must outlive the window.
    CommsWindow(const WeatherState& state, Actions actions, QWidget* parent = nullptr);

    /// The state may have changed: the values in force; a changeover or a mail locks the window.
    void refresh();

protected:
    void load() override;
    void edited() override { show_what_follows(); }
    void opened() override { actions_.opened(); }
    void closed() override { actions_.closed(); }
    bool commit() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGroupBox* port_group();
    QGroupBox* network_group();
    QGroupBox* log_group();
    void connect_role(const char* name, bool CommsDialog::*role);
    void set_tab_order();
    void show_all();
    void show_what_follows();
    void add_address();
    void remove_address();

    const WeatherState& state_;
    Actions actions_;
    DialogDraft<CommsDialog> draft_;
    SettingBar* minutes_bar_;
};

}  // namespace nimbry::windows
