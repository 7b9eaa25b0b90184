#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <QString>

#include "InstallRoot.h"
#include "Pcm.h"

namespace sfx_test {

/// An Ogg Vorbis stream that decodes to exactly as many frames as `pcm` has. `quality` is
/// Vorbis's own, -0.1 to 1.0. Throws std::runtime_error when the encoder refuses the format.
std::vector<unsigned char> EncodeVorbis(const Pcm& pcm, float quality = 0.5F);
/// XORs every byte with the key of the installed effects.
std::vector<unsigned char> Encipher(std::vector<unsigned char> bytes);
/// Creates missing folders. Throws std::runtime_error naming the path when it cannot write.
void WriteBytes(const std::filesystem::path& path, const std::vector<unsigned char>& bytes);
/// As hosts hand it over, as UTF-8.
std::string FileUrl(const QString& path);

/// A temporary folder with effects as an installer leaves them. Publish() makes it the place
/// where the library looks for them, until the object goes away.
class InstallFolder {
public:
    /// Writes the enciphered file and lists it. Returns its full path as UTF-8.
    std::string AddEffect(const std::string& id, const std::string& name, const Pcm& pcm);
    std::string AddAmbient(const std::string& id, const std::string& name, const Pcm& pcm);
    /// Writes the manifest.
    void Publish();

    /// The folder of the manifest.
    const std::filesystem::path& Path() const { return root_.Install(); }

private:
    struct Entry {
        std::string id;
        std::string name;
        std::string file;
    };
    std::string Add(std::vector<Entry>& list, const std::string& id, const std::string& name,
                    const Pcm& pcm);

    InstallRoot root_;
    std::vector<Entry> effects_;
    std::vector<Entry> ambients_;
};

} // namespace sfx_test
