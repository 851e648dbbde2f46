// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreBeginning.h"

#include "core/records/RecordFields.h"
#include "core/store/StoreReader.h"

#include <QSet>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// More rows than that are no picture.
constexpr qsizetype mostListed = 3'000;
constexpr qsizetype windowFull = 60;
constexpr qsizetype mostKnown = 400;

/// Stands behind texts that nobody may read yet.
class NothingToRead final : public BlobSource {
public:
    std::expected<QByteArray, QString> read(qint64, qsizetype) override
    {
        return std::unexpected(u"the project is still being opened"_s);
    }
};

/// Which notes are shown, by the container in which they are listed.
struct Listed {
    QHash<QUuid, QUuid> containerOf;
    QList<QUuid> ids;
};

// Opens the way to a note; the containers that stand open then.
QSet<QUuid> openContainers(BinderLayoutSnapshot& layout, const QList<Shared<FolderRecord>>& folders,
                           const BeginningWish& wish)
{
    QHash<QUuid, std::optional<QUuid>> parents;
    for (const Shared<FolderRecord>& folder : folders)
        parents.insert(folder->id, folder->parentFolderID);
    const auto holdsSelected = [&](const BinderNoteOrderEntry& entry) {
        return wish.note && entry.noteIDs.contains(*wish.note);
    };
    const auto holder = std::ranges::find_if(layout.noteOrderEntries, holdsSelected);
    std::optional<QUuid> at;
    if (holder != layout.noteOrderEntries.end())
        at = holder->folderID;
    for (qsizetype steps = 0; at && parents.contains(*at) && steps <= folders.size(); ++steps) {
        if (!layout.expandedFolderIDs.contains(*at))
            layout.expandedFolderIDs.append(*at);
        at = parents.value(*at);
    }
    QSet<QUuid> open(layout.expandedFolderIDs.cbegin(), layout.expandedFolderIDs.cend());
    open.insert(wish.root);
    if (wish.folder)
        open.insert(*wish.folder);
    return open;
}

// Nothing where the order can't be that of so many notes in these folders.
std::optional<Listed> listedIn(const BinderLayoutSnapshot& layout, const QSet<QUuid>& open,
                               const QList<Shared<FolderRecord>>& folders, qint64 noteCount,
                               const QUuid& root)
{
    QSet<QUuid> containers{root};
    for (const Shared<FolderRecord>& folder : folders)
        containers.insert(folder->id);
    Listed listed;
    qint64 ordered = 0;
    for (const BinderNoteOrderEntry& entry : layout.noteOrderEntries) {
        ordered += entry.noteIDs.size();
        if (!containers.contains(entry.folderID))
            return std::nullopt;
        if (!open.contains(entry.folderID))
            continue;
        for (const QUuid& id : entry.noteIDs)
            listed.containerOf.insert(id, entry.folderID);
        listed.ids += entry.noteIDs;
        if (listed.ids.size() > mostListed)
            return std::nullopt;
    }
    return ordered == noteCount && listed.containerOf.size() == listed.ids.size()
               ? std::optional(std::move(listed))
               : std::nullopt;
}

// Has the beginnings of those texts that a window full of rows shows read.
void learnFirstLines(SQLite::Database& database, const Listed& listed,
                     const QHash<QUuid, qint64>& rows, const std::optional<QUuid>& selected,
                     const QList<Shared<NoteRecord>>& notes)
{
    QHash<QUuid, qsizetype> firstOfContainer;
    const qsizetype at = selected ? listed.ids.indexOf(*selected) : -1;
    QList<qint64> wanted;
    for (qsizetype i = 0; i < listed.ids.size() && wanted.size() < mostKnown; ++i) {
        const QUuid& id = listed.ids.at(i);
        const qsizetype place = firstOfContainer[listed.containerOf.value(id)]++;
        if (place < windowFull || (at >= 0 && std::abs(i - at) < windowFull))
            wanted.append(rows.value(id));
    }
    const auto texts = readBeginnings(database, wanted, NoteText::bytesFor(listedUnits));
    for (const Shared<NoteRecord>& note : notes) {
        const auto text = texts.constFind(rows.value(note->id));
        if (text != texts.cend())
            note->body.utf8().learn(*text);
    }
}

} // namespace

std::optional<NotebookSnapshot> readBeginning(SQLite::Database& database, qint64 storeKey,
                                              qint64 noteCount,
                                              const QList<Shared<FolderRecord>>& folders,
                                              const std::optional<BinderLayoutSnapshot>& layout,
                                              const SharedBlobSource& source,
                                              const BeginningWish& wish)
{
    if (!layout || noteCount < fewestNotesForBeginning)
        return std::nullopt;
    NotebookSnapshot beginning{folders, {}, layout};
    const QSet<QUuid> open = openContainers(*beginning.binderLayout, folders, wish);
    const auto listed = listedIn(*layout, open, folders, noteCount, wish.root);
    if (!listed)
        return std::nullopt;
    const QHash<QUuid, qint64> rows =
        findNotes(database, QSet<QUuid>(listed->ids.cbegin(), listed->ids.cend()));
    if (rows.size() != listed->ids.size())
        return std::nullopt;
    QList<qint64> others;
    for (const QUuid& id : listed->ids) {
        if (id != wish.note)
            others.append(rows.value(id));
    }
    beginning.notes = readNotes(database, storeKey, SharedBlobSource(new NothingToRead), others);
    if (wish.note && rows.contains(*wish.note)) {
        const auto selected = readNotes(database, storeKey, source, {rows.value(*wish.note)});
        bool isReadable = true;
        for (const Shared<NoteRecord>& note : selected)
            forEachBytes(*note, [&](int, const Blob* bytes) {
                isReadable = isReadable && (!bytes || bytes->read());
            });
        if (!isReadable)
            return std::nullopt;
        beginning.notes += selected;
    }
    learnFirstLines(database, *listed, rows, wish.note, beginning.notes);
    const auto isWhereItIsListed = [&](const Shared<NoteRecord>& note) {
        const auto container = listed->containerOf.constFind(note->id);
        return container != listed->containerOf.cend() && note->folderID == *container;
    };
    if (!std::ranges::all_of(beginning.notes, isWhereItIsListed))
        return std::nullopt;
    return beginning;
}

} // namespace orvane
