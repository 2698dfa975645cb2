#include "windows/rain_days_window.h"

#include <QGridLayout>
#include <utility>

#include "platform/text_bytes.h"

namespace nimbry::windows {

RainDaysWindow::RainDaysWindow(const WeatherState& state, std::function<void(const RainDaysDialog&)> accepted,
                               QWidget* parent)
    : SetupDialog("NimbryEditDSR", QStringLiteral("Nimbry Edit Days Since rain"), parent),
      state_(state),
      accepted_(std::move(accepted)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 16, 16, 12);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    const auto add = [&](QLineEdit& box, const char* name, const char* caption) {
        box.setObjectName(QString::fromLatin1(name));
        box.setAlignment(Qt::AlignRight);
        box.setMinimumWidth(box.fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
        auto* label = new QLabel(QString::fromLatin1(caption));
        label->setBuddy(&box);
        const int row = grid->rowCount();
        grid->addWidget(label, row, 0);
        grid->addWidget(&box, row, 1);
        return row;
    };
    add(days_, "txtEDSR", "&Days Since Rain");
    const int row = add(amount_, "txtALR", "&Amount of Last Rain");
    unit_.setObjectName(QStringLiteral("lblRainUnit"));
    grid->addWidget(&unit_, row, 2);
    grid->setColumnMinimumWidth(0, 180);
    grid->setColumnStretch(0, 1);
    grid->addLayout(button_row(QStringLiteral("Done"), "cmdDone"), grid->rowCount(), 0, 1, 3);
    bind(dialog_controls(values_));
    load();
}

void RainDaysWindow::load() {
    values_ = rain_days_dialog(state_.records);
    show_values();
    unit_.setText(platform::unicode(state_.units.rain_text));
}

void RainDaysWindow::opened() {
    days_.setFocus();
    days_.selectAll();
}

bool RainDaysWindow::commit() {
    accepted_(values_);
    return true;
}

}  // namespace nimbry::windows
