#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <QByteArray>
#include <QTemporaryDir>

#include "Pcm.h"

namespace sfx_test {

/// An Ogg Vorbis stream that decodes to exactly as many frames as `pcm` has. `quality` is
/// Vorbis's own, -0.1 to 1.0. Throws std::runtime_error when the encoder refuses the format.
std::vector<unsigned char> EncodeVorbis(const Pcm& pcm, float quality = 0.5F);
/// XORs every byte with the key of the installed effects.
std::vector<unsigned char> Encipher(std::vector<unsigned char> bytes);
/// Creates missing folders. Throws std::runtime_error naming the path when it cannot write.
void WriteBytes(const std::filesystem::path& path, const std::vector<unsigned char>& bytes);

/// A temporary folder with effects as an installer leaves them. Publish() makes it the place
/// where the library looks for them, until the object goes away.
class InstallFolder {
public:
    InstallFolder();
    ~InstallFolder();
    InstallFolder(const InstallFolder&) = delete;
    InstallFolder& operator=(const InstallFolder&) = delete;

    /// Writes the enciphered file and lists it. Returns its full path.
    std::string AddEffect(const std::string& id, const std::string& name, const Pcm& pcm);
    std::string AddAmbient(const std::string& id, const std::string& name, const Pcm& pcm);
    /// Writes the manifest and puts this folder first in XDG_DATA_DIRS.
    void Publish();

    /// The folder of the manifest.
    std::filesystem::path Path() const;

private:
    struct Entry {
        std::string id;
        std::string name;
        std::string file;
    };
    std::string Add(std::vector<Entry>& list, const std::string& id, const std::string& name,
                    const Pcm& pcm);

    QTemporaryDir dir_;
    std::vector<Entry> effects_;
    std::vector<Entry> ambients_;
    QByteArray savedDataDirs_;
    bool published_ = false;
};

} // namespace sfx_test
