#include "windows/window_notices.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <memory>
#include <optional>
#include <utility>

#include "windows/balloon_tip.h"
#include "windows/form1.h"
#include "windows/message_dialog.h"
#include "windows/svg_pictures.h"

namespace nimbry::windows {

WindowNotices::WindowNotices(Pauses& pauses) : pauses_(pauses) {}

WindowNotices::~WindowNotices() {
    delete tip_;
}

void WindowNotices::set_main_window(Form1* window) {
    delete tip_;
    main_window_ = window;
}

void WindowNotices::set_opener(const std::string& name, std::function<void()> open) {
    openers_[name] = std::move(open);
}

void WindowNotices::later(std::function<void()> work) {
    QMetaObject::invokeMethod(&here_, std::move(work), Qt::QueuedConnection);
}

void WindowNotices::balloon(const Balloon& balloon) {
    later([this, balloon] { show_balloon(balloon); });
}

void WindowNotices::show_balloon(const Balloon& balloon) {
    if (tip_ == nullptr) tip_ = new BalloonTip(main_window_);
    const QWidget* anchor = main_window_ == nullptr ? nullptr : main_window_->widget_of(balloon.anchor);
    if (anchor != nullptr && anchor->isVisible() && !main_window_->isMinimized()) {
        tip_->show_at(balloon, QRect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size()));
        return;
    }
    tip_->show_in_corner(balloon, QGuiApplication::primaryScreen()->availableGeometry());
    if (main_window_ != nullptr) main_window_->tell_in_tray(balloon);
}

Answer WindowNotices::box(const MessageBox& box) {
    struct Open {
        QPointer<MessageDialog> dialog;
        std::optional<Answer> answer;
    };
    // Held by the wait, and by the dialog's own signals only weakly: a closing program ends the wait, and the dialog
    // goes.
    const std::shared_ptr<Open> open(new Open, [](Open* ended) {
        if (ended->dialog != nullptr) ended->dialog->deleteLater();
        delete ended;
    });
    later([this, box, open = std::weak_ptr(open)] {
        const std::shared_ptr<Open> asked = open.lock();
        if (asked == nullptr) return;
        const bool has_parent = main_window_ != nullptr && main_window_->isVisible() && !main_window_->isMinimized();
        auto* dialog = new MessageDialog(box, has_parent ? main_window_ : nullptr);
        asked->dialog = dialog;
        dialog->setWindowIcon(application_icon());
        QObject::connect(dialog, &QDialog::finished, &here_, [open, dialog] {
            if (const auto waiting = open.lock()) waiting->answer = dialog->answer();
        });
        dialog->show();
    });
    pauses_.wait_until([&open] { return open->answer.has_value(); });
    return *open->answer;
}

void WindowNotices::show_window(const std::string& name) {
    if (const auto opener = openers_.find(name); opener != openers_.end()) later(opener->second);
}

void WindowNotices::restore_main_window() {
    later([this] {
        if (main_window_ != nullptr && (!main_window_->isVisible() || main_window_->isMinimized())) {
            main_window_->restore();
        }
    });
}

void WindowNotices::beep() {
    later([] { QApplication::beep(); });
}

}  // namespace nimbry::windows
