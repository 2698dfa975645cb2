#include "platform/text_bytes.h"

#include <algorithm>

#include "engine/derived/code_page.h"

namespace nimbry::platform {

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
    return utf8_text(bytes);
}

std::string engine_text_of_utf8(std::string_view utf8_text) {
    return engine_text(QString::fromUtf8(utf8_text.data(), static_cast<qsizetype>(utf8_text.size())));
}

}  // namespace nimbry::platform
