#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "engine/derived/dates.h"
#include "tests/system/running_copy.h"
#include "tests/system/set_clock.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

using namespace std::chrono_literals;

/// How long it goes on: NIMBRY_SOAK_SECONDS, else about two minutes.
std::chrono::seconds soak_time() {
    const char* asked = std::getenv("NIMBRY_SOAK_SECONDS");
    return std::chrono::seconds{asked == nullptr ? 120 : std::atoi(asked)};
}

#ifdef __SANITIZE_ADDRESS__
/// 256 MiB: so much of what was freed the sanitizer keeps.
constexpr long spare_pages = 65536;
#else
/// 4 MiB.
constexpr long spare_pages = 1024;
#endif

/// The resident memory of a process, in pages.
long resident_pages(const Process& process) {
    std::ifstream facts("/proc/" + std::to_string(process.id()) + "/statm");
    long all = 0, resident = 0;
    facts >> all >> resident;
    return resident;
}

/// A server on a station's line, and a client that listens to it. The computer's clock is the test's to set.
class Soak : public testing::Test {
protected:
    Soak() {
        server_folder_.put("Nimbry.ini",
                           "[Main]\r\nHasRun=True\r\nfwrtlog=True\r\nLogMin=1\r\nbcastnet=True\r\n"
                           "numofentries=1\r\niplist(1)=" +
                               own_address(8) + "\r\nLocalIP=" + own_address(7) + "\r\n");
        client_folder_.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nfromnet=True\r\nLocalIP=" + own_address(8) + "\r\n");
        setting_.environment = clock_.environment();
    }

    void start_server() { server = std::make_unique<RunningCopy>(server_folder_, station.device(), setting_); }
    void start_client() { client = std::make_unique<RunningCopy>(client_folder_, "/dev/null", setting_); }

    /// Both take a train of the station, once they have found their way into its stream again.
    [[nodiscard]] bool trains_flow() {
        const int server_had = server->frames("trains"), client_had = client->frames("trains");
        return eventually([&] {
            station.send_paced(train_of_now());
            usleep(150'000);
            return server->frames("trains") > server_had && client->frames("trains") > client_had;
        });
    }

    /// How far the clock that the client goes by is from the true one, to the nearest hour.
    [[nodiscard]] std::optional<int> hours_beside() const {
        const QString stamp = client->status()["network"].toObject()["last_datagram"].toString();
        const std::optional<CivilTime> seen = parse_stamp(stamp.toStdString());
        if (!seen) return std::nullopt;
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        localtime_r(&now, &local);
        const CivilTime here{std::chrono::seconds{timegm(&local)}};
        return static_cast<int>(std::lround(static_cast<double>((*seen - here).count()) / 3600));
    }

    void make_noise() {
        const int thrown_away = server->frames("bytes_thrown_away");
        Bytes noise(500);
        for (int burst = 0; burst < 40; ++burst) {
            for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random_());
            station.send(noise);
            usleep(5'000);
        }
        EXPECT_TRUE(eventually([&] { return server->frames("bytes_thrown_away") > thrown_away; }));
    }

    void pull_the_adapter() {
        station.unplug();
        EXPECT_TRUE(eventually([&] { return !server->status()["serial"].toObject()["open"].toBool(true); }));
        station.plug_in();
        EXPECT_TRUE(server->listens());
    }

    void jump(int hours) {
        if (!SetClock::can_be_had()) return;
        clock_.put_beside(std::chrono::hours{hours});
        EXPECT_TRUE(eventually([&] { return trains_flow() && hours_beside() == hours; })) << hours;
    }

    void hold(const RunningCopy& copy) {
        copy.stop();
        const double had_worked = copy.processor_seconds();
        const auto until = std::chrono::steady_clock::now() + (soak_time() > 10min ? 120s : 4s);
        while (std::chrono::steady_clock::now() < until) {
            station.send_paced(train_of_now());
            usleep(500'000);
        }
        EXPECT_EQ(copy.processor_seconds(), had_worked);
        copy.signal(SIGCONT);
    }

    void kill(std::unique_ptr<RunningCopy>& copy) const {
        copy->signal(SIGKILL);
        copy->ending();
    }

    void send_at_full_speed() {
        const auto seen = [&] { return server->frames("trains") + server->frames("bytes_thrown_away"); };
        const int before = seen();
        for (int n = 0; n < 20; ++n) {
            station.send_paced(train_of_now());
            station.send_paced(write_lone_wind({}));
        }
        EXPECT_TRUE(eventually([&] { return seen() > before; }));
    }

    /// What two starts and one exit leave, whatever has happened between them.
    void expect_sound_records() const {
        for (const TemporaryFolder* folder : {&server_folder_, &client_folder_}) {
            SCOPED_TRACE(folder == &server_folder_ ? "server" : "client");
            const std::string log = folder->contents("nbyprog.log");
            const auto told = [&](const std::string& what) {
                int times = 0;
                for (std::size_t at = log.find(what); at != std::string::npos; at = log.find(what, at + 1)) ++times;
                return times;
            };
            EXPECT_EQ(told(" Program started\r\n"), 2) << log;
            EXPECT_EQ(told(" Program stopped, "), 1) << log;
            EXPECT_EQ(told(" Program stopped, normal exit\r\n"), 1) << log;
            EXPECT_EQ(told("Error"), 0) << log;
            const std::string today = folder->contents("nimbrTDay.log");
            EXPECT_EQ(std::count(today.begin(), today.end(), '\n'), 33) << today;
        }
        // A line a minute, and no line without all its fields.
        const std::string weather = server_folder_.contents("nimbry.dat");
        int lines = 0;
        for (std::size_t at = 0; at < weather.size();) {
            const std::size_t end = std::min(weather.find("\r\n", at), weather.size());
            const std::string line = weather.substr(at, end - at);
            at = end + 2;
            if (line.empty() || line.front() < '0' || line.front() > '9') continue;
            ++lines;
            EXPECT_EQ(std::count(line.begin(), line.end(), ','), 17) << line;
        }
        EXPECT_GE(lines, 1);
    }

    StationLine station;
    std::unique_ptr<RunningCopy> server, client;

private:
    TemporaryFolder server_folder_, client_folder_;
    SetClock clock_;
    Process::Setting setting_;
    std::mt19937 random_{1};
};

TEST_F(Soak, ServerAndClientComeBackByThemselvesEachTime) {
    start_server();
    ASSERT_TRUE(server->listens());
    start_client();
    ASSERT_TRUE(eventually([&] { return client->status()["role"].toString() == "client"; }));
    ASSERT_TRUE(trains_flow());

    kill(server);
    start_server();
    ASSERT_TRUE(server->listens());
    ASSERT_TRUE(trains_flow()) << "after the server was killed";
    kill(client);
    start_client();
    ASSERT_TRUE(eventually([&] { return client->status()["role"].toString() == "client"; }));
    ASSERT_TRUE(trains_flow()) << "after the client was killed";

    // From here on the same two processes live through it all.
    struct Trouble {
        const char* what;
        std::function<void()> happens;
    };
    const std::array<Trouble, 8> troubles{{
        {"noise on the line", [&] { make_noise(); }},
        {"the adapter is pulled and put in again", [&] { pull_the_adapter(); }},
        {"the computer's clock jumps ahead", [&] { jump(3); }},
        {"and back, beyond where it was", [&] { jump(-2); }},
        {"and is right again", [&] { jump(0); }},
        {"the server is stopped for a while", [&] { hold(*server); }},
        {"the client is stopped for a while", [&] { hold(*client); }},
        {"frames without a pause between them", [&] { send_at_full_speed(); }},
    }};
    const auto end = std::chrono::steady_clock::now() + soak_time();
    std::array<long, 2> most_pages{};
    for (int round = 0; round == 0 || std::chrono::steady_clock::now() < end; ++round) {
        for (const Trouble& trouble : troubles) {
            SCOPED_TRACE(std::to_string(round) + ": " + trouble.what);
            ASSERT_NO_FATAL_FAILURE(trouble.happens());
            ASSERT_TRUE(trains_flow()) << server->standard_error() << client->standard_error();
            ASSERT_TRUE(server->runs());
            ASSERT_TRUE(client->runs());
        }
        // What a round costs for good shows in an hour's many.
        for (std::size_t n = 0; n < most_pages.size(); ++n) {
            const long pages = resident_pages(n == 0 ? *server : *client);
            if (round == 0) most_pages[n] = pages + spare_pages;
            EXPECT_LE(pages, most_pages[n]) << (n == 0 ? "server" : "client");
        }
    }
    for (const auto& copy : {server.get(), client.get()}) {
        copy->signal(SIGINT);
        EXPECT_EQ(copy->ending(), exited(0));
    }
    expect_sound_records();
}

}  // namespace
}  // namespace nimbry::system_test
