// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Shared.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>

namespace orvane {

/// Records in their order, found by `id` in constant time whatever their number. Copies share
/// their contents. Ids are unique: of two records with one id the first is kept.
template <typename T>
class RecordTable {
public:
    RecordTable() = default;
    explicit RecordTable(const QList<Shared<T>>& records)
    {
        m_records.reserve(records.size());
        m_places.reserve(records.size());
        for (const Shared<T>& record : records)
            append(record);
    }

    [[nodiscard]] const QList<Shared<T>>& records() const { return m_records; }
    [[nodiscard]] qsizetype size() const { return m_records.size(); }
    [[nodiscard]] bool isEmpty() const { return m_records.isEmpty(); }
    [[nodiscard]] bool contains(const QUuid& id) const { return m_places.contains(id); }
    /// The record, or null. Valid until the next change of the table.
    [[nodiscard]] const Shared<T>* find(const QUuid& id) const
    {
        const auto place = m_places.constFind(id);
        return place == m_places.cend() ? nullptr : &m_records.at(*place);
    }

    bool append(const Shared<T>& record)
    {
        if (m_places.contains(record->id))
            return false;
        m_places.insert(record->id, m_records.size());
        m_records.append(record);
        return true;
    }
    /// Puts `record` in the place of the one with its id; false when there is none.
    bool replace(const Shared<T>& record)
    {
        const Shared<T>* found = find(record->id);
        if (found)
            replace(found, record);
        return found;
    }
    /// The same for a record that `find` has given and that stands there still.
    void replace(const Shared<T>* found, const Shared<T>& record)
    {
        m_records[found - m_records.constData()] = record;
    }
    void removeAll(const QSet<QUuid>& ids)
    {
        if (m_records.removeIf([&](const Shared<T>& record) { return ids.contains(record->id); }) ==
            0)
            return;
        m_places.clear();
        for (qsizetype i = 0; i < m_records.size(); ++i)
            m_places.insert(m_records.at(i)->id, i);
    }
    void clear()
    {
        m_records.clear();
        m_places.clear();
    }

    [[nodiscard]] auto begin() const { return m_records.cbegin(); }
    [[nodiscard]] auto end() const { return m_records.cend(); }

private:
    QList<Shared<T>> m_records;
    QHash<QUuid, qsizetype> m_places;
};

} // namespace orvane
