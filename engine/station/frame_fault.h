#pragma once

namespace nimbry {

/// Why bytes did not become readings. Nothing of this is an error of the program: the frame is dropped and counted,
/// what was shown stays, and the next good frame is taken.
enum class FrameFault {
    train_overran,       ///< more than 141 bytes stood there when the line had settled: all are thrown away
    buffer_overran,      ///< more bytes than LineFramer::buffer_limit: all are thrown away, "RxOver Error"
    unknown_tag,         ///< the first byte is neither CF nor 8F: not decoded, not forwarded
    before_first_train,  ///< a frame tagged CF before the first train has been through the cycle
    wrong_length,        ///< 27 bytes tagged 8F, or 141 bytes tagged CF
    bad_checksum,        ///< one group's sum is wrong: the whole frame is lost
    impossible_date,     ///< the checksums held, but the station's date or time is none: the train is not used
};

}  // namespace nimbry
