#pragma once

#include <utility>

/// Owns one system resource and closes it exactly once; move-only.
/// @tparam Traits  names the resource: `Type`, `None()` (the value that means "nothing owned") and
/// `Close(Type)`.
template <class Traits>
class CUnique {
public:
    using Type = typename Traits::Type;

    CUnique() = default;
    explicit CUnique(Type value) : m_value(value) {}
    CUnique(CUnique&& other) noexcept : m_value(other.Release()) {}
    CUnique& operator=(CUnique&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    ~CUnique() { Reset(); }

    [[nodiscard]] Type Get() const { return m_value; }
    [[nodiscard]] explicit operator bool() const { return m_value != Traits::None(); }

    /// Gives the resource up without closing it.
    [[nodiscard]] Type Release() { return std::exchange(m_value, Traits::None()); }

    /// Closes what is owned and takes `value` instead.
    void Reset(Type value = Traits::None()) {
        const Type old = std::exchange(m_value, value);
        if (old != Traits::None()) Traits::Close(old);
    }

    /// The place for a call that writes a new resource; what was owned before is closed.
    [[nodiscard]] Type* Receive() {
        Reset();
        return &m_value;
    }

private:
    Type m_value = Traits::None();
};
