#include "windows/about_window.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstdlib>

#include "platform/text_bytes.h"
#include "windows/link_label.h"
#include "windows/svg_pictures.h"
#include "windows/tabular_text.h"

namespace nimbry::windows {
namespace {

/// The n-th piece between the bars.
std::string_view piece(std::string_view stamp, int n) {
    for (; n > 0; --n) {
        const std::size_t bar = stamp.find('|');
        if (bar == std::string_view::npos) return {};
        stamp.remove_prefix(bar + 1);
    }
    return stamp.substr(0, stamp.find('|'));
}

QLabel* line(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

}  // namespace

AboutLines about_lines(std::string_view stamp) {
    AboutLines lines;
    if (const std::string digits(piece(stamp, 1)); !digits.empty()) {
        const int number = std::atoi(digits.c_str());
        const std::string hundredths = std::to_string(number % 100);
        lines.number = std::to_string(number / 100) + "." + (hundredths.size() < 2 ? "0" : "") + hundredths;
        lines.version = "Version " + lines.number;
    }
    if (const std::string_view build = piece(stamp, 2); !build.empty()) lines.build = "Build " + std::string(build);
    return lines;
}

std::string mail_link(std::string_view address, std::string_view number) {
    return "mailto:" + std::string(address) + "?SUBJECT=Nimbry: " + std::string(number);
}

QWidget* AboutWindow::link(const char* name, const QString& text, const std::string& target) {
    auto* label = new LinkLabel(name, text);
    connect(label, &LinkLabel::clicked, this, [this, target] { emit asked_for(platform::unicode(target)); });
    return label;
}

AboutWindow::AboutWindow(std::string_view stamp, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("Nimbry About..."));
    const AboutLines lines = about_lines(stamp);

    auto* image = new QLabel;
    image->setObjectName(QStringLiteral("picIcon"));
    image->setPixmap(picture(QStringLiteral("nimbry"), 96, devicePixelRatioF()));
    QLabel* product = line("lblTitle", QStringLiteral("Nimbry"));
    QFont large = scaled(font(), 18.0 / 9);
    large.setBold(true);
    product->setFont(large);
    QLabel* what = line("lblDescription",
                        QStringLiteral("Weather monitoring software for the WM-918/WX-200 electronic weather station"));
    what->setWordWrap(true);
    what->setMinimumWidth(48 * fontMetrics().averageCharWidth());
    auto* close = new QPushButton(QStringLiteral("OK"));
    close->setObjectName(QStringLiteral("cmdOK"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* words = new QVBoxLayout;
    words->addWidget(product);
    words->addWidget(line("lblVersion", platform::unicode(lines.version)));
    words->addWidget(line("lblBuild", platform::unicode(lines.build)));
    words->addSpacing(8);
    words->addWidget(what);
    words->addSpacing(8);
    words->addWidget(link("lblUrl", QStringLiteral("Nimbry on the web"), std::string(about_links::url)));
    words->addWidget(link("lblForum", QStringLiteral("The forum of its users"), std::string(about_links::forum)));
    words->addWidget(
        link("lblEmail", QStringLiteral("Write to its authors"), mail_link(about_links::address, lines.number)));
    words->addSpacing(8);
    words->addWidget(line("lblAuthors", QStringLiteral("Copyright 2026 the Nimbry authors\nMIT licence")));
    words->addStretch();
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(20, 20, 20, 16);
    grid->setHorizontalSpacing(20);
    grid->addWidget(image, 0, 0, Qt::AlignTop);
    grid->addLayout(words, 0, 1);
    grid->addWidget(close, 1, 1, Qt::AlignRight);
    close->setFocus();
    const int wide = sizeHint().width();
    resize(wide, grid->totalHeightForWidth(wide));
}

}  // namespace nimbry::windows
