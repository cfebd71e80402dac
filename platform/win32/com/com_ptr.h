#pragma once

#include <windows.h>
#include <unknwn.h>

#include <utility>

namespace talvix {

/// Owns one reference on a COM object.
template <typename Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    /// Takes a further reference.
    explicit ComPtr(Interface* object) : object_(object) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }
    ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    /// Takes over the reference that the pointer carries already.
    static ComPtr Adopt(Interface* object) {
        ComPtr owner;
        owner.object_ = object;
        return owner;
    }
    /// The object's interface of this kind; null when it has none.
    static ComPtr From(IUnknown* unknown) {
        ComPtr owner;
        if (unknown != nullptr) {
            unknown->QueryInterface(__uuidof(Interface), owner.OutAny());
        }
        return owner;
    }

    Interface* Get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    Interface** Out() {
        *this = ComPtr();
        return &object_;
    }
    void** OutAny() { return reinterpret_cast<void**>(Out()); }
    /// Hands the reference to the caller.
    Interface* Detach() { return std::exchange(object_, nullptr); }

private:
    Interface* object_ = nullptr;
};

/// Makes an object that starts with one reference.
template <typename Class, typename... Args>
ComPtr<Class> MakeCom(Args&&... args) {
    return ComPtr<Class>::Adopt(new Class(std::forward<Args>(args)...));
}

} // namespace talvix
