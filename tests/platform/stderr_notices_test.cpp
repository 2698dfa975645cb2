#include "platform/stderr_notices.h"

#include <gtest/gtest.h>

namespace nimbry::platform {
namespace {

TEST(NoticeLine, TitleAndTextAreOneLineHoweverTheTextEndsItsLines) {
    struct Case {
        const char* what;
        const char* text;
        const char* line;
    };
    const Case cases[] = {
        {"one line", "The clock is wrong", "Nimbry: The clock is wrong"},
        {"CR LF", "COM Port Error,\r\nClick Retry", "Nimbry: COM Port Error, / Click Retry"},
        {"LF alone", "one\ntwo", "Nimbry: one / two"},
        {"CR alone", "one\rtwo", "Nimbry: one / two"},
        {"an empty line between", "one\r\n\r\ntwo", "Nimbry: one /  / two"},
        {"a line end at the end", "one\r\n", "Nimbry: one / "},
        {"the degree sign, for a terminal", "+9.8 \260C", "Nimbry: +9.8 \xC2\260C"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(stderr_line("Nimbry", c.text), c.line);
    }
}

class StderrNoticesTest : public testing::Test {
protected:
    /// What `tell` writes to standard error.
    template <class Tell>
    std::string told(Tell&& tell) {
        testing::internal::CaptureStderr();
        tell();
        return testing::internal::GetCapturedStderr();
    }

    StderrNotices notices;
};

TEST_F(StderrNoticesTest, ABalloonIsOneLine) {
    Balloon balloon;
    balloon.title = "Log File";
    balloon.text = "There is\r\nnothing";
    EXPECT_EQ(told([&] { notices.balloon(balloon); }), "Log File: There is / nothing\n");
}

TEST_F(StderrNoticesTest, EveryBoxIsOneLineAndGetsItsSafeAnswer) {
    struct Case {
        const char* what;
        Choices choices;
        Answer answer;
    };
    const Case cases[] = {
        {"nothing to choose", Choices::ok, Answer::ok},
        {"yes or no", Choices::yes_no, Answer::no},
        {"ok or cancel", Choices::ok_cancel, Answer::cancel},
        {"retry or cancel", Choices::retry_cancel, Answer::cancel},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const MessageBox box{"Nimbry message", "Are you sure?", "?", c.choices};
        Answer answer{};
        EXPECT_EQ(told([&] { answer = notices.box(box); }), "Nimbry message: Are you sure?\n");
        EXPECT_EQ(answer, c.answer);
    }
}

TEST_F(StderrNoticesTest, WhatABoxHasBelowItsTextIsToldToo) {
    EXPECT_EQ(told([&] { notices.box({.text = "Already running", .detail = "by me"}); }),
              "Nimbry: Already running / by me\n");
}

TEST_F(StderrNoticesTest, AStatusLineIsWrittenAsItIs) {
    EXPECT_EQ(told([&] { notices.progress("Attempt # 1: \xB0"); }), "Attempt # 1: \xC2\xB0\n");
}

TEST_F(StderrNoticesTest, WindowsAndTonesWriteNothing) {
    EXPECT_EQ(told([&] {
                  notices.show_window("NimbrySensor");
                  notices.restore_main_window();
                  notices.beep();
              }),
              "");
}

}  // namespace
}  // namespace nimbry::platform
