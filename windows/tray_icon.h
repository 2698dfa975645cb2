#pragma once

#include <QSystemTrayIcon>
#include <functional>
#include <memory>

#include "engine/displays/main_menu.h"
#include "engine/ports/notices.h"
#include "windows/box_binding.h"

class QAction;
class QMenu;

namespace nimbry::windows {

/// The program's icon in the tray, with the entries `mnuHideNow` and `mnuRestore` of the model. To be seen wherever and
/// as soon as the system has a tray.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> hide;     ///< the entry `mnuHideNow`
        std::function<void()> restore;  ///< the entry `mnuRestore`
        std::function<void()> clicked;  ///< a click on the icon itself
    };
    /// Whether the system has a tray at this moment.
    using HasTray = std::function<bool()>;

    /// `menu` must outlive `binding`. Without a `has_tray` the system is asked.
    TrayIcon(const MainMenu& menu, BoxBinding& binding, const Actions& actions, HasTray has_tray, QObject* parent);
    ~TrayIcon() override;

    /// True when there is a tray, so that a hidden window can come back. A desktop may start its tray after its
    /// programs, and may lose it: to be asked each time.
    [[nodiscard]] bool is_there() const { return has_tray_(); }

    /// Shows a notice by the tray's own means.
    void message(const Balloon& balloon);

    /// What is shown under the pointer.
    [[nodiscard]] QString tip() const { return icon_.toolTip(); }

    /// The icon's menu.
    [[nodiscard]] const QMenu& menu() const { return *menu_; }

signals:
    /// A notice goes to the tray; 0 ms: it stays.
    void told(const QString& title, const QString& text, QSystemTrayIcon::MessageIcon icon, int ms);

private:
    QAction* bound_entry(const Box& source, const char* name, const std::function<void()>& act, BoxBinding& binding);

    QSystemTrayIcon icon_;
    std::unique_ptr<QMenu> menu_;
    HasTray has_tray_;
};

}  // namespace nimbry::windows
