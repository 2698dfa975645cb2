#include "engine/core/program_log_pruning.h"

#include <string>
#include <vector>

#include "engine/core/copy.h"
#include "engine/core/run_time_error.h"
#include "engine/core/switches.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

// The lines without their ends. What stands behind the last line end is a line only if it is not empty.
std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(take_line(text, LineEnds::newline));
    return lines;
}

Balloon balloon(std::string title, std::string text, std::string icon) {
    Balloon balloon;
    balloon.title = std::move(title);
    balloon.text = std::move(text);
    balloon.icon = std::move(icon);
    return balloon;
}

}  // namespace

Pruning prune_program_log(Files& files) {
    const std::string log(ProgramLog::file);
    const std::string copy(pruning_file);
    std::string text;
    const FileResult read = files.read(log, text);
    if (read == FileResult::not_found) return Pruning::no_log;
    require(read);

    const std::vector<std::string_view> lines = lines_of(text);
    if (lines.size() <= entries_kept) return Pruning::few_entries;
    std::string kept;
    for (std::size_t n = lines.size() - entries_kept; n < lines.size(); ++n) kept.append(lines[n]).append(line_end);

    require(files.replace(copy, kept));
    require(files.remove(log));
    require(files.rename(copy, log));
    return Pruning::done;
}

MessageBox pruning_question() {
    MessageBox question;
    question.title = "Nimbry message";
    question.text = "Are you sure you want to clear all but\r\nthe last 10 entries from the program log?";
    question.icon = "?";
    question.choices = Choices::yes_no;
    return question;
}

Balloon pruning_refusal(Pruning result) {
    switch (result) {
        case Pruning::no_log: return balloon("Log File Error", "No program log file exists", "!");
        case Pruning::few_entries:
            return balloon("Log File", "There are already 10 or less entries in the program log", "i");
        case Pruning::done:
        case Pruning::declined: break;
    }
    return {};
}

Pruning mnuClearProgLog(Copy& copy) {
    return tagged("mnuClearProgLog", [&] {
        copy.ports.sounds.play(std::string(click_sound));
        Pruning result = Pruning::declined;
        if (!copy.ports.files.exists(std::string(ProgramLog::file))) {
            result = Pruning::no_log;
        } else if (copy.ports.notices.box(pruning_question()) == Answer::yes) {
            result = prune_program_log(copy.ports.files);
        }
        if (result == Pruning::no_log || result == Pruning::few_entries)
            copy.ports.notices.balloon(pruning_refusal(result));
        return result;
    });
}

bool mnuProgLog(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
    if (copy.ports.files.exists(std::string(ProgramLog::file))) return true;
    copy.ports.notices.balloon(balloon("Program Log File Error", "No program log file has been created yet", "!"));
    return false;
}

}  // namespace nimbry
