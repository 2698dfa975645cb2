#include "engine/reports/genhtml.h"

#include <optional>
#include <string>

#include "engine/core/file_steps.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_svg.h"
#include "engine/reports/generation.h"
#include "engine/reports/page_names.h"
#include "engine/reports/raw_line.h"
#include "engine/reports/resolvtag.h"

namespace nimbry {
namespace {

constexpr std::string_view wap_template = "nimbrywap.wml";
constexpr std::string_view wap_work_file = "tempwap.wml";
constexpr std::string_view wap_page = "wx.wml";

// A WAP page has no degree sign.
std::string without_degree_signs(std::string text) {
    replace_all(text, "\xB0", " Deg.");
    replace_all(text, "  Deg.", " Deg.");
    return text;
}

class Generation {
public:
    explicit Generation(Copy& copy) : copy_(copy), files_(copy.ports.files), folder_(copy.ports.files) {}

    void run() {
        refresh_tag_sources(copy_);
        rewrite_if_free(files_, "nimbryraw.txt", raw_line(copy_));
        for (int n = 0; n < pages_in_all; ++n) make_page(n);
        make_wap_page();
        write_graph_files(copy_, "genhtml");
    }

private:
    void make_page(int n) {
        const std::string work = page_work_file(n);
        const Template page = read_template(copy_, folder_, page_template(n));
        if (!page.present) {
            // Kept on purpose: of the second hundred, too, it is this name that goes, and the finished page stays.
            remove_if_there(files_, finished_page(n));
            remove_if_there(files_, work);
            return;
        }
        if (!page.bytes) return;
        make_work_file(files_, work, *page.bytes, plain_tags(copy_));
        replace_by(files_, work, name_of(n));
        let_events_run();
    }

    [[nodiscard]] std::string name_of(int n) const {
        if (n < pages_uploaded) return finished_page(n);
        const std::optional<std::string> name = remote_page(copy_.state.publish.NimbryFTPSetup.FTPRemoteFile, n);
        if (!name) throw RunTimeError{ErrorNumber::index};
        return *name;
    }

    void make_wap_page() {
        const Template page = read_template(copy_, folder_, std::string(wap_template));
        if (!page.bytes) return;
        const std::string work(wap_work_file);
        const Resolve tags = plain_tags(copy_);
        make_work_file(files_, work, *page.bytes,
                       [&](std::string_view marker) { return without_degree_signs(tags(marker)); });
        replace_by(files_, work, std::string(wap_page));
    }

    void let_events_run() { copy_.ports.pauses.pause(Milliseconds{0}); }

    Copy& copy_;
    Files& files_;
    UserFiles folder_;
};

}  // namespace

void genhtml(Copy& copy) {
    const auto busy = copy.state.reports.htmlGenBusy.try_hold();
    if (!busy || copy.state.run.HaveError) return;
    tagged("genhtml", [&] {
        Generation(copy).run();
        copy.state.reports.new_data = false;
        copy.state.readings.MaxGustMs = "0";
        copy.state.readings.PeakGust = 0;
    });
}

void make_fresh_pages(Copy& copy) {
    const ReportsState& reports = copy.state.reports;
    wait_for(copy, "htmlGenBusy", [&] { return !reports.htmlGenBusy; });
    genhtml(copy);
}

}  // namespace nimbry
