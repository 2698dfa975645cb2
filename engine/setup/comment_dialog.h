#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/copy.h"
#include "engine/displays/dialog_controls.h"

namespace nimbry {

/// The user's two free texts: key `WebComment`, printed by the tag ~~WEBCOMMENT~~, and `WebComment2`, by
/// ~~WEBCOMENT2~~.
enum class Comment { first, second };

/// What is stored of a comment that is empty: pages show nothing of it.
inline constexpr std::string_view empty_comment = "<!--empty-->";

/// The longest comment, in characters: a value of the configuration file is read up to 2047.
inline constexpr std::size_t longest_comment = 2000;

/// The value of a comment editor (`NimbryComment`, `NimbryComment2`).
struct CommentDialog {
    std::string txtComment;

    bool operator==(const CommentDialog&) const = default;
};

/// The dialog's control with its value.
[[nodiscard]] std::vector<DialogControl> dialog_controls(CommentDialog& dialog);

/// The editor filled with the comment in force; an empty one is an empty box.
[[nodiscard]] CommentDialog comment_dialog(const MainSettings& settings, Comment which);

/// The accept button `Command2`: the click sounds, the text is taken, section `Main` is written (WrtCfg). Line breaks
/// become blanks, since a key has one line; what is longer than `longest_comment` is cut; blanks alone are empty, as
/// they would be read back.
void accept_comment(Copy& copy, Comment which, const CommentDialog& dialog);

}  // namespace nimbry
