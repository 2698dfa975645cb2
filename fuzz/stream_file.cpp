// Any bytes as the file of a recorded line. The laws: they are a stream, or there is a reason of one printable line
// that names one of theirs; the pieces of a stream come in the order of their times, each with bytes or a fault; and a
// stream that is written and read again is the same.
#include "engine/station/stream_file.h"

#include <algorithm>
#include <string>

#include "engine/derived/number_text.h"
#include "fuzz/fuzz_input.h"

namespace {

using namespace nimbry;
using fuzz::expect;

void check_reason(const std::string& reason, const std::string& text) {
    const std::string opening = "line ";
    expect(reason.starts_with(opening));
    expect(std::all_of(reason.begin(), reason.end(), [](char c) { return c >= ' ' && c <= '~'; }));
    const auto line =
        static_cast<std::ptrdiff_t>(Val(reason.substr(opening.size(), reason.find(':') - opening.size())));
    expect(line <= std::count(text.begin(), text.end(), '\n') + 1);
    expect((line == 0) == text.empty());
}

void check_stream(const StreamFile& stream) {
    expect(!stream.shows.empty() && !stream.from.empty());
    expect(std::is_sorted(stream.pieces.begin(), stream.pieces.end(),
                          [](const StreamPiece& a, const StreamPiece& b) { return a.at < b.at; }));
    for (const StreamPiece& piece : stream.pieces) {
        expect(piece.at.count() >= 0);
        expect(piece.bytes.empty() == piece.fault.has_value());
    }
    const StreamReading again = read_stream(write_stream(stream));
    expect(again.stream && *again.stream == stream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const StreamReading reading = read_stream(text);
    expect(reading.stream.has_value() == reading.error.empty());
    if (reading.stream)
        check_stream(*reading.stream);
    else
        check_reason(reading.error, text);
    return 0;
}
