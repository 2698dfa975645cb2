#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace nimbry {

class clsIniFile;

/// What the system calls its serial port 1 to 4: "/dev/ttyS0" to "/dev/ttyS3", or "COM1" to "COM4" on Windows.
[[nodiscard]] std::string default_device(int port);

/// The settings of section `Main` that the engine reads, under their key names; a value here is the key's default. Read
/// by initprog (core/initprog.h), written back by WrtCfg. Texts are kept as they stand in the file.
struct MainSettings {
    bool HasRun = false;
    bool fcom1 = true, fcom2 = false, fcom3 = false, fcom4 = false;  ///< which of the four ports is chosen
    bool bcastnet = false;                                           ///< server: send groups to clients
    bool fromnet = false;                                            ///< client: take groups from the network
    bool fwrtlog = false;                                            ///< write the weather log
    bool fBarhpa = false, fBarinhg = false, fBarmb = true;
    bool fRainin = false, fRainmm = true;
    bool fTempC = true, fTempF = false;
    bool fWindknots = false, fWindmph = false, fWindms = false, fWindkph = true;
    bool tmidnight = false, tnineam = true;  ///< when the weather day ends; exactly one is true
    bool AddOneHour = false;                 ///< with tnineam: one hour later, 10.00am
    int LogMin = 15;                         ///< minutes between log lines, at least 1
    std::vector<std::string> iplist;         ///< client addresses, in their order
    bool ErrorPop = false;                   ///< sensor fault windows off
    bool CCPop = false;                      ///< only the cold-climate humidity fault is silenced
    bool Cpop = true;                        ///< conversion pop-ups
    bool LogAPRS = false;
    bool Hide = false;                                ///< minimise after start
    bool MinSysTray = false;                          ///< minimise to the tray
    std::string Latitude = "999", Longitude = "999";  ///< decimal degrees; "999" = no location entered
    std::string APRSserver = "cwop.aprs.net", APRSport = "23", APRS_server_responds = "yes";
    std::string APRS2server = "rotate.aprs2.net", APRS2port = "23", APRS_2server_responds = "yes";
    bool mlogftp = false, mlogmail = false;
    bool InGraphs = true;  ///< graphs show the indoor readings too
    bool NoFTPop = false, NoMailPop = false;
    std::string WebComment = "<!--empty-->", WebComment2 = "<!--empty-->";
    std::string FTPPort = "21";
    bool DrwGrafs = false;                    ///< true: graph drawing is off
    bool WUactive = false, HWactive = false;  ///< log switches of the two weather services
    bool newchill = true;                     ///< wind chill by formula; false: the station's own value
    std::string alRoll = "5";                 ///< almanac roll, minutes
    /// Device names; never written unless somebody sets one.
    std::string SerialPort1 = default_device(1), SerialPort2 = default_device(2);
    std::string SerialPort3 = default_device(3), SerialPort4 = default_device(4);
};

/// One key of section `Main` and the field that holds its value.
struct MainKey {
    std::string_view key;
    std::variant<bool MainSettings::*, int MainSettings::*, std::string MainSettings::*> field;
};

/// Every key that has a field, in the order in which they are read. Not among them: `numofentries` and the `iplist(n)`,
/// which make up `iplist`.
[[nodiscard]] std::span<const MainKey> main_keys();

/// A field as its key holds it: "True" or "False", a number, or the text.
[[nodiscard]] std::string value_text(const MainSettings& settings, const MainKey& key);

/// Takes a value for one of these keys, as the file would have it.
void set_value(MainSettings& settings, std::string_view key, const std::string& text);

/// Longest client list that is read; what a damaged `numofentries` says beyond it is ignored.
inline constexpr int most_clients = 1000;

/// Reads every key of section `Main`, each with its default; `ini` must have been read. What the file leaves in doubt
/// is settled here: of several chosen ports the highest counts, units as units_from() tells, with both changeovers true
/// midnight counts, with none 9.00am; a `LogMin` below 1 is 15; an empty device is the system's. The six APRS server
/// keys are written back as they were read, so that they stand in the file from the first run on.
[[nodiscard]] MainSettings read_main_settings(clsIniFile& ini);

/// Writes the communications set back (the comms dialog's OK): the keys that have no handler of their own, in their
/// fixed order, with one write. True on success.
bool WrtCfg(clsIniFile& ini, const MainSettings& settings);

/// The port that is chosen, 1 to 4: the highest of `fcom1` to `fcom4` that is true, or 1.
[[nodiscard]] int chosen_port(const MainSettings& settings);

/// The device of a port, 1 to 4.
[[nodiscard]] const std::string& device_of(const MainSettings& settings, int port);

}  // namespace nimbry
