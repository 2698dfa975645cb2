#pragma once

#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

/// The path of a file in the local-save folder, joined by one separator; empty when no folder is set. A folder's name
/// that ends in a backslash ("C:\") is no folder of this system, and stays none.
[[nodiscard]] std::string local_path(const PublishState& publish, std::string_view name);

/// The same, but empty also while the local save is switched off.
[[nodiscard]] std::string local_twin(const PublishState& publish, std::string_view name);

/// True if the folder of the local save is there, whether it is switched on or not.
[[nodiscard]] bool local_folder_found(const Copy& copy);

/// Puts a copy of a file of the program's folder into the local-save folder, over the one that is there; nothing when
/// the local save is off or the file is missing. Waits while the file is in use. Throws RunTimeError.
void copy_to_local(Copy& copy, std::string_view name);

}  // namespace nimbry
