#pragma once

namespace nimbry {

/// What a verb ends with; nimbryctl exits with it.
enum class VerbStatus : int {
    done = 0,
    failed = 1,     ///< refused or failed; the asker was told why
    bad_usage = 2,  ///< the arguments are not the verb's
};

}  // namespace nimbry
