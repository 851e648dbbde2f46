// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QSharedData>

#include <functional>
#include <utility>

namespace orvane {

/// An immutable value behind a shared pointer: a copy costs one atomic count, and copies may be
/// read on several threads at once. A default-constructed one stands for `T{}` and owns nothing.
///
/// Equality takes the identity first and compares values only when that fails, so values that are
/// kept shared compare at the cost of a pointer.
template <typename T>
class SharedValue {
public:
    SharedValue() = default;
    explicit(false) SharedValue(T value)
        : m_box(new Box(std::move(value)))
    {}

    [[nodiscard]] const T& operator*() const { return m_box ? m_box->value : defaultValue(); }
    [[nodiscard]] const T* operator->() const { return &**this; }

    /// The same for two copies of one value; different values may be equal and differ here.
    [[nodiscard]] const void* identity() const { return m_box.constData(); }

    friend bool operator==(const SharedValue& left, const SharedValue& right)
    {
        return left.identity() == right.identity() || *left == *right;
    }
    friend bool operator==(const SharedValue& left, const T& right) { return *left == right; }

    friend std::size_t qHash(const SharedValue& value, std::size_t seed = 0)
    {
        return qHash(*value, seed);
    }

private:
    struct Box : QSharedData {
        explicit Box(T wrapped)
            : value(std::move(wrapped))
        {}
        T value;
    };

    static const T& defaultValue()
    {
        static const T value{};
        return value;
    }

    QExplicitlySharedDataPointer<const Box> m_box;
};

} // namespace orvane
