#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "engine/station/stream_file.h"
#include "tests/world/stream_player.h"

namespace nimbry {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<fs::path> streams() {
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(NIMBRY_STREAMS))
        if (entry.path().extension() == ".stream") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

class GoldenStreams : public testing::TestWithParam<fs::path> {};

/// A stream of tests/streams, played to a whole copy with the settings that stand beside it, if any, gives the answer
/// there. NIMBRY_REWRITE_GOLDEN=1 writes that anew.
TEST_P(GoldenStreams, GivesItsEvents) {
    const StreamReading reading = read_stream(contents(GetParam()));
    ASSERT_TRUE(reading.stream) << GetParam().filename() << ", " << reading.error;
    fs::path settings = GetParam();
    settings.replace_extension(".ini");
    const std::string events =
        "# " + reading.stream->shows + "\n" + test::events_of(*reading.stream, contents(settings));

    fs::path answer = GetParam();
    answer.replace_extension(".events");
    if (std::getenv("NIMBRY_REWRITE_GOLDEN") != nullptr) {
        std::ofstream(answer, std::ios::binary) << events;
        GTEST_SKIP() << "written anew: " << answer;
    }
    ASSERT_TRUE(fs::exists(answer)) << "a stream needs its answer beside it: " << answer;
    EXPECT_EQ(events, contents(answer));
}

INSTANTIATE_TEST_SUITE_P(All, GoldenStreams, testing::ValuesIn(streams()),
                         [](const auto& stream) { return stream.param.stem().string(); });

TEST(GoldenStreamsFolder, NoAnswerStandsWithoutItsStream) {
    for (const auto& entry : fs::directory_iterator(NIMBRY_STREAMS)) {
        if (entry.path().extension() != ".events") continue;
        fs::path stream = entry.path();
        stream.replace_extension(".stream");
        EXPECT_TRUE(fs::exists(stream)) << entry.path();
    }
}

}  // namespace
}  // namespace nimbry
