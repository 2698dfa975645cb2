#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ports/files.h"

namespace nimbry {

/// The configuration file `Nimbry.ini`: sections of `key=value` lines, all values text, booleans "True" and "False".
///
/// Reading: section and key names compare without case (ASCII); the first section of a name and the first key in it count;
/// a line whose first character is ";" is a comment; one pair of matching outer quotes around a value is removed. Writing
/// keeps everything else byte for byte. The byte format stands in docs/formats/ini.md.
///
/// A write goes to the file at once (temporary and rename); if it fails, the value stays in force in memory and
/// SaveSetting returns false. Changes made to the file by others are seen at the next read().
class clsIniFile {
public:
    /// `name` is the file's name in the program's folder; `files` must outlive this object. Nothing is read yet.
    clsIniFile(Files& files, std::string name);

    /// Reads the file afresh. False when it is there but not readable (defaults are then in force); a missing file is empty.
    bool read();

    /// The value of a key, or `fallback` when the file, the section or the key is missing (trailing blanks of the
    /// fallback are dropped). A key with nothing after "=" gives "". Cut to 2047 bytes and at the first NUL.
    [[nodiscard]] std::string GetSetting(std::string_view section, std::string_view key, std::string_view fallback) const;

    /// Exactly "True" after trimming is true; everything else is false. A missing key gives `fallback`.
    [[nodiscard]] bool GetFlag(std::string_view section, std::string_view key, bool fallback) const;

    /// Writes a value as it is (CR and LF become blanks). True on success.
    bool SaveSetting(std::string_view section, std::string_view key, std::string_view value);
    bool SaveFlag(std::string_view section, std::string_view key, bool value);

    /// Writes several settings with one write of the file, in their order.
    struct Setting {
        std::string section, key, value;
    };
    bool SaveSettings(const std::vector<Setting>& settings);

    /// The `key=value` lines of a section in file order, without comments and blank lines, values as written; 4095 bytes in all.
    [[nodiscard]] std::vector<std::string> GetSection(std::string_view section) const;

    /// Removes a section's header and its lines up to the next header. True on success, also when there is no such section.
    bool DeleteSection(std::string_view section);

private:
    struct Place;  // where a section or a key lies in text_
    bool write();

    Files& files_;
    std::string name_;
    std::string text_;
};

}  // namespace nimbry
