#pragma once

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <mmdeviceapi.h>
#include <propidl.h>

namespace sfx_test {

/// Where the reading of an endpoint, or of all of them, fails.
enum class Fault { None, Enumerate, GetCount, Item, OpenProperties, GetValue, NameIsNoText, GetId };

struct Endpoint {
    std::wstring id;
    std::wstring name;
    Fault fault = Fault::None;
};

/// References to fakes that have not been released.
inline int heldReferences = 0;

// The interfaces of COM have no virtual destructors: nobody deletes through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
template <class Interface>
class Counted : public Interface {
public:
    Counted() { ++heldReferences; }
    virtual ~Counted() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override {
        ++heldReferences;
        return ++references_;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        --heldReferences;
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

private:
    ULONG references_ = 1;
};
#pragma GCC diagnostic pop

inline wchar_t* TaskString(const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    void* memory = CoTaskMemAlloc(bytes);
    std::memcpy(memory, text.c_str(), bytes);
    return static_cast<wchar_t*>(memory);
}

class FakeProperties : public Counted<IPropertyStore> {
public:
    explicit FakeProperties(Endpoint endpoint) : endpoint_(std::move(endpoint)) {}
    HRESULT STDMETHODCALLTYPE GetValue(REFPROPERTYKEY key, PROPVARIANT* value) override {
        constexpr PROPERTYKEY friendlyName{
            {0xA45C254E, 0xDF1C, 0x4EFD, {0x80, 0x20, 0x67, 0xD1, 0x46, 0xA8, 0x50, 0xE0}}, 14};
        if (endpoint_.fault == Fault::GetValue || key.pid != friendlyName.pid ||
            !IsEqualGUID(key.fmtid, friendlyName.fmtid)) {
            return E_FAIL;
        }
        if (endpoint_.fault == Fault::NameIsNoText) {
            value->vt = VT_UNKNOWN;
            value->punkVal = new Counted<IUnknown>;
        } else {
            value->vt = VT_LPWSTR;
            value->pwszVal = TaskString(endpoint_.name);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCount(DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAt(DWORD, PROPERTYKEY*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetValue(REFPROPERTYKEY, REFPROPVARIANT) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit() override { return E_NOTIMPL; }

private:
    Endpoint endpoint_;
};

class FakeDevice : public Counted<IMMDevice> {
public:
    explicit FakeDevice(Endpoint endpoint) : endpoint_(std::move(endpoint)) {}
    HRESULT STDMETHODCALLTYPE OpenPropertyStore(DWORD access, IPropertyStore** store) override {
        if (endpoint_.fault == Fault::OpenProperties || access != STGM_READ) {
            return E_FAIL;
        }
        *store = new FakeProperties(endpoint_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetId(LPWSTR* id) override {
        if (endpoint_.fault == Fault::GetId) {
            return E_FAIL;
        }
        *id = TaskString(endpoint_.id);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Activate(REFIID, DWORD, PROPVARIANT*, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetState(DWORD*) override { return E_NOTIMPL; }

private:
    Endpoint endpoint_;
};

class FakeCollection : public Counted<IMMDeviceCollection> {
public:
    FakeCollection(std::vector<Endpoint> endpoints, Fault fault)
        : endpoints_(std::move(endpoints)), fault_(fault) {}
    HRESULT STDMETHODCALLTYPE GetCount(UINT* count) override {
        *count = static_cast<UINT>(endpoints_.size());
        return fault_ == Fault::GetCount ? E_FAIL : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Item(UINT index, IMMDevice** device) override {
        if (endpoints_.at(index).fault == Fault::Item) {
            return E_FAIL;
        }
        *device = new FakeDevice(endpoints_.at(index));
        return S_OK;
    }

private:
    std::vector<Endpoint> endpoints_;
    Fault fault_;
};

class FakeEnumerator : public Counted<IMMDeviceEnumerator> {
public:
    explicit FakeEnumerator(std::vector<Endpoint> endpoints, Fault fault = Fault::None)
        : endpoints_(std::move(endpoints)), fault_(fault) {}
    HRESULT STDMETHODCALLTYPE EnumAudioEndpoints(EDataFlow flow, DWORD states,
                                                 IMMDeviceCollection** collection) override {
        if (fault_ == Fault::Enumerate || flow != eRender || states != DEVICE_STATE_ACTIVE) {
            return E_FAIL;
        }
        *collection = new FakeCollection(endpoints_, fault_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow, ERole, IMMDevice**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDevice(LPCWSTR, IMMDevice**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE
    RegisterEndpointNotificationCallback(IMMNotificationClient*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE
    UnregisterEndpointNotificationCallback(IMMNotificationClient*) override {
        return E_NOTIMPL;
    }

private:
    std::vector<Endpoint> endpoints_;
    Fault fault_;
};

} // namespace sfx_test
