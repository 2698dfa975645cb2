#pragma once

#include <QDialog>

namespace nimbry::windows {

/// The window that tells of a faulty sensor (`NimbrySensor`). There is at most one.
class SensorWindow : public QDialog {
    Q_OBJECT

public:
    explicit SensorWindow(QWidget* parent = nullptr);
};

}  // namespace nimbry::windows
