#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <regex>

#include "engine/station/train_writer.h"
#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

class NimbrydTest : public testing::Test {
protected:
    /// Lets a train pass and waits until the copy has counted it. Where the line has to find its way into the stream
    /// again, the station's next trains do it.
    static bool train_is_taken(const RunningCopy& copy, const StationLine& station) {
        const int before = copy.frames("trains");
        return eventually([&] {
            station.send(train_of_now());
            // Longer than both settling times, or the next train would end up in this one.
            usleep(150'000);
            return copy.frames("trains") > before;
        });
    }

    TemporaryFolder folder;
    StationLine station;
};

TEST_F(NimbrydTest, TheFirstStartStampsTheConfigurationAndWritesTheStartLine) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    const std::string ini = folder.contents("Nimbry.ini");
    for (const char* line : {"Version=Nimbry|202|251003\r\n", "WebComment=<!--empty-->\r\n",
                             "WebComment2=<!--empty-->\r\n", "FTPPort=21\r\n", "HasRun=True\r\n", "UpTime="}) {
        SCOPED_TRACE(line);
        EXPECT_NE(ini.find(line), std::string::npos);
    }
    ASSERT_EQ(copy.log().size(), 2U);
    EXPECT_EQ(copy.log()[0], std::string(52, '*'));
    const std::regex start_line(R"(\d\d [A-Z][a-z][a-z] \d{4} \d\d:\d\d:\d\d \(Computer time\) Program started)");
    EXPECT_TRUE(std::regex_match(copy.log()[1], start_line)) << copy.log()[1];
}

TEST_F(NimbrydTest, ATrainThatComesAtOnceIsTaken) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    station.send(write_train({}));
    EXPECT_TRUE(eventually([&] { return copy.frames("trains") == 1; }));
}

TEST_F(NimbrydTest, ATrainAtTheSpeedOfTheLineIsTakenAndThenALoneWindGroup) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    // Where the sender itself is held up for 30 ms in the middle, the pieces are no frame; then the next one is.
    int sent = 0;
    const auto is_taken = [&](const Bytes& frame, const char* kind) {
        return eventually([&] {
            ++sent;
            station.send_paced(frame);
            usleep(150'000);
            return copy.frames(kind) > 0;
        });
    };
    EXPECT_TRUE(is_taken(write_train({}), "trains"));
    EXPECT_TRUE(is_taken(write_lone_wind({}), "lone"));
    if (sent == 2) {
        EXPECT_EQ(copy.frames("bytes_thrown_away"), 0);
    }
}

TEST_F(NimbrydTest, NoiseIsThrownAwayAndTheNextTrainsAreTaken) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    std::uint32_t seed = 1;
    Bytes noise(2000);
    for (int burst = 0; burst < 50; ++burst) {
        for (std::uint8_t& byte : noise)
            byte = static_cast<std::uint8_t>((seed = seed * 1664525U + 1013904223U) >> 24U);
        station.send(noise);
        usleep(2000);
    }
    EXPECT_TRUE(train_is_taken(copy, station));
    EXPECT_TRUE(copy.runs());
}

struct SignalCase {
    const char* what;
    int number;
    const char* word;
};
void PrintTo(const SignalCase& c, std::ostream* out) {
    *out << c.what;
}

class NimbrydSignalTest : public NimbrydTest, public testing::WithParamInterface<SignalCase> {};

TEST_P(NimbrydSignalTest, EndsTheCopyWithItsStopLine) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    copy.signal(GetParam().number);
    EXPECT_EQ(copy.ending(), exited(0));
    EXPECT_TRUE(copy.last_logged().ends_with(std::string(" (Computer time) Program stopped, ") + GetParam().word))
        << copy.last_logged();
    EXPECT_EQ(copy.standard_output(), "");
    EXPECT_EQ(copy.standard_error(), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, NimbrydSignalTest,
                         testing::Values(SignalCase{"Interrupt", SIGINT, "normal exit"},
                                         SignalCase{"Terminate", SIGTERM, "forced exit (Windows closing)"},
                                         SignalCase{"HangUp", SIGHUP, "forced exit (Windows closing)"}),
                         [](const auto& tested) { return std::string(tested.param.what); });

TEST_F(NimbrydTest, ASecondSignalDuringTheExitIsIgnored) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    copy.signal(SIGSTOP);  // both are pending when the copy goes on
    copy.signal(SIGINT);
    copy.signal(SIGTERM);
    copy.signal(SIGCONT);
    for (int n = 0; n < 1000 && copy.runs(); ++n) copy.signal(SIGHUP);
    EXPECT_EQ(copy.ending(), exited(0));
    EXPECT_EQ(
        copy.logged(" Program stopped, normal exit") + copy.logged(" Program stopped, forced exit (Windows closing)"),
        1);
}

TEST_F(NimbrydTest, AnExitDuringTheStartEndsTheCopyToo) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(eventually([&] { return copy.logged(" Program started") == 1; }));
    copy.signal(SIGINT);  // between the two opens of the port
    EXPECT_EQ(copy.ending(), exited(0));
    EXPECT_EQ(copy.logged(" Program stopped, normal exit"), 1);
}

TEST_F(NimbrydTest, TheStopLineBearsTheStationsTimeOnceItIsKnown) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    StationReadings readings;
    readings.clock = {10, 0, 14, 5, 10};
    station.send(write_train(readings));
    ASSERT_TRUE(eventually([&] { return copy.frames("trains") == 1; }));
    copy.signal(SIGINT);
    EXPECT_EQ(copy.ending(), exited(0));
    const std::regex stop_line(R"(05 Oct \d{4} 14:00:10 Program stopped, normal exit)");
    EXPECT_TRUE(std::regex_match(copy.last_logged(), stop_line)) << copy.last_logged();
}

TEST_F(NimbrydTest, ASecondCopyInTheFolderIsRefused) {
    RunningCopy first(folder, station.device());
    ASSERT_TRUE(first.listens());
    const std::string log = folder.contents("nbyprog.log");
    Process second(NIMBRYD, {"--dir", folder.path()});
    EXPECT_EQ(second.ending(), exited(3));
    EXPECT_EQ(second.standard_error(), "nimbryd: Another copy of Nimbry (process " + std::to_string(first.id()) +
                                           ") has the folder " + folder.path() + "\n");
    EXPECT_EQ(second.standard_output(), "");
    EXPECT_EQ(folder.contents("nbyprog.log"), log);
    EXPECT_TRUE(first.runs());
}

TEST_F(NimbrydTest, AKilledCopysFolderIsTakenOverAtOnce) {
    {
        RunningCopy killed(folder, station.device());
        ASSERT_TRUE(killed.listens());
        killed.signal(SIGKILL);
        EXPECT_EQ(killed.ending(), (Ending{false, SIGKILL}));
        EXPECT_EQ(killed.logged(" Program stopped, normal exit"), 0);
    }
    RunningCopy next(folder, station.device());
    ASSERT_TRUE(next.listens());
    EXPECT_EQ(next.logged(" Program started"), 2);
    EXPECT_TRUE(train_is_taken(next, station));
}

TEST_F(NimbrydTest, AWrongCommandLineIsOneLineAndStatus2) {
    struct Case {
        const char* what;
        std::vector<std::string> arguments;
        std::string line;
    };
    folder.put("file", "");
    const Case cases[] = {
        {"an unknown option", {"--speed"}, "nimbryd: unknown option --speed (see nimbryd --help)\n"},
        {"a missing value", {"--dir"}, "nimbryd: --dir needs a value (see nimbryd --help)\n"},
        {"no folder",
         {"--dir", folder.path("file")},
         "nimbryd: The folder " + folder.path("file") + " cannot be used: it is not a folder\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Process wrong(NIMBRYD, c.arguments);
        EXPECT_EQ(wrong.ending(), exited(2));
        EXPECT_EQ(wrong.standard_error(), c.line);
        EXPECT_EQ(wrong.standard_output(), "");
    }
}

TEST_F(NimbrydTest, TellsItsVersionAndItsUse) {
    Process version(NIMBRYD, {"--version"});
    EXPECT_EQ(version.ending(), exited(0));
    EXPECT_EQ(version.standard_output(), "nimbryd 2.02\n");
    Process help(NIMBRYD, {"--help"});
    EXPECT_EQ(help.ending(), exited(0));
    EXPECT_TRUE(help.standard_output().starts_with("Usage: nimbryd "));
}

TEST_F(NimbrydTest, TheFolderCanBeNamedInTheEnvironment) {
    Process copy(NIMBRYD, {"--device", station.device()},
                 {.environment = {{"NIMBRY_HOME", folder.path("made")}}, .in_child = {}});
    EXPECT_TRUE(eventually([&] { return folder.holds("made/nbyprog.log"); }));
    copy.signal(SIGINT);
    EXPECT_EQ(copy.ending(), exited(0));
}

// The line is not there while the copy waits out its retries: 1, 2, 5, 10 seconds and then every 30.
TEST_F(NimbrydTest, ALineThatIsPulledOutAndPutInAgainIsOpenedAgain) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    ASSERT_TRUE(train_is_taken(copy, station));

    station.unplug();
    ASSERT_TRUE(eventually([&] { return copy.logged(" Serial port lost") == 1; }));
    EXPECT_FALSE(copy.status()["serial"].toObject()["open"].toBool(true));

    station.plug_in();
    ASSERT_TRUE(eventually([&] { return copy.logged(" Serial port opened again") == 1; }));
    EXPECT_TRUE(train_is_taken(copy, station));
    EXPECT_EQ(copy.logged(" Serial port lost"), 1);
    EXPECT_EQ(copy.standard_error(), "Comms Error: Serial port lost (" + station.device() +
                                         ") / Nimbry tries to open it again by itself.\n"
                                         "Nimbry Information: Serial port opened again (" +
                                         station.device() + ")\n");
}

TEST_F(NimbrydTest, ALostLineCostsNoProcessorTime) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    const double before = copy.processor_seconds();
    station.unplug();
    ASSERT_TRUE(eventually([&] { return copy.logged(" Serial port lost") == 1; }));
    // Half a second passed on the way here; a line that repeats its error would have used all of it.
    EXPECT_LT(copy.processor_seconds() - before, 0.25);
}

TEST_F(NimbrydTest, ALineThatIsMissingAtTheStartIsOpenedOnceItIsThere) {
    station.unplug();
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(
        eventually([&] { return copy.logged(" COM Port Error, Please check that the selected port exists") == 1; }));
    EXPECT_TRUE(copy.runs());
    station.plug_in();
    ASSERT_TRUE(copy.listens());
    EXPECT_TRUE(train_is_taken(copy, station));
    EXPECT_EQ(copy.standard_error(), "Comms Error: COM Port Error, Please check that the selected port exists (" +
                                         station.device() + ") / Nimbry tries again by itself.\n")
        << "once";
}

TEST_F(NimbrydTest, AnExitWhileTheLineIsMissingEndsTheCopy) {
    station.unplug();
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(
        eventually([&] { return copy.logged(" COM Port Error, Please check that the selected port exists") == 1; }));
    copy.signal(SIGTERM);
    EXPECT_EQ(copy.ending(), exited(0));
}

/// Gives up root's right to write everything.
void become_an_ordinary_user() {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(125);
}

TEST_F(NimbrydTest, AFolderThatCanNotBeWrittenEndsTheCopyOnceWithItsError) {
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    Process copy(NIMBRYD, {"--dir", folder.path(), "--device", station.device()},
                 {.environment = {}, .in_child = become_an_ordinary_user});
    const Ending ending = copy.ending();
    if (ending == exited(127)) GTEST_SKIP() << "an ordinary user can not start " << NIMBRYD;
    EXPECT_EQ(ending, exited(1));
    EXPECT_EQ(copy.standard_error(),
              "Nimbry: Unrecoverable error 70 Permission denied encountered in Load. / Nimbry will now exit.\n");
}

TEST_F(NimbrydTest, AFullDiskEndsTheCopyOnceWithItsErrorAndLeavesTheLogWhole) {
    const std::string log(8192, '-');
    folder.put("nbyprog.log", log);
    const auto no_file_over_8192_bytes = [] {
        const rlimit limit{8192, 8192};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    RunningCopy copy(folder, station.device(), {.environment = {}, .in_child = no_file_over_8192_bytes});
    EXPECT_EQ(copy.ending(), exited(1));
    EXPECT_EQ(copy.standard_error(),
              "Nimbry: Unrecoverable error 61 Disk full encountered in Load. / Nimbry will now exit.\n");
    EXPECT_EQ(folder.contents("nbyprog.log"), log);
}

TEST_F(NimbrydTest, AConfigurationFileThatCanNotBeReadIsOneNoticeAndTheDefaults) {
    std::filesystem::create_directory(folder.path("Nimbry.ini"));
    RunningCopy copy(folder, station.device());
    EXPECT_TRUE(eventually([&] { return copy.logged(" Program started") == 1; }));
    EXPECT_EQ(copy.standard_error(), "Nimbry: Nimbry.ini can not be read. / The default settings are used.\n");
    ASSERT_TRUE(copy.listens());
}

TEST_F(NimbrydTest, AnyConfigurationFileIsLivedWith) {
    struct Case {
        const char* what;
        std::string bytes;
    };
    std::string long_line = "[Main]\r\nfcom1=";
    long_line.resize(10'000'000, 'x');
    const Case cases[] = {
        {"nothing", ""},
        {"no section", "fcom1=True\r\n"},
        {"bytes without sense", std::string("\0\xFF[\r\r\n=[Main\n]=\n\0", 17)},
        {"ten million bytes in one line", long_line},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const TemporaryFolder own;
        own.put("Nimbry.ini", c.bytes);
        RunningCopy copy(own, station.device());
        EXPECT_TRUE(copy.listens());
        EXPECT_EQ(copy.standard_error(), "");
        EXPECT_NE(own.contents("Nimbry.ini").find("Version=Nimbry|202|251003\r\n"), std::string::npos);
    }
}

// Otherwise a file of the copy would take the place of standard error, and notices would be written into it.
TEST_F(NimbrydTest, WithoutStandardFilesTheCopyHasNullFilesInTheirPlace) {
    const auto close_all_three = [] {
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(descriptor);
    };
    RunningCopy copy(folder, station.device(), {.environment = {}, .in_child = close_all_three});
    ASSERT_TRUE(copy.listens());
    for (const char* number : {"0", "1", "2"}) {
        SCOPED_TRACE(number);
        const std::string link = "/proc/" + std::to_string(copy.id()) + "/fd/" + number;
        EXPECT_EQ(std::filesystem::read_symlink(link), "/dev/null");
    }
}

}  // namespace
}  // namespace nimbry::system_test
