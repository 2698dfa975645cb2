#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "engine/core/copy.h"

namespace nimbry {

/// One thing that `nimbryctl status` tells. A name with points stands in objects within the object: "serial.open".
/// std::monostate: not known, or it has not happened yet. Texts are UTF-8.
struct StatusField {
    std::string name;
    std::variant<std::monostate, bool, std::uint64_t, std::string> value;
};

/// How a copy stands, in a fixed order; fields of one object stand together.
///
///   version, folder, role ("server", "client", or "alone" for a copy with both roles off), fullystarted,
///   station_time ("DD MMM YYYY HH:MM:SS"),
///   serial.device (unknown in a client), serial.open,
///   alarms.active (the captions of the readings in alarm; unknown: none),
///   frames.trains, .lone, .bad_checksum, .wrong_length, .unknown_tag, .before_first_train, .bytes_thrown_away,
///   uploads.ftp, .mail, .weather, .aprs: each .last_end (the computer's time), .last_result ("ok", or why it failed),
///   .next_due (the computer's time; of a mail the station's),
///   pages.name (what the first page is called outside; unknown: `FTPRemoteFile` has no dot, and no page goes out),
///   pages.local_folder (unknown: the local save is off), pages.local_folder_found (nothing is put there while it is
///   not),
///   network.peers (a server's address list; in a client who sent the last group), network.last_datagram (the
///   computer's time), sync.running, .peer (unknown: none), .last_end, .last_result, waiting_for (the files and flags
///   that are waited for without a limit, oldest first; unknown: none)
[[nodiscard]] std::vector<StatusField> copy_status(const Copy& copy);

/// The fields as `name<TAB>value` lines; an unknown value is empty.
[[nodiscard]] std::string status_lines(const std::vector<StatusField>& fields);

/// The fields as one object of JSON; an unknown value is null.
[[nodiscard]] std::string status_json(const std::vector<StatusField>& fields);

}  // namespace nimbry
