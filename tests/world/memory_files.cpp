#include "tests/world/memory_files.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <utility>

namespace nimbry::test {

namespace {
constexpr std::string_view program_folder = "/nimbry/";

using Chance = std::mt19937;

std::size_t between(Chance& chance, std::size_t least, std::size_t most) {
    return least + chance() % (most - least + 1);
}

/// What a cut write leaves. A file that is new or was written over may have kept any part of its beginning. One that
/// only grew or shrank keeps what both have in common. Else the sectors reach the disk one by one.
std::string torn(const std::string* old, const std::string& now, Chance& chance) {
    if (old == nullptr) return now.substr(0, between(chance, 0, now.size()));
    if (now.starts_with(*old)) return now.substr(0, between(chance, old->size(), now.size()));
    if (old->starts_with(now)) return old->substr(0, between(chance, now.size(), old->size()));
    if (chance() % 2 == 0) return now.substr(0, between(chance, 0, now.size()));
    constexpr std::size_t sector = 512;
    std::string mixed = chance() % 2 == 0 ? now : *old;
    for (std::size_t begin = 0; begin < mixed.size(); begin += sector) {
        const std::string& from = chance() % 2 == 0 ? now : *old;
        const std::size_t common = std::min({begin + sector, mixed.size(), from.size()});
        if (begin < common) mixed.replace(begin, common - begin, from, begin, common - begin);
    }
    return mixed;
}
}  // namespace

MemoryFiles::MemoryFiles(const Clock& clock, Journal* journal) : clock_(clock), journal_(journal) {}

/// Writes the call down and returns how it ends: as the test wants it, else `own`.
FileResult MemoryFiles::record(Call call, FileResult own) const {
    if (look_ && call.operation != "read") look_(call);
    ++counted_;
    call.result = wanted_failure(call).value_or(own);
    call.at = clock_.monotonic();
    if (journal_ != nullptr && call.operation != "read") {
        std::string line = call.operation + " " + call.name;
        if (!call.other.empty()) line += " to " + call.other;
        if (call.result != FileResult::ok) line += " failed";
        journal_->note(std::move(line));
    }
    calls_.push_back(call);
    return call.result;
}

std::optional<FileResult> MemoryFiles::wanted_failure(const Call& call) const {
    if (const auto failing = failing_calls_.find(counted_); failing != failing_calls_.end()) return failing->second;
    for (const std::string& name : {call.name, call.other}) {
        if (const auto refused = refused_.find(name); refused != refused_.end()) return refused->second;
    }
    if (call.operation != "read") return changes_refused_;
    return std::nullopt;
}

/// Whether a file of that name may lie where it says: ok, not_found (no such folder) or not_a_file.
FileResult MemoryFiles::place_for(const std::string& name) const {
    if (folders_.contains(name)) return FileResult::not_a_file;
    const std::size_t separator = name.rfind('/');
    if (separator == std::string::npos) return FileResult::ok;
    return folders_.contains(name.substr(0, separator)) ? FileResult::ok : FileResult::not_found;
}

void MemoryFiles::set(const std::string& name, std::string_view bytes) {
    File& file = files_[name];
    file.bytes = bytes;
    file.modified = clock_.computer_time();
}

FileResult MemoryFiles::read(const std::string& name, std::string& bytes, std::size_t limit) const {
    bytes.clear();
    const auto file = files_.find(name);
    FileResult own = FileResult::ok;
    if (file == files_.end()) own = folders_.contains(name) ? FileResult::not_a_file : FileResult::not_found;
    const std::size_t size = own == FileResult::ok ? std::min(limit, file->second.bytes.size()) : 0;
    const FileResult result = record({"read", name, "", size, {}, {}}, own);
    if (result == FileResult::ok) bytes = file->second.bytes.substr(0, size);
    return result;
}

FileResult MemoryFiles::append(const std::string& name, std::string_view bytes) {
    const FileResult result = record({"append", name, "", bytes.size(), {}, {}}, place_for(name));
    if (result == FileResult::ok) set(name, contents(name).append(bytes));
    return result;
}

FileResult MemoryFiles::rewrite(const std::string& name, std::string_view bytes) {
    const FileResult result = record({"rewrite", name, "", bytes.size(), {}, {}}, place_for(name));
    if (result == FileResult::ok) {
        set(name, bytes);
    } else if (result == FileResult::disk_full && exists(name)) {
        // The room the file had is written over before the disk is found full.
        const std::size_t had = files_[name].bytes.size();
        if (bytes.size() > had) set(name, bytes.substr(0, had));
    }
    return result;
}

FileResult MemoryFiles::replace(const std::string& name, std::string_view bytes, bool private_to_owner) {
    const FileResult result = record({"replace", name, "", bytes.size(), {}, {}}, place_for(name));
    if (result != FileResult::ok) return result;
    set(name, bytes);
    if (private_to_owner) files_[name].private_to_owner = true;
    renamed_for_good(name);
    durable_[name] = files_[name];
    return result;
}

FileResult MemoryFiles::rename(const std::string& from, const std::string& to) {
    FileResult own = place_for(to);
    if (!files_.contains(from))
        own = FileResult::not_found;
    else if (files_.contains(to))
        own = FileResult::exists;
    const FileResult result = record({"rename", from, to, 0, {}, {}}, own);
    if (result != FileResult::ok) return result;
    files_[to] = std::move(files_[from]);
    files_.erase(from);
    const auto before = renamed_from_.extract(from);
    renamed_from_[to] = before ? before.mapped() : from;
    return result;
}

FileResult MemoryFiles::copy(const std::string& from, const std::string& to) {
    FileResult own = place_for(to);
    if (!files_.contains(from))
        own = FileResult::not_found;
    else if (files_.contains(to))
        own = FileResult::exists;
    const FileResult result = record({"copy", from, to, 0, {}, {}}, own);
    if (result == FileResult::ok) set(to, files_[from].bytes);
    return result;
}

FileResult MemoryFiles::remove(const std::string& name) {
    const FileResult own = files_.contains(name) ? FileResult::ok : FileResult::not_found;
    const FileResult result = record({"remove", name, "", 0, {}, {}}, own);
    if (result != FileResult::ok) return result;
    files_.erase(name);
    renamed_from_.erase(name);
    return result;
}

FileResult MemoryFiles::sync(const std::string& name) {
    const FileResult own = files_.contains(name) ? FileResult::ok : FileResult::not_found;
    const FileResult result = record({"sync", name, "", 0, {}, {}}, own);
    if (result != FileResult::ok) return result;
    // A name is only free for a new file once the old one has left it for good.
    for (auto renamed = renamed_from_.begin(); renamed != renamed_from_.end();) {
        const auto next = std::next(renamed);
        if (renamed->second == name) renamed_for_good(std::string(renamed->first));
        renamed = next;
    }
    renamed_for_good(name);
    durable_[name] = files_[name];
    return result;
}

/// A rename to this name, if there was one, outlives a power cut; what was written to the file need not.
void MemoryFiles::renamed_for_good(const std::string& to) {
    const auto renamed = renamed_from_.extract(to);
    if (!renamed) return;
    if (auto synced = durable_.extract(renamed.mapped())) {
        synced.key() = to;
        durable_.erase(to);
        durable_.insert(std::move(synced));
    }
}

bool MemoryFiles::exists(const std::string& name) const {
    return files_.contains(name);
}

bool MemoryFiles::in_use(const std::string& name) const {
    return exists(name) && in_use_.contains(name);
}

std::optional<CivilTime> MemoryFiles::modified(const std::string& name) const {
    const auto file = files_.find(name);
    if (file == files_.end()) return std::nullopt;
    return file->second.modified;
}

std::string MemoryFiles::path(const std::string& name) const {
    return name.starts_with('/') ? name : std::string(program_folder) + name;
}

void MemoryFiles::put(const std::string& name, std::string_view bytes) {
    set(name, bytes);
    renamed_for_good(name);
    durable_[name] = files_[name];
}

void MemoryFiles::take_away(const std::string& name) {
    files_.erase(name);
    durable_.erase(name);
    renamed_from_.erase(name);
}

void MemoryFiles::add_folder(const std::string& name) {
    folders_.insert(name);
}

void MemoryFiles::set_in_use(const std::string& name, bool in_use) {
    if (in_use) {
        in_use_.insert(name);
    } else {
        in_use_.erase(name);
    }
}

std::string MemoryFiles::contents(const std::string& name) const {
    const auto file = files_.find(name);
    return file == files_.end() ? std::string() : file->second.bytes;
}

std::vector<std::string> MemoryFiles::entries() const {
    std::vector<std::string> entries;
    const auto lies_here = [](const std::string& name) { return name.find('/') == std::string::npos; };
    for (const auto& [name, file] : files_)
        if (lies_here(name)) entries.push_back(name);
    for (const std::string& name : folders_)
        if (lies_here(name)) entries.push_back(name);
    return entries;
}

std::vector<std::string> MemoryFiles::names() const {
    std::vector<std::string> names;
    for (const auto& [name, file] : files_) names.push_back(name);
    return names;
}

bool MemoryFiles::is_private(const std::string& name) const {
    const auto file = files_.find(name);
    return file != files_.end() && file->second.private_to_owner;
}

void MemoryFiles::fail_call(std::size_t n, FileResult result) {
    failing_calls_[counted_ + n] = result;
}
void MemoryFiles::refuse(const std::string& name, FileResult result) {
    refused_[name] = result;
}
void MemoryFiles::refuse_changes(FileResult result) {
    changes_refused_ = result;
}

void MemoryFiles::allow() {
    failing_calls_.clear();
    refused_.clear();
    changes_refused_.reset();
}

void MemoryFiles::power_cut() {
    files_ = durable_;
    renamed_from_.clear();
}

void MemoryFiles::power_cut(std::uint32_t choice) {
    Chance chance(choice);
    for (const auto& [to, from] : std::map(renamed_from_)) {
        if (chance() % 2 == 0) {
            renamed_for_good(to);
        } else {
            files_.insert_or_assign(from, std::move(files_[to]));
            files_.erase(to);
        }
    }
    renamed_from_.clear();

    Folder all = durable_;
    all.insert(files_.begin(), files_.end());
    Folder kept;
    for (const auto& [name, any] : all) {
        const auto old = durable_.find(name), now = files_.find(name);
        const bool had = old != durable_.end(), has = now != files_.end();
        if (had && has && old->second.bytes == now->second.bytes) {
            kept[name] = now->second;
            continue;
        }
        switch (chance() % 3) {
            case 0:
                if (had) kept[name] = old->second;
                break;
            case 1:
                if (has) kept[name] = now->second;
                break;
            default:
                if (!has) break;
                kept[name] = now->second;
                kept[name].bytes = torn(had ? &old->second.bytes : nullptr, now->second.bytes, chance);
        }
    }
    files_ = durable_ = std::move(kept);
}

}  // namespace nimbry::test
