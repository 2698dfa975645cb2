#include "engine/control/notice_line.h"

#include "engine/derived/code_page.h"

namespace nimbry {

std::string notice_line(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (c == '\n') continue;
        line += c == '\r' ? ' ' : c;
    }
    return utf8_text(line);
}

}  // namespace nimbry
