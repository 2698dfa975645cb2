#include "windows/status_window.h"

#include <QVBoxLayout>

#include "windows/accessibility.h"

namespace nimbry::windows {

StatusWindow::StatusWindow(QWidget* parent) : QWidget(parent, Qt::Tool | Qt::WindowDoesNotAcceptFocus) {
    setObjectName(QStringLiteral("NimbryDisplay"));
    setWindowTitle(QStringLiteral("Nimbry Status Message"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    label_.setObjectName(QStringLiteral("Label1"));
    label_.setTextFormat(Qt::PlainText);
    label_.setAlignment(Qt::AlignCenter);
    label_.setMinimumWidth(300);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 20);
    column->addWidget(&label_);
}

void StatusWindow::show_text(const QString& text) {
    label_.setText(text);
    setAccessibleDescription(text);
    adjustSize();
    show();
    announce(*this);
}

}  // namespace nimbry::windows
