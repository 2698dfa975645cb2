// A year in a minute: 365 days of trains, one every ten seconds, through a whole copy in virtual time, with every file
// of its records written to a folder of the disk. The weather log runs, graphs and pages do not. Aim: under 60 s on one
// core.
//
//     year_in_a_minute [DAYS [FOLDER]]     365 days; without a folder one is made under /tmp and taken away again

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "engine/core/engine.h"
#include "platform/disk_files.h"
#include "tests/world/generated_weather.h"
#include "tests/world/recording_ports.h"
#include "tests/world/scripted_line.h"
#include "tests/world/scripted_streams.h"
#include "tests/world/scripted_transfers.h"
#include "tests/world/virtual_clock.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
constexpr auto between_trains = 10s;
constexpr int trains_a_day = 24 * 360;

/// A copy on a real folder, in virtual time.
struct Year {
    Year(int days, const std::string& folder) : trains(days * trains_a_day), files(folder) {
        pauses.set_wake_source([this] { return engine.wake_at(); }, [this] { engine.wake(); });
    }
    ~Year() { pauses.end_all(); }
    Year(const Year&) = delete;
    Year& operator=(const Year&) = delete;

    void live() {
        pauses.start([this] { engine.start({}); });
        pauses.after(2s, [this] { deliver(0); });
        pauses.pause(2s + trains * between_trains);
        pauses.start([this] { engine.menu_exit(); });
        pauses.pause(1s);
    }

    /// Each train scripts the next: an event runs on the stack of the one before, while a loop in the test would
    /// change stacks for each train.
    void deliver(int nth) {
        line.arrive(write_train(weather.at(start + nth * between_trains)));
        notices.balloons.clear();
        if (nth + 1 < trains) pauses.after(between_trains, [this, nth] { deliver(nth + 1); });
        engine.line_readable();
    }

    const int trains;
    GeneratedWeather weather{1};
    const CivilTime start = *civil_time({2027, 1, 1, 0, 0, 2});
    VirtualClock clock{start - 2s};
    VirtualPauses pauses{clock};
    platform::DiskFiles files;
    ScriptedLine line{clock};
    RecordingDatagrams datasock;
    ScriptedStreams streams{clock, pauses};
    RecordingNotices notices{clock, pauses};
    RecordingSounds sounds;
    RecordingDesktop desktop;
    ScriptedTransfers transfers{clock};
    Engine engine{Ports{clock, pauses, files, line, datasock, streams, notices, sounds, desktop, transfers}};
};

std::size_t lines_of(const std::filesystem::path& file) {
    std::ifstream text(file, std::ios::binary);
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(text), {}, '\n'));
}

void report(const std::filesystem::path& folder, int trains, double seconds, double of_the_processor) {
    std::size_t files = 0, rows = 0, log_lines = 0;
    std::uintmax_t bytes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        ++files;
        bytes += entry.file_size();
        constexpr std::size_t almanac_head = 8, log_head = 7;
        if (name.ends_with(".csv") && name.starts_with("al") && name != "altemp.csv")
            rows += lines_of(entry.path()) - almanac_head;
        if (name.ends_with(".csv") && name.starts_with("log")) log_lines += lines_of(entry.path()) - log_head;
    }
    std::printf("%d trains in %.1f s (%.1f s of the processor): %.0f a second\n", trains, seconds, of_the_processor,
                trains / of_the_processor);
    std::printf("%zu files, %ju bytes; %zu almanac rows and %zu log lines in the archives\n", files, bytes, rows,
                log_lines);
}

int run(int days, const std::filesystem::path& folder) {
    std::ofstream(folder / "Nimbry.ini", std::ios::binary)
        << "[Main]\r\nHasRun=True\r\ntmidnight=True\r\ntnineam=False\r\nfwrtlog=True\r\nLogMin=15\r\nDrwGrafs=True\r\n";
    const auto before = std::chrono::steady_clock::now();
    Year year(days, folder.string());
    year.live();
    report(folder, year.trains, std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count(),
           static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
    return year.engine.exit_status();
}

}  // namespace
}  // namespace nimbry::test

int main(int argc, char** argv) {
    const int days = argc > 1 ? std::atoi(argv[1]) : 365;
    if (argc > 2) {
        std::filesystem::create_directories(argv[2]);
        return nimbry::test::run(days, argv[2]);
    }
    std::string name = "/tmp/nimbry-year-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) return 1;
    const int status = nimbry::test::run(days, name);
    std::filesystem::remove_all(name);
    return status;
}
