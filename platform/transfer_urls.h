#pragma once

#include <string>
#include <string_view>

#include "engine/ports/transfers.h"

namespace nimbry::platform {

// What libcurl is asked for. It takes a URL apart before it sends anything: a blank in one is refused, and what stands
// behind a "#" never leaves the machine.

/// The directory that a session stays in: "ftp://host:21/", "ftp://host:21/pub/web/"; "%2Fpub/" for an absolute one.
/// "ftps" when it is TLS from the first byte. Every byte of a name that is not a letter, a digit, "-", ".", "_" or "~"
/// is escaped.
[[nodiscard]] std::string directory_url(const FtpServer& server);

/// A file in it.
[[nodiscard]] std::string file_url(const FtpServer& server, std::string_view remote);

/// A mail server: "smtp://host:25/hello", or "smtps". `hello` is how this machine names itself there.
[[nodiscard]] std::string mail_url(const Mail& mail, std::string_view hello);

/// A web address that can travel: with "http://" in front where it has no scheme, and with blanks, controls, `"`, "#",
/// "<", ">" and bytes above 7E as %XX. Everything else stays as it is, "%" too.
[[nodiscard]] std::string web_url(std::string_view address);

}  // namespace nimbry::platform
