#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "engine/control/verbs.h"
#include "engine/reports/default_templates.h"
#include "tests/engine/control/recording_asker.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

class VerbsOfReports : public testing::Test {
protected:
    VerbStatus ask(const Words& words) {
        asker = {};
        auto status = VerbStatus::failed;
        world.act([&] { status = answer_request(world.copy(), words, asker); });
        world.run_for(1s);
        return status;
    }
    [[nodiscard]] std::string complaint() const { return asker.complaints.empty() ? "" : asker.complaints.front(); }

    StartedWorld world;
    RecordingAsker asker;
};

TEST_F(VerbsOfReports, ATagPrintsItsTextInUtf8) {
    world.send_trains(3);
    EXPECT_EQ(ask({"tag", "WEBOUTTEMP"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "+12.3 °C\n");
    EXPECT_EQ(ask({"tag", "WEBMLTITLE"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "\r\n" + std::string(52, '*') + "\r\n\r\n\n");
}

TEST_F(VerbsOfReports, SeveralTagsPrintALineEach) {
    world.send_trains(3);
    EXPECT_EQ(ask({"tag", "WEBOSHUMID", "WEBMLTITLE", "WEBFILETAG"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "WEBOSHUMID\t54 %\nWEBMLTITLE\t / " + std::string(52, '*') + " /  / \nWEBFILETAG\t\n");
}

TEST_F(VerbsOfReports, ATagShowsTheUtcTimeOfTheQuestion) {
    EXPECT_EQ(ask({"tag", "WEBUTCTIME"}), VerbStatus::done);
    const std::string first = asker.out;
    world.run_for(1s);
    EXPECT_EQ(ask({"tag", "WEBUTCTIME"}), VerbStatus::done);
    EXPECT_NE(asker.out, first);
}

TEST_F(VerbsOfReports, ANameThatNoTagHasIsRefused) {
    EXPECT_EQ(ask({"tag", "WEBOUTTEMP", "weboutTEMP"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "There is no tag weboutTEMP");
    EXPECT_EQ(asker.out, "");
    EXPECT_EQ(ask({"tag", "~~WEBOUTTEMP~~"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "There is no tag ~~WEBOUTTEMP~~: it is named without its tildes");
    EXPECT_EQ(ask({"tag"}), VerbStatus::bad_usage);
}

TEST_F(VerbsOfReports, GenerateReturnsWhenThePagesAreThere) {
    world.files.put("myhtml3.html", "[~~WEBOUTTEMP~~|~~WBNBAROMTR~~|~~NOSUCHTAG!~~]");
    world.send_trains(3);
    EXPECT_EQ(ask({"generate"}), VerbStatus::done);
    EXPECT_EQ(world.files.contents("nbyxauto3.html"), "[+12.3 \260C|1013|]");
    EXPECT_EQ(ask({"generate", "now"}), VerbStatus::bad_usage);
}

TEST_F(VerbsOfReports, GenerateFillsTheUsersFolderToo) {
    world.files.put("myhtml.html", "page");
    world.files.add_folder("/web");
    world.state().publish.NimbryFTPSetup.chkLocal = true;
    world.state().publish.NimbryFTPSetup.txtLocalPath = "/web";
    world.state().publish.NimbryFTPSetup.FTPRemoteFile = "index.html";
    EXPECT_EQ(ask({"generate"}), VerbStatus::done);
    EXPECT_EQ(world.files.contents("/web/index.html"), "page");
}

TEST_F(VerbsOfReports, InstallTemplatesCopiesWhatIsMissingAndTouchesNothingElse) {
    world.files.put("MyHtml.html", "mine");
    world.files.put("mail_template.txt", "");
    EXPECT_EQ(ask({"install-templates"}), VerbStatus::done);
    std::string names;
    for (const DefaultTemplate& file : default_templates()) {
        if (file.name == "myhtml.html" || file.name == "mail_template.txt") continue;
        names += std::string(file.name) + '\n';
        EXPECT_EQ(world.files.contents(std::string(file.name)), file.bytes) << file.name;
    }
    EXPECT_EQ(asker.out, names);
    EXPECT_FALSE(world.files.exists("myhtml.html"));
    EXPECT_EQ(world.files.contents("MyHtml.html"), "mine");
    EXPECT_EQ(world.files.contents("mail_template.txt"), "");

    EXPECT_EQ(ask({"install-templates"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "") << "nothing is missing any more";
}

TEST_F(VerbsOfReports, InstallTemplatesStopsAtAFileThatCannotBeWritten) {
    world.files.refuse("myhtml.html", FileResult::disk_full);
    EXPECT_EQ(ask({"install-templates"}), VerbStatus::failed);
    EXPECT_EQ(complaint(), "myhtml.html could not be written: Disk full");
    EXPECT_FALSE(world.files.exists("webfiletag.txt"));
}

}  // namespace
}  // namespace nimbry::test
