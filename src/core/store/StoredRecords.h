// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/Shared.h"
#include "core/store/StoreReader.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>

#include <algorithm>
#include <optional>
#include <vector>

namespace orvane {

/// What one table of the store holds, as records in memory: each with the number of its row, and
/// all of them in the order of the last list that was saved. Finding what a new list changes is a
/// walk along both lists by identity, so that a list of fifty thousand with one new record costs
/// some ten microseconds.
template <typename Record>
class StoredRecords {
public:
    struct Slot {
        qint64 row = 0;
        Shared<Record> record;
        /// Where the record was in the order when it was last looked up.
        qsizetype place = 0;
    };
    struct Difference {
        QList<Shared<Record>> written;
        QList<QUuid> removed;
    };

    StoredRecords() = default;
    /// Takes what was read. The id of a record that stands there twice is the error.
    [[nodiscard]] std::optional<QUuid> reset(StoredRows<Record>&& rows)
    {
        m_slots.clear();
        m_order.clear();
        m_slots.reserve(qsizetype(rows.items.size()));
        m_order.reserve(rows.items.size());
        for (auto& item : rows.items) {
            const QUuid id = item.record->id;
            const Record* record = &*item.record;
            const auto place = qsizetype(m_order.size());
            m_slots.emplace(id, Slot{item.row, std::move(item.record), place});
            if (m_slots.size() == place)
                return id;
            m_order.push_back(record);
        }
        m_nextRow = rows.lastRow + 1;
        return std::nullopt;
    }

    [[nodiscard]] qsizetype size() const { return m_slots.size(); }
    [[nodiscard]] const Slot* find(const QUuid& id) const
    {
        const auto slot = m_slots.constFind(id);
        return slot == m_slots.cend() ? nullptr : &*slot;
    }
    [[nodiscard]] qint64 nextRow() const { return m_nextRow; }

    [[nodiscard]] QList<Shared<Record>> records() const
    {
        QList<Shared<Record>> records;
        records.reserve(qsizetype(m_order.size()));
        for (const Record* record : m_order)
            records.append(m_slots.constFind(record->id)->record);
        return records;
    }

    /// What must be written and removed so that the table holds exactly `wanted`. Of two records
    /// with one id the first counts.
    [[nodiscard]] Difference differenceTo(const QList<Shared<Record>>& wanted) const
    {
        Walk walk = walkAlong(wanted);
        const qsizetype expected = size() + walk.difference.written.size() - walk.replaced -
                                   walk.difference.removed.size();
        return expected == wanted.size() ? std::move(walk.difference) : compareAll(wanted);
    }

    /// The record now stands in `row`.
    void put(const Shared<Record>& record, qint64 row)
    {
        m_nextRow = std::max(m_nextRow, row + 1);
        const auto slot = m_slots.find(record->id);
        if (slot == m_slots.end()) {
            m_slots.insert(record->id, {row, record, qsizetype(m_order.size())});
            m_order.push_back(&*record);
            return;
        }
        slot->place = placeOf(*slot);
        m_order[size_t(slot->place)] = &*record;
        slot->record = record;
        slot->row = row;
    }
    void removeAll(const QList<QUuid>& ids)
    {
        if (ids.isEmpty())
            return;
        const QSet<QUuid> gone(ids.cbegin(), ids.cend());
        std::erase_if(m_order, [&](const Record* record) { return gone.contains(record->id); });
        for (const QUuid& id : ids)
            m_slots.remove(id);
    }
    /// After all differences to `wanted` were put and removed: takes its order.
    void takeOrder(const QList<Shared<Record>>& wanted)
    {
        if (wanted.size() != size())
            return;
        for (qsizetype i = 0; i < wanted.size(); ++i)
            m_order[size_t(i)] = &*wanted.at(i);
    }

private:
    struct Walk {
        Difference difference;
        /// How many of those written have a row already.
        qsizetype replaced = 0;
    };

    Walk walkAlong(const QList<Shared<Record>>& wanted) const
    {
        Walk walk;
        QList<Shared<Record>> strangers;
        std::vector<const Record*> orphans;
        auto stored = m_order.cbegin();
        auto next = wanted.cbegin();
        auto budget = std::ptrdiff_t(m_order.size()) * 4;
        while (stored != m_order.cend() && next != wanted.cend()) {
            if (*stored == &**next) {
                ++stored;
                ++next;
            } else if ((*stored)->id == (*next)->id) {
                walk.difference.written.append(*next);
                ++walk.replaced;
                ++stored;
                ++next;
            } else {
                const auto ahead = findAhead(stored, (*next)->id, budget);
                if (ahead == m_order.cend()) {
                    strangers.append(*next++);
                } else {
                    orphans.insert(orphans.end(), stored, ahead);
                    stored = ahead;
                }
            }
        }
        orphans.insert(orphans.end(), stored, m_order.cend());
        strangers.append(wanted.mid(next - wanted.cbegin()));
        settle(walk, strangers, orphans);
        return walk;
    }

    // Where in the order, from `from` on, the stored record of that id is.
    auto findAhead(std::vector<const Record*>::const_iterator from, const QUuid& id,
                   std::ptrdiff_t& budget) const
    {
        const Slot* slot = find(id);
        if (!slot || budget <= 0)
            return m_order.cend();
        const auto found = std::find(from, m_order.cend(), &*slot->record);
        budget -= found - from;
        return found;
    }

    // Of what was out of place on either side: what moved, what is new, what is gone.
    void settle(Walk& walk, const QList<Shared<Record>>& strangers,
                const std::vector<const Record*>& orphans) const
    {
        QSet<QUuid> moved;
        for (const Shared<Record>& record : strangers) {
            const Slot* slot = find(record->id);
            if (slot)
                moved.insert(record->id);
            if (slot && slot->record.isSame(record))
                continue;
            walk.difference.written.append(record);
            walk.replaced += slot ? 1 : 0;
        }
        for (const Record* record : orphans) {
            if (!moved.contains(record->id))
                walk.difference.removed.append(record->id);
        }
    }

    Difference compareAll(const QList<Shared<Record>>& wanted) const
    {
        Difference difference;
        QSet<QUuid> seen;
        for (const Shared<Record>& record : wanted) {
            if (seen.contains(record->id))
                continue;
            seen.insert(record->id);
            const Slot* slot = find(record->id);
            if (!slot || !slot->record.isSame(record))
                difference.written.append(record);
        }
        for (const Record* record : m_order) {
            if (!seen.contains(record->id))
                difference.removed.append(record->id);
        }
        return difference;
    }

    qsizetype placeOf(const Slot& slot) const
    {
        const Record* record = &*slot.record;
        if (slot.place < qsizetype(m_order.size()) && m_order[size_t(slot.place)] == record)
            return slot.place;
        return std::find(m_order.cbegin(), m_order.cend(), record) - m_order.cbegin();
    }

    QHash<QUuid, Slot> m_slots;
    std::vector<const Record*> m_order;
    qint64 m_nextRow = 1;
};

} // namespace orvane
