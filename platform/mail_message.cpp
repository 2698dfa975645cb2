#include "platform/mail_message.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "engine/derived/hexadecimal.h"
#include "engine/derived/text_lines.h"

namespace nimbry::platform {
namespace {

constexpr std::size_t longest_line = 998;
constexpr std::size_t encoded_line = 76;

bool is_ascii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

std::string with_line_ends(std::string_view text) {
    std::string lines;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\r' && text[at] != '\n') {
            lines += text[at];
            continue;
        }
        lines += line_end;
        if (text.substr(at, line_end.size()) == line_end) ++at;
    }
    if (!lines.empty() && !lines.ends_with(line_end)) lines += line_end;
    return lines;
}

bool has_long_line(std::string_view lines) {
    for (std::size_t from = 0; from < lines.size();) {
        const std::size_t end = lines.find(line_end, from);
        if (end - from > longest_line) return true;
        from = end + line_end.size();
    }
    return false;
}

std::string escaped(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return {'=', upper_hexadecimal[byte >> 4U], upper_hexadecimal[byte & 15U]};
}

// Lines of at most 76 characters; "=" at the end of one says that it goes on.
std::string quoted_printable(std::string_view lines) {
    std::string text, line;
    const auto add = [&](const std::string& piece) {
        if (line.size() + piece.size() >= encoded_line) {
            text.append(line).append("=").append(line_end);
            line.clear();
        }
        line += piece;
    };
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const char c = lines[at];
        if (lines.substr(at, line_end.size()) == line_end) {
            text.append(line).append(line_end);
            line.clear();
            ++at;
            continue;
        }
        const bool ends_line = lines.substr(at + 1, line_end.size()) == line_end;
        const bool plain = (c > ' ' && c <= '~' && c != '=') || ((c == ' ' || c == '\t') && !ends_line);
        add(plain ? std::string(1, c) : escaped(c));
    }
    return text + line;
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    std::size_t on_line = 0;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view group = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t n = 0; n < 3; ++n)
            bits = (bits << 8U) | (n < group.size() ? static_cast<unsigned char>(group[n]) : 0U);
        for (std::size_t n = 0; n < 4; ++n) text += n <= group.size() ? digits[(bits >> (18 - 6 * n)) & 63U] : '=';
        on_line += 4;
        if (on_line == encoded_line) {
            text += line_end;
            on_line = 0;
        }
    }
    if (on_line != 0) text += line_end;
    return text;
}

// A line end in a value would begin a header of its own.
std::string header(std::string_view name, std::string value) {
    std::erase_if(value, [](char c) { return c == '\r' || c == '\n'; });
    return std::string(name) + ": " + value + std::string(line_end);
}

std::string joined(const std::vector<std::string>& addresses) {
    std::string list;
    for (const std::string& address : addresses) list += (list.empty() ? "" : ", ") + address;
    return list;
}

// Its own headers, the empty line, and the text.
std::string text_part(const std::string& body) {
    const std::string lines = with_line_ends(body);
    const bool too_long = has_long_line(lines);
    const bool ascii = std::all_of(lines.begin(), lines.end(), is_ascii);
    return header("Content-Type", "text/plain; charset=windows-1252") +
           header("Content-Transfer-Encoding", too_long ? "quoted-printable"
                                               : ascii  ? "7bit"
                                                        : "8bit") +
           std::string(line_end) + (too_long ? quoted_printable(lines) : lines);
}

std::string file_name(const std::string& name) {
    if (std::all_of(name.begin(), name.end(), is_ascii)) {
        std::string quoted;
        for (const char c : name) quoted += (c == '"' || c == '\\' ? std::string("\\") : "") + c;
        return "filename=\"" + quoted + "\"";
    }
    std::string encoded;
    for (const char c : name) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.';
        encoded += plain ? std::string(1, c) : "%" + escaped(c).substr(1);
    }
    return "filename*=windows-1252''" + encoded;
}

std::string file_part(const AttachedFile& file) {
    return header("Content-Type", "application/octet-stream") +
           header("Content-Disposition", "attachment; " + file_name(file.name)) +
           header("Content-Transfer-Encoding", "base64") + std::string(line_end) + base64(file.bytes);
}

std::string multipart(const Mail& mail, const std::vector<AttachedFile>& files, const MessageStamp& stamp) {
    std::string boundary = "=_" + stamp.id;
    std::replace(boundary.begin(), boundary.end(), '@', '.');
    while (mail.body.find(boundary) != std::string::npos) boundary += '_';
    const std::string delimiter = "--" + boundary;
    std::string text = header("Content-Type", "multipart/mixed; boundary=\"" + boundary + "\"") +
                       std::string(line_end) + delimiter + std::string(line_end) + text_part(mail.body);
    for (const AttachedFile& file : files) text += delimiter + std::string(line_end) + file_part(file);
    return text + delimiter + "--" + std::string(line_end);
}

}  // namespace

std::string mail_message(const Mail& mail, const std::vector<AttachedFile>& files, const MessageStamp& stamp) {
    std::string message = header("Date", stamp.date) + header("Message-ID", "<" + stamp.id + ">") +
                          header("From", "\"" + mail.from_name + "\" <" + mail.from + ">") +
                          header("To", joined(mail.to));
    if (!mail.cc.empty()) message += header("Cc", joined(mail.cc));
    message += header("Subject", mail.subject) + header("MIME-Version", "1.0");
    return message + (files.empty() ? text_part(mail.body) : multipart(mail, files, stamp));
}

}  // namespace nimbry::platform
