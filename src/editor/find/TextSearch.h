// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextRange.h"

#include <QList>
#include <QString>
#include <QStringMatcher>

#include <optional>

namespace orvane {

enum class FindDirection { forward, backward };

/// Looks for one query in texts. Case makes no difference. Neither does it whether an accent stands
/// in one character with its letter or behind it: "é" is found in both forms, and a bare "e" in
/// neither. A query is found as it stands, white space included; an empty one nowhere.
class TextSearch {
public:
    TextSearch() = default;
    explicit TextSearch(const QString& query);

    [[nodiscard]] const QString& query() const { return m_query; }
    [[nodiscard]] bool isEmpty() const { return m_query.isEmpty(); }
    /// In UTF-16 units, the most that a match can take.
    [[nodiscard]] qsizetype longestMatch() const;

    /// The first match that begins at or after `from`.
    [[nodiscard]] std::optional<TextRange> first(QStringView text, qsizetype from = 0) const;
    /// The last match that ends at or before `to`.
    [[nodiscard]] std::optional<TextRange> last(QStringView text, qsizetype to) const;
    /// The match that a person goes to from `selection`: the next behind it, or the one before it,
    /// and from the other end of the text where there is none.
    [[nodiscard]] std::optional<TextRange> next(QStringView text, TextRange selection,
                                                FindDirection direction) const;
    /// All matches from the start of the text, none overlapping another.
    [[nodiscard]] QList<TextRange> all(QStringView text) const;
    /// Whether `text` as a whole is a match.
    [[nodiscard]] bool matches(QStringView text) const;

private:
    [[nodiscard]] static qsizetype find(const QStringMatcher& form, QStringView text,
                                        qsizetype from);

    QString m_query;
    QList<QStringMatcher> m_forms; // the query with joined and with separate accents
};

} // namespace orvane
