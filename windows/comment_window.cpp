#include "windows/comment_window.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "windows/palette_colours.h"

namespace nimbry::windows {
namespace {

constexpr int most_characters = static_cast<int>(longest_comment);

struct Names {
    const char* window;
    QString title, tag;
};

Names names_of(Comment which) {
    if (which == Comment::first)
        return {"NimbryComment", QStringLiteral("Nimbry Comment"), QStringLiteral("~~WEBCOMMENT~~")};
    return {"NimbryComment2", QStringLiteral("Nimbry Comment 2"), QStringLiteral("~~WEBCOMENT2~~")};
}

}  // namespace

CommentWindow::CommentWindow(const WeatherState& state, Comment which,
                             std::function<void(const CommentDialog&)> accepted, QWidget* parent)
    : SetupDialog(names_of(which).window, names_of(which).title, parent),
      state_(state),
      which_(which),
      accepted_(std::move(accepted)) {
    auto* purpose =
        new QLabel(QStringLiteral("The pages show this text in place of the tag %1; HTML is passed on as it is.")
                       .arg(names_of(which).tag));
    purpose->setTextFormat(Qt::PlainText);
    purpose->setWordWrap(true);
    line_.setObjectName(QStringLiteral("txtComment"));
    line_.setMaxLength(most_characters);
    line_.setMinimumWidth(480);
    line_.setAccessibleName(windowTitle());
    count_.setObjectName(QStringLiteral("lblCount"));
    count_.setAlignment(Qt::AlignRight);
    auto* clears = new QPushButton(QStringLiteral("&Clear"));
    clears->setObjectName(QStringLiteral("Command1"));
    clears->setAutoDefault(false);
    connect(clears, &QPushButton::clicked, this, [this] {
        values_.txtComment.clear();
        show_values();
        edited();
        line_.setFocus();
    });

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 12);
    column->setSpacing(8);
    column->addWidget(purpose);
    column->addWidget(&line_);
    column->addWidget(&count_);
    column->addStretch();
    QBoxLayout* buttons = button_row(QStringLiteral("OK"), "Command2");
    buttons->insertWidget(0, clears);
    column->addLayout(buttons);
    bind(dialog_controls(values_));
    load();
}

void CommentWindow::load() {
    values_ = comment_dialog(state_.settings, which_);
    show_values();
    line_.setCursorPosition(0);  // of a long text the beginning is shown
    edited();
}

void CommentWindow::edited() {
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, muted_text(palette()));
    count_.setPalette(quiet);
    count_.setText(QStringLiteral("%1 of %2 characters").arg(values_.txtComment.size()).arg(most_characters));
}

bool CommentWindow::commit() {
    accepted_(values_);
    return true;
}

}  // namespace nimbry::windows
