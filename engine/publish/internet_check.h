#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

/// Why the internet dialog cannot be accepted, and at which control; no control for what is under way.
struct InternetRefusal {
    std::string_view control;
    std::string message;
};

/// What the accept button and the forced buttons look at first, in this order: uploads and mails under way; with FTP
/// on, server, page name, user and password, and the page name's characters; with mail on, server, recipients and
/// sender, and all addresses; the users of the services that are on; a location for APRS.
[[nodiscard]] std::optional<InternetRefusal> internet_refusal(const WeatherState& state, const InternetDialog& dialog);

/// What a mail cannot go without and has not been entered, whether mail is on or not: "The Mail Server field has not
/// been completed." Nothing when all of it is there.
[[nodiscard]] std::optional<std::string> missing_for_mail(const InternetDialog& dialog);

/// The same of an upload, which needs a server.
[[nodiscard]] std::optional<std::string> missing_for_ftp(const InternetDialog& dialog);

/// What keeps APRS from being selected; nothing when there is a location.
[[nodiscard]] std::optional<std::string> aprs_refusal(const MainSettings& settings);

/// The shortest interval of the weather services that the dialog offers, minutes.
inline constexpr int least_dialog_interval = 5;

/// What is to be known when the interval becomes five minutes with APRS on, or APRS is switched on with it.
[[nodiscard]] std::optional<Balloon> interval_notice(const InternetDialog& before, const InternetDialog& after);

/// The accept button: writes section `FTP` and takes it into force. A refused dialog changes nothing.
std::optional<InternetRefusal> accept_internet(Copy& copy, const InternetDialog& dialog);

}  // namespace nimbry
