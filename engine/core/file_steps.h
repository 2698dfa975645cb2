#pragma once

#include <string>
#include <string_view>

#include "engine/ports/files.h"

namespace nimbry {

/// Deletes a file; nothing for a missing one. Throws RunTimeError.
void remove_if_there(Files& files, const std::string& name);

/// Copies a file to another name, over what is there. Throws RunTimeError.
void copy_over(Files& files, const std::string& from, const std::string& to);

/// A work file, which is complete by now, takes the place of the finished one. Throws RunTimeError.
void replace_by(Files& files, const std::string& work, const std::string& finished);

/// Gives a month's file its archive's name. A power cut leaves it whole, under the one name or the other. Throws
/// RunTimeError: `exists` when the name is taken, and nothing has changed then.
void move_to_archive(Files& files, const std::string& from, const std::string& archive);

/// What the last line of a text file lacks of its end since a power cut tore it: "\r\n", "\n", or "" for a whole one.
/// "" too for an empty file, and for one that is missing or cannot be read. Reads the whole file.
[[nodiscard]] std::string_view missing_line_end(const Files& files, const std::string& name);

}  // namespace nimbry
