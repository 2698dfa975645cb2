#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/ports/files.h"

namespace nimbry {

/// The configuration file `Nimbry.ini`: sections of `key=value` lines, all values text, booleans "True" and "False".
///
/// Reading: section and key names compare without case (ASCII); the first section of a name and the first key in it
/// count; a line whose first character is ";" is a comment; one pair of matching outer quotes around a value is
/// removed. Writing keeps everything else byte for byte. The byte format stands in docs/formats/ini.md.
///
/// A write goes to the file at once (temporary and rename) and leaves it readable by its owner only, as it holds
/// passwords. It starts from what the file holds at that moment, so that what others wrote meanwhile stays; it is left
/// out when it would change nothing; and a file that cannot be read is never written over. If it fails, the value stays
/// in force in memory and goes to the file with the next write that succeeds.
class clsIniFile {
public:
    /// `name` is the file's name in the program's folder; `files` must outlive this object. Nothing is read yet.
    clsIniFile(Files& files, std::string name);

    /// Reads the file afresh. False when it is there but not readable (defaults are then in force); a missing file is
    /// empty.
    bool read();

    /// The value of a key, or `fallback` when the file, the section or the key is missing (trailing blanks of the
    /// fallback are dropped). A key with nothing after "=" gives "". Ends at the first NUL; cut to 2047 bytes.
    [[nodiscard]] std::string GetSetting(std::string_view section, std::string_view key,
                                         std::string_view fallback) const;

    /// Exactly "True" after trimming is true; everything else is false. A missing key gives `fallback`.
    [[nodiscard]] bool GetFlag(std::string_view section, std::string_view key, bool fallback) const;

    /// True when the key is there, with or without a value.
    [[nodiscard]] bool has(std::string_view section, std::string_view key) const;

    /// Writes a value as it is (CR and LF become blanks). True on success.
    bool SaveSetting(std::string_view section, std::string_view key, std::string_view value);
    bool SaveFlag(std::string_view section, std::string_view key, bool value);

    /// Writes several settings with one write of the file, in their order; of two for one key the later counts.
    struct Setting {
        std::string section, key, value;
    };
    bool SaveSettings(const std::vector<Setting>& settings);

    /// The `key=value` lines of a section in file order, without comments and blank lines, values as written (quotes
    /// stay). With one separator between two lines they are cut at 4095 bytes in all. For tests.
    [[nodiscard]] std::vector<std::string> GetSection(std::string_view section) const;

    /// Removes a section's header and its lines up to the next header. True on success, also when there is no such
    /// section. A failed one is not tried again: the section may come back with the next read. For tests.
    bool DeleteSection(std::string_view section);

private:
    struct Span {
        std::size_t begin, end;  // in text_
    };
    struct Section {
        Span lines;                                    // from its header to the next one
        std::size_t insert;                            // behind its last line that is not blank
        std::unordered_map<std::string, Span> values;  // by key in lower case: from behind "=" to the next line
    };

    [[nodiscard]] const Span* value_of(std::string_view section, std::string_view key) const;
    bool load(std::string& on_disk);
    bool store(const std::string& on_disk);
    void put(const std::vector<Setting>& settings);
    void index();

    Files& files_;
    std::string name_;
    std::string text_;
    std::unordered_map<std::string, Section> sections_;  // by name in lower case
    std::vector<Setting> unsaved_;                       // what a failed write left in memory only
};

/// "True" or "False": how a boolean stands in the file.
[[nodiscard]] inline std::string flag_text(bool value) {
    return value ? "True" : "False";
}

}  // namespace nimbry
