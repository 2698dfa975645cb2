#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Puts what is finished and there into the local-save folder, if the local save is on: the pictures, as long as they
/// are younger than three upload intervals, `wx.wml`, the pages under their names outside (none while `FTPRemoteFile`
/// has no dot), the monthly summary, the small data files and, where they are made, the graphs. A file is complete
/// there before it takes the place of the old one. `LocalSaveBusy` is set meanwhile.
///
/// Without that folder nothing happens. The first file that cannot be written ends it, and is told of in a balloon and
/// in the program log.
void localsave(Copy& copy);

}  // namespace nimbry
