#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nimbry::terminal {

/// A terminal's size in characters; 0 where it does not say.
struct TerminalSize {
    int columns = 0, rows = 0;
};

/// Lines of a screen in UTF-8 that fit a terminal: the first of `layouts` that is not too wide, or else the last, cut
/// at the right; cut at the bottom so that `below`, broken into as many lines as it needs, and the cursor's line behind
/// it have room. Each line ends in "\n".
///   fitted({"abcdef\nghi\n", "abc\ndef\n"}, "note", {4, 3}) = "abc\nnote\n"
[[nodiscard]] std::string fitted(const std::vector<std::string>& layouts, std::string_view below, TerminalSize size);

/// The panel on standard output: in a terminal always in the same place, drawn again when the panel or the terminal's
/// size changes; into a file one below the other, in the widest layout.
class PanelScreen {
public:
    /// `below` stands under the panel in a terminal. A panel that is shown `once` stands where the cursor is.
    PanelScreen(std::string below, bool once);

    void show(const std::vector<std::string>& layouts);

    /// Waits until `socket` has something to read. Draws again what is shown whenever the terminal gets another size.
    void wait_for(int socket) const;

private:
    void draw() const;

    std::string below_;
    bool once_;
    bool terminal_;
    std::vector<std::string> layouts_;
};

}  // namespace nimbry::terminal
