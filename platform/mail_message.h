#pragma once

#include <string>
#include <vector>

#include "engine/ports/transfers.h"

namespace nimbry::platform {

/// What only the moment and the machine can say of a message.
struct MessageStamp {
    std::string date;  ///< RFC 5322, "21 Nov 2026 10:35:57 +0000"
    std::string id;    ///< unique in the world, without its angle brackets: "5f3a@my.host"
};

/// An attachment that has been read.
struct AttachedFile {
    std::string name, bytes;
};

/// The message as a server takes it, with CR LF after each line: the headers, and the text in windows-1252 alone or as
/// the first part of a multipart/mixed, followed by the files in base64.
///
/// Every line end of the text becomes CR LF; a bare LF would let a line of one dot end the message early. The text
/// travels as 7bit, as 8bit when it has a byte above 7F, and as quoted-printable when a line has more than 998 bytes,
/// the most that a server takes. Those who get a blind copy are not named.
[[nodiscard]] std::string mail_message(const Mail& mail, const std::vector<AttachedFile>& files,
                                       const MessageStamp& stamp);

}  // namespace nimbry::platform
