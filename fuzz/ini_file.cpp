// Any bytes as a configuration file. The laws: a value that is written reads back as the rules of the format say; a
// file that is written for one key keeps every other byte; and what is written twice stands there once.
#include "engine/core/ini_file.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace {

const std::string file = "Nimbry.ini";

void expect(bool law) {
    if (!law) std::abort();
}

std::string inner(std::string text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// What the rules make of a value that was written: one line, outer blanks and one pair of quotes gone, up to a NUL,
// cut.
std::string as_read(std::string value) {
    std::replace_if(
        value.begin(), value.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    value = inner(value);
    if (value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\''))
        value = value.substr(1, value.size() - 2);
    return value.substr(0, value.find('\0')).substr(0, 2047);
}

// True when `after` is `before` with a part of one line replaced by one setting, and what it may need around it.
bool differs_in_one_line(const std::string& before, const std::string& after, std::size_t value) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t front = 0;
    while (front < shorter && before[front] == after[front]) ++front;
    std::size_t back = 0;
    while (back < shorter - front && before[before.size() - 1 - back] == after[after.size() - 1 - back]) ++back;
    const std::string_view gone = std::string_view(before).substr(front, before.size() - front - back);
    const std::size_t came = after.size() - front - back;
    constexpr std::size_t around = std::string_view("\r\n[Main]\r\nk=\r\n").size();
    return std::count(gone.begin(), gone.end(), '\n') <= 1 && came <= value + around;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = input.find("\xFF");
    const std::string before = input.substr(0, cut);
    const std::string value = cut == std::string::npos ? "v" : input.substr(cut + 1);

    nimbry::test::VirtualClock clock;
    nimbry::test::MemoryFiles disk{clock};
    disk.put(file, before);
    nimbry::clsIniFile ini{disk, file};
    expect(ini.read());
    const std::string other = ini.GetSetting("Main", "a", "(none)");
    static_cast<void>(ini.GetSection("Main"));

    expect(ini.SaveSetting("Main", "k", value));
    const std::string after = disk.contents(file);
    expect(ini.GetSetting("Main", "k", "(none)") == as_read(value));
    expect(ini.GetSetting("Main", "a", "(none)") == other);
    expect(differs_in_one_line(before, after, value.size()));

    nimbry::clsIniFile fresh{disk, file};
    expect(fresh.read());
    expect(fresh.GetSetting("Main", "k", "(none)") == as_read(value));

    expect(fresh.SaveSetting("main", "K", value));
    expect(disk.contents(file) == after);
    expect(fresh.DeleteSection("Main"));
    return 0;
}
