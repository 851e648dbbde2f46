// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <concepts>
#include <memory>
#include <optional>

namespace orvane {

/// An optional value that few of many records have: where it is absent it takes a pointer's room.
/// Used as std::optional is, into and from which it turns.
template <typename T>
class Rare {
public:
    Rare() = default;
    Rare(std::nullopt_t) {} // NOLINT(google-explicit-constructor): as std::optional
    template <typename Value>
    requires std::constructible_from<T, Value>
    Rare(Value&& value) // NOLINT(google-explicit-constructor): as std::optional
        : m_value(std::make_unique<T>(std::forward<Value>(value)))
    {}
    Rare(const std::optional<T>& value) // NOLINT(google-explicit-constructor): it is one
        : m_value(value ? std::make_unique<T>(*value) : nullptr)
    {}
    Rare(const Rare& other)
        : m_value(other.m_value ? std::make_unique<T>(*other) : nullptr)
    {}
    Rare(Rare&&) noexcept = default;
    Rare& operator=(const Rare& other)
    {
        if (this != &other)
            m_value = other.m_value ? std::make_unique<T>(*other) : nullptr;
        return *this;
    }
    Rare& operator=(Rare&&) noexcept = default;
    ~Rare() = default;

    [[nodiscard]] bool has_value() const { return m_value != nullptr; }
    explicit operator bool() const { return has_value(); }
    const T& operator*() const { return *m_value; }
    const T* operator->() const { return m_value.get(); }
    template <typename Other>
    [[nodiscard]] T value_or(Other&& other) const
    {
        return m_value ? *m_value : T(std::forward<Other>(other));
    }
    void reset() { m_value.reset(); }
    operator std::optional<T>() const // NOLINT(google-explicit-constructor): it is one
    {
        return m_value ? std::optional<T>(*m_value) : std::nullopt;
    }

    friend bool operator==(const Rare& a, const Rare& b)
    {
        return a.m_value && b.m_value ? *a == *b : !a.m_value == !b.m_value;
    }

private:
    std::unique_ptr<T> m_value;
};

} // namespace orvane
