#include "windows/marquee_window.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "platform/text_bytes.h"

namespace nimbry::windows {
namespace {

/// The letter that reaches each check box, in the order of the line.
constexpr std::array letters{u'H', u'D', u'W', u'R', u'T', u'I', u'y', u'l', u'S', u'u', u'M'};

QString caption_of(const MarqueeItem& item, char16_t letter, const WeatherState& state) {
    QString caption = platform::unicode(marquee_label(item, state)).trimmed();
    return caption.insert(caption.indexOf(QChar(letter)), u'&');
}

}  // namespace

MarqueeWindow::MarqueeWindow(const WeatherState& state, std::function<void(const MarqueeDialog&)> accepted,
                             QWidget* parent)
    : SetupDialog("FrmMarquee", QStringLiteral("Nimbry Marquee"), parent),
      state_(state),
      accepted_(std::move(accepted)),
      draft_(state.big.FrmMarquee) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 12, 16, 12);
    column->setSpacing(6);
    auto* head = new QLabel(QStringLiteral("Show in turn"));
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    column->addWidget(head);
    for (const MarqueeItem& item : marquee_items()) {
        auto* check = new QCheckBox;
        check->setObjectName(platform::unicode(item.check_box));
        column->addWidget(check);
    }
    column->addSpacing(8);
    column->addStretch();
    column->addLayout(button_row(QStringLiteral("OK")));
    bind(dialog_controls(draft_.values));
    load();
    resize(sizeHint().expandedTo({320, 0}));
}

void MarqueeWindow::load() {
    draft_ = DialogDraft<MarqueeDialog>(state_.big.FrmMarquee);
    show_values();
    show_captions();
}

void MarqueeWindow::refresh() {
    if (!isVisible()) return;
    if (draft_.follow(state_.big.FrmMarquee)) show_values();
    show_captions();
}

void MarqueeWindow::show_captions() {
    std::size_t n = 0;
    for (const MarqueeItem& item : marquee_items()) {
        findChild<QCheckBox*>(platform::unicode(item.check_box))->setText(caption_of(item, letters[n++], state_));
    }
}

}  // namespace nimbry::windows
