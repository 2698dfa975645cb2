#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

/// The status number of a login that went well.
inline constexpr int ftp_connected = 3000;

/// What people read for a status number: "Login Refused" for 4009; the digits of one without a name.
[[nodiscard]] std::string ftp_status_text(int number);

/// The login has ended: notes whether it went well, and tells of it in the program log the first time that it did not.
/// `words` say more than the digits of a status without a name do: they stand in the upload's `fault` alone.
void status_event(Copy& copy, int number, const std::string& words = {});

/// A file did not get there: notes it, and tells why in the program log the first time.
void transfer_failure_event(Copy& copy, const std::string& text);

}  // namespace nimbry
