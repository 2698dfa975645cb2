#include "engine/setup/comment_dialog.h"

#include <gtest/gtest.h>

#include "engine/core/main_settings.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

class CommentEditor : public testing::Test {
protected:
    CommentEditor() {
        world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nWebComment=old\r\nWebComment2=other\r\n");
        world.ini.read();
        world.state.settings = read_main_settings(world.ini);
    }

    void accept(Comment which, const std::string& text) { accept_comment(world.copy, which, {text}); }
    [[nodiscard]] std::string key(const char* name) const { return world.ini.GetSetting("Main", name, "-"); }

    BareCopy world;
};

TEST_F(CommentEditor, OpensWithTheCommentInForce) {
    EXPECT_EQ(comment_dialog(world.state.settings, Comment::first).txtComment, "old");
    EXPECT_EQ(comment_dialog(world.state.settings, Comment::second).txtComment, "other");
}

TEST_F(CommentEditor, ShowsTheEmptyCommentAsAnEmptyBox) {
    EXPECT_EQ(comment_dialog(MainSettings{}, Comment::first).txtComment, "");
    EXPECT_EQ(comment_dialog(MainSettings{}, Comment::second).txtComment, "");
    MainSettings settings;
    settings.WebComment = "a <!--empty-->";
    EXPECT_EQ(comment_dialog(settings, Comment::first).txtComment, "a <!--empty-->") << "only that text as a whole";
}

TEST_F(CommentEditor, ClicksAndStoresTheTextInItsKey) {
    accept(Comment::first, "<b>new</b> \xB0");
    EXPECT_EQ(world.sounds.played, std::vector<std::string>{"click.WAV"});
    EXPECT_EQ(key("WebComment"), "<b>new</b> \xB0");
    EXPECT_EQ(key("WebComment2"), "other");
    EXPECT_EQ(world.state.settings.WebComment, "<b>new</b> \xB0") << "the tags print what is in force";
    accept(Comment::second, "two");
    EXPECT_EQ(key("WebComment2"), "two");
    EXPECT_EQ(world.state.settings.WebComment2, "two");
    EXPECT_EQ(key("WebComment"), "<b>new</b> \xB0");
}

TEST_F(CommentEditor, WritesTheWholeCommunicationsSet) {
    world.state.settings.LogMin = 42;
    accept(Comment::first, "new");
    EXPECT_EQ(key("LogMin"), "42");
}

TEST_F(CommentEditor, StoresAnEmptyBoxAsTheEmptyComment) {
    for (const char* empty : {"", "   ", "\r\n"}) {
        accept(Comment::first, "something");
        accept(Comment::first, empty);
        EXPECT_EQ(key("WebComment"), "<!--empty-->");
        EXPECT_EQ(world.state.settings.WebComment, "<!--empty-->");
    }
}

TEST_F(CommentEditor, MakesOneLineOfSeveral) {
    accept(Comment::first, "one\r\ntwo\nthree\rfour\n\nfive");
    EXPECT_EQ(key("WebComment"), "one two three four  five");
}

TEST_F(CommentEditor, CutsAtTwoThousandCharacters) {
    accept(Comment::first, std::string(2000, 'a') + "b");
    EXPECT_EQ(key("WebComment"), std::string(2000, 'a'));
    accept(Comment::second, std::string(1999, 'a') + "b");
    EXPECT_EQ(key("WebComment2"), std::string(1999, 'a') + "b");
}

TEST_F(CommentEditor, HasItsControlUnderItsName) {
    CommentDialog dialog{"text"};
    const auto controls = dialog_controls(dialog);
    ASSERT_EQ(controls.size(), 1U);
    EXPECT_EQ(controls[0].name, "txtComment");
    EXPECT_EQ(*std::get<std::string*>(controls[0].value), "text");
}

}  // namespace
}  // namespace nimbry::test
