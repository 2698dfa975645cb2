#pragma once

class QWidget;

namespace nimbry::windows {

/// Tells Qt how the program's own widgets look to a screen reader: a ValueBox is a read-only text with a name (its
/// caption), a value (what it shows) and a description (its tip); a CardGroup is a group; a SettingBar has its
/// setting's number as value; a LinkLabel is a link. To be called before the first window; calling it again does
/// nothing more.
void install_accessibility();

/// Has a screen reader tell what has come up in a widget, wherever the person is at that moment.
void announce(QWidget& widget);

}  // namespace nimbry::windows
