#pragma once

#include <string>

#include "tests/world/world.h"

namespace nimbry::test {

/// A configuration file of section `Main` with these lines ("LogMin=5\r\n..."), of a copy that has run before.
inline std::string main_section(const std::string& lines = "") {
    return "[Main]\r\nHasRun=True\r\n" + lines;
}

/// A copy that has run before, started with these lines in section `Main`; the two seconds of its start have passed.
struct StartedWorld : World {
    explicit StartedWorld(const std::string& lines = "", const Engine::StartOptions& options = {}) {
        files.put("Nimbry.ini", main_section(lines));
        start(options);
    }
};

}  // namespace nimbry::test
