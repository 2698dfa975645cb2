#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/copy.h"
#include "engine/displays/dialog_controls.h"
#include "engine/ports/notices.h"

namespace nimbry {

/// The values of the communications dialog `Form2`, under the names of its controls.
struct CommsDialog {
    bool Option1 = true, Option2 = false, Option3 = false, Option4 = false;  ///< the serial port; one of them
    std::string SerialPort1, SerialPort2, SerialPort3, SerialPort4;  ///< the ports' devices; empty is the system's
    bool Check1 = false;  ///< server: sends what arrives to the addresses of the list
    bool Check2 = false;  ///< client: "Get data from the network"
    std::vector<std::string> IPList;
    std::string txtIP;              ///< an address on its way to the list; no setting
    bool Check3 = false;            ///< "Write a data log file at"
    std::string TxtLogMins = "15";  ///< that many minutes

    bool operator==(const CommsDialog&) const = default;
};

inline constexpr int least_log_minutes = 1;
inline constexpr int most_log_minutes = 99;  ///< for the dialog; a file may have more

/// The dialog's controls with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(CommsDialog& dialog);

/// The dialog filled with the settings in force.
[[nodiscard]] CommsDialog comms_dialog(const MainSettings& settings);

/// False for a control that has no meaning in the role that is ticked: a client has no port, no clients of its own and
/// no log. `hsbLogMins` is the bar beside `TxtLogMins`.
[[nodiscard]] bool is_enabled(const CommsDialog& dialog, std::string_view control);

/// A role has been ticked. On a machine without a network it is unticked again, and the box says why.
[[nodiscard]] std::optional<MessageBox> ticked_role(const Datagrams& datasock, bool& role);

/// `Command2`: puts `txtIP`, trimmed, at the end of the list; the box says why it is not taken: it is no address
/// (dotted_address(), network/client_address.h), or the list is full. The field is empty afterwards in either case.
[[nodiscard]] std::optional<MessageBox> add_address(CommsDialog& dialog);

/// `Command3`: takes the entry of this index, from 0, out of the list; -1 is no entry.
void remove_address(CommsDialog& dialog, int selected);

/// What the accept button finds wrong, in this order: a role without a network, which is unticked; a server without an
/// address, or with an entry that is none; a device name or minutes that cannot be stored. Nothing: the dialog can be
/// accepted.
[[nodiscard]] std::optional<MessageBox> unfit_comms(const Copy& copy, CommsDialog& dialog);

/// A person presses the accept button, `Command1`: the click, then what unfit_comms() finds. Nothing: accept_comms()
/// comes next.
[[nodiscard]] std::optional<MessageBox> press_command1(Copy& copy, CommsDialog& dialog);

/// The accept button, for a dialog that is fit: takes the values over, writes section `Main` and the devices that have
/// changed, and applies them. A first run, and whoever waits for the dialog (ask_in_comms_dialog()), applies them by
/// itself. May wait.
void accept_comms(Copy& copy, const CommsDialog& dialog);

/// Shows the dialog and waits until it has closed, accepted or not. What was accepted stands in the settings and in the
/// file then, and is for the caller to apply.
void ask_in_comms_dialog(Copy& copy);

/// Applies port and role as the settings have them: what has become a client, or is none any more, runs initprog again;
/// another device is opened; the sockets are opened afresh. Data that arrives meanwhile is thrown away. May wait.
void apply_comms(Copy& copy);

}  // namespace nimbry
