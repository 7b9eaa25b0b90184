#pragma once

#include <string>

#include <sfx/export.h>

namespace vemo {

/// What an asset description says of one asset. A plain value; the texts are UTF-8.
class SFX_EXPORT AssetDescriptor {
public:
    AssetDescriptor(const std::string& type, const std::string& id, const std::string& group,
                    const std::string& name, const std::string& filename);
    AssetDescriptor(const AssetDescriptor& other);
    AssetDescriptor(AssetDescriptor&& other) noexcept;
    AssetDescriptor& operator=(const AssetDescriptor& other);
    AssetDescriptor& operator=(AssetDescriptor&& other) noexcept;
    ~AssetDescriptor();

    std::string Type() const;
    std::string Id() const;
    std::string Group() const;
    std::string Name() const;
    /// As described: relative to the base folder of the manager that loaded it.
    std::string SourceFilename() const;

private:
    std::string type_;
    std::string id_;
    std::string group_;
    std::string name_;
    std::string sourceFilename_;
};

} // namespace vemo
