// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <memory>
#include <utility>

namespace orvane {

/// An immutable value that copies by sharing. Two copies of one value are told to be equal by
/// their identity, so that a list of fifty thousand records is compared without looking inside.
template <typename T>
class Shared {
public:
    Shared(T value) // NOLINT(google-explicit-constructor): a record stands for its shared form
        : m_value(std::make_shared<const T>(std::move(value)))
    {}

    /// Takes over a value made in its place; nobody may change it any more.
    explicit Shared(std::shared_ptr<const T> value)
        : m_value(std::move(value))
    {}

    const T& operator*() const { return *m_value; }
    const T* operator->() const { return m_value.get(); }

    /// True when both are one and the same value in memory.
    [[nodiscard]] bool isSame(const Shared& other) const { return m_value == other.m_value; }
    bool operator==(const Shared& other) const
    {
        return isSame(other) || *m_value == *other.m_value;
    }

    /// How many copies there are, this one included.
    [[nodiscard]] long copies() const { return m_value.use_count(); }

    /// A new value: a copy of this one, changed by `edit(T&)`.
    template <typename Edit>
    [[nodiscard]] Shared with(Edit&& edit) const
    {
        T copy = *m_value;
        std::forward<Edit>(edit)(copy);
        return Shared(std::move(copy));
    }

private:
    std::shared_ptr<const T> m_value;
};

} // namespace orvane
