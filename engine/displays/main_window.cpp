#include "engine/displays/main_window.h"

#include "engine/derived/number_text.h"

namespace nimbry {

void update_caption(MainWindow& window, const MainPanel& panel) {
    if (window.minimised && !window.in_tray) {
        window.caption = trimmed(panel.Text2[0].text) + " : " + trimmed(panel.Text2[2].text);
    } else {
        window.caption = MainWindow::plain_caption;
    }
}

}  // namespace nimbry
