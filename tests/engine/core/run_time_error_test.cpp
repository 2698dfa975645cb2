#include "engine/core/run_time_error.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry {
namespace {

struct NumberCase {
    ErrorNumber error;
    int number;
    const char* words;
};

TEST(RunTimeErrors, HaveTheirNumbersAndWords) {
    const NumberCase cases[] = {
        {ErrorNumber::invalid_argument, 5, "Invalid procedure call or argument"},
        {ErrorNumber::overflow, 6, "Overflow"},
        {ErrorNumber::index, 9, "Subscript out of range"},
        {ErrorNumber::division_by_zero, 11, "Division by zero"},
        {ErrorNumber::type_mismatch, 13, "Type mismatch"},
        {ErrorNumber::bad_file, 52, "Bad file name or number"},
        {ErrorNumber::not_found, 53, "File not found"},
        {ErrorNumber::open, 55, "File already open"},
        {ErrorNumber::exists, 58, "File already exists"},
        {ErrorNumber::disk_full, 61, "Disk full"},
        {ErrorNumber::past_end, 62, "Input past end of file"},
        {ErrorNumber::permission, 70, "Permission denied"},
        {ErrorNumber::path, 75, "Path/File access error"},
        {ErrorNumber::other, 440, "Automation error"},
    };
    for (const NumberCase& row : cases) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(static_cast<int>(row.error), row.number);
        EXPECT_EQ(description(row.error), row.words);
    }
}

TEST(RunTimeErrors, OfTheDiskAreRaisedForEveryResultButOk) {
    struct Case {
        const char* what;
        FileResult result;
        ErrorNumber number;
    };
    const Case cases[] = {
        {"no such file", FileResult::not_found, ErrorNumber::not_found},
        {"the new name is taken", FileResult::exists, ErrorNumber::exists},
        {"no right", FileResult::permission, ErrorNumber::permission},
        {"no room", FileResult::disk_full, ErrorNumber::disk_full},
        {"a folder under the name", FileResult::not_a_file, ErrorNumber::path},
        {"anything else", FileResult::failed, ErrorNumber::bad_file},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        try {
            require(row.result);
            FAIL() << "no error";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, row.number);
        }
    }
    EXPECT_NO_THROW(require(FileResult::ok));
}

TEST(Tagged, GivesARunTimeErrorTheRoutinesName) {
    try {
        tagged("OnComm", [] { throw RunTimeError{ErrorNumber::index}; });
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.number, ErrorNumber::index);
        EXPECT_EQ(error.tag, "OnComm");
    }
}

TEST(Tagged, LetsTheInnermostNameStand) {
    try {
        tagged("OnComm", [] { tagged("8F group", [] { throw RunTimeError{}; }); });
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "8F group");
    }
}

TEST(Tagged, PassesEverythingElse) {
    EXPECT_EQ(tagged("x", [] { return 7; }), 7);
    EXPECT_THROW(tagged("x", [] { throw std::string("not ours"); }), std::string);
}

}  // namespace
}  // namespace nimbry
