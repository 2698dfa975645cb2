#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/core/copy.h"

namespace nimbry {

inline constexpr std::string_view sync_cfg = "sync.cfg";          ///< what a server sends its settings in
inline constexpr std::string_view tempsync_cfg = "tempsync.cfg";  ///< and a client has received them in

/// The file in which a server sends its settings: the values of 17 keys of section `Main`, one a line with CR LF, as
/// they stand in the configuration at this moment. The number of a line tells its key; docs/formats/sync.md has the
/// table.
[[nodiscard]] std::string sync_cfg_text(const clsIniFile& ini);

/// The lines of such a file, without control characters, each cut at 64 characters; at most 17.
[[nodiscard]] std::vector<std::string> sync_cfg_lines(std::string_view text);

/// Stores the received settings: in section `Main` of the configuration and in the settings in force. Throws
/// RunTimeError past_end when lines are missing; those that were there are stored.
void store_sync_settings(Copy& copy, std::string_view text);

/// Takes the settings that a client has received over those in force, without writing them: from `tempsync.cfg`, or
/// `sync.cfg` where that is missing. A file without all its lines counts as missing; without either nothing changes.
void take_synced_settings(Copy& copy);

}  // namespace nimbry
