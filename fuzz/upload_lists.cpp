// Any bytes as the two lists of files that an upload sends beside its pages: the one of the settings, and the file
// NBYFiles.txt. The laws: the upload ends; what goes out is there, and keeps its bare name; nothing that is there and
// listed on a line of its own is left out; and the list is gone once it has been sent.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"
#include "engine/publish/perform_upload.h"
#include "engine/publish/published_files.h"
#include "fuzz/fuzz_input.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using fuzz::expect;

constexpr const char* list_file = "NBYFiles.txt";

/// A copy whose server takes everything, with a few files to send.
struct Uploader : KnownState {
    Uploader(const std::string& additional, const std::string& list) {
        InternetDialog& settings = state.publish.NimbryFTPSetup;
        settings.ChkEnableFTP = true;
        settings.FTPServer = "ftp.example.net";
        settings.FTPRemoteFile = "index.html";
        settings.Additional_Files = additional;
        state.publish.upload.ExtraFileCounter = 1;  // the upload that has the additional files
        for (const char* name : {"a", "b.txt", "my pictures/c.gif"}) files.put(name, "bytes");
        files.put(list_file, list);
    }
    ~Uploader() { pauses.end_all(); }
    Uploader(const Uploader&) = delete;
    Uploader& operator=(const Uploader&) = delete;
};

void check(const Uploader& world, const std::string& list, const std::vector<std::string>& were_there) {
    const auto& sent = world.transfers.ftp.sent;
    const auto was_there = [&](const std::string& path) {
        return std::any_of(were_there.begin(), were_there.end(),
                           [&](const std::string& name) { return world.files.path(name) == path; });
    };
    for (const auto& put : sent) {
        expect(was_there(put.local));
        expect(fnamesplit(put.local) == put.remote);
    }
    for (std::string_view rest = list; !rest.empty();) {
        const std::string name = trimmed(take_line(rest));
        if (std::find(were_there.begin(), were_there.end(), name) == were_there.end()) continue;
        expect(std::any_of(sent.begin(), sent.end(),
                           [&](const auto& put) { return put.local == world.files.path(name); }));
    }
    expect(!world.files.exists(list_file));
    expect(world.transfers.ftp.quits == 1 && world.transfers.ftp.open == 0);
}

}  // namespace
}  // namespace nimbry::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nimbry::fuzz::Input input(data, size);
    const std::string additional = nimbry::fuzz::one_line(input.text_to_nul());
    const std::string list = input.rest();
    nimbry::test::Uploader world(additional, list);
    const std::vector<std::string> were_there = world.files.names();
    nimbry::PerformUpload(world.copy);
    nimbry::test::check(world, list, were_there);
    return 0;
}
