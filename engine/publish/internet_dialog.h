#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/ini_file.h"
#include "engine/displays/dialog_controls.h"

namespace nimbry {

/// The values of the internet dialog `NimbryFTPSetup`; a value here is the default of its key in section `FTP`. Some
/// fields have the names of their controls, the others those of their keys. Numbers are texts as typed. Passwords are
/// plain here, in UTF-8 as servers expect them.
struct InternetDialog {
    bool ChkEnableFTP = false;     ///< key `FTPen`: pages go out by FTP
    std::string FTPServer;         ///< host
    std::string FTPRemDir;         ///< folder on the server; empty: the one of the login
    std::string FTPRemoteFile;     ///< what the first page is called there; the others get their number
    std::string FTPUser, FTPPass;  ///< login
    std::string FTPHours = "0";    ///< the upload interval is the sum of both
    std::string FTPMins = "2";
    bool FTPact = true;  ///< the server opens the data connections
    /// "none", "explicit" (TLS asked for after connecting), "implicit" (from the first byte).
    std::string FTPSecurity = "none";
    std::string Additional_Files;   ///< further files, joined by ","
    std::string UploadCount = "1";  ///< they go with every so many uploads
    bool chkLogResponses = false;   ///< key `LogFTPResponses`: the exchange is written to `NimbryFTPLOG.txt`

    bool ChkSendMail = false;  ///< key `EMailEn`: mails go out by schedule
    std::string MailServer;    ///< SMTP host
    std::string MailPort = "25";
    /// "none", "starttls" (TLS asked for after connecting), "tls" (from the first byte).
    std::string MailSecurity = "none";
    std::string MailUser, MailPass;     ///< login; without a user there is none
    std::string MailTo;                 ///< recipients, joined by ";"
    std::string Mailcc, MailBcc;        ///< likewise; empty or "null" for none
    std::string MailMyAddr;             ///< sender
    std::string MailTitle;              ///< head line of the mails
    std::string MailAttach;             ///< files that go with each mail, joined by ";"
    std::vector<std::string> MailList;  ///< when mails go: "HH:MM", or changeover_mail
    bool MailReport = false;            ///< a scheduled mail has the monthly summary made first
    bool ChkDoEmailToo = false;         ///< key `EMailToo`: an upload by FTP follows a mail

    bool chkWU = false;  ///< key `WUactive`: Weather Underground
    std::string WUuser, WUpass;
    std::string WUhost;  ///< instead of the service's own: host[:port], with or without a scheme
    bool chkHW = false;  ///< key `HWactive`: Hamweather, called Weatherforyou in texts
    std::string HWuser, HWpass;
    std::string HWhost;
    bool chkAPRS = false;          ///< key `APRSactive`: APRS
    std::string txtAPRSID;         ///< key `APRSuser`: the station's call sign
    std::string APRSpass = "-1";   ///< pass code; -1 is that of a station that only reports weather
    std::string txtWUMins = "10";  ///< key `WUmins`: minutes between two reports to any of the three

    bool chkLocal = false;              ///< key `LocalSave`: logs and pages are also put into a folder of the user's
    std::string txtLocalPath = "C:\\";  ///< key `LocalPath`: that folder

    bool ChkDial = false;    ///< key `Dial`: dial where there is no connection
    bool ChkHangup = false;  ///< key `Hangup`: end it after an upload

    bool operator==(const InternetDialog&) const = default;
};

/// The entry of the mail schedule that stands for the daily changeover.
inline constexpr std::string_view changeover_mail = "*CHANGE*";

/// Longest mail schedule that is read.
inline constexpr int most_mail_times = 1000;

/// The dialog's check boxes and text fields with their values; the schedule, which is a list, and the passwords, which
/// are no texts of the engine, are not among them.
[[nodiscard]] std::vector<DialogControl> dialog_controls(InternetDialog& dialog);

/// A key of section `FTP`.
struct InternetKey {
    std::string_view key;
    std::string fallback;   ///< its value when it is not in the file
    bool optional = false;  ///< stands in the file only when somebody has set it
};

/// All keys of the section; those of the schedule's entries as one, "MailList(n)".
[[nodiscard]] std::vector<InternetKey> internet_keys();

/// One password of the dialog, its key and control.
struct InternetPassword {
    std::string_view key, control;
    std::string InternetDialog::*value;
    bool scrambled;  ///< so stored
};
[[nodiscard]] std::vector<InternetPassword> internet_passwords();

/// The password that a key of section `FTP` holds; nothing for any other key. Names compare without case.
[[nodiscard]] std::optional<InternetPassword> internet_password(std::string_view key);

/// A password as it stands in the file.
[[nodiscard]] std::string stored_password(const InternetPassword& password, std::string_view plain);

/// Section `FTP`. Entries of the schedule are taken from index 0 to `numofentries`, empty ones passed over; one that
/// begins "*C" is the changeover's.
[[nodiscard]] InternetDialog read_internet(const clsIniFile& ini);

/// Writes the section with one write: the optional keys only where they differ from their default or stand in the file
/// already, the schedule from index 1 on. True on success.
bool write_internet(clsIniFile& ini, const InternetDialog& dialog);

/// What Encrypt() is to do.
enum class EncryptMode { store, read };

/// Scrambles a password for the file, or reads it back. It has no key: it hides a password from a casual look.
///
/// A code c up to 126 is stored as the odd byte c * 2 + 3. A higher one does not fit that and is stored as three even
/// bytes: 80, 40 + 2 * high half, 40 + 2 * low half (hexadecimal 80 and 40). A byte that is neither is read as
/// (c - 3) / 2, rounded down.
///   Encrypt("Az9", store) = "\x85\xF7\x75"   Encrypt("\xE9", store) = "\x80\x5C\x52"
[[nodiscard]] std::string Encrypt(std::string_view text, EncryptMode mode);

}  // namespace nimbry
