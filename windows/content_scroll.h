#pragma once

#include <QScrollArea>

namespace nimbry::windows {

/// Scrolls where the screen is too small for its content, and asks for all of the content's height where it is not:
/// QScrollArea alone would never ask for more than 24 lines of text. It is no narrower than its content with a scroll
/// bar beside it, and what gets the focus comes into view.
class ContentScroll : public QScrollArea {
public:
    /// Takes the content, with everything in it.
    explicit ContentScroll(QWidget* content, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
};

}  // namespace nimbry::windows
