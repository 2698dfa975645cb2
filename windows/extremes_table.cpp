#include "windows/extremes_table.h"

#include <QGridLayout>
#include <array>

#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/tabular_text.h"
#include "windows/value_box.h"

namespace nimbry::windows {
namespace {

struct Cell {
    const Box* box = nullptr;  ///< nothing: the station keeps no such record
    const char* name = "";
};

/// Today, yesterday, since the reset.
using Row = std::array<Cell, 3>;

std::array<Row, 8> rows_of(const MainPanel& panel) {
    return {{
        {{{&panel.TxtTempMax, "TxtTempMax"}, {&panel.TxtYTempMax, "TxtYTempMax"}, {&panel.TxtOShi, "TxtOShi"}}},
        {{{&panel.TxtTempMin, "TxtTempMin"}, {&panel.TxtYTempMin, "TxtYTempMin"}, {&panel.TxtOSLo, "TxtOSLo"}}},
        {{{&panel.TxtHumMax, "TxtHumMax"}, {&panel.TxtYHumMax, "TxtYHumMax"}, {&panel.TxtOsHumHi, "TxtOsHumHi"}}},
        {{{&panel.TxtHumMin, "TxtHumMin"}, {&panel.TxtYHumMin, "TxtYHumMin"}, {&panel.TxtOsHumLo, "TxtOsHumLo"}}},
        {{{&panel.TxtGustMax, "TxtGustMax"}, {&panel.TxtYGustMax, "TxtYGustMax"}, {&panel.TxtWindHiG, "TxtWindHiG"}}},
        {{{&panel.TxtRainMax, "TxtRainMax"}, {&panel.TxtYRainMax, "TxtYRainMax"}, {}}},
        {{{&panel.TxtBarMax, "TxtBarMax"}, {&panel.TxtYBarMax, "TxtYBarMax"}, {}}},
        {{{&panel.TxtBarMin, "TxtBarMin"}, {&panel.TxtYBarMin, "TxtYBarMin"}, {}}},
    }};
}

/// The longest text of all columns: a station record names the day too.
const QString longest = QStringLiteral("123.4 km/h, 337\u00B0 at 23:59 on 30  Sep");

CaptionLabel* in_two_lines(CaptionLabel* head) {
    head->use_two_lines();
    head->setFont(scaled(head->font(), 0.88));
    return head;
}

}  // namespace

ExtremesTable::ExtremesTable(const MainPanel& panel, BoxBinding& binding, QWidget* parent)
    : CardGroup(QStringLiteral("Extreme Conditions"), parent) {
    const QString day_head = QStringLiteral("24 Hours prior to 10:00 am");
    const QString station_head = QStringLiteral("Since the last station reset");
    const std::array spoken_heads{QStringLiteral("Today"), QStringLiteral("Yesterday"), station_head};

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(inner_margins());
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(1);
    grid->addWidget(in_two_lines(bound_label(binding, panel.lblToday, "lblToday", day_head)), 0, 1);
    grid->addWidget(in_two_lines(bound_label(binding, panel.lblYesterday, "lblYesterday", day_head)), 0, 2);
    grid->addWidget(in_two_lines(new CaptionLabel(station_head)), 0, 3);

    int line = 1;
    for (const Row& row : rows_of(panel)) {
        const QString caption = caption_text(row[0].name);
        grid->addWidget(new CaptionLabel(caption), line, 0);
        for (int column = 0; column < 3; ++column) {
            const Cell& cell = row[static_cast<std::size_t>(column)];
            if (cell.box == nullptr) continue;
            ValueBox* box = bound_box(binding, *cell.box, cell.name, ValueBox::Style::table, longest);
            grid->addWidget(box, line, column + 1);
            box->set_label(spoken_heads[static_cast<std::size_t>(column)] + QStringLiteral(", ") + caption);
        }
        grid->setRowStretch(line, 1);
        ++line;
    }
    // Columns of one width: the type is then of one size in all of them.
    for (int column = 1; column <= 3; ++column) grid->setColumnStretch(column, 1);
}

}  // namespace nimbry::windows
