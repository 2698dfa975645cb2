#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>

namespace nimbry::windows {

/// A window that shows a text file: read-only, in a fixed pitch, standing at its end. Ctrl+F opens a line for
/// searching, Enter there finds the next place (from the top again after the last), Esc closes the line and then the
/// window.
class TextWindow : public QWidget {
    Q_OBJECT

public:
    explicit TextWindow(QWidget* parent = nullptr);

    /// Shows a text in front.
    void show_text(const QString& title, const QString& text);
    /// Changes the text of a window that may be showing, and stands at its end again.
    void follow(const QString& text);

signals:
    /// The user has closed it.
    void closed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void find_next();

    QPlainTextEdit text_;
    QLineEdit search_;
};

}  // namespace nimbry::windows
