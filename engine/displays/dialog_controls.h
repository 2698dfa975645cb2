#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace nimbry {

// A setup dialog holds settings in its controls; each has a struct of their values. Those of the alarms, the marquee
// and the internet live in the state: the struct is what is in force. The others are made from MainSettings or the
// records when their window opens (comms_dialog(), units_dialog() ...), and accepting writes them back. A window edits
// a copy (DialogDraft); accepting commits it, closing drops it. The struct's own
//     std::vector<DialogControl> dialog_controls(Values&);
// says which control holds which value, and that is all a window needs to bind its widgets.

/// One control of a setup dialog under its name, and where its value lies: a check box or an option (bool), a scroll
/// bar (a number in the unit of the setting), a text field, a list of texts.
struct DialogControl {
    std::string_view name;
    std::variant<bool*, float*, std::string*, std::vector<std::string>*> value;
};

/// The copy that a window edits.
template <class Values>
class DialogDraft {
public:
    explicit DialogDraft(const Values& committed) : values(committed), seen_(committed) {}

    Values values;

    /// Something else than this window may have committed values meanwhile: what changed there since the last look
    /// changes here too; what the person has edited otherwise stays. True when something changed there.
    bool follow(const Values& committed) {
        if (committed == seen_) return false;
        Values now = committed;
        const std::vector<DialogControl> before = dialog_controls(seen_);
        const std::vector<DialogControl> after = dialog_controls(now);
        const std::vector<DialogControl> mine = dialog_controls(values);
        for (std::size_t n = 0; n < mine.size(); ++n) take_change(before[n], after[n], mine[n]);
        seen_ = now;
        return true;
    }

private:
    static void take_change(const DialogControl& before, const DialogControl& after, const DialogControl& mine) {
        std::visit(
            [&](auto* value) {
                using Pointer = decltype(value);
                const auto& now = *std::get<Pointer>(after.value);
                if (*std::get<Pointer>(before.value) != now) *value = now;
            },
            mine.value);
    }

    Values seen_;
};

}  // namespace nimbry
