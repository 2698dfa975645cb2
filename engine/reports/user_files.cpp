#include "engine/reports/user_files.h"

#include "engine/derived/number_text.h"

namespace nimbry {

UserFiles::UserFiles(const Files& files) {
    for (std::string& name : files.entries()) entries_.insert(std::move(name));
    for (const std::string& name : entries_) by_lower_case_.try_emplace(lower_case(name), name);
}

std::string UserFiles::find(const std::string& name) const {
    if (entries_.contains(name)) return name;
    const auto found = by_lower_case_.find(lower_case(name));
    return found == by_lower_case_.end() ? "" : found->second;
}

FileResult read_user_file(const Files& files, const std::string& name, std::string& bytes) {
    const FileResult result = files.read(name, bytes);
    if (result != FileResult::not_found) return result;
    const std::string other = UserFiles(files).find(name);
    return other.empty() ? result : files.read(other, bytes);
}

}  // namespace nimbry
