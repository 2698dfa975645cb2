#pragma once

#include <QColor>
#include <QLabel>

namespace nimbry::windows {

/// The colour of a link. Both stand out from either theme's window; lit is the stronger one.
[[nodiscard]] QColor link_colour(bool dark, bool lit);

/// A label that is a link: clicked() comes from the mouse, and from Enter or Space while it has the focus. Its colour
/// changes and a line comes under it while the pointer or the focus is on it.
class LinkLabel : public QLabel {
    Q_OBJECT

public:
    LinkLabel(const char* name, const QString& text, QWidget* parent = nullptr);

    /// True while the pointer or the focus is on it.
    [[nodiscard]] bool is_lit() const { return underMouse() || hasFocus(); }

signals:
    void clicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void show_colours();
};

}  // namespace nimbry::windows
