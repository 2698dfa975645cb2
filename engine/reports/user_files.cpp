#include "engine/reports/user_files.h"

#include <algorithm>

#include "engine/derived/number_text.h"

namespace nimbry {

UserFiles::UserFiles(const Files& files) : entries_(files.entries()) {}

std::string UserFiles::find(const std::string& name) const {
    if (std::find(entries_.begin(), entries_.end(), name) != entries_.end()) return name;
    const std::string wanted = lower_case(name);
    std::string found;
    for (const std::string& entry : entries_) {
        if (entry.size() != wanted.size() || lower_case(entry) != wanted) continue;
        if (found.empty() || entry < found) found = entry;
    }
    return found;
}

FileResult read_user_file(const Files& files, const std::string& name, std::string& bytes) {
    const FileResult result = files.read(name, bytes);
    if (result != FileResult::not_found) return result;
    const std::string other = UserFiles(files).find(name);
    return other.empty() ? result : files.read(other, bytes);
}

}  // namespace nimbry
