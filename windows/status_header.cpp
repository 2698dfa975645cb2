#include "windows/status_header.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/lamp.h"
#include "windows/picture_box.h"
#include "windows/status_pill.h"

namespace nimbry::windows {
namespace {

QLayout* clock(const MainPanel& panel, BoxBinding& binding) {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    ValueBox* time = bound_box(binding, panel.TxtTime, "TxtTime", ValueBox::Style::clock, QStringLiteral("00:00:00"));
    time->set_label(QStringLiteral("Time"));
    ValueBox* date = bound_box(binding, panel.TxtDate, "TxtDate", ValueBox::Style::plain, QStringLiteral("Sep 30"));
    date->set_label(QStringLiteral("Date"));
    column->addStretch();
    column->addWidget(time, 0, Qt::AlignLeft);
    column->addWidget(date, 0, Qt::AlignLeft);
    column->addStretch();
    return column;
}

QLayout* status(const MainPanel& panel, BoxBinding& binding) {
    auto* lamp = new Lamp;
    binding.bind(panel.Lamp, [lamp](const Box& box) { lamp->show_box(box); });
    auto* status = new StatusPill("lblStatus", StatusPill::Style::status, QStringLiteral("Current Conditions"));
    binding.bind(panel.lblStatus, [status](const Box& box) { status->show_box(box); });
    auto* battery = new StatusPill("lblLowBattery", StatusPill::Style::warning, QStringLiteral("Low Battery !"));
    binding.bind(panel.lblLowBattery, [battery](const Box& box) { battery->show_box(box); });

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addSpacing(battery->sizeHint().width());  // keeps the status in the middle
    row->addWidget(lamp);
    row->addWidget(status);
    row->addWidget(battery);
    return row;
}

QLayout* pictures(const MainPanel& panel, BoxBinding& binding) {
    struct Picture {
        const Box& box;
        const char* name;
        const char* meaning;
    };
    const Picture all[]{{panel.PicSunny, "PicSunny", "Sunny"},
                        {panel.PicCloudy, "PicCloudy", "Cloudy"},
                        {panel.PicPartly, "PicPartly", "Partly cloudy"},
                        {panel.PicRain, "PicRain", "Rain"},
                        {panel.PicSnow, "PicSnow", "Snow"},
                        {panel.PicStorm, "PicStorm", "Storm"}};
    // All lie in one cell, and at most one is visible.
    auto* stack = new QGridLayout;
    stack->setColumnMinimumWidth(0, 72);
    stack->setRowMinimumHeight(0, 72);
    for (const Picture& entry : all) {
        auto* picture = new PictureBox(entry.name, QString::fromLatin1(entry.meaning), 72);
        stack->addWidget(picture, 0, 0);
        binding.bind(entry.box, [picture](const Box& box) { picture->show_box(box); });
    }
    return stack;
}

QLayout* outlook(const MainPanel& panel, BoxBinding& binding) {
    ValueBox* forecast =
        bound_box(binding, panel.TxtForecast, "TxtForecast", ValueBox::Style::plain, QStringLiteral("Partly Cloudy"));
    auto* words = new QVBoxLayout;
    words->setSpacing(0);
    words->addStretch();
    words->addWidget(new CaptionLabel(caption_text("TxtForecast")));
    words->addWidget(forecast);
    words->addStretch();

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addStretch();
    row->addLayout(words);
    row->addLayout(pictures(panel, binding));
    return row;
}

}  // namespace

StatusHeader::StatusHeader(const MainPanel& panel, BoxBinding& binding, QWidget* parent) : QWidget(parent) {
    auto* row = new QGridLayout(this);
    row->setContentsMargins(8, 2, 8, 2);
    row->addLayout(clock(panel, binding), 0, 0);
    row->addLayout(status(panel, binding), 0, 1, Qt::AlignCenter);
    row->addLayout(outlook(panel, binding), 0, 2);
    row->setColumnStretch(0, 1);
    row->setColumnStretch(2, 1);
}

}  // namespace nimbry::windows
