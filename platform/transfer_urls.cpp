#include "platform/transfer_urls.h"

#include <algorithm>

#include "engine/derived/hexadecimal.h"

namespace nimbry::platform {
namespace {

std::string escape(std::string_view text, bool (*stays)(char)) {
    std::string url;
    for (const char c : text) {
        if (stays(c)) {
            url += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            url += '%';
            url += upper_hexadecimal[byte >> 4U];
            url += upper_hexadecimal[byte & 15U];
        }
    }
    return url;
}

bool is_unreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~';
}

bool stays_in_path(char c) {
    return is_unreserved(c) || c == '/';
}

bool travels(char c) {
    constexpr std::string_view never = "\"#<>";
    return c > ' ' && c <= '~' && never.find(c) == std::string_view::npos;
}

bool has_scheme(std::string_view address) {
    const std::size_t end = address.find("://");
    const std::string_view scheme = address.substr(0, end);
    return end != std::string_view::npos && !scheme.empty() &&
           std::all_of(scheme.begin(), scheme.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

// A numeric IPv6 address stands in brackets in a URL.
std::string host_and_port(const std::string& host, std::uint16_t port) {
    const bool bare_ipv6 = host.find(':') != std::string::npos && !host.starts_with('[');
    return (bare_ipv6 ? "[" + host + "]" : host) + ":" + std::to_string(port) + "/";
}

}  // namespace

std::string directory_url(const FtpServer& server) {
    std::string path = server.directory;
    const bool absolute = path.starts_with('/');
    while (path.ends_with('/')) path.pop_back();
    if (absolute) path.erase(0, 1);
    std::string url = (server.encryption == Encryption::implicit_tls ? "ftps://" : "ftp://") +
                      host_and_port(server.host, server.port) + (absolute ? "%2F" : "") + escape(path, stays_in_path);
    if (!url.ends_with('/') && !path.empty()) url += '/';
    return url;
}

std::string file_url(const FtpServer& server, std::string_view remote) {
    return directory_url(server) + escape(remote, is_unreserved);
}

std::string mail_url(const Mail& mail, std::string_view hello) {
    return (mail.encryption == Encryption::implicit_tls ? "smtps://" : "smtp://") +
           host_and_port(mail.server, mail.port) + escape(hello, is_unreserved);
}

std::string web_url(std::string_view address) {
    return (has_scheme(address) ? "" : "http://") + escape(address, travels);
}

}  // namespace nimbry::platform
