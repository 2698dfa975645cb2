// Any bytes as a template. The laws: it comes out as one that reads a byte at a time would write it; without a tilde it
// comes out byte for byte; and where it is cut between two blocks, its parts give what the whole gives. Then the bytes
// are the template of a whole generation, which ends well or with the one error that a template can have.
#include "engine/reports/template_scanner.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "engine/core/run_time_error.h"
#include "engine/reports/genhtml.h"
#include "tests/world/bare_copy.h"

namespace {

using nimbry::ErrorNumber;

void expect(bool law) {
    if (!law) std::abort();
}

std::string tag_text(std::string_view marker) {
    return "<" + std::string(marker) + ">";
}

/// The filled template; nothing when it ends too soon behind a tilde.
std::optional<std::string> filled(std::string_view page) {
    std::string out;
    try {
        nimbry::fill_template(page, tag_text, out);
    } catch (const nimbry::RunTimeError& error) {
        expect(error.number == ErrorNumber::past_end);
        return std::nullopt;
    }
    return out;
}

/// The same, read a byte at a time. `boundary` is set to a place between two blocks, near the middle.
std::optional<std::string> filled_bytewise(std::string_view page, std::size_t& boundary) {
    std::string out;
    std::size_t at = 0;
    while (at < page.size()) {
        if (at <= page.size() / 2) boundary = at;
        if (page[at] != '~') {
            out += page[at++];
            continue;
        }
        std::string block;
        for (int n = 0; n < 14; ++n) {
            if (at == page.size()) return std::nullopt;
            block += page[at++];
        }
        out += block[12] == '~' && block[13] == '~' ? tag_text(block) : block;
    }
    return out;
}

void generate(const std::string& page) {
    nimbry::test::BareCopy world;
    for (const char* name : {"myhtml.html", "nimbrywap.wml"}) world.files.put(name, page);
    world.files.put("nbyxauto.html", "old");
    bool ended_well = true;
    try {
        nimbry::genhtml(world.copy);
    } catch (const nimbry::UnrecoverableError& error) {
        expect(error.number == ErrorNumber::past_end && error.tag == "genhtml");
        ended_well = false;
    }
    expect(world.files.exists("nbyxauto.html"));
    expect(ended_well || world.files.contents("nbyxauto.html") == "old");
    if (page.find('~') == std::string::npos) {
        expect(world.files.contents("nbyxauto.html") == page);
        expect(world.files.contents("wx.wml") == page);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string page(reinterpret_cast<const char*>(data), size);
    std::size_t boundary = 0;
    const auto out = filled(page);
    expect(out == filled_bytewise(page, boundary));
    if (page.find('~') == std::string::npos) expect(out == page);

    const auto head = filled(std::string_view(page).substr(0, boundary));
    const auto tail = filled(std::string_view(page).substr(boundary));
    expect(head.has_value() && tail.has_value() == out.has_value());
    if (out) expect(*head + *tail == *out);

    generate(page);
    return 0;
}
