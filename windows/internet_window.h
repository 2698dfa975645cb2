#pragma once

#include <functional>
#include <string>

#include "engine/core/weather_state.h"
#include "engine/publish/forced_run.h"
#include "windows/setup_dialog.h"

class QFormLayout;
class QListWidget;
class QSpinBox;
class QTabWidget;

namespace nimbry::windows {

/// The internet dialog (`NimbryFTPSetup`): what is published, where to, and as whom. What cannot be accepted is told,
/// and its tab and field are brought up. The forced buttons accept first; the window is out of the way while what they
/// asked for runs.
class InternetWindow final : public SetupDialog {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> opened{};
        std::function<void()> closed{};
        std::function<void(const InternetDialog&)> accepted{};           ///< "OK"
        std::function<void(const InternetDialog&, ForcedRun)> forced{};  ///< one of the forced buttons
        std::function<void(const std::string& message)> refused{};       ///< why it could not be accepted
    };

    /// `state` must outlive the window.
    InternetWindow(const WeatherState& state, Actions actions, QWidget* parent = nullptr);

    /// The state may have changed: values that were committed elsewhere, the lock of a mail or a changeover, a forced
    /// run.
    void refresh();

protected:
    void load() override;
    void opened() override { actions_.opened(); }
    void closed() override { actions_.closed(); }
    bool commit() override;

private:
    QWidget* ftp_tab();
    QWidget* mail_tab();
    QWidget* services_tab();
    QWidget* local_tab();
    QWidget* connection_tab();
    QWidget* schedule();
    QWidget* forced_row();

    void add_line(QFormLayout& form, const char* caption, const char* name, const char* hint = "");
    void add_check(QFormLayout& form, const char* caption, const char* name);
    void add_password(QFormLayout& form, const char* caption, const char* name);
    QSpinBox& add_number(QFormLayout& form, const char* caption, const char* name, std::string& value, int least,
                         int most, const char* unit = "");
    void add_choice(QFormLayout& form, const char* caption, const char* name, std::string& value,
                    std::initializer_list<std::pair<const char*, const char*>> choices);

    void add_mail_time(const std::string& entry);
    void remove_mail_time();
    void aprs_clicked(bool on);
    void show_everything();
    bool acceptable();
    void force(ForcedRun which);

    const WeatherState& state_;
    Actions actions_;
    InternetDialog seen_;  ///< the committed values as they were last looked at
    DialogDraft<InternetDialog> draft_;
    std::vector<std::function<void()>> shows_;  ///< of what SetupDialog does not bind
    QTabWidget* tabs_;
    QListWidget* times_ = nullptr;
    QSpinBox* mail_hour_ = nullptr;
    QSpinBox* mail_minute_ = nullptr;
    bool out_of_the_way_ = false;
};

}  // namespace nimbry::windows
