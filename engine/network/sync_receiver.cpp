#include "engine/network/sync_receiver.h"

#include <algorithm>
#include <utility>

namespace nimbry {

namespace {

constexpr std::string_view end_mark = text_of(SyncCommand::filended);
constexpr std::string_view opening = "cmd";

bool may_become_a_command(std::string_view bytes) {
    return std::any_of(sync_texts.begin(), sync_texts.end(),
                       [&](std::string_view text) { return text.starts_with(bytes); });
}

bool is_one_command(std::string_view bytes) {
    return std::find(sync_texts.begin(), sync_texts.end(), bytes) != sync_texts.end();
}

/// How many bytes at the end may be the beginning of the end mark.
std::size_t begun_end_mark(std::string_view bytes) {
    for (std::size_t count = std::min(bytes.size(), end_mark.size() - 1); count > 0; --count) {
        if (end_mark.starts_with(bytes.substr(bytes.size() - count))) return count;
    }
    return 0;
}

/// Content without an open file is given too: whoever takes the pieces counts it, and drops it.
void give_content(std::string_view bytes, std::vector<SyncPiece>& pieces) {
    if (!bytes.empty()) pieces.push_back({std::nullopt, std::string(bytes)});
}

}  // namespace

std::vector<SyncPiece> SyncReceiver::feed(std::string_view bytes, Instant now) {
    std::vector<SyncPiece> pieces;
    if (bytes.empty()) return pieces;
    std::string all = std::exchange(held_, {});
    const bool behind_content = std::exchange(behind_content_, false);
    due_.reset();

    if (!all.empty() && is_one_command(bytes)) {
        // The sender's pause shows that what was held was the end of content.
        give_content(all, pieces);
        pieces.push_back({command_at_start(bytes), {}});
        return pieces;
    }
    all += bytes;
    if (behind_content && !all.starts_with(end_mark)) {
        take_content(all, pieces, now);
    } else {
        take_fresh(all, pieces, now);
    }
    return pieces;
}

std::vector<SyncPiece> SyncReceiver::poll(Instant now) {
    std::vector<SyncPiece> pieces;
    if (!due_ || now < *due_) return pieces;
    due_.reset();
    behind_content_ = false;
    give_content(std::exchange(held_, {}), pieces);
    return pieces;
}

/// Gives the commands that `bytes` begin with, and returns what is left to look at.
std::string_view SyncReceiver::take_commands(std::string_view bytes, std::vector<SyncPiece>& pieces) {
    while (const std::optional<SyncCommand> command = command_at_start(bytes)) {
        pieces.push_back({command, {}});
        bytes.remove_prefix(text_of(*command).size());
        const std::string_view begins = bytes.substr(0, opening.size());
        // What stands behind a command and is none itself is an argument that no command has.
        if (!opening.starts_with(begins)) return {};
    }
    return bytes;
}

void SyncReceiver::take_fresh(std::string_view bytes, std::vector<SyncPiece>& pieces, Instant now) {
    bytes = take_commands(bytes, pieces);
    if (bytes.empty()) return;
    if (may_become_a_command(bytes)) return hold(bytes, false, now);
    if (bytes.starts_with(opening) && bytes.find(',') != std::string_view::npos) return;
    take_content(bytes, pieces, now);
}

void SyncReceiver::take_content(std::string_view bytes, std::vector<SyncPiece>& pieces, Instant now) {
    if (!file_open_) return give_content(bytes, pieces);
    if (bytes.ends_with(end_mark)) {
        give_content(bytes.substr(0, bytes.size() - end_mark.size()), pieces);
        pieces.push_back({SyncCommand::filended, {}});
        return;
    }
    const std::size_t begun = begun_end_mark(bytes);
    give_content(bytes.substr(0, bytes.size() - begun), pieces);
    if (begun > 0) hold(bytes.substr(bytes.size() - begun), true, now);
}

void SyncReceiver::hold(std::string_view bytes, bool behind_content, Instant now) {
    held_ = bytes;
    behind_content_ = behind_content;
    due_ = now + patience;
}

}  // namespace nimbry
