#include "windows/sensor_window.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "windows/svg_pictures.h"

namespace nimbry::windows {

SensorWindow::SensorWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("NimbrySensor"));
    setWindowTitle(QStringLiteral("Nimbry Sensor Error Message"));
    setAttribute(Qt::WA_ShowWithoutActivating);

    auto* image = new QLabel;
    image->setObjectName(QStringLiteral("Picture1"));
    image->setPixmap(picture(QStringLiteral("sensor"), 72, devicePixelRatioF()));
    // Kept on purpose: the sentence has no end.
    auto* text = new QLabel(QStringLiteral(
        "Nimbry has detected invalid data from one or more of your weather station sensors at some point. This may be "
        "due to a faulty or intermittent sensor or there may have been an out of range condition. The program will "
        "have continued"));
    text->setObjectName(QStringLiteral("Label1"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setMinimumWidth(320);
    auto* close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("Command1"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(16, 16, 16, 16);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(12);
    grid->addWidget(image, 0, 0, Qt::AlignTop);
    grid->addWidget(text, 0, 1);
    grid->addWidget(close, 1, 1, Qt::AlignRight);
}

}  // namespace nimbry::windows
