#pragma once

#include <string>

#include "engine/ports/files.h"
#include "engine/ports/notices.h"

struct ca_context;

namespace nimbry::platform {

/// Plays the WAV files of the program's folder through libcanberra. A sound starts and the call returns; a missing
/// file, a missing device or a format that the system does not know is silent.
///
/// A library of its own (nimbry_sounds), so that a program without sound does not bring libcanberra.
class CanberraSounds : public Sounds {
public:
    /// `files` must outlive this object.
    explicit CanberraSounds(const Files& files);
    ~CanberraSounds() override;
    CanberraSounds(const CanberraSounds&) = delete;
    CanberraSounds& operator=(const CanberraSounds&) = delete;

    void play(const std::string& file) override;

private:
    const Files& files_;
    ca_context* context_ = nullptr;  ///< none where the system has no sound at all
};

}  // namespace nimbry::platform
