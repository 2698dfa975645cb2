#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nimbry {

// Templates are numbered from 0 to 199; the first has no number in its names. Pages 0 to 99 are uploaded.
inline constexpr int pages_uploaded = 100;
inline constexpr int pages_in_all = 200;

/// "myhtml.html", "myhtml1.html", ...
[[nodiscard]] std::string page_template(int n);

/// The file in which a page is made: "temphtml.html", "temphtml1.html", ...
[[nodiscard]] std::string page_work_file(int n);

/// The finished page of the first hundred: "nbyxauto.html", "nbyxauto1.html", ...
[[nodiscard]] std::string finished_page(int n);

/// What a page is called outside, by the setting `FTPRemoteFile`: "weather.htm" gives "weather.htm", "weather1.htm",
/// ... Only the first two of the pieces between dots count: "a.b.c" gives "a1.b". Nothing for a setting without a dot.
[[nodiscard]] std::optional<std::string> remote_page(std::string_view FTPRemoteFile, int n);

}  // namespace nimbry
