#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/core/known_keys.h"

namespace nimbry {

/// What is wrong with a value that somebody wants to give a key, as a sentence in the engine's letters: `LogMin takes a
/// whole number from 1 to 99, not "500"`. Nothing when it can be taken.
///
/// A switch takes True or False; a number one within its dialog's range, and it may have words behind it ("10
/// minutes"), a limit of an alarm also a decimal comma; an entry of the client list an address; an entry of the mail
/// schedule a time. An empty value is one where it stands for the default or for nothing. All other keys take any text.
///
/// Nothing here looks at the file: what a person has written there by hand is read as docs/formats/ini.md tells.
[[nodiscard]] std::optional<std::string> unfit_value(const KnownKey& known, std::string_view value);

}  // namespace nimbry
