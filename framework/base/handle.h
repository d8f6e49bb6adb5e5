#pragma once

#include <windows.h>

#include <utility>

namespace framework {

/// Owns one system handle. The policy names the type, the value of "none" and how to close it.
template <class Policy>
class UniqueHandle {
public:
    using Type = typename Policy::Type;

    UniqueHandle() noexcept : Value_(Policy::None()) {}
    explicit UniqueHandle(Type value) noexcept : Value_(value) {}
    UniqueHandle(UniqueHandle&& other) noexcept : Value_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Type Get() const noexcept { return Value_; }
    explicit operator bool() const noexcept { return Value_ != Policy::None(); }

    /// Closes what is held and takes over `value`.
    void Reset(Type value = Policy::None()) noexcept {
        if (const Type old = std::exchange(Value_, value); old != Policy::None())
            Policy::Close(old);
    }
    /// Hands the handle over to the caller, who closes it.
    Type Release() noexcept { return std::exchange(Value_, Policy::None()); }
    /// Closes what is held and gives the address for a function that returns a handle there.
    Type* Receive() noexcept {
        Reset();
        return &Value_;
    }

private:
    Type Value_;
};

/// Kernel objects whose creation answers NULL on failure: processes, threads, events, pipes.
struct KernelHandlePolicy {
    using Type = HANDLE;
    static Type None() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ::CloseHandle(handle); }
};
/// Files, whose creation answers INVALID_HANDLE_VALUE on failure.
struct FileHandlePolicy {
    using Type = HANDLE;
    static Type None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { ::CloseHandle(handle); }
};
struct FindHandlePolicy {
    using Type = HANDLE;
    static Type None() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) noexcept { ::FindClose(handle); }
};
struct RegistryKeyPolicy {
    using Type = HKEY;
    static Type None() noexcept { return nullptr; }
    static void Close(Type key) noexcept { ::RegCloseKey(key); }
};
struct LibraryPolicy {
    using Type = HMODULE;
    static Type None() noexcept { return nullptr; }
    static void Close(Type module) noexcept { ::FreeLibrary(module); }
};
/// Fonts, brushes, bitmaps and other drawing objects.
struct GdiObjectPolicy {
    using Type = HGDIOBJ;
    static Type None() noexcept { return nullptr; }
    static void Close(Type object) noexcept { ::DeleteObject(object); }
};

using KernelHandle = UniqueHandle<KernelHandlePolicy>;
using FileHandle = UniqueHandle<FileHandlePolicy>;
using FindHandle = UniqueHandle<FindHandlePolicy>;
using RegistryKey = UniqueHandle<RegistryKeyPolicy>;
using Library = UniqueHandle<LibraryPolicy>;
using GdiObject = UniqueHandle<GdiObjectPolicy>;

}  // namespace framework
