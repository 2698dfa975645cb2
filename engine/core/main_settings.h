#pragma once

#include <string>
#include <vector>

namespace nimbry {

/// The settings of section `Main` that the engine reads, under their key names. Read by initprog (core/initprog.h),
/// written back by WrtCfg. Texts are kept as they stand in the file.
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
    bool Hide = false;        ///< minimise after start
    bool MinSysTray = false;  ///< minimise to the tray
    std::string Latitude = "999", Longitude = "999";  ///< decimal degrees; "999" = no location entered
    std::string APRSserver, APRSport = "23", APRS_server_responds = "yes";
    std::string APRS2server, APRS2port = "23", APRS_2server_responds = "yes";
    bool mlogftp = false, mlogmail = false;
    bool InGraphs = true;  ///< graphs show the indoor readings too
    bool NoFTPop = false, NoMailPop = false;
    std::string WebComment = "<!--empty-->", WebComment2 = "<!--empty-->";
    std::string FTPPort = "21";
    bool DrwGrafs = false;                       ///< true: graph drawing is off
    bool WUactive = false, HWactive = false;     ///< log switches of the two weather services
    bool newchill = true;                        ///< wind chill by formula; false: the station's own value
    std::string alRoll = "5";                    ///< almanac roll, minutes
    std::string SerialPort1, SerialPort2, SerialPort3, SerialPort4;  ///< device names; empty: the system's default
};

}  // namespace nimbry
