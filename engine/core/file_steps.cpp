#include "engine/core/file_steps.h"

#include "engine/core/run_time_error.h"
#include "engine/derived/text_lines.h"

namespace nimbry {

void remove_if_there(Files& files, const std::string& name) {
    if (files.exists(name)) require(files.remove(name));
}

void copy_over(Files& files, const std::string& from, const std::string& to) {
    remove_if_there(files, to);
    require(files.copy(from, to));
}

void replace_by(Files& files, const std::string& work, const std::string& finished) {
    remove_if_there(files, finished);
    require(files.rename(work, finished));
}

void move_to_archive(Files& files, const std::string& from, const std::string& archive) {
    require(files.sync(from));
    require(files.rename(from, archive));
    require(files.sync(archive));
}

std::string_view missing_line_end(const Files& files, const std::string& name) {
    std::string text;
    if (files.read(name, text) != FileResult::ok || text.empty() || text.ends_with('\n')) return "";
    return text.ends_with('\r') ? line_end.substr(1) : line_end;
}

}  // namespace nimbry
