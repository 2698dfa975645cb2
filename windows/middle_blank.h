#pragma once

#include <QString>
#include <algorithm>

namespace nimbry::windows {

/// The place of the blank nearest to the middle of a text, where it is broken into two lines; the first of two that are
/// as near. Below 0 when there is none.
[[nodiscard]] inline qsizetype middle_blank(const QString& text) {
    const qsizetype middle = text.size() / 2;
    const qsizetype before = text.lastIndexOf(u' ', middle), after = text.indexOf(u' ', middle);
    if (before < 0 || after < 0) return std::max(before, after);
    return middle - before <= after - middle ? before : after;
}

}  // namespace nimbry::windows
