#pragma once

#include <optional>
#include <string>
#include <vector>

namespace nimbry::platform {

/// What the command line of nimbryd or nimbry asks for. Both take the same options.
struct CommandLine {
    enum class Wish {
        run,
        version,    ///< `--version`
        help,       ///< `--help`
        bad_usage,  ///< see `complaint`
    };
    Wish wish = Wish::run;
    std::optional<std::string> dir;  ///< `--dir DIR`: the program's folder
    std::string device;              ///< `--device PATH`: the serial device of this run; empty: by the settings
    std::string complaint;           ///< with bad_usage: what is wrong, one line without a line end
};

/// Reads the arguments after the program's name. An option's value is the next argument or follows "=": `--dir DIR`,
/// `--dir=DIR`. The first wrong argument is complained about; `--help` and `--version` need the rest to be right too.
[[nodiscard]] CommandLine read_command_line(const std::vector<std::string>& arguments);

/// The answer to `--version`: "nimbryd 2.02", and to `--help`, each with its line ends.
[[nodiscard]] std::string version_text(const std::string& program);
[[nodiscard]] std::string help_text(const std::string& program);

/// What standard error says of a wrong command line: the complaint and where to read more, one line.
[[nodiscard]] std::string usage_complaint(const std::string& program, const std::string& complaint);

}  // namespace nimbry::platform
