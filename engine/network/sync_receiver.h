#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/network/sync_commands.h"
#include "engine/ports/clock.h"

namespace nimbry {

/// What the receiver has made of bytes: a command to obey, or content for the open file.
struct SyncPiece {
    std::optional<SyncCommand> command;
    std::string content;  ///< when it is no command

    bool operator==(const SyncPiece&) const = default;
};

/// Tells commands from the content of files in what arrives on the connection of a synchronisation. Pure: no port, no
/// clock; it owns bytes.
///
/// The sender sends each command by itself and keeps pauses between content and commands; but the network joins and
/// cuts what was sent. An arrival that begins with a command is that command, and whatever else it holds is dropped
/// unless another command follows. One that begins with "cmd" and has a comma but is no command is dropped whole.
/// Everything else is content; whoever takes it drops it while no file is open.
///
/// Bytes that may be the beginning of a command are held: the beginning of an arrival, or the end of content that may
/// be the beginning of the end mark "cmdfilended,". They are settled by the next arrival, or taken for what they are
/// after 200 ms. Never more than the longest command is held, whatever a peer sends.
class SyncReceiver {
public:
    static constexpr Milliseconds patience{200};

    /// A file is open from now on: the end of content may be the end mark. Whoever obeys the end mark closes it.
    void open_file() { file_open_ = true; }
    void close_file() { file_open_ = false; }
    [[nodiscard]] bool file_open() const { return file_open_; }

    /// Takes what has arrived and gives what it settles, in order.
    std::vector<SyncPiece> feed(std::string_view bytes, Instant now);

    /// When poll() is wanted; nothing while no bytes are held.
    [[nodiscard]] std::optional<Instant> wake_at() const { return due_; }

    /// Gives up waiting for the rest of what is held, when its time is over.
    std::vector<SyncPiece> poll(Instant now);

    /// Bytes that are held.
    [[nodiscard]] std::size_t held() const { return held_.size(); }

private:
    static std::string_view take_commands(std::string_view bytes, std::vector<SyncPiece>& pieces);
    void take_fresh(std::string_view bytes, std::vector<SyncPiece>& pieces, Instant now);
    void take_content(std::string_view bytes, std::vector<SyncPiece>& pieces, Instant now);
    void hold(std::string_view bytes, bool behind_content, Instant now);

    std::string held_;
    bool behind_content_ = false;  // what is held followed content without a gap: only the end mark may begin there
    bool file_open_ = false;
    std::optional<Instant> due_;
};

}  // namespace nimbry
