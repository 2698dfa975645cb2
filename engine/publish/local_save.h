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

/// Puts a copy of a file of the program's folder into the local-save folder, over the one that is there; nothing when
/// the local save is off or the file is missing. Waits while the file is in use. Throws RunTimeError.
void copy_to_local(Copy& copy, std::string_view name);

/// Puts what is finished and there into the local-save folder, if the local save is on: the pictures, as long as they
/// are younger than three upload intervals, `wx.wml`, the pages under their names outside (none while `FTPRemoteFile`
/// has no dot), the monthly summary, the small data files and, where they are made, the graphs. A file is complete
/// there before it takes the place of the old one. `LocalSaveBusy` is set meanwhile.
///
/// Without that folder nothing happens. The first file that cannot be written ends it, and is told of in a balloon and
/// in the program log.
void localsave(Copy& copy);

}  // namespace nimbry
