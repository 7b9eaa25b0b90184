#include "DeviceControlWin32Impl.h"

#include <cstddef>
#include <cwchar>
#include <optional>
#include <string>

#include <windows.h>

#include <mmdeviceapi.h>
#include <propidl.h>
#include <wrl/client.h>

// The property key below is defined, not just declared, behind initguid.h only; Core Audio's own
// ids come before it, or they would be defined here as well.
#include <initguid.h>

#include <functiondiscoverykeys_devpkey.h>

namespace vemo::audio {

namespace {

using Microsoft::WRL::ComPtr;

std::string Narrow(const wchar_t* text) {
    const std::size_t length = std::wcslen(text) + 1;
    std::string narrow(4 * length, '\0');
    const int written =
        WideCharToMultiByte(CP_THREAD_ACP, 0, text, static_cast<int>(length), narrow.data(),
                            static_cast<int>(narrow.size()), nullptr, nullptr);
    // The terminator is counted, a failed conversion writes nothing.
    narrow.resize(written > 0 ? static_cast<std::size_t>(written) - 1 : 0);
    return narrow;
}

class PropertyValue {
public:
    PropertyValue() { PropVariantInit(&value_); }
    ~PropertyValue() { PropVariantClear(&value_); }
    PropertyValue(const PropertyValue&) = delete;
    PropertyValue& operator=(const PropertyValue&) = delete;

    PROPVARIANT* Out() { return &value_; }
    const wchar_t* Text() const { return value_.vt == VT_LPWSTR ? value_.pwszVal : nullptr; }

private:
    PROPVARIANT value_;
};

std::optional<std::string> FriendlyName(IMMDevice& device) {
    ComPtr<IPropertyStore> properties;
    if (FAILED(device.OpenPropertyStore(STGM_READ, &properties))) {
        return std::nullopt;
    }
    PropertyValue name;
    if (FAILED(properties->GetValue(PKEY_Device_FriendlyName, name.Out())) ||
        name.Text() == nullptr) {
        return std::nullopt;
    }
    return Narrow(name.Text());
}

std::optional<AudioDevice> Describe(IMMDevice& device) {
    auto name = FriendlyName(device);
    if (!name) {
        return std::nullopt;
    }
    // Never freed: hosts keep the records, and with them the plain pointer.
    wchar_t* id = nullptr;
    if (FAILED(device.GetId(&id))) {
        return std::nullopt;
    }
    return AudioDevice{id, std::move(*name), Narrow(id)};
}

} // namespace

std::vector<AudioDevice> ListRenderEndpoints(IMMDeviceEnumerator& enumerator) {
    std::vector<AudioDevice> devices;
    ComPtr<IMMDeviceCollection> endpoints;
    UINT count = 0;
    if (FAILED(enumerator.EnumAudioEndpoints(eRender, DEVICE_STATE_ACTIVE, &endpoints)) ||
        FAILED(endpoints->GetCount(&count))) {
        return devices;
    }
    for (UINT i = 0; i < count; ++i) {
        ComPtr<IMMDevice> endpoint;
        if (FAILED(endpoints->Item(i, &endpoint))) {
            continue;
        }
        if (auto device = Describe(*endpoint.Get())) {
            devices.push_back(std::move(*device));
        }
    }
    return devices;
}

std::vector<AudioDevice> DeviceControlWin32Impl::GetOutputDevices() {
    ComPtr<IMMDeviceEnumerator> enumerator;
    if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_ALL,
                                IID_PPV_ARGS(&enumerator)))) {
        return {};
    }
    return ListRenderEndpoints(*enumerator.Get());
}

} // namespace vemo::audio
