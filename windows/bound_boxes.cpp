#include "windows/bound_boxes.h"

#include "engine/displays/main_panel.h"
#include "platform/text_bytes.h"
#include "windows/caption_label.h"

namespace nimbry::windows {

ValueBox* bound_box(BoxBinding& binding, const Box& source, const char* name, ValueBox::Style style,
                    const QString& sample) {
    auto* box = new ValueBox(name, style, sample);
    box->set_label(caption_text(name));
    binding.bind(source, [box](const Box& shown) { box->show_box(shown); });
    return box;
}

CaptionLabel* bound_label(BoxBinding& binding, const Box& source, const char* name, const QString& sample) {
    auto* label = new CaptionLabel(name, sample);
    binding.bind(source, [label](const Box& shown) { label->show_box(shown); });
    return label;
}

QString caption_text(const char* box_name) {
    return platform::unicode(panel_caption(box_name));
}

}  // namespace nimbry::windows
