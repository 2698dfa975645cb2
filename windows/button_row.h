#pragma once

#include <QPushButton>
#include <QWidget>

#include "engine/displays/main_menu.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

class MainMenuBar;

/// The row of buttons, `fmb(0)` to `fmb(6)`: each opens the menu of its name, "Additional" acts at once.
class ButtonRow : public QWidget {
public:
    /// Binds its buttons to `menu`, which must outlive `binding`. `bar` must outlive this object.
    ButtonRow(const MainMenu& menu, const MainMenuBar& bar, BoxBinding& binding, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void draw_icons();
};

}  // namespace nimbry::windows
