#include "platform/stderr_notices.h"

#include <cstdio>

#include "platform/text_bytes.h"

namespace nimbry::platform {

std::string notice_line(std::string_view title, std::string_view text) {
    std::string line(title);
    line += ": ";
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r' || text[at] == '\n') {
            line += " / ";
            if (text.substr(at, 2) == "\r\n") ++at;
        } else {
            line += text[at];
        }
    }
    return utf8(line);
}

void write_line_to_stderr(std::string_view line) {
    const std::string whole = std::string(line) + '\n';
    std::fwrite(whole.data(), 1, whole.size(), stderr);
    std::fflush(stderr);
}

void StderrNotices::balloon(const Balloon& balloon) {
    write_line_to_stderr(notice_line(balloon.title, balloon.text));
}

Answer StderrNotices::box(const MessageBox& box) {
    write_line_to_stderr(notice_line(box.title, box.text));
    switch (box.choices) {
        case Choices::yes_no: return Answer::no;
        case Choices::ok_cancel:
        case Choices::retry_cancel: return Answer::cancel;
        case Choices::ok: break;
    }
    return Answer::ok;
}

void StderrNotices::progress(const std::string& line) {
    write_line_to_stderr(utf8(line));
}

void StderrNotices::show_window(const std::string&) {}

}  // namespace nimbry::platform
