#include "engine/reports/wxtext.h"

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/reports/generation.h"
#include "engine/reports/raw_line.h"
#include "engine/reports/resolvtag.h"

namespace nimbry {

void wxtext(Copy& copy) {
    tagged("wxtext", [&] {
        Files& files = copy.ports.files;
        refresh_tag_sources(copy);
        const std::string line = data_line(copy);
        for (const char* name : {"NimbData.txt", "NimbData.csv"}) rewrite_if_free(files, name, line);

        const Template report = read_template(copy, UserFiles(files), "wxtexttemplate.txt");
        if (report.bytes) {
            const std::string work = "tpwxtexttemplate.txt";
            make_work_file(files, work, *report.bytes, plain_tags(copy));
            replace_by(files, work, "wxtext.txt");
        }
        copy.state.reports.new_data = false;
    });
}

}  // namespace nimbry
