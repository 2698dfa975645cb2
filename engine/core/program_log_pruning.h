#pragma once

#include <string_view>

#include "engine/ports/files.h"
#include "engine/ports/notices.h"

namespace nimbry {

struct Copy;

// The two menu entries of the program log: its viewer and its clearing. An entry of the log is a line, the separator of
// a start too.

/// How many entries a clearing keeps.
inline constexpr std::size_t entries_kept = 10;

/// Where the kept entries stand until the log is gone.
inline constexpr std::string_view pruning_file = "nbyprog.tmp";

enum class Pruning {
    done,
    no_log,       ///< there is no log
    few_entries,  ///< 10 or less: the log was not touched
    declined,     ///< the question was answered with no
};

/// Cuts the log to its last 10 entries, in order, each ended by CR LF: they are written to `pruning_file` (one that a
/// crash left is overwritten), the log is deleted, the copy takes its name. Asks nothing and tells nothing. A last line
/// without a line end counts. Throws RunTimeError when the disk refuses.
[[nodiscard]] Pruning prune_program_log(Files& files);

/// The question before it: "Are you sure you want to clear all but" ... (Yes/No).
[[nodiscard]] MessageBox pruning_question();

/// What is told of a clearing that was refused; nothing is told of `done` and `declined`, and asking for it then gives
/// an empty balloon.
[[nodiscard]] Balloon pruning_refusal(Pruning result);

/// The menu entry "Prune Program Log": click, question, clearing, and the balloon when there was nothing to clear.
/// Waits for the answer.
Pruning mnuClearProgLog(Copy& copy);

/// The menu entry "Display Program Log": click; true when the text window may open on the log, false after the balloon
/// that there is none.
[[nodiscard]] bool mnuProgLog(Copy& copy);

}  // namespace nimbry
