#pragma once

#include <string>
#include <unordered_map>

#include <sfx/catalogue/Asset.h>
#include <sfx/export.h>

namespace vemo {

/// The assets that an asset description lists, each with the bytes of its file. Read once, when
/// constructed; of several assets with one id the first counts. Loading takes time in proportion to
/// what there is to read, a look-up the same however many assets there are.
///
/// Paths and texts are UTF-8, and ids are compared byte by byte. A manager is used by one thread at
/// a time: GetAsset() may add to it.
class SFX_EXPORT AssetManager {
public:
    /// Reads the description `assetPath`, a JSON file, checks it against the JSON schema in
    /// `schemaPath`, and reads every file that it lists below `baseFolder`. A description of any
    /// version but 0.* and 1.0, by the low eight bits of each number, leaves the manager empty,
    /// which is no failure. The formats are in docs/file-formats.md.
    ///
    /// A description is not trusted. No file outside `baseFolder` is read for it: an absolute
    /// filename, one with a drive letter or a server, and one that leaves the folder through ".."
    /// are refused. '/' separates folders on every platform, '\' on Windows alone. Links inside the
    /// folder are followed. Only regular files are read. A description may have 64 MiB and 64
    /// levels of nesting.
    ///
    /// The schema is the host's own, but one that cannot be applied as a whole is refused rather
    /// than passed over: one that is no object, has more than 256 KiB, 4096 objects or 64 levels,
    /// refers to another document (nothing is ever fetched) or to itself without end, or has a
    /// pattern that is not supported.
    ///
    /// Throws BadFileException, and nothing is loaded then:
    /// - "Asset Manager Schema Document is not Valid" if the schema cannot be read or is not JSON,
    ///   with ": " and the reason if it is refused;
    /// - "Asset Manager Failed Validation" if the description cannot be read or is not JSON, with
    ///   ": " and the broken rule if it does not fulfil the schema, with ": " and the member if one
    ///   that is needed is missing or of the wrong type though the schema allows it;
    /// - "Wrong File Type String" if the file type is not "vemo_assets";
    /// - "Unable to read file " and the path, for a file that is not there or is outside.
    AssetManager(const std::string& schemaPath, const std::string& assetPath,
                 const std::string& baseFolder);
    AssetManager(AssetManager&& other) noexcept;
    AssetManager& operator=(AssetManager&& other) noexcept;
    ~AssetManager();
    AssetManager(const AssetManager&) = delete;
    AssetManager& operator=(const AssetManager&) = delete;

    /// The asset of that id. An id that was not loaded gets an empty asset, which stays: asking is
    /// no error, and every later call gives the same. References stay good as long as the manager.
    const Asset& GetAsset(const std::string& id);

private:
    std::unordered_map<std::string, Asset> assets_;
};

} // namespace vemo
