#pragma once

#include <string>
#include <string_view>

namespace nimbry {

// Windows-1252, the code page of every text in the engine, seen from the world of Unicode.

/// The character of a byte. The five bytes that the code page leaves open (81, 8D, 8F, 90, 9D) stand for the control
/// characters of the same number, so every byte has a character of its own.
///   character_of(0xB0) = U+00B0 "°"   character_of(0x80) = U+20AC "€"
[[nodiscard]] char16_t character_of(unsigned char byte);

/// The byte of a character, or "?" when the code page does not have it.
[[nodiscard]] char byte_of(char16_t character);

/// A text of the engine in UTF-8.
[[nodiscard]] std::string utf8_text(std::string_view bytes);

/// True for proper UTF-8 (no overlong form, no half of a surrogate pair, nothing beyond U+10FFFF); plain ASCII is.
[[nodiscard]] bool is_utf8(std::string_view bytes);

/// The name of a file or device in UTF-8: one that is proper UTF-8 already, as the disk and the command line give it,
/// stays; any other comes from a text of the engine.
[[nodiscard]] std::string utf8_name(std::string_view name);

}  // namespace nimbry
