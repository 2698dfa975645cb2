#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "engine/derived/code_page.h"
#include "engine/reports/tag_table.h"

namespace nimbry::test {
namespace {

const std::string manual_file = std::string(NIMBRY_SOURCE_DIR) + "/docs/tags.md";

const char* const introduction = R"(# The tags of the templates

A tag stands in a template as `~~NAME~~`: two tildes, ten characters, two tildes. [templates.md](templates.md) says which
files are templates and how they are read; `nimbryctl tag NAME...` prints what a tag gives now.

- A *text* is what the main window shows, in the chosen units and with them: "19.4 km/h". A *number* is the same without
  the unit. A value with its unit named here (°C, mm, m/s ...) is the same whatever units are chosen.
- Before the first reading a text or number is empty; a Fahrenheit value is "+0", inches and speeds are "0", the heat
  index is "n.a.".
- While a sensor fails its texts are "Error" and its numbers are as before the first reading. What is derived from
  several sensors keeps its last value.
- What the windows show in a box (records, yesterday, the station's memory) is printed as it stands there; some of it
  begins with a blank.
- A marker that is none of these prints nothing. Case matters.

The examples are those of an October afternoon in Sydney.

| Tag | Prints | Example |
|---|---|---|
)";

std::string manual() {
    std::string text = introduction;
    for (const TagRow& row : tag_table()) {
        text +=
            "| `" + std::string(row.name) + "` | " + utf8_text(row.prints) + " | `" + utf8_text(row.example) + "` |\n";
    }
    return text;
}

/// docs/tags.md is the table of the tags in words. NIMBRY_REWRITE_GOLDEN=1 writes it anew.
TEST(TagManual, IsTheTableOfTheTags) {
    if (std::getenv("NIMBRY_REWRITE_GOLDEN") != nullptr) {
        std::ofstream(manual_file, std::ios::binary) << manual();
        GTEST_SKIP() << "written anew: " << manual_file;
    }
    std::ifstream file(manual_file, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), manual())
        << "once more with NIMBRY_REWRITE_GOLDEN=1 in the environment, and it is written anew";
}

}  // namespace
}  // namespace nimbry::test
