#include "engine/core/program_log.h"

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/core/separator.h"
#include "engine/derived/dates.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

constexpr std::string_view computer_time = " (Computer time)";

}  // namespace

std::string ProgramLog::when() const {
    return state_.readings.dtvar ? stamp_text(*state_.readings.dtvar) : computer_when();
}

std::string ProgramLog::computer_when() const {
    return stamp_text(clock_.computer_time()) + std::string(computer_time);
}

FileResult ProgramLog::append(std::string_view lines) {
    return files_.append(std::string(file), std::string(lines) + std::string(line_end));
}

void ProgramLog::event(std::string_view message) {
    require(append(when() + std::string(message)));
}

void ProgramLog::computer_event(std::string_view message) {
    require(append(computer_when() + std::string(message)));
}

void ProgramLog::started() {
    // The line that a power cut has torn stays by itself.
    require(append(std::string(missing_line_end(files_, std::string(file))) + std::string(separator_line) +
                   std::string(line_end) + computer_when() + " Program started"));
}

void ProgramLog::event_or_nothing(std::string_view message) noexcept {
    try {
        event(message);
    } catch (...) {
        // The caller is already reporting or leaving; there is nowhere else to tell it.
    }
}

}  // namespace nimbry
