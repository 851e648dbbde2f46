// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"

#include <QHash>

namespace orvane {

/// Roughly the memory that one style takes, in bytes.
[[nodiscard]] qsizetype memoryCost(const CharacterStyle& style);
[[nodiscard]] qsizetype memoryCost(const ParagraphStyle& style);
[[nodiscard]] qsizetype memoryCost(const CellLook& look);

/// Shares one `SharedValue` among equal styles while a document is being read, and bounds the
/// memory that bytes from outside can claim by naming many different styles.
template <typename Style>
class StyleInterner {
public:
    /// `budget` is in bytes.
    explicit StyleInterner(qsizetype budget)
        : m_budget(budget)
    {}

    /// A shared equal of `style`; `fallback` once the budget is spent.
    [[nodiscard]] SharedValue<Style> intern(const Style& style, const SharedValue<Style>& fallback)
    {
        const std::size_t hash = qHash(style);
        const auto [first, last] = std::as_const(m_known).equal_range(hash);
        const auto found = std::find(first, last, style);
        if (found != last)
            return *found;
        m_budget -= memoryCost(style);
        if (m_budget < 0)
            return fallback;
        return *m_known.insert(hash, SharedValue<Style>(style));
    }

private:
    QMultiHash<std::size_t, SharedValue<Style>> m_known;
    qsizetype m_budget;
};

} // namespace orvane
