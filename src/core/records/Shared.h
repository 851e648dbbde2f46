// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QSharedData>

#include <utility>

namespace orvane {

/// An immutable value that copies by sharing. Two copies of one value are told to be equal by
/// their identity, so that a list of fifty thousand records is compared without looking inside.
template <typename T>
class Shared {
public:
    Shared(T value) // NOLINT(google-explicit-constructor): a record stands for its shared form
        : m_box(new Box(std::move(value)))
    {}

    const T& operator*() const { return m_box->value; }
    const T* operator->() const { return &m_box->value; }

    /// True when both are one and the same value in memory.
    [[nodiscard]] bool isSame(const Shared& other) const { return m_box == other.m_box; }
    bool operator==(const Shared& other) const { return isSame(other) || **this == *other; }

    /// How many copies there are, this one included.
    [[nodiscard]] long copies() const { return m_box->ref.loadRelaxed(); }

    /// A new value: a copy of this one, changed by `edit(T&)`.
    template <typename Edit>
    [[nodiscard]] Shared with(Edit&& edit) const
    {
        T copy = **this;
        std::forward<Edit>(edit)(copy);
        return Shared(std::move(copy));
    }

private:
    struct Box : QSharedData {
        explicit Box(T wrapped)
            : value(std::move(wrapped))
        {}
        const T value;
    };

    QExplicitlySharedDataPointer<const Box> m_box;
};

} // namespace orvane
