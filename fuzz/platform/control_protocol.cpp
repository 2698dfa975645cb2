// Any bytes as a line of the control socket. The laws: a line is a request, or a piece of an answer, or neither; and
// what is read from one is written as a line that reads as the same.
#include "platform/control_protocol.h"

#include <string>

#include "fuzz/fuzz_input.h"

namespace {

using namespace nimbry::platform;
using nimbry::fuzz::expect;

bool is_one_line(const QByteArray& line) {
    return line.indexOf('\n') == line.size() - 1;
}

bool same(const AnswerPiece& one, const AnswerPiece& other) {
    return one.kind == other.kind && one.text == other.text && one.status == other.status &&
           one.layouts == other.layouts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray line(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const auto request = parse_request(line)) {
        const QByteArray written = request_line(*request);
        expect(is_one_line(written) && parse_request(written) == request);
    }
    if (const auto piece = parse_answer(line)) {
        const QByteArray written = answer_line(*piece);
        const auto again = parse_answer(written);
        expect(is_one_line(written) && again && same(*again, *piece));
    }
    // The bytes themselves as words: what is no UTF-8 arrives as something that is, and stays that.
    nimbry::fuzz::Input input(data, size);
    std::vector<std::string> words;
    while (!input.empty()) words.push_back(input.text());
    const auto arrived = parse_request(request_line(words));
    expect(arrived && arrived->size() == words.size());
    expect(parse_request(request_line(*arrived)) == arrived);
    return 0;
}
