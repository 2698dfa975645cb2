#include "engine/network/sync_receiver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry {
namespace {

using namespace std::chrono_literals;

constexpr Instant start{1h};

/// What a receiver with an open file, or without, makes of arrivals 1 ms apart: commands in angles, content in square
/// brackets. 'T' as an arrival lets 200 ms pass.
std::string made_of(const std::vector<std::string>& arrivals, bool file_open) {
    SyncReceiver receiver;
    if (file_open) receiver.open_file();
    Instant now = start;
    std::string made;
    const auto add = [&](const std::vector<SyncPiece>& pieces) {
        for (const SyncPiece& piece : pieces) {
            if (piece.command == SyncCommand::filended) receiver.close_file();
            made +=
                piece.command ? "<" + std::string(text_of(*piece.command).substr(3)) + ">" : "[" + piece.content + "]";
        }
    };
    for (const std::string& arrival : arrivals) {
        now += 1ms;
        if (arrival == "T") {
            now += 200ms;
            add(receiver.poll(now));
        } else {
            add(receiver.feed(arrival, now));
        }
    }
    if (receiver.held() > 0) made += "...";
    return made;
}

struct Case {
    const char* what;
    bool file_open;
    std::vector<std::string> arrivals;
    const char* made;
};

TEST(SyncReceiver, TellsCommandsFromContent) {
    const Case cases[] = {
        {"a command by itself", false, {"cmdServerIsOK,"}, "<ServerIsOK,>"},
        {"its argument is dropped", false, {"cmdServerIsOK,xyz"}, "<ServerIsOK,>"},
        {"two commands in one arrival", false, {"cmdfilended,cmdRequestRainLH,"}, "<filended,><RequestRainLH,>"},
        {"three, the last one cut",
         false,
         {"cmdfilended,cmdfilended,cmdReq", "uestRainLH,"},
         "<filended,><filended,><RequestRainLH,>"},
        {"a rest of one letter waits too", false, {"cmdfilended,c", "mdServerStatus,"}, "<filended,><ServerStatus,>"},
        {"a command in pieces of a byte",
         false,
         {"c", "m", "d", "A", "c", "c", "e", "p", "t", "C", "N", "X", ","},
         "<AcceptCNX,>"},
        {"an unknown command is dropped whole", true, {"cmdHello,cmdfilended,"}, ""},
        {"an unknown word without a comma is content", true, {"cmdHello"}, "[cmdHello]"},
        {"other letters are another word", true, {"CMDFILENDED,"}, "[CMDFILENDED,]"},
        {"content as it stands", true, {"1,2,3\r\n", "4"}, "[1,2,3\r\n][4]"},
        {"content without an open file is given, to be counted", false, {"1,2,3"}, "[1,2,3]"},
        {"without an open file no end is looked for", false, {"1,2,cmdfi"}, "[1,2,cmdfi]"},
        {"the end mark by itself", true, {"1,2", "cmdfilended,"}, "[1,2]<filended,>"},
        {"the end mark in one arrival with content", true, {"1,2cmdfilended,"}, "[1,2]<filended,>"},
        {"the end mark cut after its first letter", true, {"1,2c", "mdfilended,"}, "[1,2]<filended,>"},
        {"the end mark cut before its last", true, {"1,2cmdfilended", ","}, "[1,2]<filended,>"},
        {"the end mark in pieces of a byte behind content",
         true,
         {"1c", "m", "d", "f", "i", "l", "e", "n", "d", "e", "d", ","},
         "[1]<filended,>"},
        {"what began like an end mark goes on as content", true, {"1cm", "x,2"}, "[1][cmx,2]"},
        {"even where it comes to look like an unknown command", true, {"1cm", "d,2"}, "[1][cmd,2]"},
        {"content that ends like the mark begins, and the mark",
         true,
         {"1,2cmd", "cmdfilended,"},
         "[1,2][cmd]<filended,>"},
        {"content of one letter, and the mark", true, {"c", "cmdfilended,"}, "[c]<filended,>"},
        {"held content comes before any command", true, {"1c", "cmdInvalidFile,"}, "[1][c]<InvalidFile,>"},
        {"letters that repeat", true, {"1c", "c", "c", "cmdfilended,"}, "[1][c][c][c]<filended,>"},
        {"what is held waits", true, {"1c"}, "[1]..."},
        {"after 200 ms it is content", true, {"1c", "T"}, "[1][c]"},
        {"half a command after 200 ms is content", true, {"cmdReq", "T", "uestRainLH,"}, "[cmdReq][uestRainLH,]"},
        {"nothing arrives", true, {""}, ""},
        {"what follows the end mark is an argument", true, {"cmdfilended,1,2"}, "<filended,>"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(made_of(row.arrivals, row.file_open), row.made);
    }
}

TEST(SyncReceiver, KnowsAllThirteenCommands) {
    for (const std::string_view text : sync_texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(made_of({std::string(text)}, true), "<" + std::string(text.substr(3)) + ">");
    }
}

TEST(SyncReceiver, NeverHoldsMoreThanACommandIsLong) {
    SyncReceiver receiver;
    receiver.open_file();
    for (int round = 0; round < 100; ++round) {
        receiver.feed(std::string(1000, 'c') + "cmdRequestGraphFile", start);
        EXPECT_LE(receiver.held(), 21U);
    }
}

TEST(SyncReceiver, WaitsTwoHundredMillisecondsFromTheLastArrival) {
    SyncReceiver receiver;
    EXPECT_EQ(receiver.wake_at(), std::nullopt);
    receiver.feed("cmd", start);
    EXPECT_EQ(receiver.wake_at(), start + 200ms);
    receiver.feed("Req", start + 150ms);
    EXPECT_EQ(receiver.wake_at(), start + 350ms);
    EXPECT_TRUE(receiver.poll(start + 349ms).empty());
    EXPECT_EQ(receiver.poll(start + 350ms), (std::vector<SyncPiece>{{std::nullopt, "cmdReq"}}));
    EXPECT_EQ(receiver.wake_at(), std::nullopt);
}

}  // namespace
}  // namespace nimbry
