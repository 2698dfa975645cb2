#include "engine/control/verbs_looking.h"

#include <string_view>

#include "engine/control/copy_status.h"
#include "engine/control/json_text.h"
#include "engine/control/one_line.h"
#include "engine/control/panel_table.h"
#include "engine/control/verb_arguments.h"
#include "engine/derived/code_page.h"
#include "engine/derived/dates.h"
#include "engine/displays/box_list.h"

namespace nimbry {

namespace {

constexpr std::string_view json_switch = "--json";
constexpr Milliseconds between_looks{200};

std::string json_text(std::string_view text) {
    return json_string(utf8_text(text));
}

std::string box_json(const NamedConstBox& named) {
    const Box& box = *named.box;
    return JsonObject()
        .field("name", json_string(named.name))
        .field("text", json_text(box.text))
        .field("fore", std::to_string(box.fore))
        .field("back", std::to_string(box.back))
        .flag("visible", box.visible)
        .flag("enabled", box.enabled)
        .flag("checked", box.checked)
        .field("tip", json_text(box.tip))
        .field("balloon", json_text(box.balloon))
        .text();
}

std::string notice_json(const Notice& notice) {
    return JsonObject()
        .field("time", json_string(stamp_text(notice.time)))
        .field("title", json_text(notice.title))
        .field("text", json_text(notice.text))
        .text();
}

/// An array of JSON, one element a line.
std::string json_array(const std::vector<std::string>& elements) {
    std::string array;
    for (const std::string& element : elements) array += (array.empty() ? "[" : ",\n ") + element;
    return array.empty() ? "[]\n" : array + "]\n";
}

/// The boxes asked for, in the order asked for; all when no name is given. Stops at a name that no box has.
bool take_boxes(const WeatherState& state, const std::vector<std::string>& names, std::vector<NamedConstBox>& boxes,
                Asker& asker) {
    if (names.empty()) {
        boxes = named_boxes(state);
        return true;
    }
    for (const std::string& name : names) {
        const Box* box = find_box(state, name);
        if (box == nullptr) {
            asker.complain("There is no box " + utf8_text(name));
            return false;
        }
        boxes.push_back({name, BoxKind::reading, box});
    }
    return true;
}

}  // namespace

VerbStatus boxes_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const VerbArguments given(arguments, {json_switch});
    if (!given.right()) return VerbStatus::bad_usage;
    std::vector<NamedConstBox> boxes;
    if (!take_boxes(copy.state, given.words(), boxes, asker)) return VerbStatus::failed;

    if (given.has(json_switch)) {
        std::vector<std::string> objects;
        objects.reserve(boxes.size());
        for (const NamedConstBox& box : boxes) objects.push_back(box_json(box));
        asker.print(json_array(objects));
    } else {
        std::string lines;
        for (const NamedConstBox& box : boxes) lines += std::string(box.name) + '\t' + one_line(box.box->text) + '\n';
        asker.print(lines);
    }
    return VerbStatus::done;
}

VerbStatus status_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const VerbArguments given(arguments, {json_switch});
    if (!given.right() || !given.words().empty()) return VerbStatus::bad_usage;
    const std::vector<StatusField> fields = copy_status(copy);
    asker.print(given.has(json_switch) ? status_json(fields) : status_lines(fields));
    return VerbStatus::done;
}

VerbStatus notices_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const VerbArguments given(arguments, {json_switch});
    if (!given.right() || !given.words().empty()) return VerbStatus::bad_usage;
    const auto& notices = copy.state.notices.notices;

    if (given.has(json_switch)) {
        std::vector<std::string> objects;
        objects.reserve(notices.size());
        for (const Notice& notice : notices) objects.push_back(notice_json(notice));
        asker.print(json_array(objects));
    } else {
        std::string lines;
        for (const Notice& notice : notices) {
            lines += stamp_text(notice.time) + '\t' + one_line(notice.title) + '\t' + one_line(notice.text) + '\n';
        }
        asker.print(lines);
    }
    return VerbStatus::done;
}

VerbStatus panel_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    static constexpr std::string_view once = "--once";
    const VerbArguments given(arguments, {once});
    if (!given.right() || !given.words().empty()) return VerbStatus::bad_usage;
    std::vector<std::string> shown;
    while (asker.listening()) {
        std::vector<std::string> now{panel_table(copy.state, PanelLayout::wide),
                                     panel_table(copy.state, PanelLayout::narrow)};
        if (now != shown) asker.show(now);
        if (given.has(once)) break;
        shown = std::move(now);
        copy.ports.pauses.pause(between_looks);
    }
    return VerbStatus::done;
}

}  // namespace nimbry
