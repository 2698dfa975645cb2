#pragma once

#include <QWidget>
#include <initializer_list>

namespace nimbry::windows {

class CaptionLabel;
class ValueBox;

/// A reading: its caption, and below it its box; or two boxes side by side under one caption.
class ReadingCard : public QWidget {
public:
    /// Takes the caption and the boxes as its children.
    ReadingCard(CaptionLabel* caption, std::initializer_list<ValueBox*> boxes, QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
