#include "windows/wind_group.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <string>
#include <utility>

#include "engine/derived/number_text.h"
#include "platform/text_bytes.h"
#include "windows/bound_boxes.h"
#include "windows/caption_label.h"
#include "windows/gust_bar.h"
#include "windows/reading_card.h"

namespace nimbry::windows {
namespace {

bool is_direction(const std::string& speed) {
    return !speed.empty() && speed != "Calm" && speed != "Error";
}

QLayout* gauge_line(const MainPanel& panel, BoxBinding& binding) {
    auto* bar = new GustBar;
    binding.bind_result([&panel] { return std::pair(panel.Gauge1.value, panel.Gauge1.maximum); },
                        [bar](const std::pair<double, double>& scale) { bar->show_value(scale.first, scale.second); });
    auto* line = new QHBoxLayout;
    line->setSpacing(6);
    line->addWidget(bar);
    line->addWidget(bound_label(binding, panel.lblGaugeMax, "lblGaugeMax", QStringLiteral("50")));
    return line;
}

}  // namespace

WindRose::Wind wind_of(const WeatherState& state) {
    const std::string average = trimmed(state.panel.Text2[3].text), gust = trimmed(state.panel.Text2[6].text);
    WindRose::Wind wind;
    wind.average_degrees = state.readings.adirint;
    wind.gust_degrees = state.readings.gdirint;
    wind.shows_average = is_direction(average);
    wind.shows_gust = is_direction(gust);
    wind.word = platform::unicode(wind.shows_average ? state.readings.awcompaf : average);
    return wind;
}

WindGroup::WindGroup(const WeatherState& state, BoxBinding& binding, QWidget* parent)
    : CardGroup(QStringLiteral("Wind"), parent) {
    const MainPanel& panel = state.panel;
    const auto card = [&](const Box& source, const char* name, const QString& sample) {
        return new ReadingCard(new CaptionLabel(caption_text(name)),
                               {bound_box(binding, source, name, ValueBox::Style::card, sample)});
    };
    const QString speed = QStringLiteral("123.4 km/h");
    ValueBox* gust_direction =
        bound_box(binding, panel.Text2[7], "Text2(7)", ValueBox::Style::card, QStringLiteral("Gust 225\u00B0"));
    gust_direction->set_label(QStringLiteral("Wind Direction, gust"));
    ValueBox* average_direction =
        bound_box(binding, panel.TxtWinDir, "TxtWinDir", ValueBox::Style::card, QStringLiteral("Avg. 220\u00B0"));
    average_direction->set_label(QStringLiteral("Wind Direction, average"));

    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(card(panel.Text2[6], "Text2(6)", speed), 1);
    column->addLayout(gauge_line(panel, binding));
    column->addWidget(card(panel.Text2[3], "Text2(3)", speed), 1);
    column->addWidget(new ReadingCard(new CaptionLabel(caption_text("Text2(7)")), {gust_direction, average_direction}),
                      1);
    column->addWidget(card(panel.TxtWindGLH, "TxtWindGLH", speed), 1);

    auto* rose = new WindRose;
    binding.bind_result([&state] { return wind_of(state); },
                        [rose](const WindRose::Wind& wind) { rose->show_wind(wind); });

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(inner_margins());
    row->setSpacing(8);
    row->addWidget(rose, 1);
    row->addLayout(column);
}

}  // namespace nimbry::windows
