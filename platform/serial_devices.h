#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace nimbry::platform {

/// The serial devices of the machine, for a person to choose from: the links of the by-id folder first, which name an
/// adapter wherever it is plugged in, then every other port that the system knows. Each device once.
[[nodiscard]] std::vector<std::string> serial_devices();

/// The same for a folder of links and a list of ports ("/dev/ttyUSB0"). A port that a link leads to is left out.
[[nodiscard]] std::vector<std::string> serial_devices(const QString& by_id_folder, const QStringList& ports);

}  // namespace nimbry::platform
