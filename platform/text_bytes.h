#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace nimbry::platform {

// The rim between the engine's texts (one Windows-1252 byte a character) and Qt's Unicode. The engine's own way out, to
// UTF-8, is engine/derived/code_page.h.

/// A text of the engine as Unicode. Every byte has a character: the five that Windows-1252 leaves open (81, 8D, 8F, 90,
/// 9D) stand for the control characters of the same number, so no text is lost on the way out and back.
///   unicode("+9.8 \xB0" "C") = "+9.8 °C"   unicode("\x80 5") = "€ 5"
[[nodiscard]] QString unicode(std::string_view bytes);

/// A typed or received text for the engine. A character that Windows-1252 does not have becomes one "?", also when it
/// takes two UTF-16 units.
[[nodiscard]] std::string engine_text(const QString& text);

/// The same conversions for texts that stand outside as UTF-8 (terminal, socket). Bytes that are not UTF-8 become "?".
[[nodiscard]] std::string utf8(std::string_view bytes);
[[nodiscard]] std::string engine_text_of_utf8(std::string_view utf8_text);

}  // namespace nimbry::platform
