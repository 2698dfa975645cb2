#include "windows/bound_boxes.h"

#include "engine/derived/number_text.h"
#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"
#include "windows/caption_label.h"

namespace nimbry::windows {
namespace {

QString trend_picture(const std::string& word) {
    if (trimmed(word) == "Rising") return QStringLiteral("trend-rising");
    if (trimmed(word) == "Steady") return QStringLiteral("trend-steady");
    if (trimmed(word) == "Falling") return QStringLiteral("trend-falling");
    return {};
}

}  // namespace

ValueBox* bound_box(BoxBinding& binding, const Box& source, const char* name, ValueBox::Style style,
                    const QString& sample) {
    auto* box = new ValueBox(name, style, sample);
    box->set_label(caption_text(name));
    binding.bind(source, [box](const Box& shown) { box->show_box(shown); });
    return box;
}

void bind_trend_picture(BoxBinding& binding, const Box& trend, ValueBox* shown) {
    binding.bind_result([&trend] { return trend.text; },
                        [shown](const std::string& word) { shown->set_picture(trend_picture(word)); });
}

CaptionLabel* bound_label(BoxBinding& binding, const Box& source, const char* name, const QString& sample) {
    auto* label = new CaptionLabel(name, sample);
    binding.bind(source, [label](const Box& shown) { label->show_box(shown); });
    return label;
}

QString caption_text(const char* box_name) {
    return platform::unicode(caption_of(box_name));
}

}  // namespace nimbry::windows
