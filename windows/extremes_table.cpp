#include "windows/extremes_table.h"

#include <QGridLayout>
#include <array>

#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
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

/// The longest text of each column. A station record names the day too.
QString sample_of(int column) {
    return column == 2 ? QStringLiteral("123.4 km/h, 337\u00B0 at 23:59 on 30 Sep")
                       : QStringLiteral("123.4 km/h, 337\u00B0 at 23:59");
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
    grid->setVerticalSpacing(2);
    grid->addWidget(bound_label(binding, panel.lblToday, "lblToday", day_head), 0, 1);
    grid->addWidget(bound_label(binding, panel.lblYesterday, "lblYesterday", day_head), 0, 2);
    grid->addWidget(new CaptionLabel(station_head), 0, 3);

    int line = 1;
    for (const Row& row : rows_of(panel)) {
        const QString caption = caption_text(row[0].name);
        grid->addWidget(new CaptionLabel(caption), line, 0);
        for (int column = 0; column < 3; ++column) {
            const Cell& cell = row[static_cast<std::size_t>(column)];
            if (cell.box == nullptr) continue;
            ValueBox* box = bound_box(binding, *cell.box, cell.name, ValueBox::Style::table, sample_of(column));
            grid->addWidget(box, line, column + 1);
            box->set_label(spoken_heads[static_cast<std::size_t>(column)] + QStringLiteral(", ") + caption);
        }
        grid->setRowStretch(line, 1);
        ++line;
    }
    grid->setColumnStretch(1, 4);
    grid->setColumnStretch(2, 4);
    grid->setColumnStretch(3, 5);
}

}  // namespace nimbry::windows
