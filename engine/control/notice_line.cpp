#include "engine/control/notice_line.h"

#include "engine/derived/code_page.h"
#include "engine/derived/text_lines.h"

namespace nimbry {

std::string notice_line(std::string_view text) {
    return utf8_text(in_one_line(text));
}

}  // namespace nimbry
