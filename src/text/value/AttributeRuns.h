// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QHash>
#include <QList>

#include <algorithm>

namespace orvane {

/// One attribute set per position of a stretch `[0, length())`, kept as runs: neighbouring runs are
/// never equal, so equal contents have equal runs. `Style` is a `SharedValue`.
template <typename Style>
class AttributeRuns {
public:
    struct Run {
        qsizetype end = 0;
        Style style;

        bool operator==(const Run&) const = default;
    };

    [[nodiscard]] qsizetype length() const { return m_runs.isEmpty() ? 0 : m_runs.last().end; }
    [[nodiscard]] const QList<Run>& runs() const { return m_runs; }
    [[nodiscard]] qsizetype startOf(qsizetype index) const
    {
        return index == 0 ? 0 : m_runs[index - 1].end;
    }

    /// The index of the run that holds `position`, by binary search.
    [[nodiscard]] qsizetype indexAt(qsizetype position) const
    {
        const auto found =
            std::upper_bound(m_runs.cbegin(), m_runs.cend(), position,
                             [](qsizetype wanted, const Run& run) { return wanted < run.end; });
        return found - m_runs.cbegin();
    }

    void append(qsizetype count, const Style& style)
    {
        if (count <= 0)
            return;
        const qsizetype end = length() + count;
        if (!m_runs.isEmpty() && m_runs.last().style == style)
            m_runs.last().end = end;
        else
            m_runs.append({end, style});
    }

    void append(const AttributeRuns& other, TextRange range)
    {
        if (range.isEmpty())
            return;
        qsizetype from = range.location;
        for (qsizetype i = other.indexAt(from); from < range.end(); ++i) {
            const qsizetype to = std::min(other.m_runs[i].end, range.end());
            append(to - from, other.m_runs[i].style);
            from = to;
        }
    }

    void truncate(qsizetype newLength)
    {
        while (!m_runs.isEmpty() && startOf(m_runs.size() - 1) >= newLength)
            m_runs.removeLast();
        if (!m_runs.isEmpty())
            m_runs.last().end = std::min(m_runs.last().end, newLength);
    }

    /// Puts all of `insertion` in the place of `range`.
    void replace(TextRange range, const AttributeRuns& insertion)
    {
        if (range.end() == length()) {
            truncate(range.location);
            append(insertion, {0, insertion.length()});
            return;
        }
        AttributeRuns middle;
        const qsizetype first = std::max<qsizetype>(0, indexAt(range.location) - 1);
        const qsizetype firstStart = startOf(first);
        const qsizetype last = std::min(indexAt(range.end()) + 1, m_runs.size() - 1);
        const qsizetype lastEnd = m_runs[last].end;
        middle.append(*this, TextRange::between(firstStart, range.location));
        middle.append(insertion, {0, insertion.length()});
        middle.append(*this, TextRange::between(range.end(), lastEnd));
        splice(first, last + 1, firstStart, middle, insertion.length() - range.length);
    }

    /// Replaces the style of each run in `range` by `change(style)`, called once per shared style.
    template <typename Change>
    void transform(TextRange range, Change&& change)
    {
        if (range.isEmpty())
            return;
        AttributeRuns changed;
        QHash<const void*, Style> known;
        qsizetype from = range.location;
        for (qsizetype i = indexAt(from); from < range.end(); ++i) {
            const qsizetype to = std::min(m_runs[i].end, range.end());
            const Style& before = m_runs[i].style;
            auto seen = known.constFind(before.identity());
            if (seen == known.constEnd())
                seen = known.insert(before.identity(), change(before));
            changed.append(to - from, *seen);
            from = to;
        }
        replace(range, changed);
    }

    bool operator==(const AttributeRuns& other) const
    {
        if (m_runs.isSharedWith(other.m_runs))
            return true;
        if (m_runs.size() != other.m_runs.size())
            return false;
        const void* lastLeft = nullptr;
        const void* lastRight = nullptr;
        for (qsizetype i = 0; i < m_runs.size(); ++i) {
            const Run& left = m_runs[i];
            const Run& right = other.m_runs[i];
            if (left.end != right.end)
                return false;
            const bool known =
                i > 0 && left.style.identity() == lastLeft && right.style.identity() == lastRight;
            if (!known && !(left.style == right.style))
                return false;
            lastLeft = left.style.identity();
            lastRight = right.style.identity();
        }
        return true;
    }

private:
    void splice(qsizetype first, qsizetype pastLast, qsizetype offset, const AttributeRuns& middle,
                qsizetype growth)
    {
        for (qsizetype i = pastLast; growth != 0 && i < m_runs.size(); ++i)
            m_runs[i].end += growth;
        const qsizetype before = pastLast - first;
        const qsizetype after = middle.m_runs.size();
        if (after > before)
            m_runs.insert(pastLast, after - before, Run{});
        else
            m_runs.remove(first + after, before - after);
        for (qsizetype i = 0; i < after; ++i)
            m_runs[first + i] = {offset + middle.m_runs[i].end, middle.m_runs[i].style};
    }

    QList<Run> m_runs;
};

} // namespace orvane
