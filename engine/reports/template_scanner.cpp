#include "engine/reports/template_scanner.h"

#include "engine/core/run_time_error.h"

namespace nimbry {

void fill_template(std::string_view page, const std::function<std::string(std::string_view)>& resolve,
                   std::string& out) {
    for (;;) {
        const std::size_t tilde = page.find('~');
        out.append(page.substr(0, tilde));
        if (tilde == std::string_view::npos) return;
        page.remove_prefix(tilde);

        if (page.size() < marker_length) throw RunTimeError{ErrorNumber::past_end};
        const std::string_view block = page.substr(0, marker_length);
        page.remove_prefix(marker_length);
        if (block.ends_with("~~")) {
            // Resolved first: the heading of an alarm mail goes into `out` by itself.
            const std::string text = resolve(block);
            out.append(text);
        } else {
            out.append(block);
        }
    }
}

}  // namespace nimbry
