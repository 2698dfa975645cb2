#include "engine/reports/genhtml.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "engine/core/process_cycle.h"
#include "engine/core/run_time_error.h"
#include "engine/graphs/graph_scales.h"
#include "engine/reports/page_names.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

class Genhtml : public testing::Test {
protected:
    void generate() { genhtml(world.copy); }
    [[nodiscard]] std::string file(const std::string& name) const { return world.files.contents(name); }
    [[nodiscard]] bool there(const std::string& name) const { return world.files.exists(name); }
    void put(const std::string& name, const std::string& bytes) { world.files.put(name, bytes); }
    /// The error that ends the generation; nothing when it does not.
    [[nodiscard]] std::optional<UnrecoverableError> failure() {
        try {
            generate();
        } catch (const UnrecoverableError& error) {
            return error;
        }
        return std::nullopt;
    }
    /// The changing calls, as "remove x" and "rename x to y", of names with this in them.
    [[nodiscard]] std::vector<std::string> changes(const std::string& part) const {
        std::vector<std::string> lines;
        for (const MemoryFiles::Call& call : world.files.calls()) {
            if (call.operation == "read" || call.name.find(part) == std::string::npos) continue;
            lines.push_back(call.operation + " " + call.name + (call.other.empty() ? "" : " to " + call.other));
        }
        return lines;
    }

    KnownState world;
};

TEST_F(Genhtml, APageIsMadeFromItsTemplate) {
    put("myhtml3.html", "[~~WEBOUTTEMP~~|~~WBNBAROMTR~~|~~NOSUCHTAG!~~]");
    generate();
    EXPECT_EQ(file("nbyxauto3.html"), "[+8.1 \260C|1013|]");
    EXPECT_FALSE(there("temphtml3.html"));
}

TEST_F(Genhtml, TheGraphsAreMadeWithThePagesWhereTheirKeyAsksForThem) {
    generate();
    EXPECT_FALSE(there("graph1.svg"));
    world.ini.SaveFlag("Main", "GraphFiles", true);
    generate();
    for (const char* name : {"graph1.svg", "graph2.svg", "graph3.svg", "graph4.svg", "graph5.svg", "graph6.svg"})
        EXPECT_TRUE(there(name)) << name;
}

TEST_F(Genhtml, TheFirstTemplateHasNoNumber) {
    put("myhtml.html", "first");
    put("myhtml0.html", "not read");
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "first");
    EXPECT_FALSE(there("nbyxauto0.html"));
}

TEST_F(Genhtml, EachOfTheFirstHundredHasItsPageAndNoMore) {
    for (int n = 0; n < pages_uploaded; ++n) put(page_template(n), "page " + std::to_string(n));
    put("myhtml200.html", "beyond");
    generate();
    for (int n = 0; n < pages_uploaded; ++n) EXPECT_EQ(file(finished_page(n)), "page " + std::to_string(n));
    EXPECT_FALSE(there("nbyxauto200.html"));
}

TEST_F(Genhtml, WhereATemplateIsMissingItsPageGoes) {
    put("myhtml7.html", "seven");
    for (const char* name : {"nbyxauto.html", "nbyxauto1.html", "nbyxauto99.html", "nbyxauto123.html", "temphtml.html",
                             "temphtml42.html", "temphtml199.html"})
        put(name, "old");
    generate();
    EXPECT_EQ(file("nbyxauto7.html"), "seven");
    for (const char* name : {"nbyxauto.html", "nbyxauto1.html", "nbyxauto99.html", "nbyxauto123.html", "temphtml.html",
                             "temphtml42.html", "temphtml199.html"})
        EXPECT_FALSE(there(name)) << name;
}

TEST_F(Genhtml, ATemplateDeletedBetweenTwoGenerationsTakesItsPageWithIt) {
    put("myhtml5.html", "five");
    generate();
    world.files.take_away("myhtml5.html");
    generate();
    EXPECT_FALSE(there("nbyxauto5.html"));
}

TEST_F(Genhtml, APageIsCompleteInItsWorkFileBeforeItTakesThePlaceOfTheOldOne) {
    put("myhtml4.html", "new");
    put("nbyxauto4.html", "old");
    put("temphtml4.html", "left over, and longer");
    world.files.forget_calls();
    generate();
    EXPECT_THAT(changes("html4.html"), testing::ElementsAre("remove temphtml4.html", "append temphtml4.html",
                                                            "rename temphtml4.html to nbyxauto4.html"));
    EXPECT_THAT(changes("nbyxauto4.html"), testing::ElementsAre("remove nbyxauto4.html"));
    EXPECT_EQ(file("nbyxauto4.html"), "new");
}

TEST_F(Genhtml, AFinishedPageIsNeverHalfWrittenWhicheverCallFails) {
    put("myhtml.html", "~~WEBOUTTEMP~~ new");
    for (std::size_t n = 1; n < 500; ++n) {
        put("nbyxauto.html", "old");
        world.files.fail_call(n, FileResult::disk_full);
        const bool failed = failure().has_value();
        const std::string page = file("nbyxauto.html");
        EXPECT_TRUE(page == "old" || page == "+8.1 \260C new" || !there("nbyxauto.html")) << page << " at " << n;
        world.files.allow();
        if (!failed && n > 450) break;
    }
}

TEST_F(Genhtml, TheSecondHundredIsNamedAfterTheRemoteFile) {
    world.state.publish.NimbryFTPSetup.FTPRemoteFile = " weather.htm ";
    put("myhtml103.html", "~~WEBOSHUMID~~");
    generate();
    EXPECT_EQ(file("weather103.htm"), "54 %");
    EXPECT_FALSE(there("temphtml103.html"));
    EXPECT_FALSE(there("nbyxauto103.html"));
}

TEST_F(Genhtml, OfTheSecondHundredTheFinishedFileStaysWhenItsTemplateGoes) {
    world.state.publish.NimbryFTPSetup.FTPRemoteFile = "weather.htm";
    put("myhtml199.html", "last");
    generate();
    world.files.take_away("myhtml199.html");
    put("nbyxauto199.html", "old");
    generate();
    EXPECT_EQ(file("weather199.htm"), "last");
    EXPECT_FALSE(there("nbyxauto199.html"));
}

TEST_F(Genhtml, WithoutADotInTheRemoteNameTheSecondHundredEndsTheProgram) {
    world.state.publish.NimbryFTPSetup.FTPRemoteFile = "weather";
    put("myhtml1.html", "one");
    put("nimbrywap.wml", "wap");
    generate();
    EXPECT_TRUE(there("wx.wml")) << "as long as there is no such template";

    world.files.take_away("wx.wml");
    put("myhtml150.html", "~~WEBOSHUMID~~");
    const auto error = failure();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, ErrorNumber::index);
    EXPECT_EQ(error->tag, "genhtml");
    EXPECT_EQ(file("nbyxauto1.html"), "one");
    EXPECT_EQ(file("temphtml150.html"), "54 %") << "it has been processed by then";
    EXPECT_TRUE(there("nimbryraw.txt"));
    EXPECT_FALSE(there("wx.wml"));
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST_F(Genhtml, ATemplateThatEndsTooSoonBehindATildeEndsTheProgram) {
    put("myhtml.html", "whole");
    put("myhtml1.html", "~~WEBOUTTEMP~~ and ~~WEBOUT");
    put("nbyxauto1.html", "old");
    const auto error = failure();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, ErrorNumber::past_end);
    EXPECT_EQ(error->tag, "genhtml");
    EXPECT_EQ(file("nbyxauto.html"), "whole");
    EXPECT_EQ(file("nbyxauto1.html"), "old");
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST_F(Genhtml, TheWapPageHasDegInsteadOfTheDegreeSignsOfTags) {
    put("nimbrywap.wml",
        "<p>~~WEBOUTTEMP~~ \260 ~~WBNOUTTEMP~~ ~~WEBWINDGSD~~ 3  Deg. ~~WEBTGSTMAX~~</p>~b~~45678901234");
    put("tempwap.wml", "left over");
    put("wx.wml", "old");
    generate();
    EXPECT_EQ(file("wx.wml"),
              "<p>+8.1 Deg.C \260 +8.1 123 Deg. (SE) 3  Deg.  35.3 km/h, 270 Deg. at 11:02</p>~b~~45678901234");
    EXPECT_FALSE(there("tempwap.wml"));
}

TEST_F(Genhtml, WithoutAWapTemplateTheWapPageStays) {
    put("wx.wml", "old");
    generate();
    EXPECT_EQ(file("wx.wml"), "old");
}

TEST_F(Genhtml, APageKeepsTheBytesOfItsTemplate) {
    std::string every;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '~') every += static_cast<char>(byte);
    put("myhtml.html", every);
    put("myhtml1.html", "");
    put("nimbrywap.wml", every);
    generate();
    EXPECT_EQ(file("nbyxauto.html"), every);
    EXPECT_TRUE(there("nbyxauto1.html"));
    EXPECT_EQ(file("nbyxauto1.html"), "");
    EXPECT_EQ(file("wx.wml"), every);
}

TEST_F(Genhtml, ATemplateOfFiftyMegabytesIsFilledLikeAnyOther) {
    std::string filler;
    filler.resize(25'000'000, 'x');
    put("myhtml.html", filler + "~~WEBOSHUMID~~" + filler);
    generate();
    // Not EXPECT_EQ: it would print both.
    EXPECT_TRUE(file("nbyxauto.html") == filler + "54 %" + filler);
}

TEST_F(Genhtml, ATemplateIsFoundUnderAnyCase) {
    put("MyHtml2.HTML", "two");
    put("NIMBRYWAP.WML", "wap");
    generate();
    EXPECT_EQ(file("nbyxauto2.html"), "two");
    EXPECT_EQ(file("wx.wml"), "wap");
}

TEST_F(Genhtml, ATemplateThatCannotBeReadIsToldOfOnceAndTheOthersAreMade) {
    world.files.add_folder("myhtml1.html");
    put("nbyxauto1.html", "old");
    put("myhtml2.html", "two");
    put("myhtml3.html", "three");
    world.files.refuse("myhtml3.html", FileResult::permission);
    for (int times = 0; times < 3; ++times) generate();
    EXPECT_EQ(file("nbyxauto2.html"), "two");
    EXPECT_EQ(file("nbyxauto1.html"), "old");
    ASSERT_EQ(world.notices.balloons.size(), 2U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Template error");
    EXPECT_EQ(world.notices.balloons[0].what.text, "Nimbry was unable to read the template file\r\nmyhtml1.html");
    ASSERT_EQ(world.log_lines().size(), 2U);
    EXPECT_EQ(world.log_lines()[0], "21 Oct 2026 14:05:07 Unable to read the template file myhtml1.html");
    EXPECT_EQ(world.log_lines()[1], "21 Oct 2026 14:05:07 Unable to read the template file myhtml3.html");

    world.files.allow();
    generate();
    world.files.refuse("myhtml3.html", FileResult::failed);
    generate();
    EXPECT_EQ(world.notices.balloons.size(), 3U) << "after it could be read again";
}

TEST_F(Genhtml, ThePeaksBeginAnewAfterTheRawLineAndThePages) {
    put("myhtml.html", "~~WBNWNDGSMS~~");
    world.state.readings.PeakGust = 22.3;
    world.state.readings.MaxGustMph = 14;
    world.state.readings.wstempsng = 19;
    world.state.reports.new_data = true;
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "6.2");
    EXPECT_THAT(file("nimbryraw.txt"), HasSubstr("|+6|6.2|123|"));
    EXPECT_EQ(world.state.readings.PeakGust, 0);
    EXPECT_EQ(world.state.readings.MaxGustMph, 14) << "the weather services' own";
    EXPECT_EQ(world.state.readings.wstempsng, 19) << "the graphs' own";
    EXPECT_FALSE(world.state.reports.new_data);
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "0");
    EXPECT_THAT(file("nimbryraw.txt"), HasSubstr("|+6|0|123|"));

    world.train(world.station);
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "5.4");
}

TEST_F(Genhtml, ACycleMarksThatThereIsNewData) {
    generate();
    processcycle(world.copy);
    EXPECT_TRUE(world.state.reports.new_data);
}

TEST_F(Genhtml, TheUtcTimeIsThatOfTheGeneration) {
    put("myhtml.html", "~~WEBUTCTIME~~ ~~WEBUTCDATE~~");
    world.clock.set_computer_time(october_afternoon + 10h);
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "13:05:07 21 October 2026");
    EXPECT_TRUE(file("nimbryraw.txt").ends_with("|13:05:07 UTC|October 21\r\n"));
}

TEST_F(Genhtml, InAClientItIsThatOfTheLastTrain) {
    put("myhtml.html", "~~WEBUTCTIME~~");
    world.state.settings.fromnet = true;
    world.clock.set_computer_time(october_afternoon + 10h);
    generate();
    EXPECT_EQ(file("nbyxauto.html"), "03:05:07");
}

TEST_F(Genhtml, TheGraphsAreWrittenWhereTheyAreAskedFor) {
    generate();
    EXPECT_FALSE(there("graph1.svg"));
    put("Nimbry.ini", "[Main]\r\nGraphFiles=True\r\n");
    world.ini.read();
    setgraphscales(world.state);
    generate();
    for (int n = 1; n <= 6; ++n) EXPECT_TRUE(file("graph" + std::to_string(n) + ".svg").starts_with("<svg")) << n;
}

TEST_F(Genhtml, ARawLineThatSomebodyReadsKeepsItsContentsAndThePagesAreMade) {
    put("nimbryraw.txt", "old");
    put("myhtml.html", "page");
    world.files.set_in_use("nimbryraw.txt", true);
    generate();
    EXPECT_EQ(file("nimbryraw.txt"), "old");
    EXPECT_EQ(file("nbyxauto.html"), "page");
    world.files.set_in_use("nimbryraw.txt", false);
    generate();
    EXPECT_TRUE(file("nimbryraw.txt").starts_with("21 Oct 2026|Oct  21|14:05:07|"));
}

TEST_F(Genhtml, WhileOneRunsAnotherReturnsAtOnce) {
    put("myhtml.html", "page");
    const auto busy = world.state.reports.htmlGenBusy.try_hold();
    generate();
    EXPECT_FALSE(there("nbyxauto.html"));
    EXPECT_TRUE(world.state.reports.htmlGenBusy);
}

TEST_F(Genhtml, AfterAnUnrecoverableErrorNothingIsMade) {
    put("myhtml.html", "page");
    world.state.run.HaveError = true;
    generate();
    EXPECT_FALSE(there("nbyxauto.html"));
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST_F(Genhtml, BetweenTwoFilesOtherEventsRunAndFindItBusy) {
    put("myhtml.html", "page");
    put("myhtml1.html", "page");
    bool busy = false, first_was_there = false, second_was_there = true;
    world.pauses.after(0ms, [&] {
        busy = static_cast<bool>(world.state.reports.htmlGenBusy);
        first_was_there = there("nbyxauto.html");
        second_was_there = there("nbyxauto1.html");
    });
    generate();
    EXPECT_TRUE(busy);
    EXPECT_TRUE(first_was_there);
    EXPECT_FALSE(second_was_there);
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST_F(Genhtml, FreshPagesWaitForTheEndOfAGenerationUnderWay) {
    put("myhtml.html", "~~WEBOSHUMID~~");
    auto busy = world.state.reports.htmlGenBusy.try_hold();
    world.pauses.after(3s, [&] { busy.release(); });
    const Instant before = world.clock.monotonic();
    make_fresh_pages(world.copy);
    EXPECT_GE(world.clock.monotonic() - before, 3s);
    EXPECT_EQ(file("nbyxauto.html"), "54 %");
}

TEST_F(Genhtml, AProgramThatClosesEndsItBetweenTwoFiles) {
    put("myhtml.html", "page");
    put("myhtml1.html", "page");
    bool ended = false;
    world.pauses.cancel_all();
    world.pauses.start([&] {
        generate();
        ended = true;
    });
    EXPECT_FALSE(ended);
    EXPECT_TRUE(there("nbyxauto.html"));
    EXPECT_FALSE(there("nbyxauto1.html"));
    EXPECT_FALSE(world.state.reports.htmlGenBusy);
}

TEST(PageNames, OnlyTheFirstTwoPiecesOfTheRemoteNameCount) {
    EXPECT_EQ(remote_page("weather.htm", 0), "weather.htm");
    EXPECT_EQ(remote_page("weather.htm", 7), "weather7.htm");
    EXPECT_EQ(remote_page("a.b.c", 0), "a.b");
    EXPECT_EQ(remote_page(" a.b.c ", 103), "a103.b");
    EXPECT_EQ(remote_page(".htm", 1), "1.htm");
    EXPECT_EQ(remote_page("weather", 0), std::nullopt);
    EXPECT_EQ(remote_page("", 0), std::nullopt);
}

}  // namespace
}  // namespace nimbry::test
