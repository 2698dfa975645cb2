#include "engine/control/json_text.h"

#include "engine/derived/hexadecimal.h"

namespace nimbry {

std::string json_string(std::string_view text) {
    std::string json = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '"': json += "\\\""; break;
            case '\\': json += "\\\\"; break;
            case '\r': json += "\\r"; break;
            case '\n': json += "\\n"; break;
            case '\t': json += "\\t"; break;
            default:
                if (byte < 0x20) {
                    json += "\\u00";
                    json += lower_hexadecimal[byte >> 4U];
                    json += lower_hexadecimal[byte & 0xFU];
                } else {
                    json += c;
                }
        }
    }
    return json + '"';
}

JsonObject& JsonObject::field(std::string_view name, std::string_view value) {
    if (!fields_.empty()) fields_ += ',';
    fields_ += json_string(name);
    fields_ += ':';
    fields_ += value;
    return *this;
}

JsonObject& JsonObject::flag(std::string_view name, bool value) {
    return field(name, value ? "true" : "false");
}

std::string JsonObject::text() const {
    return '{' + fields_ + '}';
}

}  // namespace nimbry
