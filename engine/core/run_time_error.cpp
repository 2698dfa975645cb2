#include "engine/core/run_time_error.h"

namespace nimbry {

std::string_view description(ErrorNumber number) {
    switch (number) {
        case ErrorNumber::invalid_argument: return "Invalid procedure call or argument";
        case ErrorNumber::overflow: return "Overflow";
        case ErrorNumber::index: return "Subscript out of range";
        case ErrorNumber::division_by_zero: return "Division by zero";
        case ErrorNumber::type_mismatch: return "Type mismatch";
        case ErrorNumber::bad_file: return "Bad file name or number";
        case ErrorNumber::not_found: return "File not found";
        case ErrorNumber::open: return "File already open";
        case ErrorNumber::exists: return "File already exists";
        case ErrorNumber::disk_full: return "Disk full";
        case ErrorNumber::past_end: return "Input past end of file";
        case ErrorNumber::permission: return "Permission denied";
        case ErrorNumber::path: return "Path/File access error";
        case ErrorNumber::other: break;
    }
    return "Automation error";
}

ErrorNumber error_of(FileResult result) {
    switch (result) {
        case FileResult::not_found: return ErrorNumber::not_found;
        case FileResult::exists: return ErrorNumber::exists;
        case FileResult::permission: return ErrorNumber::permission;
        case FileResult::disk_full: return ErrorNumber::disk_full;
        case FileResult::not_a_file: return ErrorNumber::path;
        case FileResult::ok:
        case FileResult::failed: break;
    }
    return ErrorNumber::bad_file;
}

void require(FileResult result) {
    if (result != FileResult::ok) throw RunTimeError{error_of(result)};
}

}  // namespace nimbry
