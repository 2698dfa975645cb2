#include "windows/button_row.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <array>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/main_menu_bar.h"
#include "windows/palette_colours.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {
namespace {

struct ButtonKind {
    const char* opens;  ///< the bar entry
    const char* picture;
};
constexpr std::array<ButtonKind, 7> kinds{{{"mnuLogs", "button-logs"},
                                           {"mnuSetup", "button-settings"},
                                           {"mnuExit", "button-exit"},
                                           {"mnuDisplay", "button-display"},
                                           {"mnuAdditional", "button-additional"},
                                           {"mnuReports", "button-reports"},
                                           {"mnuHelp", "button-help"}}};

/// A button in red means that an upload is under way: its text is red, and it says so.
void show_button(QPushButton& button, const Box& box, bool acts) {
    button.setText(platform::unicode(box.text));
    button.setEnabled(box.enabled && acts);
    const bool red = box.fore == colours::red;
    QPalette palette = button.parentWidget()->palette();
    if (red) {
        const QColor text = is_dark(palette) ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB0, 0x00, 0x20);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            palette.setColor(group, QPalette::ButtonText, text);
        }
    }
    button.setPalette(palette);
    button.setToolTip(red ? QStringLiteral("An upload is under way") : QString());
    button.setAccessibleDescription(button.toolTip());
}

}  // namespace

ButtonRow::ButtonRow(const MainMenu& menu, const MainMenuBar& bar, BoxBinding& binding, QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (std::size_t n = 0; n < kinds.size(); ++n) {
        auto* button = new QPushButton(this);
        button->setObjectName(QStringLiteral("fmb_%1").arg(n));
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->setIconSize(QSize(18, 18));
        row->addWidget(button, 1);

        const QString opens = QString::fromLatin1(kinds[n].opens);
        QMenu* popup = bar.menu_of(opens);
        auto* direct = bar.findChild<QAction*>(opens);
        if (popup != nullptr) {
            connect(button, &QPushButton::clicked, popup,
                    [button, popup] { popup->popup(button->mapToGlobal(QPoint(0, -popup->sizeHint().height()))); });
        } else {
            connect(button, &QPushButton::clicked, direct, &QAction::trigger);
            connect(direct, &QAction::enabledChanged, button,
                    [button, direct, &box = menu.fmb[n]] { button->setEnabled(box.enabled && direct->isEnabled()); });
        }
        binding.bind(menu.fmb[n], [button, popup, direct](const Box& box) {
            show_button(*button, box, popup != nullptr || direct->isEnabled());
        });
    }
    draw_icons();
}

void ButtonRow::draw_icons() {
    const QColor colour = palette().color(QPalette::ButtonText);
    for (std::size_t n = 0; n < kinds.size(); ++n) {
        auto* button = findChild<QPushButton*>(QStringLiteral("fmb_%1").arg(n));
        button->setIcon(tinted_icon(QString::fromLatin1(kinds[n].picture), 18, colour));
    }
}

void ButtonRow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && layout() != nullptr) draw_icons();
    QWidget::changeEvent(event);
}

}  // namespace nimbry::windows
