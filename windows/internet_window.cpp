#include "windows/internet_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "engine/derived/number_text.h"
#include "engine/publish/internet_check.h"
#include "platform/text_bytes.h"
#include "windows/content_scroll.h"
#include "windows/screen_room.h"

namespace nimbry::windows {
namespace {

constexpr int most_hours = 23, most_minutes = 59, most_interval = 1440, most_uploads = 999;

QString words(const char* text) {
    return QString::fromLatin1(text);
}

QFormLayout* form_of(QWidget* tab) {
    auto* form = new QFormLayout(tab);
    form->setContentsMargins(16, 16, 16, 16);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

/// True for a control that this window binds itself: it is no line of text.
bool is_own(std::string_view name) {
    for (const std::string_view own :
         {"txtFTPHours", "txtFTPMins", "txtUploadCount", "txtWUMins", "cboFTPSecurity", "cboMailSecurity"}) {
        if (name == own) return true;
    }
    return false;
}

}  // namespace

InternetWindow::InternetWindow(const WeatherState& state, Actions actions, QWidget* parent)
    : SetupDialog("NimbryFTPSetup", platform::unicode(state.setup.FTP.caption), parent),
      state_(state),
      actions_(std::move(actions)),
      seen_(state.publish.NimbryFTPSetup),
      draft_(seen_),
      tabs_(new QTabWidget) {
    tabs_->setObjectName(QStringLiteral("tabs"));
    for (const auto& [tab, caption] :
         {std::pair(ftp_tab(), "&FTP"), std::pair(mail_tab(), "&Email"), std::pair(services_tab(), "&Weather services"),
          std::pair(local_tab(), "&Local save"), std::pair(connection_tab(), "&Connection")}) {
        tabs_->addTab(new ContentScroll(tab), words(caption));
    }

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 12);
    column->addWidget(tabs_);
    column->addWidget(forced_row());
    column->addLayout(button_row(QStringLiteral("OK")));

    std::vector<DialogControl> controls = dialog_controls(draft_.values);
    std::erase_if(controls, [](const DialogControl& control) { return is_own(control.name); });
    bind(controls);
    connect(findChild<QCheckBox*>(QStringLiteral("chkAPRS")), &QCheckBox::clicked, this, &InternetWindow::aprs_clicked);
    load();
    resize(size_on_screen(sizeHint(), *this));
}

QWidget* InternetWindow::ftp_tab() {
    auto* tab = new QWidget;
    QFormLayout& form = *form_of(tab);
    add_check(form, "&Upload the pages by FTP", "ChkEnableFTP");
    add_line(form, "Remote FTP &server", "txtFTPServer", "ftp.example.net");
    add_line(form, "Remote f&older", "txtFTPRemDir");
    add_line(form, "Remote file &name", "txtFTPRemoteFile", "weather.htm");
    add_line(form, "FTP use&rname", "txtFTPUser");
    add_password(form, "FTP &password", "txtFTPPass");
    add_number(form, "Upload every", "txtFTPHours", draft_.values.FTPHours, 0, most_hours, " hours");
    add_number(form, "and", "txtFTPMins", draft_.values.FTPMins, 0, most_minutes, " minutes");
    add_check(form, "&Active mode (the server opens the data connections)", "chkFTPact");
    add_choice(form, "Encr&yption", "cboFTPSecurity", draft_.values.FTPSecurity,
               {{"none", "None"}, {"explicit", "TLS, asked for after connecting"}, {"implicit", "TLS from the start"}});
    add_line(form, "A&dditional files", "txtAdditional_Files", "separated by commas");
    QSpinBox& uploads =
        add_number(form, "Send them", "txtUploadCount", draft_.values.UploadCount, 1, most_uploads, " uploads");
    uploads.setPrefix(words("once in "));
    uploads.setSpecialValueText(words("with every upload"));
    add_check(form, "Write the exchange to NimbryFTPLO&G.txt", "chkLogResponses");
    return tab;
}

QWidget* InternetWindow::mail_tab() {
    auto* tab = new QWidget;
    QFormLayout& form = *form_of(tab);
    add_check(form, "Send e&mail", "ChkSendMail");
    add_line(form, "Mail &server", "txtMailServer", "mail.example.net");
    add_line(form, "P&ort", "txtMailPort");
    add_choice(form, "Encr&yption", "cboMailSecurity", draft_.values.MailSecurity,
               {{"none", "None"}, {"starttls", "TLS, asked for after connecting"}, {"tls", "TLS from the start"}});
    add_line(form, "Use&rname", "txtMailUser", "empty where the server asks for none");
    add_password(form, "&Password", "txtMailPass");
    add_line(form, "Mail &to", "txtMailTo", "addresses, separated by semicolons");
    add_line(form, "Mail cc", "txtMailcc");
    add_line(form, "Mail bcc", "txtMailBcc");
    add_line(form, "&Your email address", "txtMailMyAddr");
    add_line(form, "&Title", "txtMailTitle");
    add_line(form, "&Attach", "txtMailAttach", "files, separated by semicolons");
    form.addRow(words("Sending times"), schedule());
    add_check(form, "Make the monthly summary before a timed mail", "chkMailReport");
    add_check(form, "&Upload by FTP after a mail", "ChkDoEmailToo");
    return tab;
}

QWidget* InternetWindow::schedule() {
    auto* box = new QWidget;
    times_ = new QListWidget;
    times_->setObjectName(QStringLiteral("lstMailList"));
    times_->setAccessibleName(QStringLiteral("Sending times"));
    times_->setMaximumHeight(5 * fontMetrics().height());
    mail_hour_ = new QSpinBox;
    mail_hour_->setObjectName(QStringLiteral("txtMailHours"));
    mail_hour_->setAccessibleName(QStringLiteral("Hours"));
    mail_hour_->setRange(0, most_hours);
    mail_minute_ = new QSpinBox;
    mail_minute_->setObjectName(QStringLiteral("txtMailMins"));
    mail_minute_->setAccessibleName(QStringLiteral("Minutes"));
    mail_minute_->setRange(0, most_minutes);
    const auto button = [this](const char* caption, const char* name, auto work) {
        auto* made = new QPushButton(words(caption));
        made->setObjectName(words(name));
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, work);
        return made;
    };
    auto* row = new QHBoxLayout;
    row->addWidget(mail_hour_);
    row->addWidget(new QLabel(QStringLiteral(":")));
    row->addWidget(mail_minute_);
    row->addWidget(button("Add", "cmdAddMail", [this] {
        add_mail_time(QStringLiteral("%1:%2")
                          .arg(mail_hour_->value(), 2, 10, QLatin1Char('0'))
                          .arg(mail_minute_->value(), 2, 10, QLatin1Char('0'))
                          .toStdString());
    }));
    row->addWidget(
        button("At the changeover", "cmdAddChange", [this] { add_mail_time(std::string(changeover_mail)); }));
    row->addWidget(button("Remove", "cmdRemoveMail", [this] { remove_mail_time(); }));
    row->addStretch();
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(times_);
    column->addLayout(row);
    return box;
}

QWidget* InternetWindow::services_tab() {
    auto* tab = new QWidget;
    QFormLayout& form = *form_of(tab);
    add_check(form, "Weather &Underground", "chkWU");
    add_line(form, "Station ID", "txtWUuser");
    add_password(form, "Password", "txtWUpass");
    add_line(form, "Host", "txtWUhost", "the service's own");
    add_check(form, "Weatherfor&you/Hamweather", "chkHW");
    add_line(form, "Station ID", "txtHWuser");
    add_password(form, "Password", "txtHWpass");
    add_line(form, "Host", "txtHWhost", "the service's own");
    add_check(form, "CWOP/&APRSWXNET", "chkAPRS");
    add_line(form, "User ID", "txtAPRSID");
    add_password(form, "Pass code", "txtAPRSpass");
    add_number(form, "Upload &every", "txtWUMins", draft_.values.txtWUMins, least_dialog_interval, most_interval,
               " minutes");
    return tab;
}

QWidget* InternetWindow::local_tab() {
    auto* tab = new QWidget;
    QFormLayout& form = *form_of(tab);
    add_check(form, "Put &copies of pages and logs into a folder", "chkLocal");
    add_line(form, "&Folder", "txtLocalPath");
    return tab;
}

QWidget* InternetWindow::connection_tab() {
    auto* tab = new QWidget;
    QFormLayout& form = *form_of(tab);
    add_check(form, "&Dial where there is no connection", "ChkDial");
    add_check(form, "&Hang up after an upload", "ChkHangup");
    return tab;
}

QWidget* InternetWindow::forced_row() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const auto& [which, caption] :
         {std::pair(ForcedRun::ftp, "Upload by FTP now"), std::pair(ForcedRun::mail, "Send email now"),
          std::pair(ForcedRun::weather, "Weather services now")}) {
        auto* button = new QPushButton(words(caption));
        button->setObjectName(words(forced_button(which)));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, kind = which] { force(kind); });
        layout->addWidget(button);
    }
    auto* status = new QLabel;
    status->setObjectName(QStringLiteral("lblStatus"));
    status->setTextFormat(Qt::PlainText);
    layout->addWidget(status, 1);
    return row;
}

void InternetWindow::add_line(QFormLayout& form, const char* caption, const char* name, const char* hint) {
    auto* line = new QLineEdit;
    line->setObjectName(words(name));
    line->setPlaceholderText(words(hint));
    form.addRow(words(caption), line);
}

void InternetWindow::add_check(QFormLayout& form, const char* caption, const char* name) {
    auto* check = new QCheckBox(words(caption));
    check->setObjectName(words(name));
    form.addRow(check);
}

void InternetWindow::add_password(QFormLayout& form, const char* caption, const char* name) {
    const auto passwords = internet_passwords();
    const auto which = std::find_if(passwords.begin(), passwords.end(),
                                    [&](const InternetPassword& password) { return password.control == name; });
    std::string* value = &(draft_.values.*which->value);
    auto* line = new QLineEdit;
    line->setObjectName(words(name));
    line->setEchoMode(QLineEdit::Password);
    // Servers expect UTF-8, whatever the texts of the engine are in.
    connect(line, &QLineEdit::textEdited, this, [value](const QString& text) { *value = text.toStdString(); });
    shows_.push_back([line, value] {
        if (const QString text = QString::fromStdString(*value); line->text() != text) line->setText(text);
    });
    auto* show = new QToolButton;
    show->setObjectName(QStringLiteral("show_") + words(name));
    show->setText(QStringLiteral("Show"));
    show->setAccessibleName(QStringLiteral("Show the password"));
    show->setCheckable(true);
    connect(show, &QToolButton::toggled, line,
            [line](bool on) { line->setEchoMode(on ? QLineEdit::Normal : QLineEdit::Password); });
    auto* row = new QHBoxLayout;
    row->addWidget(line);
    row->addWidget(show);
    auto* label = new QLabel(words(caption));
    label->setBuddy(line);
    form.addRow(label, row);
}

QSpinBox& InternetWindow::add_number(QFormLayout& form, const char* caption, const char* name, std::string& value,
                                     int least, int most, const char* unit) {
    auto* number = new QSpinBox;
    number->setObjectName(words(name));
    number->setRange(least, most);
    number->setSuffix(words(unit));
    connect(number, &QSpinBox::valueChanged, this, [&value](int now) { value = numtext(now); });
    // A value that the box cannot show stays until somebody changes it.
    shows_.push_back([number, &value] {
        const QSignalBlocker silent(number);
        number->setValue(whole_number(value));
    });
    form.addRow(words(caption), number);
    return *number;
}

void InternetWindow::add_choice(QFormLayout& form, const char* caption, const char* name, std::string& value,
                                std::initializer_list<std::pair<const char*, const char*>> choices) {
    auto* list = new QComboBox;
    list->setObjectName(words(name));
    for (const auto& [word, text] : choices) list->addItem(words(text), words(word));
    connect(list, &QComboBox::activated, this,
            [list, &value](int index) { value = list->itemData(index).toString().toStdString(); });
    shows_.push_back([list, &value] {
        list->setCurrentIndex(std::max(list->findData(QString::fromStdString(lower_case(trimmed(value)))), 0));
    });
    form.addRow(words(caption), list);
}

void InternetWindow::add_mail_time(const std::string& entry) {
    auto& list = draft_.values.MailList;
    if (std::find(list.begin(), list.end(), entry) == list.end()) list.push_back(entry);
    std::sort(list.begin(), list.end());
    show_everything();
}

void InternetWindow::remove_mail_time() {
    const int row = times_->currentRow();
    if (row < 0) return;
    auto& list = draft_.values.MailList;
    list.erase(list.begin() + row);
    show_everything();
}

void InternetWindow::aprs_clicked(bool on) {
    if (!on) return;
    const auto message = aprs_refusal(state_.settings);
    if (!message) return;
    draft_.values.chkAPRS = false;
    show_everything();
    actions_.refused(*message);
}

void InternetWindow::load() {
    seen_ = state_.publish.NimbryFTPSetup;
    draft_ = DialogDraft<InternetDialog>(seen_);
    show_everything();
}

void InternetWindow::show_everything() {
    show_values();
    for (const auto& show : shows_) show();
    times_->clear();
    for (const std::string& entry : draft_.values.MailList) times_->addItem(platform::unicode(entry));
    findChild<QLabel*>(QStringLiteral("lblStatus"))->setText(platform::unicode(state_.publish.lblStatus));
}

bool InternetWindow::acceptable() {
    const auto refusal = internet_refusal(state_, draft_.values);
    if (!refusal) return true;
    if (auto* field = findChild<QWidget*>(platform::unicode(refusal->control)); field != nullptr) {
        for (int n = 0; n < tabs_->count(); ++n) {
            auto* scroll = static_cast<ContentScroll*>(tabs_->widget(n));
            if (!scroll->isAncestorOf(field)) continue;
            tabs_->setCurrentIndex(n);
            scroll->ensureWidgetVisible(field);
        }
        field->setFocus();
    }
    actions_.refused(refusal->message);
    return false;
}

bool InternetWindow::commit() {
    if (!acceptable()) return false;
    actions_.accepted(draft_.values);
    return true;
}

void InternetWindow::force(ForcedRun which) {
    if (acceptable()) actions_.forced(draft_.values, which);
}

void InternetWindow::refresh() {
    const SetupWindow& window = state_.setup.FTP;
    if (window.hidden != out_of_the_way_) {
        out_of_the_way_ = window.hidden;
        setVisible(window.open && !window.hidden);
    }
    if (!isVisible()) return;
    const InternetDialog& now = state_.publish.NimbryFTPSetup;
    if (draft_.follow(now)) {
        for (const InternetPassword& password : internet_passwords()) {
            if (seen_.*password.value != now.*password.value) draft_.values.*password.value = now.*password.value;
        }
        if (seen_.MailList != now.MailList) draft_.values.MailList = now.MailList;
        seen_ = now;
        show_everything();
    }
    show_window(window);
}

}  // namespace nimbry::windows
