#include "engine/publish/internet_check.h"

#include <algorithm>

#include "engine/derived/number_text.h"
#include "engine/publish/mail_address.h"
#include "engine/publish/publishing.h"
#include "engine/publish/weather_query.h"
#include "engine/sun/location.h"

namespace nimbry {
namespace {

using D = InternetDialog;
using Refusal = std::optional<InternetRefusal>;

/// A text of the dialog under the name that messages give it.
struct Field {
    std::string_view control, name;
    std::string D::*text;
};

// Kept on purpose: the blank before "FTP Username".
constexpr Field ftp_fields[]{{"txtFTPServer", "Remote FTP Server", &D::FTPServer},
                             {"txtFTPRemoteFile", "Remote File Name", &D::FTPRemoteFile},
                             {"txtFTPUser", " FTP Username", &D::FTPUser},
                             {"txtFTPPass", "FTP Password", &D::FTPPass}};
constexpr Field mail_fields[]{{"txtMailServer", "Mail Server", &D::MailServer},
                              {"txtMailTo", "Mail To", &D::MailTo},
                              {"txtMailMyAddr", "Your email address", &D::MailMyAddr}};
constexpr Field address_fields[]{{"txtMailTo", "Mail To", &D::MailTo},
                                 {"txtMailcc", "Mail cc", &D::Mailcc},
                                 {"txtMailBcc", "Mail Bcc", &D::MailBcc},
                                 {"txtMailMyAddr", "Your email address", &D::MailMyAddr}};

/// What a service asks for once it is on.
struct Service {
    bool D::*active;
    Field user, pass;
};
constexpr std::string_view underground = "Weather Underground upload details";
constexpr std::string_view for_you = "Weatherforyou/Hamweather upload details";
constexpr std::string_view aprs = "CWOP/APRSWXNET user ID";
constexpr Service services[]{
    {&D::chkWU, {"txtWUuser", underground, &D::WUuser}, {"txtWUpass", underground, &D::WUpass}},
    {&D::chkHW, {"txtHWuser", for_you, &D::HWuser}, {"txtHWpass", for_you, &D::HWpass}},
    {&D::chkAPRS, {"txtAPRSID", aprs, &D::txtAPRSID}, {"txtAPRSID", aprs, &D::txtAPRSID}}};

Refusal what_is_busy(const PublishState& publish) {
    if (publish.uloadftpbusy) return InternetRefusal{"", "FTP is currently already busy uploading"};
    if (publish.emailbusy) return InternetRefusal{"", "Nimbry is currently busy sending email"};
    if (publish.wubusy) {
        return InternetRefusal{"", "Nimbry is currently busy uploading to Weather Underground/Weatherforyou/APRS"};
    }
    return {};
}

bool is_empty(const D& dialog, const Field& field) {
    return trimmed(dialog.*field.text).empty();
}

std::string not_completed(const Field& field) {
    return "The " + std::string(field.name) + " field has not been completed.";
}

template <std::size_t count>
Refusal first_empty(const D& dialog, const Field (&fields)[count]) {
    for (const Field& field : fields) {
        if (is_empty(dialog, field)) return InternetRefusal{field.control, not_completed(field)};
    }
    return {};
}

InternetRefusal invalid(const Field& field) {
    return {field.control, "The " + std::string(field.name) + " entry appears invalid."};
}

bool forbidden_in_a_name(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == 0x7F || std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
}

Refusal check_page_name(const D& dialog) {
    const Field& field = ftp_fields[1];
    const std::string name = trimmed(dialog.FTPRemoteFile);
    if (name.find('.') == std::string::npos) return invalid(field);
    if (std::any_of(name.begin(), name.end(), forbidden_in_a_name))
        return InternetRefusal{field.control, "The remote file name contains invalid characters."};
    const std::string lower = lower_case(name);
    if (lower.starts_with("myhtml") && lower.ends_with(".html")) {
        return InternetRefusal{field.control,
                               "The remote file name can not be the same as a template file name.\r\n"
                               "Please choose a different remote file name."};
    }
    return {};
}

Refusal check_ftp(const D& dialog) {
    if (!dialog.ChkEnableFTP) return {};
    if (auto refusal = first_empty(dialog, ftp_fields)) return refusal;
    return check_page_name(dialog);
}

Refusal check_mail(const D& dialog) {
    if (!dialog.ChkSendMail) return {};
    if (auto refusal = first_empty(dialog, mail_fields)) return refusal;
    for (const Field& field : address_fields) {
        const auto addresses = mail_addresses(dialog.*field.text);
        if (!std::all_of(addresses.begin(), addresses.end(), [](const std::string& a) { return IsValidEmail(a); }))
            return invalid(field);
    }
    for (const Field& field : {address_fields[0], address_fields[3]}) {
        const bool is_sender = field.text == &D::MailMyAddr;
        const std::size_t count = mail_addresses(dialog.*field.text).size();
        if (count == 0 || (is_sender && count > 1)) return invalid(field);
    }
    return {};
}

Refusal check_services(const D& dialog) {
    for (const Service& service : services) {
        if (!(dialog.*service.active)) continue;
        for (const Field& field : {service.user, service.pass}) {
            if (!is_empty(dialog, field)) continue;
            return InternetRefusal{field.control,
                                   "The " + std::string(field.name) + " fields have not been completed."};
        }
    }
    return {};
}

bool five_minutes_with_aprs(const D& dialog) {
    return dialog.chkAPRS && report_interval(dialog) == least_dialog_interval;
}

}  // namespace

std::optional<std::string> missing_for_mail(const InternetDialog& dialog) {
    if (const auto refusal = first_empty(dialog, mail_fields)) return refusal->message;
    return {};
}

std::optional<std::string> missing_for_ftp(const InternetDialog& dialog) {
    const Field& server = ftp_fields[0];
    if (!is_empty(dialog, server)) return {};
    return not_completed(server);
}

std::optional<std::string> aprs_refusal(const MainSettings& settings) {
    if (entered_location(settings.Latitude, settings.Longitude)) return {};
    return "Can't select upload to APRS as there is\r\nno valid location data entered yet";
}

std::optional<InternetRefusal> internet_refusal(const WeatherState& state, const InternetDialog& dialog) {
    if (auto refusal = what_is_busy(state.publish)) return refusal;
    if (auto refusal = check_ftp(dialog)) return refusal;
    if (auto refusal = check_mail(dialog)) return refusal;
    if (auto refusal = check_services(dialog)) return refusal;
    if (!dialog.chkAPRS) return {};
    if (auto message = aprs_refusal(state.settings)) return InternetRefusal{"chkAPRS", *message};
    return {};
}

std::optional<Balloon> interval_notice(const InternetDialog& before, const InternetDialog& after) {
    if (!five_minutes_with_aprs(after) || five_minutes_with_aprs(before)) return {};
    return Balloon{.title = "Nimbry Information",
                   .text =
                       "Weather Underground and Weatherforyou/Hamweather\r\n"
                       "will upload at 5 minute intervals but APRSWXNET/CWOP\r\n"
                       "will remain at a minimum of 10 minute upload intervals.",
                   .icon = "i"};
}

std::optional<InternetRefusal> accept_internet(Copy& copy, const InternetDialog& dialog) {
    if (auto refusal = internet_refusal(copy.state, dialog)) return refusal;
    const auto notice = interval_notice(copy.state.publish.NimbryFTPSetup, dialog);
    write_internet(copy.ini, dialog);
    getFTP(copy);
    if (notice) copy.ports.notices.balloon(*notice);
    return {};
}

}  // namespace nimbry
