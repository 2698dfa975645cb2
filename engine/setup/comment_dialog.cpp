#include "engine/setup/comment_dialog.h"

#include "engine/core/switches.h"
#include "engine/derived/number_text.h"
#include "engine/derived/text_lines.h"

namespace nimbry {
namespace {

std::string MainSettings::*setting_of(Comment which) {
    return which == Comment::first ? &MainSettings::WebComment : &MainSettings::WebComment2;
}

}  // namespace

std::vector<DialogControl> dialog_controls(CommentDialog& dialog) {
    return {{"txtComment", &dialog.txtComment}};
}

CommentDialog comment_dialog(const MainSettings& settings, Comment which) {
    const std::string& stored = settings.*setting_of(which);
    return {stored == empty_comment ? std::string() : stored};
}

void accept_comment(Copy& copy, Comment which, const CommentDialog& dialog) {
    copy.ports.sounds.play(std::string(click_sound));
    const std::string text = in_one_line(dialog.txtComment).substr(0, longest_comment);
    // The settings first: WrtCfg writes what is in force.
    copy.state.settings.*setting_of(which) = trimmed(text).empty() ? std::string(empty_comment) : text;
    WrtCfg(copy.ini, copy.state.settings);
}

}  // namespace nimbry
