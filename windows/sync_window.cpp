#include "windows/sync_window.h"

#include <QVBoxLayout>

#include "engine/network/sync_progress.h"
#include "platform/text_bytes.h"
#include "windows/screen_room.h"

namespace nimbry::windows {

SyncWindow::SyncWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName(QStringLiteral("frmSync"));
    setWindowTitle(platform::unicode(SyncProgress::title));
    setAttribute(Qt::WA_ShowWithoutActivating);
    text_.setObjectName(QStringLiteral("Text1"));
    text_.setReadOnly(true);
    text_.setAccessibleName(QStringLiteral("Progress"));
    text_.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->addWidget(&text_);
    resize(size_on_screen({fontMetrics().averageCharWidth() * 64, fontMetrics().lineSpacing() * 22}, *this));
}

void SyncWindow::show_text(const QString& text) {
    if (text_.toPlainText() == text) return;
    text_.setPlainText(text);
    text_.moveCursor(QTextCursor::End);
    text_.ensureCursorVisible();
}

}  // namespace nimbry::windows
