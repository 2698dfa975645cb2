#include "windows/main_menu_bar.h"

#include <QAction>
#include <QMenu>

#include "engine/displays/box_list.h"
#include "platform/text_bytes.h"

namespace nimbry::windows {
namespace {

enum class Kind {
    menu,    ///< on the bar, with the entries that follow
    direct,  ///< on the bar, acts at once
    entry,
    toggle,  ///< an entry with a check mark
    line,
};

struct Entry {
    Kind kind;
    const char* name = "";
};

constexpr Entry entries[]{
    {Kind::menu, "mnuExit"},
    {Kind::entry, "mnuExit1"},
    {Kind::menu, "mnuSetup"},
    {Kind::entry, "SetupComms"},
    {Kind::entry, "SetupUnits"},
    {Kind::entry, "mnuAlarms"},
    {Kind::entry, "mnuInternet"},
    {Kind::entry, "mnuLatLong"},
    {Kind::line},
    {Kind::entry, "mnuEditComment"},
    {Kind::entry, "mnuEditComment2"},
    {Kind::entry, "mnuEditDSR"},
    {Kind::menu, "mnuLogs"},
    {Kind::entry, "mnuDisplayLog"},
    {Kind::entry, "mnuDisplayAlmanac"},
    {Kind::line},
    {Kind::entry, "mnuProgLog"},
    {Kind::entry, "mnuClearProgLog"},
    {Kind::line},
    {Kind::toggle, "mnulogFTP"},
    {Kind::toggle, "mnulogMail"},
    {Kind::toggle, "mnuLogWU"},
    {Kind::toggle, "mnuLogHW"},
    {Kind::toggle, "mnuLogAPRS"},
    {Kind::menu, "mnuDisplay"},
    {Kind::toggle, "mnuHide"},
    {Kind::toggle, "mnusystray"},
    {Kind::toggle, "mnuCpop"},
    {Kind::line},
    {Kind::toggle, "mnuDisableGraphs"},
    {Kind::toggle, "mnuInGraphs"},
    {Kind::line},
    {Kind::toggle, "mnuNoErrorPop"},
    {Kind::toggle, "mnuNoCCPop"},
    {Kind::toggle, "mnuNoFTPPop"},
    {Kind::toggle, "mnuNoMailPop"},
    {Kind::line},
    {Kind::entry, "mnuResetGraphs"},
    {Kind::entry, "mnuBIG"},
    {Kind::toggle, "mnuFTPdebug"},
    {Kind::direct, "mnuAdditional"},
    {Kind::menu, "mnuReports"},
    {Kind::entry, "mnuAlMonth"},
    {Kind::entry, "mnuAutoReport"},
    {Kind::direct, "mnuHideNow"},
    {Kind::menu, "mnuHelp"},
    {Kind::entry, "mnuFHelp"},
    {Kind::entry, "mnuAbout"},
};

}  // namespace

MainMenuBar::MainMenuBar(const WeatherState& state, const MenuActions& actions, BoxBinding& binding, QWidget* parent)
    : QMenuBar(parent) {
    QMenu* menu = nullptr;
    const auto add = [&](QAction* action) {
        if (menu != nullptr) {
            menu->addAction(action);
        } else {
            addAction(action);
        }
    };
    for (const Entry& entry : entries) {
        switch (entry.kind) {
            case Kind::menu: {
                menu = addMenu(QString());
                menu->setObjectName(QStringLiteral("menu_") + QString::fromLatin1(entry.name));
                QAction* bar_entry = menu->menuAction();
                bar_entry->setObjectName(QString::fromLatin1(entry.name));
                binding.bind(*find_box(state, entry.name), [bar_entry](const Box& box) {
                    bar_entry->setText(platform::unicode(box.text));
                    bar_entry->setEnabled(box.enabled);
                });
                break;
            }
            case Kind::direct: addAction(bound_action(state, entry.name, false, actions, binding)); break;
            case Kind::entry: add(bound_action(state, entry.name, false, actions, binding)); break;
            case Kind::toggle: add(bound_action(state, entry.name, true, actions, binding)); break;
            case Kind::line: {
                auto* line = new QAction(this);
                line->setSeparator(true);
                add(line);
                break;
            }
        }
    }
}

QAction* MainMenuBar::bound_action(const WeatherState& state, const char* name, bool is_switch,
                                   const MenuActions& actions, BoxBinding& binding) {
    auto* action = new QAction(this);
    action->setObjectName(QString::fromStdString(object_name(name)));
    action->setCheckable(is_switch);
    const auto found = actions.find(name);
    const bool acts = found != actions.end();
    const Box& source = *find_box(state, name);
    const auto show = [action, acts](const Box& box) {
        action->setText(platform::unicode(box.text));
        action->setEnabled(box.enabled && acts);
        action->setChecked(box.checked);
    };
    binding.bind(source, show);
    if (acts) {
        // Qt has flipped the check mark already; the model decides what it shall be.
        connect(action, &QAction::triggered, this, [act = found->second, &source, show] {
            show(source);
            act();
        });
    }
    return action;
}

QMenu* MainMenuBar::menu_of(const QString& bar_entry) const {
    const auto* action = findChild<QAction*>(bar_entry);
    return action == nullptr ? nullptr : action->menu();
}

}  // namespace nimbry::windows
