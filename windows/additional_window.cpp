#include "windows/additional_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <utility>

#include "platform/text_bytes.h"
#include "windows/accessibility.h"
#include "windows/additional_groups.h"
#include "windows/area_keys.h"
#include "windows/card_group.h"
#include "windows/screen_room.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {
namespace {

/// A button whose caption begins with blanks: its picture is painted into the room that they leave.
class LeadingPictureButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override {
        QPushButton::paintEvent(event);
        constexpr int size = 14;
        const int left = (width() - fontMetrics().horizontalAdvance(text())) / 2;
        QPainter painter(this);
        painter.drawPixmap(
            left, (height() - size) / 2,
            tinted_picture(QStringLiteral("close"), size, devicePixelRatioF(), palette().color(QPalette::ButtonText)));
    }
};

}  // namespace

AdditionalWindow::AdditionalWindow(const WeatherState& state, Actions actions, QWidget* parent)
    : QMainWindow(parent), state_(state), actions_(std::move(actions)) {
    setObjectName(QStringLiteral("NimbryAdditional"));
    setWindowTitle(QStringLiteral("Nimbry Additional Data"));
    setWindowIcon(application_icon());
    install_accessibility();
    build();
    binding_.refresh();
}

AdditionalWindow::~AdditionalWindow() {
    delete takeCentralWidget();
}

void AdditionalWindow::build() {
    const AdditionalPanel& panel = state_.additional;
    QAction* hides = menuBar()->addAction(QString());
    hides->setObjectName(QStringLiteral("mnuHide"));
    binding_.bind(panel.mnuHide, [hides](const Box& box) { hides->setText(platform::unicode(box.text)); });
    connect(hides, &QAction::triggered, this, [this] {
        if (actions_.hide) actions_.hide();
    });

    CardGroup* calculated = calculated_group(panel, binding_);
    CardGroup* extremes = additional_extremes_group(state_, binding_);
    CardGroup* rain = rain_statistics_group(panel, binding_);
    CardGroup* sun = sun_group(panel, binding_);
    CardGroup* uptime = uptime_group(panel, binding_);
    auto* close_button = new LeadingPictureButton;
    close_button->setObjectName(QStringLiteral("Command1"));
    binding_.bind(panel.Command1, [close_button](const Box& box) {
        close_button->setText(platform::unicode(box.text));
        close_button->setAccessibleName(platform::unicode(box.text).trimmed());
    });
    connect(close_button, &QPushButton::clicked, this, &QWidget::close);

    auto* groups = new QGridLayout;
    groups->setSpacing(8);
    groups->addWidget(calculated, 0, 0);
    groups->addWidget(extremes, 1, 0);
    groups->addWidget(sun, 0, 1, 2, 1);
    groups->addWidget(rain, 2, 0);
    groups->addWidget(uptime, 2, 1);
    groups->setRowStretch(1, 1);
    groups->setColumnStretch(0, 1);
    groups->setColumnStretch(1, 1);

    auto* buttons = new QWidget;
    auto* button_row = new QHBoxLayout(buttons);
    button_row->setContentsMargins(0, 2, 0, 0);
    button_row->addStretch();
    button_row->addWidget(close_button);

    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(8, 6, 8, 8);
    column->setSpacing(8);
    column->addLayout(groups, 1);
    column->addWidget(buttons);

    auto* scroll = new QScrollArea;
    scroll_in(*scroll, content);
    setCentralWidget(scroll);
    new AreaKeys(*this, {calculated, extremes, sun, rain, uptime, buttons});
    setMinimumSize(480, 320);
    resize(size_on_screen(content->sizeHint().expandedTo({920, 0}) + QSize(0, menuBar()->sizeHint().height() + 24),
                          *this));
}

void AdditionalWindow::present() {
    binding_.refresh();
    show();
    raise();
    activateWindow();
}

void AdditionalWindow::refresh() {
    if (!isVisible()) return;
    binding_.refresh();
    if (!state_.additional.Additional_Open) hide();
}

bool AdditionalWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && actions_.to_front) actions_.to_front();
    return QMainWindow::event(event);
}

void AdditionalWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QMainWindow::keyPressEvent(event);
    }
}

void AdditionalWindow::closeEvent(QCloseEvent* event) {
    QMainWindow::closeEvent(event);
    if (actions_.closed) actions_.closed();
}

}  // namespace nimbry::windows
