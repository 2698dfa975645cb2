#include "windows/units_window.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/text_bytes.h"
#include "windows/content_scroll.h"
#include "windows/screen_room.h"

namespace nimbry::windows {
namespace {

struct Option {
    const char* name;
    const char* caption;
};

QRadioButton* add_option(QGroupBox& group, const Option& option) {
    auto* button = new QRadioButton(QString::fromLatin1(option.caption));
    button->setObjectName(QString::fromLatin1(option.name));
    group.layout()->addWidget(button);
    return button;
}

QGroupBox* option_group(const char* title, std::initializer_list<Option> options) {
    auto* group = new QGroupBox(QString::fromLatin1(title));
    new QVBoxLayout(group);
    for (const Option& option : options) add_option(*group, option);
    static_cast<QVBoxLayout*>(group->layout())->addStretch();
    return group;
}

}  // namespace

UnitsWindow::UnitsWindow(const WeatherState& state, Actions actions, QWidget* parent)
    : SetupDialog("frmSetupUnits", platform::unicode(state.setup.Units.caption), parent),
      state_(state),
      actions_(std::move(actions)),
      draft_(units_dialog(state.settings)) {
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(16, 16, 16, 0);
    grid->setSpacing(12);
    grid->addWidget(option_group("Temperature", {{"optTempC", "Degrees &C"}, {"optTempF", "Degrees &F"}}), 0, 0);
    grid->addWidget(
        option_group("Barometer",
                     {{"optBarhpa", "&hPa"}, {"optBarinhg", "&Inches of mercury (In.Hg)"}, {"optBarmb", "m&B"}}),
        0, 1);
    grid->addWidget(option_group("Rainfall", {{"optRainmm", "&Millimetres (mm)"}, {"optRainin", "Inches (I&n.)"}}), 1,
                    0);
    grid->addWidget(option_group("Wind speed", {{"optWindms", "Metres per &second (m/S)"},
                                                {"optWindkph", "&Kilometres per hour (km/h)"},
                                                {"optWindmph", "Miles &per hour (MPH)"},
                                                {"optWindknots", "Kno&ts (KT)"}}),
                    1, 1);
    grid->addWidget(changeover_group(), 2, 0, 1, 2);
    grid->addWidget(rollover_group(), 3, 0, 1, 2);
    auto* chill = new QCheckBox(QStringLiteral("Wind chill by the ne&w formula"));
    chill->setObjectName(QStringLiteral("chkNewWC"));
    grid->addWidget(chill, 4, 0, 1, 2);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 12);
    column->addWidget(new ContentScroll(content));
    QBoxLayout* buttons = button_row(QStringLiteral("Done"));
    buttons->setContentsMargins(16, 0, 16, 0);
    column->addLayout(buttons);

    embolden_heads();
    // A click on a rollover option is asked about before it is one.
    std::vector<DialogControl> controls = dialog_controls(draft_.values);
    std::erase_if(controls, [](const DialogControl& c) { return c.name == "OptFirst" || c.name == "OptLast"; });
    bind(controls);
    load();
    resize(size_on_screen(sizeHint(), *this));
}

QGroupBox* UnitsWindow::changeover_group() {
    auto* group = new QGroupBox(QStringLiteral("Daily changeover"));
    new QVBoxLayout(group);
    const auto clicked = [this](bool midnight) {
        actions_.choose_changeover(midnight);
        show_in_force();
    };
    connect(add_option(*group, {"optMidnight", "Mi&dnight"}), &QRadioButton::clicked, this,
            [clicked] { clicked(true); });
    connect(add_option(*group, {"optNineam", "&9.00am"}), &QRadioButton::clicked, this, [clicked] { clicked(false); });
    auto* one_hour = new QCheckBox(QStringLiteral("One hour later, at &10.00am"));
    one_hour->setObjectName(QStringLiteral("optonehour"));
    group->layout()->addWidget(one_hour);
    connect(one_hour, &QCheckBox::clicked, this, [this](bool on) {
        actions_.set_one_hour(on);
        show_in_force();
    });
    return group;
}

QGroupBox* UnitsWindow::rollover_group() {
    auto* group = option_group("Almanac rolls over on", {{"OptFirst", "The fi&rst day of the month"},
                                                         {"OptLast", "The &last day of the month"}});
    const auto connect_option = [this, group](const char* name, bool first_day) {
        connect(group->findChild<QRadioButton*>(QString::fromLatin1(name)), &QRadioButton::clicked, this,
                [this, first_day] {
                    actions_.choose_rollover(draft_.values, first_day);
                    show_in_force();
                });
    };
    connect_option("OptFirst", true);
    connect_option("OptLast", false);
    return group;
}

void UnitsWindow::load() {
    draft_ = DialogDraft<UnitsDialog>(units_dialog(state_.settings));
    show_values();
    show_in_force();
}

bool UnitsWindow::commit() {
    actions_.accepted(draft_.values);
    return true;
}

void UnitsWindow::refresh() {
    if (!isVisible()) return;
    if (draft_.follow(units_dialog(state_.settings))) show_values();
    show_window(state_.setup.Units);
    show_in_force();
}

void UnitsWindow::show_in_force() {
    const auto show = [this](const char* name, bool on) {
        findChild<QAbstractButton*>(QString::fromLatin1(name))->setChecked(on);
    };
    show("optMidnight", state_.settings.tmidnight);
    show("optNineam", state_.settings.tnineam);
    show("optonehour", state_.settings.AddOneHour);
    show("OptFirst", draft_.values.OptFirst);
    show("OptLast", draft_.values.OptLast);
}

}  // namespace nimbry::windows
