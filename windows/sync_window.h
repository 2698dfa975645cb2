#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace nimbry::windows {

/// The window that tells how a client's fetching of its server's files goes (`frmSync`): one read-only text that
/// follows its end. It does not take the focus when it opens, and closing it changes nothing but that it is not seen.
class SyncWindow : public QWidget {
    Q_OBJECT

public:
    explicit SyncWindow(QWidget* parent = nullptr);

    /// The whole text, with the caret at its end.
    void show_text(const QString& text);

private:
    QPlainTextEdit text_;
};

}  // namespace nimbry::windows
