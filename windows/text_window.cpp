#include "windows/text_window.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>

#include "windows/screen_room.h"

namespace nimbry::windows {

TextWindow::TextWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("TextWindow"));
    text_.setObjectName(QStringLiteral("Text1"));
    text_.setReadOnly(true);
    text_.setLineWrapMode(QPlainTextEdit::NoWrap);
    text_.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    text_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    search_.setObjectName(QStringLiteral("txtFind"));
    search_.setPlaceholderText(QStringLiteral("Find"));
    search_.setAccessibleName(QStringLiteral("Find"));
    search_.setClearButtonEnabled(true);
    search_.hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(&text_);
    column->addWidget(&search_);
    resize(size_on_screen({760, 520}, *this));

    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        search_.show();
        search_.setFocus();
        search_.selectAll();
    });
    connect(&search_, &QLineEdit::returnPressed, this, &TextWindow::find_next);
}

void TextWindow::show_text(const QString& title, const QString& text) {
    setWindowTitle(title);
    follow(text);
    show();
    raise();
    activateWindow();
    text_.setFocus();
}

void TextWindow::follow(const QString& text) {
    text_.setPlainText(text);
    text_.moveCursor(QTextCursor::End);
}

void TextWindow::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    emit closed();
}

void TextWindow::find_next() {
    if (text_.find(search_.text())) return;
    text_.moveCursor(QTextCursor::Start);
    text_.find(search_.text());
}

void TextWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
    } else if (search_.isVisible()) {
        search_.hide();
        text_.setFocus();
    } else {
        close();
    }
}

}  // namespace nimbry::windows
