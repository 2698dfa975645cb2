// Any words as a request of nimbryctl to a running copy. The laws: it is answered with a status; one that is refused
// tells why, in lines of their own; what is printed is UTF-8; no word writes a file beside those that the verbs name;
// and the copy goes on, unless it was told to stop.
#include <chrono>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/control/verb_list.h"
#include "engine/control/verbs.h"
#include "fuzz/fuzz_input.h"
#include "tests/engine/control/recording_asker.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using fuzz::expect;
using namespace std::chrono_literals;

/// How many bytes the character that begins here has; 0 when it is none.
std::size_t character_length(std::string_view text) {
    const auto byte = [&](std::size_t n) { return static_cast<unsigned char>(text[n]); };
    const std::size_t length = byte(0) < 0x80 ? 1 : byte(0) < 0xC2 ? 0 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
    if (length == 0 || byte(0) > 0xF4 || length > text.size()) return 0;
    for (std::size_t n = 1; n < length; ++n)
        if ((byte(n) & 0xC0) != 0x80) return 0;
    return length;
}

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

/// The first byte chooses a verb, or lets the words themselves; the rest are words between NULs.
std::vector<std::string> request_of(fuzz::Input& input) {
    std::vector<std::string> words;
    const auto verbs = verb_list();
    const auto which = static_cast<std::size_t>(input.next());
    if (which < verbs.size()) words.emplace_back(verbs[which].name);
    while (!input.empty() && words.size() < 12) words.push_back(input.text_to_nul());
    return words;
}

}  // namespace
}  // namespace nimbry::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace nimbry;
    using namespace nimbry::test;
    fuzz::Input input(data, size);
    StartedWorld world;
    world.send_train();
    const std::vector<std::string> request = request_of(input);

    RecordingAsker asker;
    int status = -1;
    // The asker of a panel goes after a while.
    world.act([&] { status = static_cast<int>(answer_request(world.copy(), request, asker)); });
    world.run_for(2s);
    asker.there = false;
    world.run_for(5min);

    expect(status >= 0 && status <= 2);
    expect(status == 0 || !asker.complaints.empty());
    for (const std::string& line : asker.complaints) expect(is_utf8(line));
    expect(is_utf8(asker.out));
    for (const auto& layouts : asker.screens)
        for (const std::string& screen : layouts) expect(is_utf8(screen));
    expect(world.engine.exit_status() == 0);
    expect(!world.engine.gone() || request.front() == "stop");
    return 0;
}
