#include "programs/nimbry/other_instance.h"

#include <QCoreApplication>

#include "platform/instance_lock.h"
#include "platform/text_bytes.h"
#include "programs/exit_status.h"
#include "windows/message_dialog.h"
#include "windows/svg_pictures.h"

namespace nimbry {

int tell_of_other_instance(const std::string& refusal) {
    windows::MessageDialog dialog({.title = "Nimbry",
                                   .text = platform::already_running_text,
                                   .icon = "!",
                                   .detail = platform::engine_text_of_utf8(refusal)});
    dialog.setWindowIcon(windows::application_icon());
    QObject::connect(&dialog, &QDialog::finished, qApp, &QCoreApplication::quit);
    dialog.show();
    QCoreApplication::exec();
    return exit_status::other_instance;
}

}  // namespace nimbry
