#include "windows/reading_card.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "windows/caption_label.h"
#include "windows/value_box.h"

namespace nimbry::windows {

ReadingCard::ReadingCard(CaptionLabel* caption, std::initializer_list<ValueBox*> boxes, QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    for (ValueBox* box : boxes) row->addWidget(box);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    column->addWidget(caption);
    column->addLayout(row, 1);
}

}  // namespace nimbry::windows
