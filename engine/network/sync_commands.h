#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace nimbry {

inline constexpr std::uint16_t sync_port = 60131;  ///< TCP: a server listens here for clients that fetch its files

/// The commands of the conversation in which a client fetches its server's files. On the wire a command is its text,
/// with no length and no line end; what lies between commands is the content of a file.
enum class SyncCommand {
    AcceptCNX,          ///< server: the connection is accepted
    ServerStatus,       ///< client: are you free?
    ServerIsOK,         ///< server: yes
    ServerIsBusy,       ///< server: no, ask again
    RequestSyncFile,    ///< client: the settings, `sync.cfg`
    RequestGraphFile,   ///< client: `grafdata.dat`
    RequestTdayFile,    ///< client: `nimbrTDay.log`
    RequestYdayFile,    ///< client: `nimbrYDay.log`
    RequestRainLH,      ///< client: `rainlh.log`
    RequestAlmanac,     ///< client: `nbextreme.log`
    filended,           ///< the file is complete; from a client: forget the file that I gave up
    InvalidFile,        ///< server: there is no such file
    ResetServerSocket,  ///< client: I have finished
};

/// Every command's text, in the order of SyncCommand.
inline constexpr std::array<std::string_view, 13> sync_texts{
    "cmdAcceptCNX,",        "cmdServerStatus,",    "cmdServerIsOK,",       "cmdServerIsBusy,",  "cmdRequestSyncFile,",
    "cmdRequestGraphFile,", "cmdRequestTdayFile,", "cmdRequestYdayFile,",  "cmdRequestRainLH,", "cmdRequestAlmanac,",
    "cmdfilended,",         "cmdInvalidFile,",     "cmdResetServerSocket,"};

[[nodiscard]] constexpr std::string_view text_of(SyncCommand command) {
    return sync_texts[static_cast<std::size_t>(command)];
}

/// The command that `bytes` begin with; nothing when they begin with none.
[[nodiscard]] constexpr std::optional<SyncCommand> command_at_start(std::string_view bytes) {
    for (std::size_t n = 0; n < sync_texts.size(); ++n) {
        if (bytes.starts_with(sync_texts[n])) return static_cast<SyncCommand>(n);
    }
    return std::nullopt;
}

}  // namespace nimbry
