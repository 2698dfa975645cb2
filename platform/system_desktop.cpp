#include "platform/system_desktop.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>

namespace nimbry::platform {

void SystemDesktop::run_batch(const std::string& path) {
    const QString script = QFile::decodeName(QByteArray::fromStdString(path));
    const QString interpreter = qEnvironmentVariable("COMSPEC");
    QProcess process;
    if (interpreter.isEmpty()) {
        process.setProgram(QStringLiteral("/bin/sh"));
        process.setArguments({script});
    } else {
        process.setProgram(interpreter);
        process.setArguments({QStringLiteral("/C"), script});
    }
    process.setWorkingDirectory(QFileInfo(script).absolutePath());
    // Nothing of it belongs on the terminal of a copy without a window.
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

}  // namespace nimbry::platform
