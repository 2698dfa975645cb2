#pragma once

#include <QByteArray>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace nimbry::platform {

// What nimbryctl and a running copy say to each other: lines of JSON in UTF-8, one request a connection.
//
//   -> {"arguments":["boxes","Text2(0)"]}
//   <- {"out":"Text2(0)\t+12.3 °C\n"}
//   <- {"screen":["wide lines\n","narrow lines\n"]}
//   <- {"status":0}
//
// An answer is any number of pieces and then its status; the copy then closes the connection.

/// A request is at most this long, its line end included.
inline constexpr std::size_t longest_request = std::size_t{64} * 1024;

/// One line of an answer.
struct AnswerPiece {
    enum class Kind {
        out,     ///< for standard output as it is
        err,     ///< one line for standard error, without its line end
        screen,  ///< lines that take the place of those before, in one or more layouts
        status,  ///< the end: what nimbryctl exits with
    };
    Kind kind = Kind::out;
    std::string text;  ///< UTF-8
    int status = 0;
    std::vector<std::string> layouts = {};  ///< of a screen, the widest first; UTF-8
};

/// The line of a request, with its line end.
[[nodiscard]] QByteArray request_line(const std::vector<std::string>& arguments);

/// The arguments of a request line; nothing when it is no request.
[[nodiscard]] std::optional<std::vector<std::string>> parse_request(const QByteArray& line);

/// The line of a piece, with its line end.
[[nodiscard]] QByteArray answer_line(const AnswerPiece& piece);

/// The piece of a line; nothing when it is none.
[[nodiscard]] std::optional<AnswerPiece> parse_answer(const QByteArray& line);

}  // namespace nimbry::platform
