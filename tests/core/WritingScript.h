// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/Records.h"
#include "core/store/PersistenceController.h"

#include <QRandomGenerator>

#include <algorithm>

namespace orvane {

/// A run of writing that is the same in every process: each step changes a notebook in memory and
/// saves just what it changed, so that after step N the store holds `snapshot()`.
class WritingScript {
public:
    WritingScript(quint32 seed, NotebookSnapshot base)
        : m_random(seed)
        , m_firstId(int(seed % 10'000) * 100'000)
    {
        setBase(std::move(base));
    }

    /// What `base` holds must equal what this holds; its bytes may be unread.
    void setBase(NotebookSnapshot base)
    {
        m_snapshot = std::move(base);
        std::ranges::sort(m_snapshot.notes, {}, [](const auto& note) { return note->id; });
        std::ranges::sort(m_snapshot.folders, {}, [](const auto& folder) { return folder->id; });
    }
    [[nodiscard]] const NotebookSnapshot& snapshot() const { return m_snapshot; }

    /// One step; with a store, saved there. False when the store refused.
    bool step(PersistenceController* store = nullptr)
    {
        const auto saved = [](const std::expected<void, StoreError>& result) {
            if (!result)
                qWarning("%ls", qUtf16Printable(result.error().text()));
            return result.has_value();
        };
        ++m_steps;
        const int kind = below(12);
        if (m_snapshot.folders.isEmpty() || !m_snapshot.binderLayout) {
            m_snapshot.folders = {makeFolder(1)};
            m_snapshot.binderLayout = BinderLayoutSnapshot{{}, {{idOf(1), {}}}, {}};
            return !store || saved(store->save(m_snapshot));
        }
        if (kind < 3 || m_snapshot.notes.isEmpty()) {
            addNote();
            return !store || saved(store->save(m_snapshot));
        }
        if (kind == 3 && m_snapshot.notes.size() > 30) {
            const auto gone = m_snapshot.notes.takeAt(below(m_snapshot.notes.size()));
            order().removeAll(gone->id);
            return !store || saved(store->save(m_snapshot));
        }
        if (kind == 4) {
            m_snapshot.binderLayout->expandedFolderIDs = {idOf(below(100))};
            return !store || saved(store->saveLayout(*m_snapshot.binderLayout));
        }
        const int place = below(m_snapshot.notes.size());
        m_snapshot.notes[place] = m_snapshot.notes.at(place).with(
            [&](NoteRecord& note) { edit(note, kind == 5 ? 200'000 : 8000); });
        return !store || saved(store->saveNote(m_snapshot.notes.at(place)));
    }

private:
    int below(qsizetype end) { return int(m_random.bounded(int(end))); }
    QList<QUuid>& order() { return m_snapshot.binderLayout->noteOrderEntries.first().noteIDs; }

    void addNote()
    {
        NoteRecord note = makeNote(m_firstId + m_steps, idOf(1));
        edit(note, 4000);
        const auto place = std::ranges::lower_bound(m_snapshot.notes, note.id, {},
                                                    [](const auto& other) { return other->id; });
        order().append(note.id);
        m_snapshot.notes.insert(place, std::move(note));
    }
    void edit(NoteRecord& note, int size)
    {
        note.updatedAt.msecs += 1;
        note.body = QStringLiteral("step %1 ").arg(m_steps).repeated(1 + below(100));
        if (below(2) == 0)
            note.bodyRTF = Blob(QByteArray(1 + below(size), char('a' + m_steps % 26)));
        if (below(3) == 0)
            note.richContentPayload = Blob(QByteArray(1 + below(size), char('A' + m_steps % 26)));
    }

    QRandomGenerator m_random;
    NotebookSnapshot m_snapshot;
    int m_firstId;
    int m_steps = 0;
};

} // namespace orvane
