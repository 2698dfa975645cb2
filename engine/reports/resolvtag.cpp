#include "engine/reports/resolvtag.h"

#include "engine/records/rain.h"
#include "engine/reports/tag_table.h"
#include "engine/reports/template_scanner.h"
#include "engine/station/station_time.h"

namespace nimbry {

std::string resolvtag(const Copy& copy, std::string_view tag) {
    constexpr std::string_view tildes = "~~";
    if (tag.size() != marker_length || !tag.starts_with(tildes) || !tag.ends_with(tildes)) return "";
    const TagRow* row = tag_named(tag.substr(tildes.size(), tag.size() - 2 * tildes.size()));
    if (row == nullptr) return "";
    return row->text({copy.state, copy.ports.files, copy.state.reports.mail_body});
}

void refresh_tag_sources(Copy& copy) {
    if (!copy.state.settings.fromnet) maketimes(copy);
    rain_since_midnight(copy);
}

}  // namespace nimbry
