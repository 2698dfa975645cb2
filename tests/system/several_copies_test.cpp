#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_scales.h"
#include "engine/records/day_files.h"
#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

using namespace std::chrono_literals;

CivilTime now() {
    const std::time_t moment = std::time(nullptr);
    std::tm local{};
    localtime_r(&moment, &local);
    return *civil_time(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

/// A whole day of samples, saved a moment ago.
std::string day_of_graphs() {
    WeatherState state;
    setgraphscales(state);
    const CivilTime saved = now();
    for (int minute = pmm1; minute > 0; --minute) {
        GraphRow row;
        row.set_gtime(stamp_text(saved - std::chrono::minutes{minute}));
        for (int s = 0; s < series::count; ++s) row.set_gdata(s, static_cast<float>(minute % 40));
        state.graphs.rows.append(row);
    }
    return graph_file_text(state.graphs, saved);
}

/// The extremes of a day that ended a moment ago.
std::string extremes_of_yesterday() {
    YesterdayRecord day;
    day.extremes.maxtemp = 17;
    day.extremes.mintemp = 4;
    day.extremes.maxhum = 90;
    day.extremes.minhum = 40;
    day.extremes.maxbar = 1011;
    day.extremes.minbar = 1001;
    day.extremes.maxrain = 0;
    day.extremes.maxwind = 6;
    day.extremes.maxwindir = "90\xB0";
    return yesterday_text(now(), day);
}

constexpr useconds_t longer_than_both_settling_times = 150'000;

/// A copy in a folder of its own, with these lines in section `Main`.
struct Member {
    Member(const std::string& main_lines, const std::string& device, const Process::Setting& setting = {}) {
        folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n" + main_lines);
        start_ = [this, device, setting] { copy = std::make_unique<RunningCopy>(folder, device, setting); };
    }
    void start() { start_(); }

    [[nodiscard]] QJsonObject part(const char* name) const { return copy->status()[QLatin1String(name)].toObject(); }
    [[nodiscard]] std::string sync_result() const { return part("sync")["last_result"].toString().toStdString(); }

    /// Every box that tells of the weather, by its name. Left out is what tells of the copy itself, and of the minute
    /// in which a train reached it: a minute may turn between the server's moment and the client's.
    [[nodiscard]] std::map<std::string, std::string> boxes() const {
        Process asked(NIMBRYCTL, {"--dir", folder.path(), "boxes"});
        if (asked.ending() != exited(0)) return {};
        std::map<std::string, std::string> boxes;
        const std::string text = asked.standard_output();
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', at);
            const std::string line = text.substr(at, end - at);
            const std::string value = line.substr(line.find('\t') + 1);
            boxes[line.substr(0, line.find('\t'))] = value.substr(0, value.find(" at "));
            at = end + 1;
        }
        boxes.erase("txtStarted");
        boxes.erase("txtRunning");
        // The last hour is looked at when a minute has turned: a client that came since shows nothing yet.
        boxes.erase("TxtRainLH");
        boxes.erase("TxtWindGLH");
        boxes.erase("txtAmtLastRain");  // a copy that found no file of the day shows it without its unit
        return boxes;
    }

    TemporaryFolder folder;
    std::unique_ptr<RunningCopy> copy;

private:
    std::function<void()> start_;
};

void expect_same_boxes(const Member& server, const Member& client) {
    std::map<std::string, std::string> shown, expected;
    EXPECT_TRUE(eventually([&] {
        shown = client.boxes();
        expected = server.boxes();
        return !shown.empty() && shown == expected;
    }));
    for (const auto& [name, text] : expected) EXPECT_EQ(shown[name], text) << name;
}

void give_server_files(const TemporaryFolder& folder) {
    folder.put("grafdata.dat", day_of_graphs());
    folder.put("nimbrYDay.log", extremes_of_yesterday());
    folder.put("nbextreme.log", "an almanac\r\n");
}

class SeveralCopies : public testing::Test {
protected:
    void send_train(double outdoor) {
        const CivilTime moment = now();
        const DateParts parts = parts_of(moment);
        StationReadings readings;
        readings.clock = {parts.second, parts.minute, parts.hour, parts.day, parts.month};
        readings.temperature.outdoor = outdoor;
        station.send(write_train(readings));
    }

    /// Sends a train, and waits until everybody has taken it.
    [[nodiscard]] bool everybody_takes_train(const std::vector<const Member*>& members, double outdoor) {
        std::vector<int> before;
        before.reserve(members.size());
        for (const Member* member : members) before.push_back(member->copy->frames("trains"));
        send_train(outdoor);
        return eventually([&] {
            for (std::size_t n = 0; n < members.size(); ++n) {
                if (members[n]->copy->frames("trains") <= before[n]) return false;
            }
            return true;
        });
    }

    /// The station sends its trains until the first has reached the client, which then fetches its server's files.
    [[nodiscard]] bool fetches_all_files(const Member& client, double outdoor) {
        return eventually([&] { return client.copy->status()["role"].toString() == "client"; }) && eventually([&] {
                   if (!client.sync_result().empty()) return true;
                   if (!client.part("sync")["running"].toBool()) send_train(outdoor);
                   usleep(longer_than_both_settling_times);
                   return false;
               }) &&
               client.sync_result() == "all files";
    }

    StationLine station;
};

TEST_F(SeveralCopies, AClientStartsWhereItsServerStandsAndShowsWhatItShows) {
    Member server("bcastnet=True\r\nfTempC=False\r\nfTempF=True\r\nnumofentries=1\r\niplist(1)=" + own_address(2) +
                      "\r\nLocalIP=" + own_address(1) + "\r\n",
                  station.device());
    give_server_files(server.folder);
    server.start();
    ASSERT_TRUE(server.copy->listens());
    ASSERT_TRUE(everybody_takes_train({&server}, 10));
    ASSERT_TRUE(everybody_takes_train({&server}, 14));

    Member client("fromnet=True\r\nLocalIP=" + own_address(2) + "\r\n", "/dev/null");
    client.start();
    ASSERT_TRUE(fetches_all_files(client, 12)) << client.copy->standard_error();
    EXPECT_EQ(client.part("network")["peers"].toString().toStdString(), own_address(1));
    EXPECT_EQ(server.copy->logged(" A client machine at " + own_address(2) + " connected"), 1);
    EXPECT_EQ(client.folder.contents("tempsync.cfg"), server.folder.contents("sync.cfg"));
    EXPECT_EQ(client.folder.contents("nbextreme.log"), "an almanac\r\n");
    EXPECT_TRUE(client.copy->standard_error().ends_with(
        "All files have been transferred successfully\nNimbry client is now starting ....\n"));

    // The first train of a run only primes the cycle.
    ASSERT_TRUE(everybody_takes_train({&server, &client}, 12.5));
    for (const double outdoor : {15.5, 9.0, 16.2}) {
        SCOPED_TRACE(outdoor);
        ASSERT_TRUE(everybody_takes_train({&server, &client}, outdoor)) << client.copy->standard_error();
        expect_same_boxes(server, client);
    }
    EXPECT_EQ(server.part("sync")["running"].toBool(), false) << "it listens for the next one";
}

TEST_F(SeveralCopies, AClientThatIsKilledInTheMiddleLeavesItsServerFreeForTheNext) {
    Member server(
        "bcastnet=True\r\nnumofentries=1\r\niplist(1)=" + own_address(4) + "\r\nLocalIP=" + own_address(3) + "\r\n",
        station.device());
    give_server_files(server.folder);
    server.start();
    ASSERT_TRUE(server.copy->listens());
    ASSERT_TRUE(everybody_takes_train({&server}, 10));
    for (const bool is_killed : {true, false}) {
        SCOPED_TRACE(is_killed);
        Member client("fromnet=True\r\nLocalIP=" + own_address(4) + "\r\n", "/dev/null");
        client.start();
        if (!is_killed) {
            EXPECT_TRUE(fetches_all_files(client, 12)) << client.copy->standard_error();
            continue;
        }
        ASSERT_TRUE(eventually([&] { return client.copy->status()["role"].toString() == "client"; }));
        // The log is looked at, which takes no time: the files are fetched within a second or two.
        const auto has_come = [&] {
            return server.copy->logged(" A client machine at " + own_address(4) + " connected") > 0;
        };
        ASSERT_TRUE(eventually([&] {
            send_train(12);
            for (int look = 0; look < 40 && !has_come(); ++look) usleep(5'000);
            return has_come();
        }));
        client.copy->signal(SIGKILL);
        client.copy->ending();
        ASSERT_TRUE(eventually([&] { return !server.part("sync")["running"].toBool(); }));
    }
}

/// Three machines on one cable, as network namespaces: a server and two clients.
class Machines {
public:
    Machines() {
        const std::string id = std::to_string(getpid());
        for (const char* name : {"s", "a", "b"}) names_.push_back("nimbry" + id + name);
        for (const std::string& name : names_) made_ = run("netns add " + name) && made_;
        const std::string server = "-n " + names_[0] + " ";
        made_ = made_ && run(server + "link set lo up") && run(server + "link add br0 type bridge") &&
                run(server + "addr add 192.0.2.1/24 dev br0") && run(server + "link set br0 up");
        for (int n = 1; n <= 2; ++n) {
            const std::string machine = names_[static_cast<std::size_t>(n)];
            const std::string end = "c" + std::to_string(n);
            made_ = made_ && run(server + "link add " + end + " type veth peer name eth0 netns " + machine) &&
                    run(server + "link set " + end + " master br0 up") &&
                    run("-n " + machine + " addr add 192.0.2." + std::to_string(n + 1) + "/24 dev eth0") &&
                    run("-n " + machine + " link set eth0 up");
        }
        // A broadcast leaves by the interface of the default route.
        made_ = made_ && run(server + "route add default dev br0");
    }
    ~Machines() {
        for (const std::string& name : names_) run("netns del " + name);
    }
    Machines(const Machines&) = delete;
    Machines& operator=(const Machines&) = delete;

    [[nodiscard]] bool made() const { return made_; }

    /// Starts a program on machine 0 (the server's), 1 or 2.
    [[nodiscard]] Process::Setting on(std::size_t machine) const {
        Process::Setting setting;
        setting.in_child = [path = "/run/netns/" + names_[machine]] {
            const int network = open(path.c_str(), O_RDONLY | O_CLOEXEC);
            if (network < 0 || setns(network, CLONE_NEWNET) != 0) _exit(126);
        };
        return setting;
    }

private:
    static bool run(const std::string& what) {
        return std::system(("ip " + what + " 2>/dev/null").c_str()) == 0;  // NOLINT(cert-env33-c): a fixed text
    }

    std::vector<std::string> names_;
    bool made_ = true;
};

class SeveralMachines : public SeveralCopies {
protected:
    void SetUp() override {
        if (machines.made()) return;
        if (std::getenv("CI") != nullptr) FAIL() << "this test has to run here, and networks of its own cannot be had";
        GTEST_SKIP() << "networks of its own cannot be had here: that takes root and iproute2";
    }

    const Machines machines;
};

TEST_F(SeveralMachines, AServerAndAClientShareOneWithoutAddressesOfTheirOwn) {
    Member server("bcastnet=True\r\nnumofentries=1\r\niplist(1)=127.0.0.1\r\n", station.device(), machines.on(0));
    give_server_files(server.folder);
    server.start();
    ASSERT_TRUE(server.copy->listens());
    ASSERT_TRUE(everybody_takes_train({&server}, 10));

    Member client("fromnet=True\r\n", "/dev/null", machines.on(0));
    client.start();
    ASSERT_TRUE(fetches_all_files(client, 11)) << client.copy->standard_error();
    EXPECT_TRUE(everybody_takes_train({&server, &client}, 12));
}

TEST_F(SeveralMachines, OneBroadcastReachesEveryClientOfANetwork) {
    Member server("bcastnet=True\r\nnumofentries=1\r\niplist(1)=255.255.255.255\r\n", station.device(), machines.on(0));
    give_server_files(server.folder);
    server.start();
    ASSERT_TRUE(server.copy->listens());
    ASSERT_TRUE(everybody_takes_train({&server}, 10));

    Member first("fromnet=True\r\n", "/dev/null", machines.on(1));
    Member second("fromnet=True\r\n", "/dev/null", machines.on(2));
    for (Member* client : {&first, &second}) {
        client->start();
        ASSERT_TRUE(fetches_all_files(*client, 11)) << client->copy->standard_error();
    }
    EXPECT_EQ(server.copy->logged(" A client machine at 192.0.2.2 connected"), 1);
    EXPECT_EQ(server.copy->logged(" A client machine at 192.0.2.3 connected"), 1);
    ASSERT_TRUE(everybody_takes_train({&server, &first, &second}, 15));
    ASSERT_TRUE(everybody_takes_train({&server, &first, &second}, 16));
    for (const Member* client : {&first, &second}) {
        expect_same_boxes(server, *client);
    }
}

}  // namespace
}  // namespace nimbry::system_test
