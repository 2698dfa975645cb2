#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QString>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QWidget>
#include <optional>
#include <span>
#include <vector>

namespace nimbry::windows {

/// A page of the manual: the Markdown file of docs/ that it is made from, and the head that stands in the list.
struct HelpPage {
    const char* file;
    const char* title;
};

/// The manual under the name that the program knows its help by: the folder of its pages in the program itself, so
/// there is no file that could be missing or be another version's.
inline constexpr const char* help_file = "NIMBRY.HLP";

/// The pages of the manual in their order. They are part of the program.
[[nodiscard]] std::span<const HelpPage> help_pages();

/// A page as it stands in docs/, UTF-8.
[[nodiscard]] QString page_source(const HelpPage& page);

/// A page as HTML for a browser: with a link to each of the others on top, its links leading to files of this kind,
/// and the headings named as links name them.
[[nodiscard]] QString page_as_html(const HelpPage& page);

/// The program's manual (`NimbryHelp`): the list of its pages, the page, and a line that searches all of them. What is
/// typed there leaves the pages that have it in the list and marks it in the page; Enter and F3 go on to the next
/// place, on the next page too.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Shows a page, or with "#..." behind its file's name the place of that heading: "messages.md#the-sensors". A file
    /// that is none of the manual's changes nothing, and a page without such a heading begins at its top.
    void show_page(const QString& link);

    /// The pages as HTML files, written when they are first asked for and gone with the window: the path of the one
    /// that is showing, or an empty text where they could not be written.
    [[nodiscard]] QString file_for_browser();

signals:
    /// The page is to be opened in the user's browser.
    void asked_for(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QWidget* search_row();
    void show_row(int row);
    void show_heading(const QString& name);
    void search();
    void find_next();
    void mark_places();
    [[nodiscard]] int next_row() const;

    QLineEdit find_;
    QLabel none_;
    QListWidget pages_;
    QTextBrowser page_;
    std::vector<QString> texts_;  ///< what each page says, read when something is sought for the first time
    std::optional<QTemporaryDir> files_;
};

}  // namespace nimbry::windows
