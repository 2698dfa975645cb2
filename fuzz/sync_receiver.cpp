// Law: however the network joins and cuts what a server sends, the files that come out are the same.
//
// The input is read as a conversation: files of some pieces each, with an end mark, an "invalid", or a status answer
// between them. It reaches a receiver three times: each send by itself, cut into slices that the input asks for, and
// cut while everything that no request parts is joined. Contents hold no "cmd", which the plain protocol cannot carry
// at the beginning of a piece. Besides: whatever bytes come, what is held stays as short as a command.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/network/sync_receiver.h"
#include "fuzz/fuzz_input.h"

namespace {

using namespace std::chrono_literals;
using namespace nimbry;
using fuzz::expect;
using fuzz::Input;

constexpr std::size_t longest_command = 21;

/// Letters that begin commands come often.
std::string content_of(Input& input) {
    constexpr std::string_view letters = "cmdfilended,cc1,2\r\n";
    std::string content;
    for (std::size_t n = input.below(24); n > 0; --n) {
        content.push_back(letters[input.below(letters.size())]);
        if (content.ends_with("cmd")) content.back() = 'x';
    }
    return content;
}

/// What the server sends for one request: pieces of content, and the command at their end.
struct Answer {
    std::vector<std::string> pieces;
    SyncCommand end;
};

std::vector<Answer> conversation_of(Input& input) {
    std::vector<Answer> answers;
    while (!input.empty() && answers.size() < 12) {
        constexpr SyncCommand ends[] = {SyncCommand::filended, SyncCommand::filended, SyncCommand::InvalidFile,
                                        SyncCommand::ServerIsOK};
        Answer answer{{}, ends[input.below(4)]};
        if (answer.end == SyncCommand::filended) {
            std::string whole;
            for (std::size_t n = input.below(4); n > 0; --n) {
                answer.pieces.push_back(content_of(input));
                // Nor may "cmd" come about where two pieces meet.
                whole += answer.pieces.back();
                if (whole.find("cmd") != std::string::npos) answer.pieces.pop_back();
                whole.clear();
                for (const std::string& piece : answer.pieces) whole += piece;
            }
            // The last letters before the end mark must not join with it to another one.
            if (!answer.pieces.empty()) answer.pieces.back() += '.';
        }
        answers.push_back(answer);
    }
    return answers;
}

/// The files and commands that a receiver makes of the arrivals of each answer.
std::string received(const std::vector<std::vector<std::string>>& arrivals) {
    SyncReceiver receiver;
    Instant now{1h};
    std::string all;
    const auto add = [&](const std::vector<SyncPiece>& pieces) {
        for (const SyncPiece& piece : pieces) {
            if (piece.command == SyncCommand::filended) receiver.close_file();
            if (piece.command)
                all += "<" + std::string(text_of(*piece.command)) + ">";
            else if (receiver.file_open())
                all += piece.content;
        }
        expect(receiver.held() <= longest_command);
    };
    for (const std::vector<std::string>& answer : arrivals) {
        receiver.open_file();
        for (const std::string& arrival : answer) {
            now += 1ms;
            add(receiver.feed(arrival, now));
        }
        now += 1s;  // the next request, and the pause before its answer
        add(receiver.poll(now));
    }
    return all;
}

std::vector<std::string> sends_of(const Answer& answer) {
    std::vector<std::string> sends;
    for (const std::string& piece : answer.pieces) {
        if (!piece.empty()) sends.push_back(piece);
    }
    sends.emplace_back(text_of(answer.end));
    return sends;
}

std::vector<std::string> sliced(const std::string& whole, Input& slices) {
    std::vector<std::string> arrivals;
    for (std::size_t at = 0; at < whole.size();) {
        const std::size_t length = slices.empty() ? whole.size() : slices.below(16) + 1;
        arrivals.push_back(whole.substr(at, length));
        at += length;
    }
    return arrivals;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> all(data, size);
    Input input(data, size);
    const std::vector<Answer> answers = conversation_of(input);
    const auto second_half = all.subspan(size / 2);
    Input slices(second_half.data(), second_half.size());

    std::vector<std::vector<std::string>> separate;
    std::vector<std::vector<std::string>> split;
    std::vector<std::vector<std::string>> joined;
    for (const Answer& answer : answers) {
        separate.push_back(sends_of(answer));
        std::string whole;
        for (const std::string& send : separate.back()) whole += send;
        split.push_back(sliced(whole, slices));
        joined.push_back({whole});
    }
    const std::string expected = received(separate);
    expect(received(split) == expected);
    expect(received(joined) == expected);

    // Garbage, in slices: nothing grows.
    std::vector<std::vector<std::string>> garbage{sliced(std::string(all.begin(), all.end()), slices)};
    received(garbage);
    return 0;
}
