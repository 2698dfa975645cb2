#pragma once

#include <QSystemTrayIcon>
#include <functional>
#include <memory>

class QAction;
class QMenu;

namespace nimbry::windows {

/// The program's icon in the tray, with "Hide" and "Restore Nimbry". There only where the system has a tray.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    /// A click on the icon restores.
    TrayIcon(std::function<void()> hide, std::function<void()> restore, QObject* parent);
    ~TrayIcon() override;

    /// True when there is a tray and the icon is in it: a hidden window can come back.
    [[nodiscard]] bool is_there() const;

    /// Enables the one entry that makes sense now.
    void window_is_hidden(bool hidden);

    /// Shows a notice by the tray's own means.
    void message(const QString& title, const QString& text);

    /// What is shown under the pointer.
    [[nodiscard]] QString tip() const { return icon_.toolTip(); }

    /// The icon's menu.
    [[nodiscard]] const QMenu& menu() const { return *menu_; }

private:
    QSystemTrayIcon icon_;
    std::unique_ptr<QMenu> menu_;
    QAction* hide_ = nullptr;
    QAction* restore_ = nullptr;
};

}  // namespace nimbry::windows
