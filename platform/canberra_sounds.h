#pragma once

#include <string>
#include <vector>

#include "engine/ports/files.h"
#include "engine/ports/notices.h"

struct ca_context;

namespace nimbry::platform {

/// Plays WAV files through libcanberra. A sound starts and the call returns; a missing file, a missing device or a
/// format that the system does not know is silent.
///
/// A file of the program's folder comes before the one of its name that comes with the program, so everybody can have
/// sounds of his own.
///
/// A library of its own (nimbry_sounds), so that a program without sound does not bring libcanberra.
class CanberraSounds : public Sounds {
public:
    /// `files` must outlive this object. `folders` are where the sounds that come with the program can lie.
    explicit CanberraSounds(const Files& files, std::vector<std::string> folders = {});
    ~CanberraSounds() override;
    CanberraSounds(const CanberraSounds&) = delete;
    CanberraSounds& operator=(const CanberraSounds&) = delete;

    void play(const std::string& file) override;

    /// The path of the file that a name plays; empty when there is none.
    [[nodiscard]] std::string path_of(const std::string& file) const;

private:
    const Files& files_;
    std::vector<std::string> folders_;
    ca_context* context_ = nullptr;  ///< none where the system has no sound at all
};

/// Where the sounds lie that come with a program in `executable_folder`: beside it, as the build leaves them, or in
/// "../share/nimbry" from there, as they are installed.
[[nodiscard]] std::vector<std::string> sound_folders(const std::string& executable_folder);

}  // namespace nimbry::platform
