#include "windows/additional_groups.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>

#include "platform/text_bytes.h"
#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/card_group.h"
#include "windows/picture_box.h"

namespace nimbry::windows {
namespace {

struct Row {
    const Box& box;
    const char* name;
    const char* sample;  ///< the longest text that the box is made for
};

QGridLayout* grid_in(QWidget& place) {
    auto* grid = new QGridLayout(&place);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    return grid;
}

QGridLayout* grid_of(CardGroup& group) {
    QGridLayout* grid = grid_in(group);
    grid->setContentsMargins(group.inner_margins() + QMargins(0, 0, 0, 3));
    grid->setColumnStretch(1, 1);
    return grid;
}

/// A row for each box: its caption, and beside it the box.
void add_rows(QGridLayout& grid, BoxBinding& binding, std::initializer_list<Row> rows) {
    const int high = QFontMetrics(QApplication::font()).height() + 10;
    for (const Row& row : rows) {
        const int line = grid.rowCount();
        grid.setRowMinimumHeight(line, high);
        grid.addWidget(new CaptionLabel(caption_text(row.name)), line, 0);
        grid.addWidget(bound_box(binding, row.box, row.name, ValueBox::Style::table, QString::fromUtf8(row.sample)),
                       line, 1);
    }
}

}  // namespace

CardGroup* calculated_group(const AdditionalPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Additional Current Conditions (calculated)"));
    constexpr const char* temperature = "-123.4 \u00B0F";
    add_rows(*grid_of(*group), binding,
             {{panel.txtWetBulb, "txtWetBulb", temperature},
              {panel.txtWBDep, "txtWBDep", temperature},
              {panel.txtCloudBase, "txtCloudBase", "12345 meters. (12345 feet)"}});
    return group;
}

CardGroup* additional_extremes_group(const WeatherState& state, BoxBinding& binding) {
    struct Pair {
        Box AdditionalPanel::*today;
        const char* today_name;
        Box AdditionalPanel::*yesterday;
        const char* yesterday_name;
    };
    using A = AdditionalPanel;
    constexpr std::array pairs{Pair{&A::txtMaxDew, "txtMaxDew", &A::txtYMaxDew, "txtYMaxDew"},
                               Pair{&A::txtMinDew, "txtMinDew", &A::txtYMinDew, "txtYMinDew"},
                               Pair{&A::txtMinWC, "txtMinWC", &A::txtYMinWC, "txtYMinWC"},
                               Pair{&A::txtMaxHI, "txtMaxHI", &A::txtYMaxHI, "txtYMaxHI"},
                               Pair{&A::txtMaxInTemp, "txtMaxInTemp", &A::txtYMaxInTemp, "txtYMaxInTemp"},
                               Pair{&A::txtMinInTemp, "txtMinInTemp", &A::txtYMinInTemp, "txtYMinInTemp"}};
    const QString longest = QStringLiteral("- No data available yet -");
    const QString longest_head = QStringLiteral("24 Hours prior to 10:00 am");

    auto* group = new CardGroup(QStringLiteral("Extreme Conditions"));
    QGridLayout* grid = grid_of(*group);
    grid->setColumnStretch(2, 1);
    grid->addWidget(bound_label(binding, state.panel.lblToday, "lblToday", longest_head), 0, 1);
    grid->addWidget(bound_label(binding, state.panel.lblYesterday, "lblYesterday", longest_head), 0, 2);
    for (const Pair& pair : pairs) {
        const int line = grid->rowCount();
        const QString caption = caption_text(pair.today_name);
        const auto add = [&](Box A::*box, const char* name, const QString& head, int column) {
            ValueBox* shown = bound_box(binding, state.additional.*box, name, ValueBox::Style::table, longest);
            shown->set_label(head + QStringLiteral(", ") + caption);
            grid->addWidget(shown, line, column);
        };
        grid->addWidget(new CaptionLabel(caption), line, 0);
        add(pair.today, pair.today_name, QStringLiteral("Today"), 1);
        add(pair.yesterday, pair.yesterday_name, QStringLiteral("Yesterday"), 2);
        grid->setRowStretch(line, 1);
    }
    return group;
}

CardGroup* rain_statistics_group(const AdditionalPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Rainfall Statistics"));
    QGridLayout* grid = grid_of(*group);
    add_rows(*grid, binding,
             {{panel.txtDSR, "txtDSR", "12345"}, {panel.txtAmtLastRain, "txtAmtLastRain", "1234.56 mm"}});
    auto* month = new QLabel(QStringLiteral("Monthly Rainfall"));
    QFont bold = month->font();
    bold.setBold(true);
    month->setFont(bold);
    month->setContentsMargins(0, 6, 0, 0);
    grid->addWidget(month, grid->rowCount(), 0, 1, 2);
    add_rows(*grid, binding,
             {{panel.txtRainDays, "txtRainDays", "31"}, {panel.txtMnthTotal, "txtMnthTotal", "1234.56 mm"}});
    return group;
}

CardGroup* sun_group(const AdditionalPanel& panel, BoxBinding& binding) {
    auto* known = new QWidget;
    QGridLayout* grid = grid_in(*known);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(1, 1);
    auto* sun = new PictureBox("Picture1", QStringLiteral("The sun above the horizon"), 72);
    sun->use_picture(QStringLiteral("sun"));
    binding.bind(panel.Picture1, [sun](const Box& box) { sun->show_box(box); });
    grid->addWidget(sun, 0, 0, 4, 1, Qt::AlignLeft | Qt::AlignVCenter);
    const auto add_sentence = [&](const Box& box, const char* name, const QString& label, const char* sample, int line,
                                  int column, int columns) {
        ValueBox* sentence = bound_box(binding, box, name, ValueBox::Style::plain, QString::fromLatin1(sample));
        sentence->set_label(label);
        grid->addWidget(sentence, line, column, 1, columns);
    };
    add_sentence(panel.TxtSunrise, "TxtSunrise", QStringLiteral("Sunrise"),
                 "Sunrise today (28 September 2028) will be at 00:00:00", 0, 1, 1);
    add_sentence(panel.TxtSunset, "TxtSunset", QStringLiteral("Sunset"), "and Sunset will be at 00:00:00", 1, 1, 1);
    add_sentence(panel.TxtSunriseTom, "TxtSunriseTom", QStringLiteral("Sunrise tomorrow"),
                 "Sunrise tomorrow (28 September 2028) will be at 00:00:00", 2, 1, 1);
    add_sentence(panel.TxtSunsetTom, "TxtSunsetTom", QStringLiteral("Sunset tomorrow"),
                 "and Sunset will be at 00:00:00", 3, 1, 1);
    constexpr const char* twilight = "Civil twilight today (28 September 2028) will start at 00:00:00";
    add_sentence(panel.txtTwiStart, "txtTwiStart", QStringLiteral("Start of twilight"), twilight, 4, 0, 2);
    add_sentence(panel.txtTwiEnd, "txtTwiEnd", QStringLiteral("End of twilight"), twilight, 5, 0, 2);

    auto* times = new QGridLayout;
    times->setHorizontalSpacing(12);
    times->setVerticalSpacing(4);
    times->setColumnStretch(1, 1);
    add_rows(*times, binding,
             {{panel.txtSolarNoon, "txtSolarNoon", "00:00:00"},
              {panel.txtDayLength, "txtDayLength", "12 hours 54 minutes"},
              {panel.txtVisLight, "txtVisLight", "12 hours 54 minutes"}});
    grid->addLayout(times, 6, 0, 1, 2);
    for (int line = 0; line < 6; ++line) grid->setRowStretch(line, 2);
    grid->setRowStretch(6, 5);

    auto* none = new QLabel;
    none->setObjectName(QStringLiteral("lblNoSun"));
    none->setTextFormat(Qt::PlainText);
    none->setWordWrap(true);
    none->setAlignment(Qt::AlignCenter);

    auto* group = new CardGroup(QStringLiteral("Sunrise and Sunset"));
    auto* place = new QVBoxLayout(group);
    place->setContentsMargins(group->inner_margins() + QMargins(0, 0, 0, 3));
    auto* pages = new QStackedLayout;
    place->addLayout(pages);
    pages->addWidget(known);
    pages->addWidget(none);
    binding.bind(panel.lblNoSun, [pages, none](const Box& box) {
        none->setText(platform::unicode(box.text));
        pages->setCurrentIndex(box.visible ? 1 : 0);
    });
    return group;
}

CardGroup* uptime_group(const AdditionalPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Uptime"));
    QGridLayout* grid = grid_of(*group);
    add_rows(*grid, binding,
             {{panel.txtStarted, "txtStarted", "28 Sep 2028 00:00:00"},
              {panel.txtRunning, "txtRunning", "1234 Days 23 Hours 59 Minutes"}});
    grid->setRowStretch(grid->rowCount(), 1);
    return group;
}

}  // namespace nimbry::windows
