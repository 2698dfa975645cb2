#include "windows/field_style.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRadioButton>
#include <QSpinBox>
#include <algorithm>

#include "tests/windows/screens.h"
#include "windows/palette_colours.h"

namespace nimbry::test {
namespace {

/// The strongest contrast with the window that a row of pixels through the middle of a widget's left end holds.
double contrast_of_the_edge(QWidget& widget, const QPalette& palette) {
    widget.setPalette(palette);
    widget.resize(widget.sizeHint());
    QImage image(widget.size(), QImage::Format_RGB32);
    const QColor ground = palette.color(QPalette::Window);
    image.fill(ground);
    widget.render(&image);
    double strongest = 1;
    for (int x = 0; x < std::min(8, image.width()); ++x)
        strongest = std::max(strongest, windows::contrast(image.pixelColor(x, image.height() / 2), ground));
    return strongest;
}

// By the guideline for what is not text, 3 to 1.
TEST(FieldStyle, GivesWhatIsNotTickedAVisibleOutlineInADarkTheme) {
    windows::FieldStyle style(QStringLiteral("fusion"));
    QCheckBox check;
    QRadioButton option;
    QLineEdit line;
    QSpinBox number;
    QComboBox list;
    QListWidget entries;
    QMenu menu;
    menu.addAction(QStringLiteral("Comms/Files"));
    for (QWidget* field : {static_cast<QWidget*>(&check), static_cast<QWidget*>(&option), static_cast<QWidget*>(&line),
                           static_cast<QWidget*>(&number), static_cast<QWidget*>(&list),
                           static_cast<QWidget*>(&entries), static_cast<QWidget*>(&menu)}) {
        field->setStyle(&style);
        EXPECT_GE(contrast_of_the_edge(*field, dark_palette()), 3.0) << field->metaObject()->className();
    }
}

}  // namespace
}  // namespace nimbry::test
