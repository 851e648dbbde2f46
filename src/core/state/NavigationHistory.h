// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QUuid>

#include <functional>
#include <optional>

namespace orvane {

/// The notes that the main editor showed, for going back and forward. Holds at most
/// `maximumCount` entries; recording after going back cuts what lay ahead.
class NavigationHistory {
public:
    static constexpr qsizetype maximumCount = 80;

    /// Appends the note unless it is the present entry.
    void record(const QUuid& noteID);
    /// The note `delta` entries away, made the present entry. Nothing outside the range; when
    /// the note there is gone by `exists`, that entry is removed and the present one stays.
    std::optional<QUuid> navigate(int delta, const std::function<bool(const QUuid&)>& exists);
    void clear();

    [[nodiscard]] bool canGoBack() const { return m_index && *m_index > 0; }
    [[nodiscard]] bool canGoForward() const { return m_index && *m_index + 1 < m_entries.size(); }
    [[nodiscard]] const QList<QUuid>& entries() const { return m_entries; }
    [[nodiscard]] std::optional<qsizetype> index() const { return m_index; }

private:
    QList<QUuid> m_entries;
    std::optional<qsizetype> m_index;
};

} // namespace orvane
