#include "windows/tray_icon.h"

#include <QAction>
#include <QMenu>
#include <memory>

#include "windows/svg_pictures.h"

namespace nimbry::windows {

TrayIcon::TrayIcon(std::function<void()> hide, std::function<void()> restore, QObject* parent)
    : QObject(parent), menu_(std::make_unique<QMenu>()) {
    hide_ = new QAction(QStringLiteral("Hide"), this);
    hide_->setObjectName(QStringLiteral("tray_mnuHideNow"));
    connect(hide_, &QAction::triggered, this, hide);
    restore_ = new QAction(QStringLiteral("Restore Nimbry"), this);
    restore_->setObjectName(QStringLiteral("mnuRestore"));
    connect(restore_, &QAction::triggered, this, restore);
    menu_->addActions({hide_, restore_});
    window_is_hidden(false);

    icon_.setIcon(application_icon());
    icon_.setToolTip(QStringLiteral("Nimbry version 2.02"));
    icon_.setContextMenu(menu_.get());
    connect(&icon_, &QSystemTrayIcon::activated, this, [restore](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) restore();
    });
    // Without a tray, show() would succeed all the same and the icon be nowhere.
    if (QSystemTrayIcon::isSystemTrayAvailable()) icon_.show();
}

TrayIcon::~TrayIcon() = default;

bool TrayIcon::is_there() const {
    return QSystemTrayIcon::isSystemTrayAvailable() && icon_.isVisible();
}

void TrayIcon::window_is_hidden(bool hidden) {
    hide_->setEnabled(!hidden);
    restore_->setEnabled(hidden);
}

void TrayIcon::message(const QString& title, const QString& text) {
    icon_.showMessage(title, text);
}

}  // namespace nimbry::windows
