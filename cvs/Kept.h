#pragma once

namespace tandrel {

/// Puts a value back when the call is over.
template <class T>
class TKept {
public:
    explicit TKept(T& value) : Value_(value), Before_(value) {}
    ~TKept() { Value_ = Before_; }
    TKept(const TKept&) = delete;
    TKept& operator=(const TKept&) = delete;

private:
    T& Value_;
    const T Before_;
};

}  // namespace tandrel
