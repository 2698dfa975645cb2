#include "engine/control/one_line.h"

#include "engine/derived/code_page.h"

namespace nimbry {

std::string one_line(std::string_view text) {
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\r' && text.substr(at, 2) == "\r\n") ++at;
        if (c == '\r' || c == '\n') {
            line += " / ";
        } else {
            line += c == '\t' ? ' ' : c;
        }
    }
    return utf8_text(line);
}

}  // namespace nimbry
