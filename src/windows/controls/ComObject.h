#pragma once

#include <windows.h>
// The interfaces need <windows.h> in front of them.
#include <unknwn.h>

#include <memory>

// The reference count and the one interface of a small COM object. Made with new, with one reference; the
// last Release deletes it.
template <typename Interface>
class ComObject : public Interface {
 public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override {
        if (object == nullptr) return E_POINTER;
        if (id != __uuidof(IUnknown) && id != __uuidof(Interface)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        *object = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

 protected:
    virtual ~ComObject() = default;

 private:
    ULONG references_ = 1;
};

struct ReleaseObject {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};

// A reference that is released at the end of its scope.
template <typename Object>
using ComOwned = std::unique_ptr<Object, ReleaseObject>;
