#include "windows/small_windows.h"

#include <QDesktopServices>
#include <QUrl>

#include "platform/text_bytes.h"
#include "windows/about_window.h"
#include "windows/help_window.h"
#include "windows/sensor_window.h"
#include "windows/status_window.h"
#include "windows/sync_window.h"
#include "windows/text_window.h"
#include "windows/window_notices.h"

namespace nimbry::windows {

SmallWindows::SmallWindows(const WeatherState& state, QWidget* parent) : state_(state), parent_(parent) {
    binding_.bind(state_.status_message.open, [this](bool open) {
        if (!open && status_ != nullptr) status_->hide();
    });
    binding_.bind(state_.network.frmSync.open, [this](bool open) {
        if (!open && sync_ != nullptr) sync_->hide();
    });
    binding_.bind(state_.network.frmSync.Text1, [this](const std::string& text) {
        if (sync_ != nullptr) sync_->show_text(platform::unicode(text).remove(u'\r'));
    });
    binding_.bind(state_.menu.mnuFTPdebug.checked, [this](bool open) { open_debug(open); });
    binding_.bind(state_.publish.upload.debug_text, [this](const std::string& text) {
        if (debug_ != nullptr) debug_->follow(platform::unicode(text).remove(u'\r'));
    });
}

SmallWindows::~SmallWindows() = default;

void SmallWindows::offer_to(WindowNotices& notices) {
    notices.set_opener("NimbrySensor", [this] { show_sensor_window(); });
    notices.set_opener("NimbryDisplay", [this] { show_status(); });
    notices.set_opener("frmSync", [this] { show_sync(); });
}

void SmallWindows::show_about(std::string_view version_stamp) {
    if (about_ == nullptr) {
        about_ = new AboutWindow(version_stamp, parent_);
        QObject::connect(about_, &AboutWindow::asked_for, about_,
                         [](const QString& target) { QDesktopServices::openUrl(QUrl(target)); });
    }
    about_->show();
    about_->raise();
    about_->activateWindow();
}

void SmallWindows::show_help() {
    if (help_ == nullptr) {
        help_ = new HelpWindow(parent_);
        QObject::connect(help_, &HelpWindow::asked_for, help_,
                         [](const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); });
    }
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void SmallWindows::show_file(const std::string& name, std::string_view bytes) {
    TextWindow*& window = files_[name];
    if (window == nullptr) window = new TextWindow(parent_);
    window->show_text(platform::unicode(name), platform::unicode(bytes).remove(u'\r'));
}

void SmallWindows::show_sensor_window() {
    if (sensor_ == nullptr) sensor_ = new SensorWindow(parent_);
    if (!sensor_->isVisible()) sensor_->show();
}

void SmallWindows::show_sync() {
    if (!state_.network.frmSync.open) return;
    if (sync_ == nullptr) sync_ = new SyncWindow(parent_);
    sync_->show_text(platform::unicode(state_.network.frmSync.Text1).remove(u'\r'));
    sync_->show();
}

void SmallWindows::open_debug(bool open) {
    if (!open) {
        if (debug_ != nullptr) debug_->hide();
        return;
    }
    if (debug_ == nullptr) {
        debug_ = new TextWindow(parent_);
        QObject::connect(debug_, &TextWindow::closed, parent_, [this] {
            if (state_.menu.mnuFTPdebug.checked && debug_closed_) debug_closed_();
        });
    }
    debug_->show_text(QStringLiteral("FTP debug"), platform::unicode(state_.publish.upload.debug_text).remove(u'\r'));
}

void SmallWindows::show_status() {
    if (!state_.status_message.open) return;
    if (status_ == nullptr) status_ = new StatusWindow(parent_);
    status_->show_text(platform::unicode(state_.status_message.text));
}

}  // namespace nimbry::windows
