#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <map>

namespace nimbry::test {

/// Takes pictures of windows as they stand on the screen, with what lies over them, and keeps them in a folder. Where
/// there is no screen to look at (the platform "offscreen") it asks the windows to paint themselves.
class Camera {
public:
    /// Keeps every picture, under its name and the scale of the screen in percent.
    explicit Camera(const QString& folder);

    /// Keeps those that are named in `chosen` only, under the name that stands there.
    Camera(const QString& folder, std::map<QString, QString> chosen);

    void take(QWidget& window, const QString& name);

    /// A window and what has opened over it.
    void take_with(QWidget& window, QWidget& over, const QString& name);

    [[nodiscard]] int taken() const { return taken_; }

private:
    [[nodiscard]] bool keeps(const QString& name) const { return chosen_.empty() || chosen_.contains(name); }
    void keep(const QPixmap& picture, const QString& name);

    QString folder_;
    std::map<QString, QString> chosen_;
    int taken_ = 0;
};

}  // namespace nimbry::test
