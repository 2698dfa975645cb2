#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "tests/windows/screens.h"
#include "windows/form1.h"

namespace nimbry::test {

/// The widget of a box; nullptr when there is none of that kind.
template <class Widget>
Widget* widget(const windows::Form1& form, std::string_view name) {
    return form.findChild<Widget*>(QString::fromStdString(object_name(name)));
}

}  // namespace nimbry::test
