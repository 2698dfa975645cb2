#include "engine/setup/comment_dialog.h"

#include "engine/core/switches.h"
#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

std::string MainSettings::*setting_of(Comment which) {
    return which == Comment::first ? &MainSettings::WebComment : &MainSettings::WebComment2;
}

/// Each line break, of one character or of two, as one blank.
std::string in_one_line(const std::string& text) {
    std::string line;
    for (std::size_t n = 0; n < text.size(); ++n) {
        if (text[n] == '\n' && n > 0 && text[n - 1] == '\r') continue;
        line += text[n] == '\r' || text[n] == '\n' ? ' ' : text[n];
    }
    return line;
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
