#include "programs/nimbry-station/options.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "programs/nimbry-station/times.h"

namespace nimbry::simulator {
namespace {

template <typename Number>
std::optional<Number> read_whole_number(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

constexpr std::array<std::string_view, 8> known_options{"--link", "--device", "--scenario", "--record",
                                                        "--play", "--start",  "--speed",    "--seed"};

/// Puts the value of a known option into its place; the complaint about a bad one otherwise.
std::optional<std::string> set(Options& options, std::string_view name, std::string_view value) {
    if (name == "--link") {
        options.link = value;
    } else if (name == "--device") {
        options.device = value;
    } else if (name == "--scenario") {
        options.scenario = value;
    } else if (name == "--record") {
        options.record = value;
    } else if (name == "--play") {
        options.play = value;
    } else if (name == "--start") {
        options.start = parse_moment(value);
        if (!options.start) return "--start takes a date and time like \"2026-10-31 23:58:00\"";
    } else if (name == "--speed") {
        options.speed = read_whole_number<int>(value).value_or(0);
        if (options.speed < 1 || options.speed > fastest) return "--speed takes a whole number from 1 to 1000";
    } else {
        const auto seed = read_whole_number<std::uint64_t>(value);
        if (!seed) return "--seed takes a whole number, 0 or more";
        options.seed = *seed;
    }
    return std::nullopt;
}

std::optional<std::string> contradiction(const Options& options) {
    if (options.link.empty() && options.device.empty()) return "--link PATH or --device PATH is needed";
    if (!options.link.empty() && !options.device.empty()) return "--link and --device exclude each other";
    if (!options.play.empty() && !options.scenario.empty()) return "--play and --scenario exclude each other";
    if (!options.play.empty() && !options.record.empty()) return "--play and --record exclude each other";
    return std::nullopt;
}

}  // namespace

std::variant<Options, UsageError> parse_options(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        const std::string_view argument = arguments[n];
        if (argument == "--help" || argument == "--version") {
            (argument == "--help" ? options.help : options.version) = true;
            return options;
        }
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string_view::npos;
        const std::string_view name = argument.substr(0, equals);
        if (std::ranges::find(known_options, name) == known_options.end()) {
            return UsageError{"unknown option " + std::string(argument)};
        }
        std::string_view value;
        if (equals != std::string_view::npos) {
            value = argument.substr(equals + 1);
        } else if (n + 1 < arguments.size()) {
            value = arguments[++n];
        }
        if (value.empty()) return UsageError{std::string(name) + " needs a value"};
        if (const auto complaint = set(options, name, value)) return UsageError{*complaint};
    }
    if (const auto complaint = contradiction(options)) return UsageError{*complaint};
    return options;
}

std::string_view help_text() {
    return R"(Usage: nimbry-station --link PATH [OPTION...]
       nimbry-station --device PATH [OPTION...]
Plays a weather station: a train of readings every 10 s, a lone wind group half way between. Prints "ready PATH" and
runs until it is ended (Ctrl-C).

  --link PATH       make a pseudo-terminal and a symbolic link PATH to it
  --device PATH     write to the serial line PATH, 9600 baud 8N1
  --start TIME      what the station's clock shows at first, "2026-10-31 23:58:00"; the computer's time without it
  --speed N         the station's time runs N times faster, 1 to 1000; up to 30 every train is sent
  --seed N          another weather; the same number always gives the same
  --scenario FILE   follow this script of readings, faults and broken lines (docs/formats/scenario.md)
  --record FILE     write down what is sent
  --play FILE       send what was written down, once, in place of a weather
  --help            this text
  --version         the version
)";
}

}  // namespace nimbry::simulator
