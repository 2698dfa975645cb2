#include "engine/setup/comms_dialog.h"

#include <algorithm>
#include <array>

#include "engine/core/initprog.h"
#include "engine/core/serial_port.h"
#include "engine/core/switches.h"
#include "engine/derived/number_text.h"
#include "engine/network/client_address.h"
#include "engine/network/start_network.h"

namespace nimbry {
namespace {

using D = CommsDialog;
using S = MainSettings;

/// A serial port: its option and the field of its device, with their keys.
struct PortRow {
    std::string_view option, device;  ///< names of the controls; the second is the key as well
    bool D::*chosen;
    std::string D::*field;
    bool S::*chosen_key;
    std::string S::*device_key;
};

constexpr std::array ports{
    PortRow{"Option1", "SerialPort1", &D::Option1, &D::SerialPort1, &S::fcom1, &S::SerialPort1},
    PortRow{"Option2", "SerialPort2", &D::Option2, &D::SerialPort2, &S::fcom2, &S::SerialPort2},
    PortRow{"Option3", "SerialPort3", &D::Option3, &D::SerialPort3, &S::fcom3, &S::SerialPort3},
    PortRow{"Option4", "SerialPort4", &D::Option4, &D::SerialPort4, &S::fcom4, &S::SerialPort4},
};

constexpr std::array<std::string_view, 8> not_in_a_client{"Check1", "Check3", "TxtLogMins", "hsbLogMins",
                                                          "IPList", "txtIP",  "Command2",   "Command3"};

constexpr const char* not_an_address = "The IP address appears to be invalid.\r\nUse the format nnn.nnn.nnn.nnn";
constexpr const char* no_network = "Networking does not appear to be installed on this machine.";
constexpr std::size_t longest_device = 255;

std::optional<MessageBox> refusal(std::string text) {
    return MessageBox{.text = std::move(text)};
}

/// The list of a file that was edited by hand may hold anything.
std::optional<MessageBox> unfit_address(const std::vector<std::string>& list) {
    const auto found = std::find_if(list.begin(), list.end(), [](const std::string& e) { return !dotted_address(e); });
    if (found == list.end()) return {};
    return MessageBox{.text = not_an_address, .detail = "In the list: " + *found};
}

/// What the file has beyond the range of the dialog stays as long as nobody changes it.
bool minutes_can_be_taken(const D& dialog, const MainSettings& settings) {
    const std::string minutes = trimmed(dialog.TxtLogMins);
    if (minutes == numtext(settings.LogMin)) return true;
    const bool is_number = minutes.find_first_not_of("0123456789") == std::string::npos;
    return is_number && whole_number(minutes) >= least_log_minutes && whole_number(minutes) <= most_log_minutes;
}

bool device_can_be_taken(const std::string& device) {
    return device.size() <= longest_device &&
           std::none_of(device.begin(), device.end(), [](unsigned char c) { return c < ' '; });
}

void take(MainSettings& settings, const D& dialog) {
    settings.bcastnet = dialog.Check1;
    settings.fromnet = dialog.Check2;
    settings.iplist = dialog.IPList;
    settings.fwrtlog = dialog.Check3;
    if (minutes_can_be_taken(dialog, settings)) settings.LogMin = whole_number(dialog.TxtLogMins);
    for (const PortRow& port : ports) settings.*port.chosen_key = dialog.*port.chosen;
}

/// Only a device that somebody has changed gets a key; a copy without one goes on with what the system calls its ports.
void take_devices(Copy& copy, const D& dialog) {
    std::vector<clsIniFile::Setting> changed;
    int number = 0;
    for (const PortRow& port : ports) {
        ++number;
        std::string device = trimmed(dialog.*port.field);
        if (device.empty()) device = default_device(number);
        std::string& in_force = copy.state.settings.*port.device_key;
        if (device == in_force) continue;
        in_force = device;
        changed.push_back({"Main", std::string(port.device), device});
    }
    if (!changed.empty()) copy.ini.SaveSettings(changed);
}

/// Holds received data off while the line and the sockets change under it.
class DataHeldOff {
public:
    explicit DataHeldOff(bool& initflag) : initflag_(initflag) {
        initflag_ = true;  // NOLINT(cppcoreguidelines-prefer-member-initializer): the flag it refers to, not the member
    }
    ~DataHeldOff() { initflag_ = false; }
    DataHeldOff(const DataHeldOff&) = delete;
    DataHeldOff& operator=(const DataHeldOff&) = delete;

private:
    bool& initflag_;
};

}  // namespace

std::vector<DialogControl> dialog_controls(CommsDialog& dialog) {
    std::vector<DialogControl> controls;
    for (const PortRow& port : ports) {
        controls.push_back({port.option, &(dialog.*port.chosen)});
        controls.push_back({port.device, &(dialog.*port.field)});
    }
    controls.push_back({"Check1", &dialog.Check1});
    controls.push_back({"Check2", &dialog.Check2});
    controls.push_back({"IPList", &dialog.IPList});
    controls.push_back({"txtIP", &dialog.txtIP});
    controls.push_back({"Check3", &dialog.Check3});
    controls.push_back({"TxtLogMins", &dialog.TxtLogMins});
    return controls;
}

CommsDialog comms_dialog(const MainSettings& settings) {
    CommsDialog dialog;
    for (const PortRow& port : ports) {
        dialog.*port.chosen = settings.*port.chosen_key;
        dialog.*port.field = settings.*port.device_key;
    }
    dialog.Check1 = settings.bcastnet;
    dialog.Check2 = settings.fromnet;
    dialog.IPList = settings.iplist;
    dialog.Check3 = settings.fwrtlog;
    dialog.TxtLogMins = numtext(settings.LogMin);
    return dialog;
}

bool is_enabled(const CommsDialog& dialog, std::string_view control) {
    if (!dialog.Check2) return true;
    return std::find(not_in_a_client.begin(), not_in_a_client.end(), control) == not_in_a_client.end() &&
           std::none_of(ports.begin(), ports.end(),
                        [&](const PortRow& port) { return port.option == control || port.device == control; });
}

std::optional<MessageBox> ticked_role(const Datagrams& datasock, bool& role) {
    if (!role || datasock.IsNetworkInstalled()) return {};
    role = false;
    return refusal(no_network);
}

std::optional<MessageBox> add_address(CommsDialog& dialog) {
    const std::string address = trimmed(dialog.txtIP);
    dialog.txtIP.clear();
    if (!dotted_address(address)) return refusal(not_an_address);
    if (dialog.IPList.size() >= most_clients) return refusal("The address list is full.");
    dialog.IPList.push_back(address);
    return {};
}

void remove_address(CommsDialog& dialog, int selected) {
    if (selected >= 0 && selected < static_cast<int>(dialog.IPList.size()))
        dialog.IPList.erase(dialog.IPList.begin() + selected);
}

std::optional<MessageBox> unfit_comms(const Copy& copy, CommsDialog& dialog) {
    if (auto box = ticked_role(copy.ports.datasock, dialog.Check2)) return box;
    if (auto box = ticked_role(copy.ports.datasock, dialog.Check1)) return box;
    if (dialog.Check1 && dialog.IPList.empty()) return refusal("There must be at least one entry in the address list.");
    // In a client these fields are disabled, and what stands in them is not taken.
    if (dialog.Check2) return {};
    if (dialog.Check1) {
        if (auto box = unfit_address(dialog.IPList)) return box;
    }
    for (const PortRow& port : ports) {
        if (!device_can_be_taken(dialog.*port.field)) return refusal("The name of a serial device can not be used.");
    }
    if (!minutes_can_be_taken(dialog, copy.state.settings))
        return refusal("The minutes of the data log need to be between 1 and 99.");
    return {};
}

std::optional<MessageBox> press_command1(Copy& copy, CommsDialog& dialog) {
    copy.ports.sounds.play(std::string(click_sound));
    return unfit_comms(copy, dialog);
}

void accept_comms(Copy& copy, const CommsDialog& dialog) {
    take(copy.state.settings, dialog);
    if (!dialog.Check2) take_devices(copy, dialog);
    WrtCfg(copy.ini, copy.state.settings);
    // A first run, and whoever waits for the dialog, goes on with them by itself.
    if (copy.state.settings.HasRun && !copy.state.setup.Form2.awaited) apply_comms(copy);
}

void ask_in_comms_dialog(Copy& copy) {
    SetupWindow& window = copy.state.setup.Form2;
    window.open = window.awaited = true;
    copy.ports.notices.show_window("Form2");
    copy.ports.pauses.wait_until([&] { return !window.open; });
    window.awaited = false;
}

void apply_comms(Copy& copy) {
    const DataHeldOff held(copy.state.comm.initflag);
    const std::string device = device_of_this_run(copy.state);
    const std::string& before = copy.state.run.port_device;
    if (device.empty() != before.empty()) return initprog(copy);
    if (device != before) open_serial_port(copy);
    startnetwork(copy);
}

}  // namespace nimbry
