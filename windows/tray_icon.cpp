#include "windows/tray_icon.h"

#include <QAction>
#include <QMenu>
#include <memory>
#include <utility>

#include "engine/core/version.h"
#include "platform/text_bytes.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {
namespace {

/// The tray has a picture for each kind of notice, but no second style.
QSystemTrayIcon::MessageIcon kind_of(const std::string& icon) {
    const QString picture = notice_picture(platform::unicode(icon));
    if (picture.startsWith(QStringLiteral("notice-information"))) return QSystemTrayIcon::Information;
    if (picture.startsWith(QStringLiteral("notice-warning"))) return QSystemTrayIcon::Warning;
    return picture.startsWith(QStringLiteral("notice-error")) ? QSystemTrayIcon::Critical : QSystemTrayIcon::NoIcon;
}

}  // namespace

TrayIcon::TrayIcon(const MainMenu& menu, BoxBinding& binding, const Actions& actions, HasTray has_tray, QObject* parent)
    : QObject(parent),
      icon_(this),
      menu_(std::make_unique<QMenu>()),
      has_tray_(has_tray ? std::move(has_tray) : HasTray(QSystemTrayIcon::isSystemTrayAvailable)) {
    menu_->addAction(bound_entry(menu.mnuHideNow, "tray_mnuHideNow", actions.hide, binding));
    menu_->addAction(bound_entry(menu.mnuRestore, "mnuRestore", actions.restore, binding));

    icon_.setIcon(application_icon());
    icon_.setToolTip(QStringLiteral("Nimbry version ") + platform::unicode(program_version));
    icon_.setContextMenu(menu_.get());
    connect(&icon_, &QSystemTrayIcon::activated, this,
            [clicked = actions.clicked](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) clicked();
            });
    connect(
        this, &TrayIcon::told, &icon_,
        qOverload<const QString&, const QString&, QSystemTrayIcon::MessageIcon, int>(&QSystemTrayIcon::showMessage));
    // Without a tray it waits for one.
    icon_.show();
}

TrayIcon::~TrayIcon() = default;

QAction* TrayIcon::bound_entry(const Box& source, const char* name, const std::function<void()>& act,
                               BoxBinding& binding) {
    auto* entry = new QAction(this);
    entry->setObjectName(QString::fromLatin1(name));
    connect(entry, &QAction::triggered, this, act);
    binding.bind(source, [entry](const Box& box) {
        entry->setText(platform::unicode(box.text));
        entry->setEnabled(box.enabled);
    });
    return entry;
}

void TrayIcon::message(const Balloon& balloon) {
    emit told(platform::unicode(balloon.title), platform::unicode(balloon.text).remove(u'\r'), kind_of(balloon.icon),
              static_cast<int>(balloon.closes_after.count()));
}

}  // namespace nimbry::windows
