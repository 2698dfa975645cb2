#pragma once

#include <string_view>

namespace nimbry {

class clsIniFile;

/// What `Main`/`Version` holds after a start. Nothing reads it but the next start.
inline constexpr std::string_view version_stamp = "Nimbry|202|251003";

/// The first thing of a run that is written to the configuration. A trimmed `Main`/`Version` that holds "ry|202|" (in
/// this case) stays; any other text becomes `version_stamp`. `WebComment` and `WebComment2` are written back as they
/// were read, or as "<!--empty-->" when missing, and `FTPPort` when what was read is "21": so that a first run's file
/// shows the three keys. One write; a value in quotes loses them by it.
void stamp_version(clsIniFile& ini);

}  // namespace nimbry
