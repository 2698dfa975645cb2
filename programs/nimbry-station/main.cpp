#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <fstream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

#include "engine/core/version.h"
#include "programs/exit_status.h"
#include "programs/nimbry-station/line.h"
#include "programs/nimbry-station/options.h"
#include "programs/nimbry-station/patience.h"
#include "programs/nimbry-station/performance.h"
#include "programs/nimbry-station/recording.h"
#include "programs/nimbry-station/station.h"

using namespace nimbry::simulator;

namespace {

/// A file that cannot be read, understood or written; what() is a sentence for the user.
class FileFailure : public std::runtime_error {
public:
    FileFailure(const std::string& path, const std::string& what) : std::runtime_error(path + ": " + what) {}
};

std::string read_whole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    for (char byte = 0; file.get(byte);) text += byte;
    // A folder opens like a file, and fails at its first byte.
    if (!file.is_open() || file.bad()) throw FileFailure(path, std::string("cannot be read: ") + std::strerror(errno));
    return text;
}

nimbry::CivilTime computer_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return nimbry::CivilTime(std::chrono::seconds(now + local.tm_gmtoff));
}

StationPlay station_play(const Options& options) {
    StationPlay play{.seed = options.seed,
                     .start = options.start ? *options.start : computer_time(),
                     .speed = options.speed,
                     .scenario = {}};
    if (!options.scenario.empty()) {
        ScenarioReading read = read_scenario(read_whole(options.scenario), play.start);
        if (read.error) {
            throw FileFailure(options.scenario, "line " + std::to_string(read.error->line) + ": " + read.error->what);
        }
        play.scenario = std::move(read.steps);
    }
    return play;
}

std::unique_ptr<Source> recording(const Options& options) {
    const nimbry::StreamReading read = nimbry::read_stream(read_whole(options.play));
    if (!read.stream) throw FileFailure(options.play, read.error);
    return std::make_unique<Recording>(*read.stream, options.speed);
}

/// Writes a recording as it goes, so that one that is ended in any way can be read.
class Recorder {
public:
    /// Nothing is recorded to the path "".
    Recorder(const std::string& path, const nimbry::StreamFile& head) : path_(path) {
        if (!path_.empty()) file_.open(path_, std::ios::binary | std::ios::trunc);
        write(nimbry::write_stream_head(head));
    }
    void note(const Deed& deed) {
        if (const auto piece = piece_of(deed)) write(nimbry::write_stream_piece(*piece));
    }

private:
    void write(const std::string& text) {
        if (path_.empty()) return;
        file_ << text << std::flush;
        if (!file_) throw FileFailure(path_, "cannot be written");
    }

    std::string path_;
    std::ofstream file_;
};

std::unique_ptr<Line> make_line(const Options& options) {
    if (options.device.empty()) return std::make_unique<PseudoTerminal>(options.link);
    return std::make_unique<SerialDevice>(options.device);
}

void run(const Options& options) {
    Patience patience;
    StationPlay play;
    std::unique_ptr<Source> source;
    if (options.play.empty()) {
        play = station_play(options);
        source = std::make_unique<Station>(play);
    } else {
        source = recording(options);
    }
    Recorder recorder(options.record, recording_of(play));
    const std::unique_ptr<Line> line = make_line(options);
    std::printf("ready %s\n", (options.device.empty() ? options.link : options.device).c_str());
    std::fflush(stdout);
    perform(*source, *line, patience, [&](const Deed& deed) { recorder.note(deed); });
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
    const auto parsed = parse_options(arguments.empty() ? arguments : arguments.subspan(1));
    if (const auto* error = std::get_if<UsageError>(&parsed)) {
        std::fprintf(stderr, "nimbry-station: %s (--help tells more)\n", error->what.c_str());
        return nimbry::exit_status::bad_usage;
    }
    const Options& options = std::get<Options>(parsed);
    if (options.help) {
        std::fputs(std::string(help_text()).c_str(), stdout);
        return nimbry::exit_status::done;
    }
    if (options.version) {
        std::puts(("nimbry-station " + std::string(nimbry::program_version)).c_str());
        return nimbry::exit_status::done;
    }
    try {
        run(options);
        return nimbry::exit_status::done;
    } catch (const std::exception& why) {
        std::fprintf(stderr, "nimbry-station: %s\n", why.what());
        return nimbry::exit_status::failed;
    }
}
