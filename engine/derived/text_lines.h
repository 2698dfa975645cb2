#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace nimbry {

/// What ends a line of the files and texts that this program writes.
inline constexpr std::string_view line_end = "\r\n";

/// What ends a line of a text that is read.
enum class LineEnds {
    all,      ///< CR LF, CR or LF
    newline,  ///< LF; a CR before it, or before the end of the text, goes with it, any other belongs to the line
};

/// Takes the next line off `text`, which must not be empty, without its end. The last line needs none.
[[nodiscard]] inline std::string_view take_line(std::string_view& text, LineEnds ends = LineEnds::all) {
    const bool newline_only = ends == LineEnds::newline;
    const std::size_t end = std::min(newline_only ? text.find('\n') : text.find_first_of("\r\n"), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with(line_end) ? line_end.size() : std::min<std::size_t>(1, text.size()));
    if (newline_only && line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

/// The text with a blank for each line end, which is CR LF, CR or LF.
[[nodiscard]] inline std::string in_one_line(std::string_view text) {
    std::string line;
    for (std::size_t n = 0; n < text.size(); ++n) {
        if (text[n] == '\n' && n > 0 && text[n - 1] == '\r') continue;
        line += text[n] == '\r' || text[n] == '\n' ? ' ' : text[n];
    }
    return line;
}

}  // namespace nimbry
