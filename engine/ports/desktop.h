#pragma once

#include <string>

namespace nimbry {

/// The system around the program: what it starts for its user.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Runs the user's batch file in the program's folder, minimised and without the focus where there are windows, and
    /// does not wait for it: through the interpreter that the environment's COMSPEC names, with "/C", or through the
    /// system's shell where that is not set. A failed start is silent. `path` is the file's full path.
    virtual void run_batch(const std::string& path) = 0;

    /// Ends the dial-up connection that this program has made. Where the system has no dial-up there is none.
    virtual void hang_up_modem() = 0;
};

}  // namespace nimbry
