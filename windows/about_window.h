#pragma once

#include <QDialog>
#include <string>
#include <string_view>

namespace nimbry::windows {

/// What the about box takes from the version stamp ("Nimbry|202|251003"). A piece that is missing is left empty.
struct AboutLines {
    std::string number;   ///< "2.02": the second piece as hundredths
    std::string version;  ///< "Version 2.02"
    std::string build;    ///< "Build 251003"
};
[[nodiscard]] AboutLines about_lines(std::string_view stamp);

/// Where the links of the about box lead. The domain is the one that is set aside for examples: whoever publishes the
/// program puts his own here.
namespace about_links {
inline constexpr std::string_view url = "https://nimbry.example/";
inline constexpr std::string_view address = "nimbry@nimbry.example";
inline constexpr std::string_view forum = "https://nimbry.example/forum/";
}  // namespace about_links

/// The target of `lblEmail`: a mail whose subject names the program's version.
///   mail_link("a@b.c", "2.02") = "mailto:a@b.c?SUBJECT=Nimbry: 2.02"
[[nodiscard]] std::string mail_link(std::string_view address, std::string_view number);

/// The about box (`frmAbout`).
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(std::string_view stamp, QWidget* parent = nullptr);

signals:
    /// A link was clicked: the system is to open it.
    void asked_for(const QString& target);

private:
    [[nodiscard]] QWidget* link(const char* name, const QString& text, const std::string& target);
};

}  // namespace nimbry::windows
