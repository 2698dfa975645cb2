#pragma once

#include <string>
#include <string_view>

#include "engine/ports/files.h"

namespace nimbry {

/// The numbers of the errors that a routine cannot go on from, as the report shows them.
enum class ErrorNumber : int {
    invalid_argument = 5,  ///< "Invalid procedure call or argument": the logarithm of 0, say
    overflow = 6,
    index = 9,
    division_by_zero = 11,
    type_mismatch = 13,  ///< a text where a number is needed
    bad_file = 52,
    not_found = 53,
    open = 55,
    exists = 58,
    disk_full = 61,
    past_end = 62,  ///< reading past the end of a file
    permission = 70,
    path = 75,
    other = 440,
};

/// What one error number is called in words ("File already exists").
[[nodiscard]] std::string_view description(ErrorNumber number);

/// Thrown where a routine cannot go on. Bad input is never one of these: it is counted, dropped or shown.
/// Caught by tagged(), or by a record routine that goes on with its next numbered step.
struct RunTimeError {
    ErrorNumber number = ErrorNumber::other;
};

/// A RunTimeError that has passed the routine it belongs to. It unwinds to the event that is being handled, which
/// reports it and ends the program (core/exits.h).
struct UnrecoverableError {
    ErrorNumber number = ErrorNumber::other;
    std::string tag;  ///< the routine: "OnComm", "8F group", "process routine", ...
};

/// Runs `body` as the routine `tag`: a RunTimeError that leaves it becomes an UnrecoverableError with this tag. One
/// that bears an inner routine's tag already passes unchanged, and so does everything else.
template <class Body>
decltype(auto) tagged(std::string_view tag, Body&& body) {
    try {
        return body();
    } catch (const RunTimeError& error) {
        throw UnrecoverableError{error.number, std::string(tag)};
    }
}

/// The error that a failed file operation stands for; `result` must not be `ok`.
[[nodiscard]] ErrorNumber error_of(FileResult result);

/// Throws the RunTimeError of a failed file operation; returns on `ok`.
void require(FileResult result);

}  // namespace nimbry
