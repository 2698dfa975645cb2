#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "engine/records/monthly_summary.h"

namespace nimbry {
namespace {

std::string shipped_template() {
    std::ifstream file(NIMBRY_SOURCE_DIR "/templates/nimbrysummarytemplate.html", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(SummaryTemplate, TheShippedOneShowsEveryTagAndNothingThatIsNone) {
    const std::string page = shipped_template();
    ASSERT_FALSE(page.empty());
    MonthlySummary summary = monthly_summary({}, units_from({}), {});
    ASSERT_EQ(summary.tags.size(), 40U);
    for (const auto& [tag, text] : summary.tags) EXPECT_NE(page.find("~~" + tag + "~~"), std::string::npos) << tag;
    EXPECT_EQ(Sumresolvtag(page, summary).find("~~"), std::string::npos);
}

}  // namespace
}  // namespace nimbry
