#pragma once

#include <QWidget>

namespace nimbry::windows {

/// A group of cards: a flat panel with a bold head. What lies in it starts below the head.
class CardGroup : public QWidget {
    Q_OBJECT

public:
    /// Without a title there is no head, and the margins are the owner's.
    explicit CardGroup(const QString& title, QWidget* parent = nullptr);

    /// The margins inside the panel, the head's height included. To be given to the layout.
    [[nodiscard]] QMargins inner_margins() const;

    /// At least as wide as the head.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QFont head_font() const;

    QString title_;
};

}  // namespace nimbry::windows
