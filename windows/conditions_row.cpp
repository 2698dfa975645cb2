#include "windows/conditions_row.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/card_group.h"
#include "windows/reading_card.h"
#include "windows/wind_group.h"

namespace nimbry::windows {
namespace {

const QString temperature_sample = QStringLiteral("+123.4 \u00B0F");
const QString longest_day_head = QStringLiteral("24 Hours prior to 10:00 am");

/// A column of cards in a group.
class CardColumn {
public:
    CardColumn(CardGroup& group, BoxBinding& binding) : binding_(binding), layout_(new QVBoxLayout(&group)) {
        layout_->setContentsMargins(group.inner_margins());
        layout_->setSpacing(0);
    }

    /// A card under its fixed caption.
    ValueBox* add(const Box& source, const char* name, const QString& sample) {
        return add(new CaptionLabel(caption_text(name)), source, name, sample);
    }

    /// A card under a caption of one's own.
    ValueBox* add(CaptionLabel* caption, const Box& source, const char* name, const QString& sample) {
        // A caption stands nearer to its own box than to the one above, where there is room for it.
        constexpr int air = 6;
        if (layout_->count() > 0)
            layout_->addSpacerItem(new QSpacerItem(0, air, QSizePolicy::Minimum, QSizePolicy::Maximum));
        ValueBox* box = bound_box(binding_, source, name, ValueBox::Style::card, sample);
        layout_->addWidget(new ReadingCard(caption, {box}), 1);
        return box;
    }

private:
    BoxBinding& binding_;
    QVBoxLayout* layout_;
};

CardGroup* outdoor_group(const MainPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Outdoor"));
    CardColumn column(*group, binding);
    column.add(panel.Text2[0], "Text2(0)", temperature_sample);
    column.add(panel.Text2[2], "Text2(2)", QStringLiteral("100 %"));
    column.add(panel.Text2[1], "Text2(1)", temperature_sample);
    column.add(panel.TxtWindChill, "TxtWindChill", temperature_sample);
    column.add(panel.TxtHeatInd, "TxtHeatInd", temperature_sample);
    return group;
}

/// A rain box whose caption is a label of the model: the label's text names it for a screen reader too.
void add_rain_day(CardColumn& column, BoxBinding& binding, const Box& label, const char* label_name, const Box& source,
                  const char* name, const QString& which) {
    CaptionLabel* caption = bound_label(binding, label, label_name, longest_day_head);
    caption->explain_to_keyboard();
    ValueBox* box = column.add(caption, source, name, QStringLiteral("1234.56 mm"));
    binding.bind_result([&label] { return label.text; },
                        [box, which](const std::string& text) {
                            box->set_label(which + QStringLiteral(", ") + QString::fromStdString(text));
                        });
}

CardGroup* rain_group(const MainPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Rainfall"));
    CardColumn column(*group, binding);
    column.add(panel.TxtPeakRain(), "Text2(5)", QStringLiteral("123.4 mm/hour"));
    column.add(panel.TxtRainLH, "TxtRainLH", QStringLiteral("123.45 mm"));
    add_rain_day(column, binding, panel.lblRainT, "lblRainT", panel.TxtRainToday, "TxtRainToday",
                 QStringLiteral("Rainfall today"));
    add_rain_day(column, binding, panel.lblRainY, "lblRainY", panel.TxtRainYest, "TxtRainYest",
                 QStringLiteral("Rainfall yesterday"));
    column.add(panel.TxtRainTot, "TxtRainTot", QStringLiteral("12345.67 mm"));
    return group;
}

CardGroup* barometer_group(const MainPanel& panel, BoxBinding& binding) {
    auto* group = new CardGroup(QStringLiteral("Barometer and indoor"));
    CardColumn column(*group, binding);
    column.add(panel.Text2[4], "Text2(4)", QStringLiteral("1019.2 mB"));
    bind_trend_picture(binding, panel.TxtBarTrend,
                       column.add(panel.TxtBarTrend, "TxtBarTrend", QStringLiteral("Steady")));
    column.add(panel.Text2[8], "Text2(8)", temperature_sample);
    column.add(panel.Text2[9], "Text2(9)", QStringLiteral("100 %"));
    return group;
}

}  // namespace

ConditionsRow::ConditionsRow(const WeatherState& state, BoxBinding& binding, QWidget* parent)
    : QWidget(parent),
      groups_{outdoor_group(state.panel, binding), new WindGroup(state, binding), rain_group(state.panel, binding),
              barometer_group(state.panel, binding)} {
    constexpr std::array shares{3, 4, 3, 2};
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (std::size_t n = 0; n < groups_.size(); ++n) row->addWidget(groups_[n], shares[n]);
}

}  // namespace nimbry::windows
