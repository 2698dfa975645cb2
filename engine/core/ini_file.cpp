#include "engine/core/ini_file.h"

#include <algorithm>
#include <utility>

#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";  // some editors put it first; it is no part of a name
constexpr std::size_t longest_value = 2047;
constexpr std::size_t longest_section = 4095;

std::string_view without_line_end(std::string_view line) {
    if (!line.ends_with('\n')) return line;  // a lone CR at the end of the file ends no line
    line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string_view inner(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view without_quotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string on_one_line(std::string_view value) {
    std::string line(value);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return line;
}

enum class LineKind { blank, comment, header, setting, other };

struct Line {
    LineKind kind = LineKind::blank;
    std::string_view name;  // of the section or the key
    std::size_t value = 0;  // of a setting: where it begins, counted from the line's first byte
};

Line line_of(std::string_view bytes) {
    const std::string_view text = inner(without_line_end(bytes));
    if (text.empty()) return {};
    if (text.front() == ';') return {.kind = LineKind::comment, .name = {}};
    if (text.front() == '[') {
        const std::string_view behind = text.substr(1);
        return {.kind = LineKind::header, .name = inner(behind.substr(0, behind.find(']')))};
    }
    const std::size_t sign = bytes.find('=');
    if (sign == std::string_view::npos) return {.kind = LineKind::other, .name = {}};
    return {.kind = LineKind::setting, .name = inner(bytes.substr(0, sign)), .value = sign + 1};
}

// Calls each(begin, bytes) for every line from `begin` to `end`; the bytes of a line hold its line end.
template <class Each>
void each_line(std::string_view text, std::size_t begin, std::size_t end, Each&& each) {
    while (begin < end) {
        const std::size_t last = std::min(text.find('\n', begin), end - 1);
        each(begin, text.substr(begin, last + 1 - begin));
        begin = last + 1;
    }
}

bool same_place(const clsIniFile::Setting& a, const clsIniFile::Setting& b) {
    return lower_case(a.section) == lower_case(b.section) && lower_case(a.key) == lower_case(b.key);
}

void merge(std::vector<clsIniFile::Setting>& settings, const std::vector<clsIniFile::Setting>& later) {
    for (const clsIniFile::Setting& one : later) {
        const auto same =
            std::find_if(settings.begin(), settings.end(), [&](const auto& s) { return same_place(s, one); });
        if (same == settings.end()) {
            settings.push_back(one);
        } else {
            same->value = one.value;
        }
    }
}

}  // namespace

clsIniFile::clsIniFile(Files& files, std::string name) : files_(files), name_(std::move(name)) {}

bool clsIniFile::read() {
    std::string on_disk;
    if (load(on_disk)) return true;
    text_.clear();
    index();
    put(unsaved_);
    return false;
}

// Takes what the file holds, and over it what could not be written so far. False, and nothing taken, when it is not
// readable.
bool clsIniFile::load(std::string& on_disk) {
    const FileResult result = files_.read(name_, on_disk);
    if (result != FileResult::ok && result != FileResult::not_found) return false;
    text_ = on_disk;
    index();
    put(unsaved_);
    return true;
}

bool clsIniFile::store(const std::string& on_disk) {
    if (text_ != on_disk && files_.replace(name_, text_, true) != FileResult::ok) return false;
    unsaved_.clear();
    return true;
}

const clsIniFile::Span* clsIniFile::value_of(std::string_view section, std::string_view key) const {
    const auto place = sections_.find(lower_case(section));
    if (place == sections_.end()) return nullptr;
    const auto value = place->second.values.find(lower_case(key));
    return value == place->second.values.end() ? nullptr : &value->second;
}

std::string clsIniFile::GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const {
    std::string_view value;
    if (const Span* span = value_of(section, key)) {
        const std::string_view written = std::string_view(text_).substr(span->begin, span->end - span->begin);
        value = without_quotes(inner(without_line_end(written)));
    } else {
        value = fallback.substr(0, fallback.find_last_not_of(' ') + 1);
    }
    return std::string(value.substr(0, value.find('\0')).substr(0, longest_value));
}

bool clsIniFile::GetFlag(std::string_view section, std::string_view key, bool fallback) const {
    return trimmed(GetSetting(section, key, flag_text(fallback))) == "True";
}

bool clsIniFile::has(std::string_view section, std::string_view key) const {
    return value_of(section, key) != nullptr;
}

bool clsIniFile::SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
    return SaveSettings({{std::string(section), std::string(key), std::string(value)}});
}

bool clsIniFile::SaveFlag(std::string_view section, std::string_view key, bool value) {
    return SaveSetting(section, key, flag_text(value));
}

bool clsIniFile::SaveSettings(const std::vector<Setting>& settings) {
    merge(unsaved_, settings);
    std::string on_disk;
    if (load(on_disk)) return store(on_disk);
    put(unsaved_);
    return false;
}

std::vector<std::string> clsIniFile::GetSection(std::string_view section) const {
    std::vector<std::string> lines;
    const auto place = sections_.find(lower_case(section));
    if (place == sections_.end()) return lines;
    std::size_t room = longest_section;
    const auto [begin, end] = place->second.lines;
    each_line(text_, begin, end, [&](std::size_t, std::string_view bytes) {
        const Line line = line_of(bytes);
        if (line.kind != LineKind::setting || room == 0) return;
        std::string setting(line.name);
        setting += '=';
        setting += inner(without_line_end(bytes.substr(line.value)));
        setting.resize(std::min(setting.size(), room));
        room -= std::min(setting.size() + 1, room);  // one byte separates it from the next
        lines.push_back(std::move(setting));
    });
    return lines;
}

bool clsIniFile::DeleteSection(std::string_view section) {
    std::erase_if(unsaved_, [&](const Setting& setting) { return lower_case(setting.section) == lower_case(section); });
    std::string on_disk;
    const bool readable = load(on_disk);
    if (const auto place = sections_.find(lower_case(section)); place != sections_.end()) {
        const auto [begin, end] = place->second.lines;
        text_.erase(begin, end - begin);
        index();
    }
    return readable && store(on_disk);
}

// All changes are placed by the present index and made in one pass, so that a long list costs one copy of the text.
void clsIniFile::put(const std::vector<Setting>& settings) {
    struct Change {
        Span replaced;
        std::string text;
        bool is_line;  // begins a line of its own
    };
    std::vector<Change> changes;
    std::vector<std::pair<std::string, std::string>> new_sections;  // name in lower case, lines
    for (const auto& [section, key, value] : settings) {
        const std::string rest = on_one_line(value) + std::string(line_end);
        const std::string line = key + "=" + rest;
        const std::string name = lower_case(section);
        const auto place = sections_.find(name);
        if (const Span* old = value_of(section, key)) {
            changes.push_back({*old, rest, false});
        } else if (place != sections_.end()) {
            changes.push_back({{place->second.insert, place->second.insert}, line, true});
        } else {
            const auto is_it = [&](const auto& known) { return known.first == name; };
            auto known = std::find_if(new_sections.begin(), new_sections.end(), is_it);
            if (known == new_sections.end())
                known = new_sections.insert(known, {name, "[" + section + "]" + std::string(line_end)});
            known->second += line;
        }
    }
    for (auto& [section, lines] : new_sections)
        changes.push_back({{text_.size(), text_.size()}, std::move(lines), true});
    std::stable_sort(changes.begin(), changes.end(), [](const Change& a, const Change& b) {
        return std::pair(a.replaced.begin, a.is_line) < std::pair(b.replaced.begin, b.is_line);
    });

    std::string text;
    std::size_t taken = 0;
    for (const Change& change : changes) {
        text.append(text_, taken, change.replaced.begin - taken);
        if (change.is_line && !text.empty() && text.back() != '\n') text += line_end;
        text += change.text;
        taken = change.replaced.end;
    }
    text.append(text_, taken);
    text_ = std::move(text);
    index();
}

void clsIniFile::index() {
    sections_.clear();
    Section* current = nullptr;
    const std::size_t first = text_.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
    each_line(text_, first, text_.size(), [&](std::size_t begin, std::string_view bytes) {
        const Line line = line_of(bytes);
        const std::size_t end = begin + bytes.size();
        if (line.kind == LineKind::header) {
            const auto [place, is_new] = sections_.try_emplace(lower_case(line.name), Section{{begin, end}, end, {}});
            current = is_new ? &place->second : nullptr;
        }
        if (current == nullptr) return;
        current->lines.end = end;
        if (line.kind != LineKind::blank) current->insert = end;
        if (line.kind == LineKind::setting)
            current->values.try_emplace(lower_case(line.name), Span{begin + line.value, end});
    });
}

}  // namespace nimbry
