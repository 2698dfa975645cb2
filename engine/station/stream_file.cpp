#include "engine/station/stream_file.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"
#include "engine/station/digits.h"

namespace nimbry {

namespace {

using Span = MonotonicClock::duration;  // microseconds

constexpr std::string_view first_line = "nimbry-stream 1";
constexpr Span longest = std::chrono::hours{24 * 366};

/// What a line says wrongly; read_stream() adds the line's number.
struct BadLine {
    std::string reason;
};

struct FaultWord {
    LineFault fault;
    std::string_view word;
};
constexpr std::array fault_words{FaultWord{LineFault::framing, "!framing"}, FaultWord{LineFault::overrun, "!overrun"},
                                 FaultWord{LineFault::buffer_overrun, "!buffer-overrun"},
                                 FaultWord{LineFault::gone, "!gone"}};

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// The text as it may stand in a message: what is not printable becomes a dot, and a long one is cut.
std::string shown(std::string_view text) {
    constexpr std::size_t longest_shown = 40;
    std::string result(text.substr(0, longest_shown));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c < ' ' || c > '~'; }, '.');
    return "\"" + result + (text.size() > longest_shown ? "...\"" : "\"");
}

/// Milliseconds with up to three decimals, "28.08".
Span read_milliseconds(std::string_view text, std::string_view what) {
    constexpr std::size_t most_digits = 12;
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view whole = text.substr(0, point);
    std::string decimals(point < text.size() ? text.substr(point + 1) : std::string_view("0"));
    const bool well_formed = !whole.empty() && whole.size() <= most_digits && !decimals.empty() &&
                             decimals.size() <= 3 && std::all_of(whole.begin(), whole.end(), is_digit) &&
                             std::all_of(decimals.begin(), decimals.end(), is_digit);
    if (!well_formed) throw BadLine{std::string(what) + " is no number of milliseconds: " + shown(text)};
    decimals.resize(3, '0');
    const Span span{std::stoll(std::string(whole)) * 1000 + std::stoll(decimals)};
    if (span > longest) throw BadLine{std::string(what) + " is longer than a year: " + shown(text)};
    return span;
}

std::string milliseconds_text(Span span) {
    std::string text = std::to_string(span.count() / 1000);
    if (span.count() % 1000 == 0) return text;
    text += "." + padded(static_cast<int>(span.count() % 1000), 3);
    return text.substr(0, text.find_last_not_of('0') + 1);
}

/// "2026-10-31 23:58:00".
CivilTime read_clock(std::string_view text) {
    if (const auto time = read_iso(text)) return *time;
    throw BadLine{"the clock is no date and time like 2026-10-31 23:58:00: " + shown(text)};
}

Bytes read_bytes(std::string_view text) {
    Bytes bytes;
    int high = -1;
    for (const char c : text) {
        if (c == ' ' || c == '\t') {
            if (high >= 0) throw BadLine{"a byte is torn: " + shown(text)};
            continue;
        }
        const int value = hex_value(c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c);
        if (value < 0) throw BadLine{"no hexadecimal digit: " + shown(std::string_view(&c, 1))};
        if (high >= 0) bytes.push_back(static_cast<std::uint8_t>(high * 16 + value));
        high = high >= 0 ? -1 : value;
    }
    if (high >= 0) throw BadLine{"the last byte has one digit"};
    if (bytes.empty()) throw BadLine{"a time without bytes"};
    return bytes;
}

/// Reads line after line; knows what has come already.
class StreamReader {
public:
    void take(std::string_view line) {
        if (part_ != Part::opening && line.starts_with('#')) return;
        switch (part_) {
            case Part::opening:
                if (line != first_line) throw BadLine{"a stream begins with \"" + std::string(first_line) + "\""};
                part_ = Part::head;
                break;
            case Part::head:
                if (line.empty())
                    end_head();
                else
                    take_head(line);
                break;
            case Part::pieces:
                if (!line.empty()) take_piece(line);
                break;
        }
    }

    StreamFile finish() {
        if (part_ == Part::opening) throw BadLine{"the text is empty"};
        if (part_ == Part::head) end_head();
        return std::move(stream_);
    }

private:
    enum class Part { opening, head, pieces };

    void take_head(std::string_view line) {
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) throw BadLine{"a line of the head is \"name: value\", not " + shown(line)};
        const std::string_view name = line.substr(0, colon);
        const std::string value = trimmed(line.substr(colon + 1));
        if (value.empty()) throw BadLine{"no value for " + shown(name)};
        if (std::find(seen_.begin(), seen_.end(), name) != seen_.end()) throw BadLine{shown(name) + " stands twice"};
        seen_.emplace_back(name);
        if (name == "shows")
            stream_.shows = value;
        else if (name == "from")
            stream_.from = value;
        else if (name == "clock")
            stream_.clock = read_clock(value);
        else if (name == "pace")
            stream_.pace = read_milliseconds(value, "the pace");
        else if (name == "lasts")
            stream_.lasts = read_milliseconds(value, "the length");
        else
            throw BadLine{"no such name in the head of a stream: " + shown(name)};
    }

    void end_head() {
        for (const std::string_view name : {"shows", "from", "clock"})
            if (std::find(seen_.begin(), seen_.end(), name) == seen_.end())
                throw BadLine{"the head ends without " + shown(name)};
        part_ = Part::pieces;
    }

    void take_piece(std::string_view line) {
        const std::size_t blank = std::min(line.find_first_of(" \t"), line.size());
        StreamPiece piece;
        piece.at = read_milliseconds(line.substr(0, blank), "the time");
        if (!stream_.pieces.empty() && piece.at < stream_.pieces.back().at)
            throw BadLine{"the time goes back: " + shown(line.substr(0, blank))};
        const std::string rest = trimmed(line.substr(blank));
        if (rest.starts_with('!')) {
            const auto known = std::find_if(fault_words.begin(), fault_words.end(),
                                            [&](const FaultWord& f) { return f.word == rest; });
            if (known == fault_words.end()) throw BadLine{"no such fault: " + shown(rest)};
            piece.fault = known->fault;
        } else {
            piece.bytes = read_bytes(rest);
        }
        stream_.pieces.push_back(std::move(piece));
    }

    Part part_ = Part::opening;
    StreamFile stream_;
    std::vector<std::string> seen_;
};

}  // namespace

StreamReading read_stream(std::string_view text) {
    StreamReader reader;
    std::size_t number = 0;
    try {
        while (!text.empty()) {
            ++number;
            std::string_view line = take_line(text, LineEnds::newline);
            while (line.ends_with('\r')) line.remove_suffix(1);
            reader.take(line);
        }
        return {reader.finish(), ""};
    } catch (const BadLine& bad) {
        return {std::nullopt, "line " + std::to_string(number) + ": " + bad.reason};
    }
}

std::string write_stream_head(const StreamFile& stream) {
    std::string text(first_line);
    text += "\nshows: " + stream.shows + "\nfrom: " + stream.from + "\nclock: " + iso_text(stream.clock) + "\n";
    if (stream.pace > Span::zero()) text += "pace: " + milliseconds_text(stream.pace) + "\n";
    if (stream.lasts > Span::zero()) text += "lasts: " + milliseconds_text(stream.lasts) + "\n";
    return text + "\n";
}

std::string write_stream_piece(const StreamPiece& piece) {
    std::string text = milliseconds_text(piece.at);
    if (piece.fault) {
        const auto known = std::find_if(fault_words.begin(), fault_words.end(),
                                        [&](const FaultWord& f) { return f.fault == *piece.fault; });
        return text + " " + std::string(known->word) + "\n";
    }
    for (const std::uint8_t byte : piece.bytes) {
        std::array<char, 2> digits{};
        write_digits(std::span(&byte, 1), digits);
        text += ' ';
        text.append(digits.data(), digits.size());
    }
    return text + "\n";
}

std::string write_stream(const StreamFile& stream) {
    std::string text = write_stream_head(stream);
    for (const StreamPiece& piece : stream.pieces) text += write_stream_piece(piece);
    return text;
}

}  // namespace nimbry
