#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <vector>

#include "tests/system/nimbryctl_fixture.h"

namespace nimbry::system_test {
namespace {

TEST_F(NimbryctlTest, ThePanelIsShownAtEveryTrainAndEndsWithTheCopy) {
    start();
    Process panel(NIMBRYCTL, {"--dir", folder.path(), "panel"});
    ASSERT_TRUE(eventually([&] { return panel.standard_output().find("Program Starting") != std::string::npos; }));
    EXPECT_EQ(panel.standard_output().find("+12.3 °C"), std::string::npos);
    send_trains();
    EXPECT_TRUE(eventually([&] { return panel.standard_output().find("+12.3 °C") != std::string::npos; }));
    EXPECT_EQ(panel.standard_output().find('\x1b'), std::string::npos) << "a file gets no signs for a terminal";
    copy->signal(SIGTERM);
    EXPECT_EQ(panel.ending(), exited(0));

    EXPECT_EQ(copy->ending(), exited(0));
}

/// A terminal as far as the panel needs one: it writes over what stands there, goes on in the next row where a row is
/// full, scrolls below the last one, and knows three signs. (ESC [ H: to the top; ESC [ K: the rest of the row goes;
/// ESC [ J: everything behind goes.)
class Terminal {
public:
    /// Without a size it is as large as what is written.
    explicit Terminal(const std::vector<std::string>& shown) : cells_(shown.size()) {
        for (std::size_t row = 0; row < shown.size(); ++row) cells_[row] = letters(shown[row]);
    }
    Terminal(std::size_t columns, std::size_t rows) : columns_(columns), most_rows_(rows) {}

    void write(const std::string& text) {
        held_ += text;
        while (!held_.empty() && take_one()) {
        }
    }
    /// The rows without blank ones at the end.
    [[nodiscard]] std::vector<std::string> rows() const {
        std::vector<std::string> all;
        for (const Row& row : cells_) {
            all.emplace_back();
            for (const std::string& letter : row) all.back() += letter;
        }
        while (!all.empty() && all.back().empty()) all.pop_back();
        return all;
    }
    /// The same as lines.
    [[nodiscard]] std::string screen() const {
        std::string text;
        for (const std::string& row : rows()) text += row + '\n';
        return text;
    }
    /// How often it has scrolled since the cursor was put to the top.
    [[nodiscard]] int scrolled() const { return scrolled_; }

private:
    using Row = std::vector<std::string>;  // of letters

    static std::size_t length_of_letter(char first) {
        const auto byte = static_cast<unsigned char>(first);
        return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : 3;
    }
    static Row letters(const std::string& text) {
        Row row;
        for (std::size_t at = 0; at < text.size(); at += row.back().size())
            row.push_back(text.substr(at, length_of_letter(text[at])));
        return row;
    }

    bool take_one() {
        const bool sign = held_.front() == '\x1b';
        const std::size_t size = sign ? 3 : length_of_letter(held_.front());
        if (held_.size() < size) return false;  // the rest comes with the next piece
        const std::string taken = held_.substr(0, size);
        held_.erase(0, size);
        if (!sign) {
            put(taken);
        } else if (taken == "\x1b[H") {
            row_ = column_ = 0;
            scrolled_ = 0;
        } else if (taken == "\x1b[K") {
            row().resize(column_);
        } else if (taken == "\x1b[J") {
            row().resize(column_);
            cells_.resize(row_ + 1);
        } else {
            ADD_FAILURE() << "a sign that this terminal does not know";
        }
        return true;
    }
    void put(const std::string& letter) {
        if (letter == "\n" || column_ == columns_) next_row();
        if (letter == "\n") return;
        if (row().size() <= column_) row().resize(column_ + 1, " ");
        row()[column_++] = letter;
    }
    void next_row() {
        column_ = 0;
        if (++row_ < most_rows_) return;
        --row_;
        ++scrolled_;
        cells_.erase(cells_.begin());
    }
    Row& row() {
        if (cells_.size() <= row_) cells_.resize(row_ + 1);
        return cells_[row_];
    }

    std::vector<Row> cells_;
    std::size_t columns_ = static_cast<std::size_t>(-1), most_rows_ = static_cast<std::size_t>(-1);
    std::size_t row_ = 0, column_ = 0;
    int scrolled_ = 0;
    std::string held_;
};

/// A program whose standard output is that terminal.
Process::Setting on(const PseudoTerminal& window) {
    return {.environment = {}, .in_child = [device = window.device()] {
                const int terminal = open(device.c_str(), O_WRONLY | O_NOCTTY);
                if (terminal < 0 || dup2(terminal, STDOUT_FILENO) < 0) _exit(126);
            }};
}

TEST_F(NimbryctlTest, OnATerminalThePanelIsDrawnInPlace) {
    start();
    const PseudoTerminal window;
    Process panel(NIMBRYCTL, {"--dir", folder.path(), "panel"}, on(window));

    // Longer and wider than the panel: nothing of it may be left.
    Terminal terminal(std::vector<std::string>(60, std::string(200, '#')));
    const auto shows_the_panel = [&] {
        terminal.write(window.received());
        return terminal.screen() == ask_copy({"panel", "--once"}).out;
    };
    EXPECT_TRUE(eventually(shows_the_panel)) << terminal.screen();
    send_trains();
    EXPECT_TRUE(eventually([&] {
        return shows_the_panel() && terminal.screen().find("+12.3 °C") != std::string::npos;
    })) << terminal.screen();
    EXPECT_EQ(panel.standard_output(), "");
    panel.signal(SIGINT);
    EXPECT_EQ(panel.ending(), (Ending{false, SIGINT}));
    EXPECT_TRUE(copy->runs()) << "the copy goes on";
}

TEST_F(NimbryctlTest, ThePanelFitsItsTerminalAndFollowsItsSize) {
    start(true);
    const std::string note = "Page: file:///home/me/weather/web/index.html";
    const PseudoTerminal window;
    window.resize(80, 24);
    Process panel(NIMBRYCTL, {"--dir", folder.path(), "panel", "--below", note}, on(window));

    Terminal ordinary(80, 24);
    const auto ends_with_the_note = [&](Terminal& terminal) {
        terminal.write(window.received());
        const auto rows = terminal.rows();
        return !rows.empty() && rows.back() == note;
    };
    ASSERT_TRUE(eventually([&] { return ends_with_the_note(ordinary); })) << ordinary.screen();
    EXPECT_EQ(ordinary.scrolled(), 0);
    ASSERT_EQ(ordinary.rows().size(), 23U) << "the cursor is below";
    const std::string head = ordinary.rows()[0];
    EXPECT_TRUE(head.find("Program Starting") != std::string::npos ||
                head.find("Current Conditions") != std::string::npos)
        << head << ": which of them depends on whether a minute has ended";
    EXPECT_TRUE(ordinary.rows()[2].starts_with(" Outdoor Temp.     +12.3 °C"));
    EXPECT_TRUE(ordinary.rows()[21].starts_with(" Barometer Minimum"));

    window.resize(200, 60);
    panel.signal(SIGWINCH);
    Terminal large(200, 60);
    EXPECT_TRUE(eventually([&] {
        return ends_with_the_note(large) && large.screen() == ask_copy({"panel", "--once"}).out + note + '\n';
    })) << large.screen();

    window.resize(20, 8);
    panel.signal(SIGWINCH);
    Terminal small(20, 8);
    // A panel that was on its way when the size changed is one of the former size.
    ASSERT_TRUE(eventually([&] {
        small.write(window.received());
        const auto rows = small.rows();
        return small.scrolled() == 0 && rows.size() == 7 && rows[4] + rows[5] + rows[6] == note;
    })) << small.screen()
        << "broken, the note would be whole";
    EXPECT_EQ(small.rows()[2], " Outdoor Temp.     +");
}

TEST_F(NimbryctlTest, APanelThatIsPrintedOnceStandsWhereTheCursorIs) {
    start(true);
    const PseudoTerminal window;
    window.resize(80, 10);
    Process panel(NIMBRYCTL, {"--dir", folder.path(), "panel", "--once"}, on(window));
    EXPECT_EQ(panel.ending(), exited(0));
    const std::string shown = window.received();
    EXPECT_EQ(shown.find('\x1b'), std::string::npos);
    EXPECT_NE(shown.find("\n Maximum Wind Speed "), std::string::npos) << "a terminal can be scrolled back";
    EXPECT_NE(shown.find("\n Extreme Conditions   Since the last station reset\n"), std::string::npos) << shown;
}

TEST_F(NimbryctlTest, ThePanelTellsWhyThePortIsNotOpen) {
    folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
    copy.emplace(folder, "/dev/nosuch");
    const std::string trouble = " COM Port Error, Please check that the selected port exists (/dev/nosuch)";
    EXPECT_TRUE(eventually([&] { return ask_copy({"panel", "--once"}).out.find(trouble) != std::string::npos; }));
}

TEST_F(NimbryctlTest, ThePanelCanBePrintedOnce) {
    start(true);
    const Said said = ask_copy({"panel", "--once"});
    EXPECT_EQ(said.ending, exited(0));
    EXPECT_NE(said.out.find(" Outdoor Temp.     +12.3 °C"), std::string::npos) << said.out;
}

}  // namespace
}  // namespace nimbry::system_test
