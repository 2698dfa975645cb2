#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "engine/displays/dialog_controls.h"
#include "engine/displays/setup_windows.h"

class QBoxLayout;

namespace nimbry::windows {

/// What the setup windows have in common. Each edits a copy of its dialog's values and holds up nothing: it is
/// modeless, and the program goes by the committed values until somebody accepts. The default button, mostly
/// `Command1`, accepts and closes; "Cancel", Escape and the close mark drop the copy.
class SetupDialog : public QDialog {
    Q_OBJECT

public:
    /// Opens the window with a fresh copy, or brings an open one to the front as it is.
    void present();

protected:
    SetupDialog(const char* name, const QString& title, QWidget* parent);

    /// Binds controls to the widgets of their names, which must be there: a check box or an option button, a
    /// SettingBar, a line of text, a box with a text and a choice, a list. What a person does there changes the value
    /// and calls edited(); a list only shows. The values must outlive this object.
    void bind(const std::vector<DialogControl>& controls);

    /// Shows every bound value in its widget.
    void show_values();

    /// Makes the titles of the window's groups bold, and nothing in them.
    void embolden_heads();

    /// Shows the window itself as the model has it: its caption, and whether it is locked.
    void show_window(const SetupWindow& window);

    /// The row of buttons: the one that accepts, with this caption, and "Cancel".
    [[nodiscard]] QBoxLayout* button_row(const QString& accept_caption, const char* accept_name = "Command1");

    /// Takes a fresh copy of the committed values and shows it.
    virtual void load() = 0;
    /// A person has changed a value.
    virtual void edited() {}
    /// The window has come up for a person to work in it.
    virtual void opened() {}
    /// The window has closed, accepted or not.
    virtual void closed() {}
    /// Hands the copy over. True: the window closes; false: there is something in it that cannot be taken.
    virtual bool commit() = 0;

private:
    void bind_flag(const QString& name, bool* value);
    void bind_number(const QString& name, float* value);
    void bind_text(const QString& name, std::string* value);
    void bind_list(const QString& name, const std::vector<std::string>* value);

    std::vector<std::function<void()>> shows_;
};

}  // namespace nimbry::windows
