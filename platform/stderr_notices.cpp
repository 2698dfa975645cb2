#include "platform/stderr_notices.h"

#include <cstdio>

#include "engine/control/one_line.h"
#include "platform/text_bytes.h"

namespace nimbry::platform {

std::string stderr_line(std::string_view title, std::string_view text) {
    return utf8(title) + ": " + one_line(text);
}

void write_line_to_stderr(std::string_view line) {
    const std::string whole = std::string(line) + '\n';
    std::fwrite(whole.data(), 1, whole.size(), stderr);
    std::fflush(stderr);
}

void StderrNotices::balloon(const Balloon& balloon) {
    write_line_to_stderr(stderr_line(balloon.title, balloon.text));
}

Answer StderrNotices::box(const MessageBox& box) {
    write_line_to_stderr(stderr_line(box.title, whole_text(box)));
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
