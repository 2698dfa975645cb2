#pragma once

#include <QDialog>
#include <string>
#include <string_view>

namespace nimbry::windows {

/// The lines of the about box that come from the version stamp ("Nimbry|202|251003"): "Version 2.02" and "Build
/// 251003". A piece that is missing is left empty.
struct AboutLines {
    std::string version, build;
};
[[nodiscard]] AboutLines about_lines(std::string_view stamp);

/// The about box (`frmAbout`).
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(std::string_view stamp, QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
