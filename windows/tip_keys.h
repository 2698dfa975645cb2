#pragma once

#include <QObject>
#include <QPainter>
#include <QPoint>
#include <QString>
#include <QWidget>

namespace nimbry::windows {

/// Opens a tip as plain text: one that begins like markup ("<!--empty-->") is shown as it stands.
void show_plain_tip(QPoint global, const QString& tip, QWidget& of);

/// The ring around what the keys go to, inside the widget's edge.
void draw_focus_ring(QPainter& painter, const QWidget& widget);

/// The keyboard for a widget that only shows something and explains it in its tip: it can take the focus, Space shows
/// the tip, Esc hides it, Ctrl+C copies its text if it has one. The widget draws the ring. Owned by the widget.
class TipKeys : public QObject {
    Q_OBJECT

public:
    explicit TipKeys(QWidget& widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool press(const QKeyEvent& key);

    QWidget& widget_;
};

}  // namespace nimbry::windows
