#include "engine/displays/dialog_controls.h"

#include <gtest/gtest.h>

namespace nimbry::test {
namespace {

struct SmallDialog {
    bool chkOn = false;
    float hsbLimit = 10;
    std::string txtName = "station";

    bool operator==(const SmallDialog&) const = default;
};

std::vector<DialogControl> dialog_controls(SmallDialog& dialog) {
    return {{"chkOn", &dialog.chkOn}, {"hsbLimit", &dialog.hsbLimit}, {"txtName", &dialog.txtName}};
}

TEST(DialogDraft, IsACopyOfTheCommittedValues) {
    const SmallDialog committed{true, 12.5F, "roof"};
    DialogDraft<SmallDialog> draft(committed);
    EXPECT_EQ(draft.values, committed);
    draft.values.txtName = "garden";
    EXPECT_EQ(committed.txtName, "roof");
}

TEST(DialogDraft, TakesOverWhatIsCommittedElsewhereAndKeepsWhatWasEdited) {
    SmallDialog committed;
    DialogDraft<SmallDialog> draft(committed);
    draft.values.txtName = "garden";
    draft.values.hsbLimit = 11;
    EXPECT_FALSE(draft.follow(committed)) << "nothing has changed there";
    committed.chkOn = true;
    committed.hsbLimit = 20;
    EXPECT_TRUE(draft.follow(committed));
    EXPECT_EQ(draft.values, (SmallDialog{true, 20, "garden"})) << "the last to change a value has it";
    draft.values.hsbLimit = 21;
    EXPECT_FALSE(draft.follow(committed)) << "a change is taken over once";
    EXPECT_EQ(draft.values.hsbLimit, 21);
}

}  // namespace
}  // namespace nimbry::test
