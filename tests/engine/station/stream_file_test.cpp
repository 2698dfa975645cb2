#include "engine/station/stream_file.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace nimbry {
namespace {

using namespace std::chrono_literals;

const std::string head =
    "nimbry-stream 1\n"
    "shows: two bytes\n"
    "from: written by hand\n"
    "clock: 2026-10-31 23:58:00\n";

StreamFile example() {
    StreamFile stream;
    stream.shows = "two bytes";
    stream.from = "written by hand";
    stream.clock = std::chrono::local_days{std::chrono::October / 31 / 2026} + 23h + 58min;
    return stream;
}

TEST(StreamFile, ReadsHeadAndPieces) {
    const StreamReading reading = read_stream(head +
                                              "pace: 1.04\n"
                                              "lasts: 20000\n"
                                              "\n"
                                              "# a comment\n"
                                              "0 CF 01\n"
                                              "\n"
                                              "28.08 cfAB00\n"
                                              "28.085 00\n"
                                              "500 !framing\n"
                                              "500 !overrun\n"
                                              "501 !buffer-overrun\n"
                                              "600 !gone\n");
    EXPECT_EQ(reading.error, "");
    StreamFile expected = example();
    expected.pace = 1040us;
    expected.lasts = 20s;
    expected.pieces = {{0us, {0xCF, 0x01}, {}},         {28080us, {0xCF, 0xAB, 0x00}, {}},
                       {28085us, {0x00}, {}},           {500ms, {}, LineFault::framing},
                       {500ms, {}, LineFault::overrun}, {501ms, {}, LineFault::buffer_overrun},
                       {600ms, {}, LineFault::gone}};
    ASSERT_TRUE(reading.stream);
    EXPECT_EQ(*reading.stream, expected);
}

TEST(StreamFile, TakesBothLineEndsAndALastLineWithoutOne) {
    std::string text = head + "\n0 CF";
    ASSERT_TRUE(read_stream(text).stream);
    std::string crlf;
    for (const char c : text) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    ASSERT_TRUE(read_stream(crlf).stream);
    EXPECT_EQ(*read_stream(crlf).stream, *read_stream(text).stream);
}

TEST(StreamFile, CarriageReturnsBeforeALineEndBelongToIt) {
    const StreamReading reading = read_stream(
        "nimbry-stream 1\r\r\nshows: two bytes\r\r\nfrom: written by hand \r\r\nclock: 2026-10-31 23:58:00\r\r\n");
    EXPECT_EQ(reading.error, "");
    ASSERT_TRUE(reading.stream);
    EXPECT_EQ(*reading.stream, example());
}

TEST(StreamFile, AHeadAloneIsAStreamOfSilence) {
    const StreamReading reading = read_stream(head);
    ASSERT_TRUE(reading.stream);
    EXPECT_EQ(*reading.stream, example());
}

struct BadCase {
    std::string what, text, error;
};

TEST(StreamFile, WhatDoesNotFitIsRefusedWithItsLineAndReason) {
    const std::vector<BadCase> cases = {
        {"nothing", "", "line 0: the text is empty"},
        {"some other file", "[Main]\n", "line 1: a stream begins with \"nimbry-stream 1\""},
        {"a later version", "nimbry-stream 2\n", "line 1: a stream begins with \"nimbry-stream 1\""},
        {"a head without its clock", "nimbry-stream 1\nshows: a\nfrom: b\n\n0 CF\n",
         "line 4: the head ends without \"clock\""},
        {"a head that breaks off", "nimbry-stream 1\nshows: a\n", "line 2: the head ends without \"from\""},
        {"a head line without a colon", "nimbry-stream 1\nshows\n",
         "line 2: a line of the head is \"name: value\", not \"shows\""},
        {"a name that there is not", "nimbry-stream 1\nspeed: 3\n",
         "line 2: no such name in the head of a stream: \"speed\""},
        {"a name twice", "nimbry-stream 1\nshows: a\nshows: a\n", "line 3: \"shows\" stands twice"},
        {"a name without its value", "nimbry-stream 1\nshows: \n", "line 2: no value for \"shows\""},
        {"a clock of another form", "nimbry-stream 1\nclock: 31 Oct 2026\n",
         "line 2: the clock is no date and time like 2026-10-31 23:58:00: \"31 Oct 2026\""},
        {"a date that there is not", "nimbry-stream 1\nclock: 2026-02-29 00:00:00\n",
         "line 2: the clock is no date and time like 2026-10-31 23:58:00: \"2026-02-29 00:00:00\""},
        {"a pace that is no number", "nimbry-stream 1\npace: fast\n",
         "line 2: the pace is no number of milliseconds: \"fast\""},
        {"a time that is no number", head + "\nCF 01\n", "line 6: the time is no number of milliseconds: \"CF\""},
        {"a time below zero", head + "\n-1 CF\n", "line 6: the time is no number of milliseconds: \"-1\""},
        {"a time finer than a microsecond", head + "\n1.0001 CF\n",
         "line 6: the time is no number of milliseconds: \"1.0001\""},
        {"a point and nothing after it", head + "\n1. CF\n", "line 6: the time is no number of milliseconds: \"1.\""},
        {"a time that no number holds", head + "\n99999999999999999999 CF\n",
         "line 6: the time is no number of milliseconds: \"99999999999999999999\""},
        {"a time of more than a year", head + "\n31622400001 CF\n",
         "line 6: the time is longer than a year: \"31622400001\""},
        {"a time that goes back", head + "\n10 CF\n9.999 CF\n", "line 7: the time goes back: \"9.999\""},
        {"a time without bytes", head + "\n10\n", "line 6: a time without bytes"},
        {"half a byte", head + "\n10 C\n", "line 6: the last byte has one digit"},
        {"a torn byte", head + "\n10 C F\n", "line 6: a byte is torn: \"C F\""},
        {"a letter beyond F", head + "\n10 CG\n", "line 6: no hexadecimal digit: \"G\""},
        {"a NUL byte", head + "\n10 C" + std::string(1, '\0') + "\n", "line 6: no hexadecimal digit: \".\""},
        {"a fault that there is not", head + "\n10 !parity\n", "line 6: no such fault: \"!parity\""},
        {"a long line of something else", "nimbry-stream 1\n" + std::string(500, 'x') + "\n",
         "line 2: a line of the head is \"name: value\", not \"" + std::string(40, 'x') + "...\""},
    };
    for (const BadCase& c : cases) {
        SCOPED_TRACE(c.what);
        const StreamReading reading = read_stream(c.text);
        EXPECT_FALSE(reading.stream);
        EXPECT_EQ(reading.error, c.error);
    }
}

TEST(StreamFile, WritesWhatItReads) {
    StreamFile stream = example();
    stream.pace = 1040us;
    stream.lasts = 20s;
    stream.pieces = {{0us, {0xCF, 0x01}, {}}, {28080us, {0x0A}, {}}, {1s, {}, LineFault::gone}};
    EXPECT_EQ(write_stream(stream), head +
                                        "pace: 1.04\n"
                                        "lasts: 20000\n"
                                        "\n"
                                        "0 CF 01\n"
                                        "28.08 0A\n"
                                        "1000 !gone\n");
}

TEST(StreamFile, ReadsBackAnyStreamThatItHasWritten) {
    std::mt19937 random(918);
    for (int round = 0; round < 200; ++round) {
        StreamFile stream = example();
        stream.pace = MonotonicClock::duration{random() % 5000};
        MonotonicClock::duration at{0};
        for (std::size_t n = random() % 20; n > 0; --n) {
            at += MonotonicClock::duration{random() % 20'000'000};
            StreamPiece piece{at, Bytes(1 + random() % 150), std::nullopt};
            for (auto& byte : piece.bytes) byte = static_cast<std::uint8_t>(random());
            stream.pieces.push_back(piece);
        }
        const StreamReading reading = read_stream(write_stream(stream));
        ASSERT_TRUE(reading.stream) << reading.error;
        EXPECT_EQ(*reading.stream, stream);
    }
}

TEST(StreamFile, AnyGarbageGivesAnErrorOrAStream) {
    std::mt19937 random(200);
    const std::string good = head + "pace: 1.04\n\n0 CF 01\n10 !gone\n";
    for (int round = 0; round < 2000; ++round) {
        std::string text = good;
        for (std::size_t n = 1 + random() % 4; n > 0; --n) text[random() % text.size()] = static_cast<char>(random());
        const StreamReading reading = read_stream(text);
        EXPECT_NE(reading.stream.has_value(), !reading.error.empty());
    }
}

}  // namespace
}  // namespace nimbry
