#include "platform/text_bytes.h"

#include <algorithm>
#include <array>

namespace nimbry::platform {

namespace {

// Windows-1252 from 0x80 to 0x9F; every other byte is the character of its own number.
constexpr std::array<char16_t, 32> kUpperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80: € . ‚ ƒ „ … † ‡
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88: ˆ ‰ Š ‹ Œ . Ž .
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90: . ‘ ’ “ ” • – —
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98: ˜ ™ š › œ . ž Ÿ
};

char16_t character_of(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? kUpperControls[byte - 0x80U] : char16_t{byte};
}

char byte_of(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto* place = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    return place == kUpperControls.end() ? '?' : static_cast<char>(0x80 + (place - kUpperControls.begin()));
}

}  // namespace

QString unicode(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return QChar(character_of(static_cast<unsigned char>(byte))); });
    return text;
}

std::string engine_text(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        bytes += byte_of(text[i].unicode());
        if (pair) ++i;
    }
    return bytes;
}

std::string utf8(std::string_view bytes) {
    return unicode(bytes).toStdString();
}

std::string engine_text_of_utf8(std::string_view utf8_text) {
    return engine_text(QString::fromUtf8(utf8_text.data(), static_cast<qsizetype>(utf8_text.size())));
}

}  // namespace nimbry::platform
