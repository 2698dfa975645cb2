#pragma once

#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

/// The text of a marker of a template, "~~WEBOUTTEMP~~", as its tag prints it now (tag_table.h). All 14 bytes count: a
/// marker that is no tag, also one in another case, prints nothing. Nothing changes by it but one thing: the heading of
/// an alarm mail goes into `mail_body`. Throws RunTimeError overflow for a number too large to be printed.
[[nodiscard]] std::string resolvtag(const Copy& copy, std::string_view tag);

/// Brings up to the present moment what tags print and no group of the station's does: the UTC texts, which a client
/// keeps as its last train left them, and the rain since midnight. Every generation begins with it.
void refresh_tag_sources(Copy& copy);

}  // namespace nimbry
