#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace nimbry {

/// Bytes of a marker, tildes included: "~~WEBOUTTEMP~~".
inline constexpr std::size_t marker_length = 14;

/// Fills a template: appends it to `out` with every marker replaced by what `resolve` makes of its 14 bytes. One
/// scanner for pages, the text report and mails. It works on bytes and knows neither lines nor HTML.
///
/// A "~" opens a block of 14 bytes, which is a marker if its last two are "~~". What the first 12 are is not looked at,
/// so a block of the right shape that is no tag goes to `resolve` too. Any other block is copied as it stands, and the
/// scan goes on behind it: a "~" within it opens nothing.
///
/// Fewer than 13 bytes behind a "~" that opens a block: RunTimeError past_end. What stood before it is in `out` then.
void fill_template(std::string_view page, const std::function<std::string(std::string_view marker)>& resolve,
                   std::string& out);

}  // namespace nimbry
