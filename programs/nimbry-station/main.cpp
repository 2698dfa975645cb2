#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <variant>

#include "programs/nimbry-station/line.h"
#include "programs/nimbry-station/options.h"
#include "programs/nimbry-station/patience.h"
#include "programs/nimbry-station/performance.h"
#include "programs/nimbry-station/station.h"

using namespace nimbry::simulator;

namespace {

constexpr int ended = 0, failed = 1, bad_usage = 2;

/// A file that cannot be read or understood; what() is a sentence for the user.
class FileFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string read_whole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) throw FileFailure(path + ": cannot be read");
    return text;
}

nimbry::CivilTime computer_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return nimbry::CivilTime(std::chrono::seconds(now + local.tm_gmtoff));
}

std::unique_ptr<Source> make_source(const Options& options) {
    StationPlay play{.seed = options.seed,
                     .start = options.start ? *options.start : computer_time(),
                     .speed = options.speed,
                     .scenario = {}};
    if (!options.scenario.empty()) {
        ScenarioReading read = read_scenario(read_whole(options.scenario), play.start);
        if (read.error) {
            throw FileFailure(options.scenario + ": line " + std::to_string(read.error->line) + ": " +
                              read.error->what);
        }
        play.scenario = std::move(read.steps);
    }
    return std::make_unique<Station>(std::move(play));
}

std::unique_ptr<Line> make_line(const Options& options) {
    if (options.device.empty()) return std::make_unique<PseudoTerminal>(options.link);
    return std::make_unique<SerialDevice>(options.device);
}

int play(const Options& options) {
    Patience patience;
    const auto source = make_source(options);
    const auto line = make_line(options);
    std::printf("ready %s\n", (options.device.empty() ? options.link : options.device).c_str());
    std::fflush(stdout);
    perform(*source, *line, patience);
    return ended;
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
    const auto parsed = parse_options(arguments.subspan(std::min<std::size_t>(1, arguments.size())));
    if (const auto* error = std::get_if<UsageError>(&parsed)) {
        std::fprintf(stderr, "nimbry-station: %s (--help tells more)\n", error->what.c_str());
        return bad_usage;
    }
    const Options& options = std::get<Options>(parsed);
    if (options.help) {
        std::printf("%s", std::string(help_text()).c_str());
        return ended;
    }
    if (options.version) {
        std::printf("nimbry-station %s\n", NIMBRY_VERSION);
        return ended;
    }
    try {
        return play(options);
    } catch (const std::exception& why) {
        std::fprintf(stderr, "nimbry-station: %s\n", why.what());
        return failed;
    }
}
