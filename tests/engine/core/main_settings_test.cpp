#include "engine/core/main_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/ini_file.h"
#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry {
namespace {

using Texts = std::vector<std::string>;

const std::string file = "Nimbry.ini";

class MainSettingsFile : public testing::Test {
protected:
    MainSettings read_from(const std::string& bytes) {
        disk.put(file, bytes);
        EXPECT_TRUE(ini.read());
        return read_main_settings(ini);
    }
    // With lines of section `Main`, each ended by "\n".
    MainSettings with(const std::string& lines) { return read_from("[Main]\n" + lines); }

    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    clsIniFile ini{disk, file};
};

struct Default {
    const char* key;
    const char* text;
};

// The keys as the documentation lists them, worked out apart from the code.
const std::vector<Default> defaults{
    {"HasRun", "False"},
    {"fcom1", "True"},
    {"fcom2", "False"},
    {"fcom3", "False"},
    {"fcom4", "False"},
    {"bcastnet", "False"},
    {"fromnet", "False"},
    {"fwrtlog", "False"},
    {"fBarhpa", "False"},
    {"fBarinhg", "False"},
    {"fBarmb", "True"},
    {"fRainin", "False"},
    {"fRainmm", "True"},
    {"fTempC", "True"},
    {"fTempF", "False"},
    {"fWindknots", "False"},
    {"fWindmph", "False"},
    {"fWindms", "False"},
    {"fWindkph", "True"},
    {"tmidnight", "False"},
    {"tnineam", "True"},
    {"LogMin", "15"},
    {"ErrorPop", "False"},
    {"CCPop", "False"},
    {"AddOneHour", "False"},
    {"LogAPRS", "False"},
    {"Hide", "False"},
    {"MinSysTray", "False"},
    {"Cpop", "True"},
    {"Latitude", "999"},
    {"Longitude", "999"},
    {"APRSserver", "cwop.aprs.net"},
    {"APRSport", "23"},
    {"APRS_server_responds", "yes"},
    {"APRS2server", "rotate.aprs2.net"},
    {"APRS2port", "23"},
    {"APRS_2server_responds", "yes"},
    {"mlogftp", "False"},
    {"mlogmail", "False"},
    {"InGraphs", "True"},
    {"NoFTPop", "False"},
    {"NoMailPop", "False"},
    {"WebComment", "<!--empty-->"},
    {"WebComment2", "<!--empty-->"},
    {"FTPPort", "21"},
    {"DrwGrafs", "False"},
    {"WUactive", "False"},
    {"HWactive", "False"},
    {"newchill", "True"},
    {"alRoll", "5"},
#ifdef _WIN32
    {"SerialPort1", "COM1"},
    {"SerialPort2", "COM2"},
    {"SerialPort3", "COM3"},
    {"SerialPort4", "COM4"},
#else
    {"SerialPort1", "/dev/ttyS0"},
    {"SerialPort2", "/dev/ttyS1"},
    {"SerialPort3", "/dev/ttyS2"},
    {"SerialPort4", "/dev/ttyS3"},
#endif
};

TEST_F(MainSettingsFile, WithoutASectionGivesEveryDefault) {
    for (const std::string bytes : {"", "[Other]\r\nfTempF=True\r\n", "no section at all\r\nfTempF=True\r\n"}) {
        SCOPED_TRACE(bytes);
        const MainSettings settings = read_from(bytes);
        ASSERT_EQ(main_keys().size(), defaults.size());
        for (std::size_t n = 0; n < defaults.size(); ++n) {
            EXPECT_EQ(main_keys()[n].key, defaults[n].key);
            EXPECT_EQ(value_text(settings, main_keys()[n]), defaults[n].text) << defaults[n].key;
        }
        EXPECT_EQ(settings.iplist, Texts{});
    }
}

TEST_F(MainSettingsFile, GivesEveryKeyToItsOwnField) {
    // Each key alone is set to what is not its default; the fields it must not touch keep theirs.
    for (const MainKey& changed : main_keys()) {
        const std::string key(changed.key);
        SCOPED_TRACE(key);
        const std::string before = value_text(MainSettings{}, changed);
        const std::string value = before == "True" ? "False" : before == "False" ? "True" : "77";
        const MainSettings settings = with(key + "=" + value + "\n");
        // Keys that settle a doubt by their partner have tests of their own.
        const bool settled = key.starts_with("fcom") || key.starts_with("fBar") || key.starts_with("fRain") ||
                             key.starts_with("fTemp") || key.starts_with("fWind") || key == "tmidnight" ||
                             key == "tnineam";
        if (settled) continue;
        for (const MainKey& other : main_keys())
            EXPECT_EQ(value_text(settings, other), other.key == key ? value : value_text(MainSettings{}, other))
                << other.key;
    }
}

TEST_F(MainSettingsFile, KeepsTextsAsTheyStand) {
    const MainSettings settings = with("WebComment=<b>; 'x' = \xB0</b>\nLatitude= -37.81 \nWebComment2=\n");
    EXPECT_EQ(settings.WebComment, "<b>; 'x' = \xB0</b>");
    EXPECT_EQ(settings.Latitude, "-37.81");
    EXPECT_EQ(settings.WebComment2, "");
}

TEST_F(MainSettingsFile, TakesExactlyTrueForTrue) {
    EXPECT_FALSE(with("Cpop=true\n").Cpop);
    EXPECT_FALSE(with("Cpop=1\n").Cpop);
    EXPECT_TRUE(with("Hide= True \n").Hide);
}

TEST_F(MainSettingsFile, TakesTheHighestOfSeveralPorts) {
    struct Case {
        const char* lines;
        int port;
    };
    for (const Case& c : {Case{"", 1}, Case{"fcom2=True\n", 2}, Case{"fcom3=True\nfcom2=True\n", 3},
                          Case{"fcom4=True\nfcom1=False\n", 4}, Case{"fcom1=False\n", 1}}) {
        SCOPED_TRACE(c.lines);
        const MainSettings settings = with(c.lines);
        EXPECT_EQ(chosen_port(settings), c.port);
        EXPECT_EQ(settings.fcom1, c.port == 1);
        EXPECT_EQ(settings.fcom2, c.port == 2);
        EXPECT_EQ(settings.fcom3, c.port == 3);
        EXPECT_EQ(settings.fcom4, c.port == 4);
    }
}

TEST_F(MainSettingsFile, NamesTheDeviceOfEachPort) {
    MainSettings settings =
        with("SerialPort1=/dev/serial/by-id/usb-x\nSerialPort2=\nSerialPort3=/dev/ttyUSB3\nSerialPort4=p4\n");
    EXPECT_EQ(device_of(settings, 1), "/dev/serial/by-id/usb-x");
    EXPECT_EQ(device_of(settings, 2), default_device(2)) << "an empty name is the system's";
    EXPECT_EQ(device_of(settings, 3), "/dev/ttyUSB3");
    EXPECT_EQ(device_of(settings, 4), "p4");
}

TEST_F(MainSettingsFile, SettlesContradictingUnitsOnce) {
    const MainSettings settings = with("fTempF=True\nfWindknots=True\nfWindms=True\nfBarhpa=True\nfRainin=True\n");
    EXPECT_TRUE(settings.fTempF && !settings.fTempC);
    EXPECT_TRUE(settings.fWindms && !settings.fWindknots && !settings.fWindkph);
    EXPECT_TRUE(settings.fBarhpa && !settings.fBarmb);
    EXPECT_TRUE(settings.fRainin && !settings.fRainmm);
    const MainSettings none = with("fTempC=False\nfWindkph=False\nfBarmb=False\nfRainmm=False\n");
    EXPECT_TRUE(none.fTempC && none.fWindkph && none.fBarmb && none.fRainmm);
}

TEST_F(MainSettingsFile, HasExactlyOneChangeover) {
    struct Case {
        const char* lines;
        bool midnight;
    };
    for (const Case& c :
         {Case{"", false}, Case{"tmidnight=True\n", true}, Case{"tmidnight=True\ntnineam=False\n", true},
          Case{"tnineam=False\n", false}, Case{"tmidnight=True\ntnineam=True\n", true}}) {
        SCOPED_TRACE(c.lines);
        const MainSettings settings = with(c.lines);
        EXPECT_EQ(settings.tmidnight, c.midnight);
        EXPECT_EQ(settings.tnineam, !c.midnight);
    }
}

TEST_F(MainSettingsFile, TakesTheWholePartOfTheLogsMinutesAndAtLeastOne) {
    struct Case {
        const char* text;
        int minutes;
    };
    for (const Case& c : {Case{"30", 30}, Case{"1.9", 1}, Case{"0.9", 15}, Case{"0", 15}, Case{"-5", 15}, Case{"x", 15},
                          Case{"", 15}, Case{"10 minutes", 10}})
        EXPECT_EQ(with("LogMin=" + std::string(c.text) + "\n").LogMin, c.minutes) << c.text;
}

TEST_F(MainSettingsFile, ReadsTheClientListFromOne) {
    const std::string list = "iplist(1)=10.0.0.1\niplist(2)= \niplist(3)=10.0.0.3\niplist(4)=beyond the count\n";
    EXPECT_EQ(with("numofentries=3\n" + list).iplist, (Texts{"10.0.0.1", "10.0.0.3"})) << "empty entries are skipped";
    EXPECT_EQ(with("numofentries=0\n" + list).iplist, Texts{});
    EXPECT_EQ(with("numofentries=-2\n" + list).iplist, Texts{});
    EXPECT_EQ(with(list).iplist, Texts{});
}

TEST_F(MainSettingsFile, ReadsAClientListThatIsCountedFromNought) {
    EXPECT_EQ(with("numofentries=2\niplist(0)=a\niplist(1)=b\n").iplist, (Texts{"a", "b"}));
    EXPECT_EQ(with("numofentries=2\niplist(0)=a\niplist(1)=b\niplist(2)=c\n").iplist, (Texts{"b", "c"}))
        << "it is counted from 1 when the last entry is there";
}

TEST_F(MainSettingsFile, WithADamagedCountIsReadInNoTime) {
    EXPECT_EQ(with("numofentries=2000000000\niplist(1)=a\n").iplist, Texts{"a"});
}

TEST_F(MainSettingsFile, ReadWritesBackTheSixServerKeysAndNothingElse) {
    read_from("");
    EXPECT_EQ(disk.contents(file),
              "[Main]\r\nAPRSserver=cwop.aprs.net\r\nAPRSport=23\r\nAPRS_server_responds=yes\r\n"
              "APRS2server=rotate.aprs2.net\r\nAPRS2port=23\r\nAPRS_2server_responds=yes\r\n");
    with("APRSserver='own.host'\nAPRS2port=\n");
    EXPECT_EQ(disk.contents(file),
              "[Main]\nAPRSserver=own.host\r\nAPRS2port=\r\nAPRSport=23\r\nAPRS_server_responds=yes\r\n"
              "APRS2server=rotate.aprs2.net\r\nAPRS_2server_responds=yes\r\n");
}

TEST_F(MainSettingsFile, ReadTwiceWritesOnce) {
    read_from("");
    disk.forget_calls();
    EXPECT_FALSE(read_main_settings(ini).HasRun);
    for (const auto& call : disk.calls()) EXPECT_EQ(call.operation, "read");
}

TEST_F(MainSettingsFile, OfUnreadableDiskIsTheDefaults) {
    disk.put(file, "[Main]\nHide=True\n");
    disk.refuse(file, FileResult::permission);
    EXPECT_FALSE(ini.read());
    EXPECT_FALSE(read_main_settings(ini).Hide);
}

TEST_F(MainSettingsFile, WrittenBackHasItsKeysInTheirOrder) {
    ASSERT_TRUE(ini.read());
    MainSettings settings;
    settings.iplist = {"10.0.0.1", "10.0.0.2"};
    settings.fcom1 = false;
    settings.fcom3 = true;
    settings.LogMin = 30;
    settings.FTPPort = "2121";
    settings.alRoll = "7";
    settings.newchill = false;
    EXPECT_TRUE(WrtCfg(ini, settings));
    EXPECT_EQ(
        disk.contents(file),
        "[Main]\r\nErrorPop=False\r\nfcom1=False\r\nfcom2=False\r\nfcom3=True\r\nfcom4=False\r\nbcastnet=False\r\n"
        "fromnet=False\r\nfwrtlog=False\r\nfBarhpa=False\r\nfBarinhg=False\r\nfBarmb=True\r\nfRainin=False\r\n"
        "fRainmm=True\r\nfTempC=True\r\nfTempF=False\r\nfWindknots=False\r\nfWindmph=False\r\nfWindms=False\r\n"
        "fWindkph=True\r\ntmidnight=False\r\ntnineam=True\r\nLogMin=30\r\nnumofentries=2\r\niplist(1)=10.0.0.1\r\n"
        "iplist(2)=10.0.0.2\r\nmlogftp=False\r\nmlogmail=False\r\nInGraphs=True\r\nNoFTPop=False\r\n"
        "NoMailPop=False\r\nWebComment=<!--empty-->\r\nWebComment2=<!--empty-->\r\nFTPPort=2121\r\nDrwGrafs=False\r\n"
        "WUactive=False\r\nHWactive=False\r\nnewchill=False\r\nalRoll=7\r\nAddOneHour=False\r\nLogAPRS=False\r\n");
}

TEST_F(MainSettingsFile, WrittenBackIsWrittenOnce) {
    ASSERT_TRUE(ini.read());
    disk.forget_calls();
    WrtCfg(ini, MainSettings{});
    std::size_t writes = 0;
    for (const auto& call : disk.calls()) writes += call.operation != "read";
    EXPECT_EQ(writes, 1U);
}

TEST_F(MainSettingsFile, WrittenBackLeavesClientsBeyondTheCountAndOtherKeys) {
    MainSettings settings = with("numofentries=2\niplist(1)=a\niplist(2)=b\nHide=True\nmine=1\n");
    settings.iplist = {"c"};
    EXPECT_TRUE(WrtCfg(ini, settings));
    EXPECT_EQ(ini.GetSetting("Main", "numofentries", ""), "1");
    EXPECT_EQ(ini.GetSetting("Main", "iplist(1)", ""), "c");
    EXPECT_EQ(ini.GetSetting("Main", "iplist(2)", ""), "b");
    EXPECT_EQ(ini.GetSetting("Main", "Hide", ""), "True");
    EXPECT_EQ(ini.GetSetting("Main", "mine", ""), "1");
    EXPECT_EQ(read_main_settings(ini).iplist, Texts{"c"});
}

TEST_F(MainSettingsFile, WrittenBackMakesContradictingUnitsConsistent) {
    const MainSettings settings = with("fTempF=True\ntmidnight=True\nfcom2=True\n");
    EXPECT_TRUE(WrtCfg(ini, settings));
    EXPECT_EQ(ini.GetSetting("Main", "fTempC", ""), "False");
    EXPECT_EQ(ini.GetSetting("Main", "fTempF", ""), "True");
    EXPECT_EQ(ini.GetSetting("Main", "tnineam", ""), "False");
    EXPECT_EQ(ini.GetSetting("Main", "fcom1", ""), "False");
}

TEST_F(MainSettingsFile, WrittenBackReadsAsTheSameSettings) {
    MainSettings settings = with("fWindmph=True\nLogMin=5\nnumofentries=1\niplist(1)=a\nHide=True\nLatitude=-37.8\n");
    WrtCfg(ini, settings);
    ASSERT_TRUE(ini.read());
    const MainSettings again = read_main_settings(ini);
    for (const MainKey& key : main_keys()) EXPECT_EQ(value_text(again, key), value_text(settings, key)) << key.key;
    EXPECT_EQ(again.iplist, settings.iplist);
}

}  // namespace
}  // namespace nimbry
