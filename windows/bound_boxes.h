#pragma once

#include <QString>

#include "engine/displays/box.h"
#include "windows/box_binding.h"
#include "windows/value_box.h"

namespace nimbry::windows {

class CaptionLabel;

/// A widget for a box of the model, bound to it. It takes its spoken name from the box's caption.
ValueBox* bound_box(BoxBinding& binding, const Box& source, const char* name, ValueBox::Style style,
                    const QString& sample);

/// The same for a label.
CaptionLabel* bound_label(BoxBinding& binding, const Box& source, const char* name, const QString& sample);

/// Gives the box that shows the barometer's trend an arrow that says the same.
void bind_trend_picture(BoxBinding& binding, const Box& trend, ValueBox* shown);

/// The caption of a box of the main window or of the additional data window.
[[nodiscard]] QString caption_text(const char* box_name);

}  // namespace nimbry::windows
