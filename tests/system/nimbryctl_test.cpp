#include <unistd.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <csignal>
#include <string>
#include <vector>

#include "tests/system/nimbryctl_fixture.h"

namespace nimbry::system_test {
namespace {

TEST_F(NimbryctlTest, WithoutARunningCopyItEndsWith4) {
    const Said said = ask_copy({"status"});
    EXPECT_EQ(said.ending, exited(4));
    EXPECT_EQ(said.out, "");
    EXPECT_EQ(said.err, "nimbryctl: no copy of Nimbry runs in " + folder.path() + '\n');
    EXPECT_EQ(ask({"--dir", folder.path("missing"), "status"}).ending, exited(4));
    EXPECT_FALSE(folder.holds("missing")) << "who only asks makes no folder";
}

TEST_F(NimbryctlTest, BadUsageEndsWith2AndOneLine) {
    start();
    for (const std::vector<std::string>& words : {std::vector<std::string>{},
                                                  {"tell"},
                                                  {"--loud"},
                                                  {"--dir"},
                                                  {"--dir", ""},
                                                  {"--dir", folder.path()},
                                                  {"--dir", folder.path(), "get", "Main"},
                                                  {"--dir", folder.path(), "status", "--xml"}}) {
        const Said said = ask(words);
        SCOPED_TRACE(testing::PrintToString(words));
        EXPECT_EQ(said.ending, exited(2));
        EXPECT_EQ(said.out, "");
        EXPECT_EQ(std::count(said.err.begin(), said.err.end(), '\n'), 1) << said.err;
    }
}

TEST_F(NimbryctlTest, HelpAndVersionNeedNoCopy) {
    EXPECT_EQ(ask({"--version"}).out, "nimbryctl 2.02\n");
    const Said help = ask({"--help"});
    EXPECT_EQ(help.ending, exited(0));
    for (const char* verb : {"boxes", "status", "notices", "panel", "get", "set", "prune-log", "stop"}) {
        EXPECT_NE(help.out.find(std::string("\n  ") + verb), std::string::npos) << verb;
    }
}

TEST_F(NimbryctlTest, TheFolderMayBeNamedByTheEnvironment) {
    start();
    const Process::Setting named{{{"NIMBRY_HOME", folder.path()}}, {}};
    EXPECT_EQ(ask({"status"}, named).ending, exited(0));
    EXPECT_EQ(ask({"--dir=" + folder.path(), "status"}).ending, exited(0));
}

TEST_F(NimbryctlTest, BoxesShowWhatTheStationSaid) {
    start(true);
    EXPECT_EQ(ask_copy({"boxes", "Text2(0)", "Text2(4)"}).out, "Text2(0)\t+12.3 °C\nText2(4)\t 1013 mB\n");
    const auto boxes = QJsonDocument::fromJson(QByteArray::fromStdString(ask_copy({"boxes", "--json"}).out)).array();
    EXPECT_GT(boxes.size(), 100);
    for (const QJsonValue box : boxes) {
        const QJsonObject object = box.toObject();
        EXPECT_EQ(object.keys().join(' '), "back balloon checked enabled fore name text tip visible");
        EXPECT_TRUE(object["back"].isDouble() && object["visible"].isBool() && object["text"].isString());
    }
    const Said wrong = ask_copy({"boxes", "Text2(99)"});
    EXPECT_EQ(wrong.ending, exited(1));
    EXPECT_EQ(wrong.err, "There is no box Text2(99)\n");
}

TEST_F(NimbryctlTest, StatusIsTheSameAsLinesAndAsJson) {
    start(true);
    const QJsonObject status = copy->status();
    EXPECT_EQ(status["role"].toString(), "alone");
    EXPECT_EQ(status["folder"].toString().toStdString(), folder.path());
    EXPECT_TRUE(status["fullystarted"].isBool());
    EXPECT_TRUE(status["uploads"].toObject()["ftp"].toObject()["last_end"].isNull());
    EXPECT_EQ(status["serial"].toObject()["device"].toString().toStdString(), station.device());
    const std::string lines = ask_copy({"status"}).out;
    EXPECT_NE(lines.find("\nserial.device\t" + station.device() + "\nserial.open\ttrue\n"), std::string::npos);
    EXPECT_NE(lines.find("\nframes.trains\t2\n"), std::string::npos);
}

TEST_F(NimbryctlTest, ASettingIsSetInTheFileAndInTheCopy) {
    start();
    EXPECT_EQ(ask_copy({"set", "Main", "WebComment", "Grüße, 20 °C"}).ending, exited(0));
    EXPECT_EQ(ask_copy({"get", "Main", "WebComment"}).out, "Grüße, 20 °C\n");
    EXPECT_NE(folder.contents("Nimbry.ini").find("WebComment=Gr\xFC\337e, 20 \260C\r\n"), std::string::npos);
    const Said unknown = ask_copy({"set", "Main", "Colour", "blue"});
    EXPECT_EQ(unknown.ending, exited(1));
    EXPECT_EQ(unknown.err, "Nimbry knows no key Colour in section Main\n");
}

TEST_F(NimbryctlTest, UnitsTurnInARunningCopyWithTheNextTrain) {
    start(true);
    EXPECT_EQ(ask_copy({"boxes", "Text2(0)"}).out, "Text2(0)\t+12.3 \u00B0C\n");
    EXPECT_EQ(ask_copy({"units", "--temp", "F"}).ending, exited(0));
    station.send(train_of_now());
    ASSERT_TRUE(eventually([&] { return copy->frames("trains") == 3; }));
    EXPECT_EQ(ask_copy({"boxes", "Text2(0)"}).out, "Text2(0)\t+54.1 \u00B0F\n");
    EXPECT_EQ(ask_copy({"get", "Main", "fTempF"}).out, "True\n");
}

TEST_F(NimbryctlTest, ARoleThatIsSetIsTakenWhenItIsApplied) {
    start();
    EXPECT_EQ(ask_copy({"set", "Main", "bcastnet", "True"}).ending, exited(0));
    const Said refused = ask_copy({"apply", "comms"});
    EXPECT_EQ(refused.ending, exited(1));
    EXPECT_EQ(refused.err, "There must be at least one entry in the address list.\n");
    EXPECT_EQ(ask_copy({"set", "Main", "bcastnet", "False"}).ending, exited(0));
    EXPECT_EQ(ask_copy({"apply"}).ending, exited(0));
    EXPECT_EQ(ask_copy({"get", "Main", "Latitude"}).out, "999\n");
    ASSERT_TRUE(copy->listens());
}

TEST_F(NimbryctlTest, TheProgramLogIsPrunedWhenItIsMeant) {
    folder.put("nbyprog.log", "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n");  // the start adds two
    start();
    EXPECT_EQ(ask_copy({"prune-log"}).ending, exited(1));
    EXPECT_EQ(copy->log().size(), 11U);
    EXPECT_EQ(ask_copy({"prune-log", "--yes"}).ending, exited(0));
    EXPECT_EQ(copy->log().size(), 10U);
    EXPECT_EQ(copy->log().front(), "2");
}

TEST_F(NimbryctlTest, StopReturnsWhenTheCopyHasGone) {
    start();
    const Said said = ask_copy({"stop"});
    EXPECT_EQ(said.ending, exited(0));
    EXPECT_EQ(said.out + said.err, "");
    EXPECT_FALSE(copy->runs());
    EXPECT_EQ(copy->ending(), exited(0));
    EXPECT_TRUE(copy->last_logged().ends_with(" Program stopped, normal exit"));
    EXPECT_FALSE(folder.holds("nimbry.socket"));
    EXPECT_FALSE(folder.holds("nimbry.lock"));
}

TEST_F(NimbryctlTest, ACopyThatIsKilledLeavesNothingInTheWay) {
    start();
    copy->signal(SIGKILL);
    copy->ending();
    EXPECT_TRUE(folder.holds("nimbry.socket"));
    EXPECT_EQ(ask_copy({"status"}).ending, exited(4));
    start();
    EXPECT_EQ(ask_copy({"status"}).ending, exited(0));
}

TEST_F(NimbryctlTest, AFolderWithALongNameHasItsCopyAnswering) {
    const std::string deep = folder.path(std::string(200, 'n') + '/' + std::string(200, 'n'));
    Process nimbryd(NIMBRYD, {"--dir", deep, "--device", station.device()});
    EXPECT_TRUE(eventually([&] { return ask({"--dir", deep, "status"}).ending == exited(0); }));
    EXPECT_EQ(ask({"--dir", deep, "stop"}).ending, exited(0));
    EXPECT_EQ(nimbryd.ending(), exited(0));
}

TEST_F(NimbryctlTest, AGraphLiesWhereNimbryctlWasCalled) {
    start(true);
    const TemporaryFolder elsewhere;
    const std::string& place = elsewhere.path();
    const std::vector<std::string> words{"--dir", folder.path(), "graph",  "wind",
                                         "--svg", "wind.svg",    "--size", "400x200"};
    const auto draw_elsewhere = [&] {
        return ask(words, {.environment = {}, .in_child = [&place] {
                               if (::chdir(place.c_str()) != 0) ::_exit(99);
                           }});
    };
    const Said said = draw_elsewhere();
    EXPECT_EQ(said.ending, exited(0)) << said.err;
    EXPECT_TRUE(elsewhere.contents("wind.svg").starts_with("<svg ")) << "not in the copy's folder";
    EXPECT_FALSE(folder.holds("wind.svg"));
    // Between two drawings the graph may have gone on by a minute.
    EXPECT_TRUE(eventually([&] {
        return draw_elsewhere().ending == exited(0) &&
               ask_copy({"graph", "wind", "--size", "400x200"}).out == elsewhere.contents("wind.svg");
    }));
}

TEST_F(NimbryctlTest, AGraphIsDrawnAsAPngOfItsSize) {
    start(true);
    // Without that variable Qt would have something to say.
    const Process::Setting bare{.environment = {{"XDG_RUNTIME_DIR", ""}}, .in_child = {}};
    const Said said =
        ask({"--dir", folder.path(), "graph", "temperature", "--size", "300x200", "--png", folder.path("t.png")}, bare);
    EXPECT_EQ(said.ending, exited(0));
    EXPECT_EQ(said.out + said.err, "");
    const std::string picture = folder.contents("t.png");
    EXPECT_TRUE(picture.starts_with("\x89PNG\r\n")) << picture.size();
    // Width and height stand at byte 16 and 20, the most significant byte first.
    EXPECT_EQ(picture.substr(16, 8), std::string("\0\0\x01\x2C\0\0\0\xC8", 8));
    EXPECT_EQ(ask_copy({"graph", "wind", "--png", folder.path("missing/t.png")}).ending, exited(1));
    EXPECT_EQ(ask_copy({"graph", "wind", "--png", folder.path("a"), "--svg", folder.path("b")}).ending, exited(2));
    EXPECT_EQ(ask_copy({"graph", "snow", "--png", folder.path("a")}).ending, exited(2));
}

}  // namespace
}  // namespace nimbry::system_test
