#include "engine/publish/internet_dialog.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <variant>

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

using D = InternetDialog;

constexpr std::string_view section = "FTP";

/// One key with its control and its place in the dialog.
struct Row {
    std::string_view key, control;
    std::variant<bool D::*, std::string D::*> field;
    bool optional = false;  ///< stands in the file only when somebody has set it
};

constexpr bool unless_set = true;

constexpr std::array rows{
    Row{"FTPen", "ChkEnableFTP", &D::ChkEnableFTP},
    Row{"FTPServer", "txtFTPServer", &D::FTPServer},
    Row{"FTPRemDir", "txtFTPRemDir", &D::FTPRemDir},
    Row{"FTPRemoteFile", "txtFTPRemoteFile", &D::FTPRemoteFile},
    Row{"FTPUser", "txtFTPUser", &D::FTPUser},
    Row{"FTPHours", "txtFTPHours", &D::FTPHours},
    Row{"FTPMins", "txtFTPMins", &D::FTPMins},
    Row{"EMailEn", "ChkSendMail", &D::ChkSendMail},
    Row{"MailServer", "txtMailServer", &D::MailServer},
    Row{"MailTo", "txtMailTo", &D::MailTo},
    Row{"MailAttach", "txtMailAttach", &D::MailAttach},
    Row{"MailMyAddr", "txtMailMyAddr", &D::MailMyAddr},
    Row{"Hangup", "ChkHangup", &D::ChkHangup},
    Row{"Dial", "ChkDial", &D::ChkDial},
    Row{"EMailToo", "ChkDoEmailToo", &D::ChkDoEmailToo},
    Row{"MailTitle", "txtMailTitle", &D::MailTitle},
    Row{"Mailcc", "txtMailcc", &D::Mailcc},
    Row{"MailBcc", "txtMailBcc", &D::MailBcc},
    Row{"FTPact", "chkFTPact", &D::FTPact},
    Row{"WUactive", "chkWU", &D::chkWU},
    Row{"WUmins", "txtWUMins", &D::txtWUMins},
    Row{"WUuser", "txtWUuser", &D::WUuser},
    Row{"HWactive", "chkHW", &D::chkHW},
    Row{"HWuser", "txtHWuser", &D::HWuser},
    Row{"APRSactive", "chkAPRS", &D::chkAPRS},
    Row{"APRSuser", "txtAPRSID", &D::txtAPRSID},
    Row{"LocalSave", "chkLocal", &D::chkLocal},
    Row{"LocalPath", "txtLocalPath", &D::txtLocalPath},
    Row{"LogFTPResponses", "chkLogResponses", &D::chkLogResponses},
    Row{"Additional_Files", "txtAdditional_Files", &D::Additional_Files},
    Row{"UploadCount", "txtUploadCount", &D::UploadCount},
    Row{"FTPSecurity", "cboFTPSecurity", &D::FTPSecurity, unless_set},
    Row{"MailPort", "txtMailPort", &D::MailPort, unless_set},
    Row{"MailSecurity", "cboMailSecurity", &D::MailSecurity, unless_set},
    Row{"MailUser", "txtMailUser", &D::MailUser, unless_set},
    Row{"MailReport", "chkMailReport", &D::MailReport, unless_set},
    Row{"WUhost", "txtWUhost", &D::WUhost, unless_set},
    Row{"HWhost", "txtHWhost", &D::HWhost, unless_set},
};

struct PasswordRow {
    InternetPassword password;
    bool optional = false;
};

constexpr std::array password_rows{
    PasswordRow{{"FTPPass", "txtFTPPass", &D::FTPPass, true}},
    PasswordRow{{"MailPass", "txtMailPass", &D::MailPass, true}, unless_set},
    PasswordRow{{"WUpass", "txtWUpass", &D::WUpass, false}},
    PasswordRow{{"HWpass", "txtHWpass", &D::HWpass, false}},
    PasswordRow{{"APRSpass", "txtAPRSpass", &D::APRSpass, false}},
};

std::string value_text(const D& dialog, const Row& row) {
    if (const auto* flag = std::get_if<bool D::*>(&row.field)) return flag_text(dialog.*(*flag));
    return dialog.*std::get<std::string D::*>(row.field);
}

std::string entry(int n) {
    return "MailList(" + numtext(n) + ")";
}

std::vector<std::string> read_mail_times(const clsIniFile& ini) {
    std::vector<std::string> times;
    const int count = std::clamp(whole_number(ini.GetSetting(section, "numofentries", "0")), 0, most_mail_times);
    if (count == 0) return times;
    for (int n = 0; n <= count; ++n) {
        std::string time = trimmed(ini.GetSetting(section, entry(n), ""));
        if (time.starts_with("*C")) time = changeover_mail;
        if (!time.empty()) times.push_back(std::move(time));
    }
    return times;
}

constexpr int high_code = 127;  // from here on twice a code and 3 is no byte
constexpr int high_mark = 0x80;
constexpr int half_base = 0x40;

/// The half of a high code that a byte stands for; nothing when it stands for none.
std::optional<int> half_of(int byte) {
    const int twice = byte - half_base;
    if (twice < 0 || twice > 30 || twice % 2 != 0) return {};
    return twice / 2;
}

void append_byte(std::string& text, int byte) {
    text += static_cast<char>(static_cast<unsigned char>(byte));
}

}  // namespace

std::vector<DialogControl> dialog_controls(InternetDialog& dialog) {
    std::vector<DialogControl> controls;
    for (const Row& row : rows) {
        std::visit([&](auto field) { controls.push_back({row.control, &(dialog.*field)}); }, row.field);
    }
    return controls;
}

std::vector<InternetKey> internet_keys() {
    const D defaults;
    std::vector<InternetKey> keys;
    keys.reserve(std::size(rows) + std::size(password_rows) + 2);
    for (const Row& row : rows) keys.push_back({row.key, value_text(defaults, row), row.optional});
    for (const auto& [password, optional] : password_rows)
        keys.push_back({password.key, stored_password(password, defaults.*password.value), optional});
    keys.push_back({"numofentries", "0"});
    keys.push_back({"MailList(n)", ""});
    return keys;
}

std::vector<InternetPassword> internet_passwords() {
    std::vector<InternetPassword> passwords;
    passwords.reserve(std::size(password_rows));
    for (const PasswordRow& row : password_rows) passwords.push_back(row.password);
    return passwords;
}

std::optional<InternetPassword> internet_password(std::string_view key) {
    for (const PasswordRow& row : password_rows) {
        if (lower_case(row.password.key) == lower_case(key)) return row.password;
    }
    return {};
}

std::string stored_password(const InternetPassword& password, std::string_view plain) {
    return password.scrambled ? Encrypt(plain, EncryptMode::store) : std::string(plain);
}

InternetDialog read_internet(const clsIniFile& ini) {
    D dialog;
    for (const Row& row : rows) {
        std::string text = ini.GetSetting(section, row.key, value_text(dialog, row));
        if (const auto* flag = std::get_if<bool D::*>(&row.field)) {
            dialog.*(*flag) = trimmed(text) == "True";
        } else {
            dialog.*std::get<std::string D::*>(row.field) = std::move(text);
        }
    }
    for (const PasswordRow& row : password_rows) {
        if (!ini.has(section, row.password.key)) continue;
        const std::string stored = ini.GetSetting(section, row.password.key, "");
        dialog.*row.password.value = row.password.scrambled ? Encrypt(stored, EncryptMode::read) : stored;
    }
    dialog.MailList = read_mail_times(ini);
    return dialog;
}

bool write_internet(clsIniFile& ini, const InternetDialog& dialog) {
    const D defaults;
    std::vector<clsIniFile::Setting> settings;
    const auto add = [&](std::string_view key, std::string value) {
        settings.push_back({std::string(section), std::string(key), std::move(value)});
    };
    for (const Row& row : rows) {
        const std::string value = value_text(dialog, row);
        if (!row.optional || value != value_text(defaults, row) || ini.has(section, row.key)) add(row.key, value);
    }
    for (const PasswordRow& row : password_rows) {
        const std::string value = stored_password(row.password, dialog.*row.password.value);
        if (!row.optional || !value.empty() || ini.has(section, row.password.key)) add(row.password.key, value);
    }
    add("numofentries", std::to_string(dialog.MailList.size()));
    if (ini.has(section, entry(0))) add(entry(0), "");
    for (int n = 1; const std::string& time : dialog.MailList) add(entry(n++), time == changeover_mail ? "*C" : time);
    return ini.SaveSettings(settings);
}

std::string Encrypt(std::string_view text, EncryptMode mode) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = [&](std::size_t n) { return static_cast<unsigned char>(text[n]); };
        const int c = byte(at);
        if (mode == EncryptMode::store) {
            if (c < high_code) {
                append_byte(result, c * 2 + 3);
            } else {
                append_byte(result, high_mark);
                append_byte(result, half_base + 2 * (c / 16));
                append_byte(result, half_base + 2 * (c % 16));
            }
            continue;
        }
        if (c == high_mark && at + 2 < text.size()) {
            const auto high = half_of(byte(at + 1));
            const auto low = half_of(byte(at + 2));
            if (high && low) {
                append_byte(result, *high * 16 + *low);
                at += 2;
                continue;
            }
        }
        append_byte(result, std::max(c - 3, 0) / 2);
    }
    return result;
}

}  // namespace nimbry
