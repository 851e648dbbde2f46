// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/ProjectFigures.h"

#include "core/versions/NoteVersion.h"

#include <QSet>

namespace orvane {

namespace {

using Words = QHash<QUuid, int>;

/// The folders that lie in the Trash, at any depth, and the Trash itself.
QSet<QUuid> foldersInTrash(const Notebook& notebook)
{
    QSet<QUuid> inside{FolderRecord::trashFolderID};
    // A round for each level; folders that lie in a loop are never reached.
    for (qsizetype before = 0; before != inside.size();) {
        before = inside.size();
        for (const auto& folder : notebook.folders.records()) {
            if (folder->parentFolderID && inside.contains(*folder->parentFolderID))
                inside.insert(folder->id);
        }
    }
    return inside;
}

StoreReading::Result<Words> countAll(StoreReading& store)
{
    Words words;
    const auto read = store.forEachBody([&](const QUuid& id, QByteArrayView utf8) {
        words.insert(id, wordCount(QString::fromUtf8(utf8)));
        return StoreReading::Next::GoOn;
    });
    if (!read)
        return std::unexpected(read.error());
    return words;
}

StoreReading::Result<Words> countTexts(StoreReading&, const QHash<QUuid, QByteArray>& texts)
{
    Words words;
    for (const auto& [id, utf8] : texts.asKeyValueRange())
        words.insert(id, wordCount(QString::fromUtf8(utf8)));
    return words;
}

} // namespace

ProjectFigures::ProjectFigures(QString storePath, std::function<void()> counted)
    : m_storePath(std::move(storePath))
    , m_tellCounted(std::move(counted))
{}

ProjectFigures::~ProjectFigures() = default;

ProjectFigures::Figures ProjectFigures::of(const Notebook& notebook, qsizetype bytesAtOnce)
{
    const QSet<QUuid> trash = foldersInTrash(notebook);
    QList<Shared<NoteRecord>> changed;
    qsizetype bytes = 0;
    Figures figures;
    int words = 0;
    for (const Shared<NoteRecord>& note : notebook.notes.records()) {
        if (trash.contains(note->folderID))
            continue;
        ++figures.notes;
        const auto known = m_counted.constFind(note->id);
        if (known != m_counted.cend() && known->updatedAt == note->updatedAt) {
            words += known->words;
            continue;
        }
        changed.append(note);
        bytes += note->body.utf8().size();
    }
    if (bytes > bytesAtOnce) {
        if (!m_isCounting)
            countAside(notebook, changed);
        return figures;
    }
    for (const Shared<NoteRecord>& note : std::as_const(changed)) {
        const int counted = wordCount(note->body.readOrNothing());
        m_counted.insert(note->id, {note->updatedAt, counted});
        words += counted;
    }
    figures.words = words;
    return figures;
}

// What has changed is in memory; what never was looked at is read from the store.
void ProjectFigures::countAside(const Notebook& notebook, const QList<Shared<NoteRecord>>& notes)
{
    m_isCounting = true;
    if (!m_worker)
        m_worker = std::make_unique<StoreWorker>(m_storePath);
    QHash<QUuid, Timestamp> dates;
    QHash<QUuid, QByteArray> texts;
    for (const Shared<NoteRecord>& note : notes) {
        dates.insert(note->id, note->updatedAt);
        if (note->body.utf8().isLoaded())
            texts.insert(note->id, note->body.utf8().known());
    }
    if (texts.size() == notes.size())
        return m_worker->read(
            [](StoreReading& store, const QHash<QUuid, QByteArray>& values) {
                return countTexts(store, values);
            },
            [this, dates](const auto& words) { take(words, dates); }, texts);
    for (const Shared<NoteRecord>& note : notebook.notes.records())
        dates.insert(note->id, note->updatedAt);
    m_worker->read([](StoreReading& store) { return countAll(store); },
                   [this, dates](const auto& words) { take(words, dates); });
}

void ProjectFigures::take(const StoreReading::Result<Words>& words,
                          const QHash<QUuid, Timestamp>& dates)
{
    m_isCounting = false;
    if (!words)
        return;
    for (const auto& [id, date] : dates.asKeyValueRange())
        m_counted.insert(id, {date, words->value(id, 0)});
    m_tellCounted();
}

} // namespace orvane
