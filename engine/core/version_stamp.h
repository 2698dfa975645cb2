#pragma once

#include <string>

namespace nimbry {

class clsIniFile;

/// What `Main`/`Version` holds after a start: "Nimbry|202|251003", the version without its point and the build. Nothing
/// reads it but the next start and the window "About".
[[nodiscard]] std::string version_stamp();

/// The first thing of a run that is written to the configuration. A trimmed `Main`/`Version` that holds "ry|202|" (in
/// this case) stays; any other text becomes version_stamp(). `WebComment` and `WebComment2` are written back as they
/// were read, or as "<!--empty-->" when missing, and `FTPPort` when what was read is "21": so that a first run's file
/// shows the three keys. One write; a value in quotes loses them by it.
void stamp_version(clsIniFile& ini);

}  // namespace nimbry
