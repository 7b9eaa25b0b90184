#pragma once

#include <string>

#include <sfx/catalogue/AssetDescriptor.h>
#include <sfx/export.h>

namespace vemo {

/// A loaded asset: its description and the bytes of its file. Never changes; any thread may ask it.
class SFX_EXPORT Asset {
public:
    /// An empty description without bytes.
    Asset();
    Asset(AssetDescriptor descriptor, std::string bytes);
    Asset(const Asset& other);
    Asset(Asset&& other) noexcept;
    Asset& operator=(const Asset& other);
    Asset& operator=(Asset&& other) noexcept;
    ~Asset();

    const AssetDescriptor& Descriptor() const;
    /// The whole file as it was when the asset was loaded, NUL characters included.
    const std::string& Bytes() const;

private:
    AssetDescriptor descriptor_;
    std::string bytes_;
};

} // namespace vemo
