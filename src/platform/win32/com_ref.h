// Owns one reference to a COM interface and releases it when it goes.
#pragma once

#include <unknwn.h>

#include <utility>

namespace zirvel::win32 {

template <typename Interface>
class ComRef {
public:
    ComRef() = default;
    // Takes over a reference someone handed over.
    explicit ComRef(Interface* adopted) : pointer_(adopted) {}
    ~ComRef() { Reset(); }
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    ComRef(ComRef&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComRef& operator=(ComRef&& other) noexcept {
        if (this != &other) {
            Reset();
            pointer_ = std::exchange(other.pointer_, nullptr);
        }
        return *this;
    }

    Interface* Get() const { return pointer_; }
    Interface* operator->() const { return pointer_; }
    Interface& operator*() const { return *pointer_; }
    explicit operator bool() const { return pointer_ != nullptr; }
    // For the out parameter of a call that hands over a reference.
    Interface** Put() {
        Reset();
        return &pointer_;
    }
    void Reset() {
        if (pointer_) std::exchange(pointer_, nullptr)->Release();
    }

private:
    Interface* pointer_ = nullptr;
};

}  // namespace zirvel::win32
