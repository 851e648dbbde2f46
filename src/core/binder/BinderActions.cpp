// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/binder/BinderActions.h"

#include "core/records/JsonObjectReader.h"

#include <QCollator>
#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String folderPrefix("folder:");
constexpr QLatin1String notePrefix("note:");

// Zones of a row, in logical pixels from its top.
constexpr double folderUpperZone = 14;
constexpr double folderLowerZone = 34;
constexpr double noteMiddle = 20;

/// Each thread has its own: a collator may not be used by two.
const QCollator& titleCollator()
{
    static thread_local const QCollator collator = [] {
        QCollator made;
        made.setCaseSensitivity(Qt::CaseInsensitive);
        made.setNumericMode(true);
        return made;
    }();
    return collator;
}

// By keys alone: some locales compare texts otherwise than their keys.
QCollatorSortKey titleKey(const NoteRecord& note)
{
    return titleCollator().sortKey(note.titleForList());
}

std::optional<QUuid> nextIn(const QList<QUuid>& list, const QUuid& id)
{
    const qsizetype place = list.indexOf(id);
    return place >= 0 && place + 1 < list.size() ? std::optional(list.at(place + 1)) : std::nullopt;
}

const QList<QUuid>& siblings(const BinderOrder& order, const std::optional<QUuid>& parent)
{
    static const QList<QUuid> none;
    if (!parent)
        return order.rootFolderOrder;
    const auto it = order.childFolderOrder.constFind(*parent);
    return it == order.childFolderOrder.cend() ? none : *it;
}

/// The folder in whose list a folder is shown; a stray is shown at the top level.
std::optional<QUuid> shownParent(const FolderRecord& folder, const BinderOrder& order)
{
    if (folder.parentFolderID && siblings(order, folder.parentFolderID).contains(folder.id))
        return folder.parentFolderID;
    return std::nullopt;
}

std::optional<BinderMove> dropFolder(const QUuid& dragged, const FolderRecord& target, double y,
                                     const BinderOrder& order,
                                     const RecordTable<FolderRecord>& folders)
{
    BinderMove move{{BinderRowID::Kind::Folder, dragged}, target.id, std::nullopt};
    if (y < folderUpperZone) {
        move.container = shownParent(target, order);
        move.before = target.id;
    } else if (y >= folderLowerZone) {
        move.container = shownParent(target, order);
        move.before = nextIn(siblings(order, move.container), target.id);
    }
    // Nothing comes behind the Trash, and nothing before or after it is inside it.
    if (target.isTrash() || !canReparentFolder(dragged, move.container, folders) ||
        target.id == dragged)
        return std::nullopt;
    if (move.before == dragged)
        move.before = nextIn(siblings(order, move.container), dragged);
    return move;
}

} // namespace

QString label(BinderSortOrder order)
{
    static constexpr std::array<const char*, binderSortOrderCount> names{
        QT_TRANSLATE_NOOP("BinderSortOrder", "Custom"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "Recent"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "Oldest"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "A \u2192 Z"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "Z \u2192 A"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "Created (Newest)"),
        QT_TRANSLATE_NOOP("BinderSortOrder", "Created (Oldest)")};
    return QCoreApplication::translate("BinderSortOrder", names.at(size_t(order)));
}

BinderSortOrder binderSortOrder(const QString& stored)
{
    return fromRawValue<BinderSortOrder>(stored).value_or(BinderSortOrder::Custom);
}

int NoteOrder::compare(const NoteRecord& a, const NoteRecord& b) const
{
    const auto byTime = [](Timestamp one, Timestamp other) {
        return one < other ? -1 : int(other < one);
    };
    switch (m_order) {
    case BinderSortOrder::Custom:
        return 0;
    case BinderSortOrder::RecentModified:
        return byTime(b.updatedAt, a.updatedAt);
    case BinderSortOrder::OldestModified:
        return byTime(a.updatedAt, b.updatedAt);
    case BinderSortOrder::AlphabeticalAZ:
        return titleKey(a).compare(titleKey(b));
    case BinderSortOrder::AlphabeticalZA:
        return titleKey(b).compare(titleKey(a));
    case BinderSortOrder::CreatedNewest:
        return byTime(b.createdAt, a.createdAt);
    case BinderSortOrder::CreatedOldest:
        return byTime(a.createdAt, b.createdAt);
    }
    return 0;
}

QList<Shared<NoteRecord>> sortedNotes(QList<Shared<NoteRecord>> notes, BinderSortOrder order)
{
    if (order == BinderSortOrder::Custom)
        return notes;
    if (order != BinderSortOrder::AlphabeticalAZ && order != BinderSortOrder::AlphabeticalZA) {
        const NoteOrder noteOrder(order);
        std::stable_sort(notes.begin(), notes.end(), [&](const auto& a, const auto& b) {
            return noteOrder.compare(*a, *b) < 0;
        });
        return notes;
    }
    // Each title's key is made once.
    const int sign = order == BinderSortOrder::AlphabeticalAZ ? 1 : -1;
    QList<std::pair<QCollatorSortKey, Shared<NoteRecord>>> keyed;
    keyed.reserve(notes.size());
    for (const auto& note : std::as_const(notes))
        keyed.append({titleKey(*note), note});
    std::stable_sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
        return sign * a.first.compare(b.first) < 0;
    });
    for (qsizetype i = 0; i < keyed.size(); ++i)
        notes[i] = keyed.at(i).second;
    return notes;
}

QString BinderDragPayload::text(const BinderRowID& row)
{
    return (row.kind == BinderRowID::Kind::Folder ? folderPrefix : notePrefix) + uuidText(row.id);
}

std::optional<BinderRowID> BinderDragPayload::parse(const QString& text)
{
    for (const auto& [prefix, kind] : {std::pair(folderPrefix, BinderRowID::Kind::Folder),
                                       std::pair(notePrefix, BinderRowID::Kind::Note)}) {
        if (!text.startsWith(prefix))
            continue;
        if (const auto id = uuidFromText(QStringView(text).mid(prefix.size())))
            return BinderRowID{kind, *id};
    }
    return std::nullopt;
}

bool isDescendant(const QUuid& folder, const QUuid& ancestor,
                  const RecordTable<FolderRecord>& folders)
{
    const auto* at = folders.find(folder);
    for (qsizetype steps = 0; at && (*at)->parentFolderID && steps <= folders.size(); ++steps) {
        if (*(*at)->parentFolderID == ancestor)
            return true;
        at = folders.find(*(*at)->parentFolderID);
    }
    return false;
}

bool canReparentFolder(const QUuid& folder, const std::optional<QUuid>& parent,
                       const RecordTable<FolderRecord>& folders)
{
    if (folder == FolderRecord::trashFolderID || !folders.contains(folder))
        return false;
    if (!parent)
        return true;
    return *parent != folder && *parent != FolderRecord::trashFolderID &&
           folders.contains(*parent) && !isDescendant(*parent, folder, folders);
}

QList<QUuid> folderSubtreeIDs(const QUuid& root, const BinderOrder& order)
{
    QList<QUuid> subtree{root};
    for (qsizetype i = 0; i < subtree.size(); ++i)
        subtree += order.childFolderOrder.value(subtree.at(i));
    return subtree;
}

std::optional<BinderMove> resolveDrop(const BinderRowID& dragged, const BinderRowID& target,
                                      double y, const BinderOrder& order,
                                      const RecordTable<FolderRecord>& folders,
                                      const RecordTable<NoteRecord>& notes, const QUuid& projectID)
{
    if (dragged == target)
        return std::nullopt;
    const auto* folder =
        target.kind == BinderRowID::Kind::Folder ? folders.find(target.id) : nullptr;
    if (dragged.kind == BinderRowID::Kind::Folder)
        return folder ? dropFolder(dragged.id, **folder, y, order, folders) : std::nullopt;
    if (!notes.contains(dragged.id))
        return std::nullopt;

    BinderMove move{dragged, target.id, std::nullopt};
    if (folder) {
        const QList<QUuid> inside = order.noteOrderByFolder.value(target.id);
        if (y < folderUpperZone && !inside.isEmpty())
            move.before = inside.first();
    } else if (const auto* note = notes.find(target.id)) {
        move.container = folders.contains((*note)->folderID) ? (*note)->folderID : projectID;
        move.before = y < noteMiddle
                          ? std::optional(target.id)
                          : nextIn(order.noteOrderByFolder.value(*move.container), target.id);
    } else {
        return std::nullopt;
    }
    if (move.before == dragged.id)
        move.before = nextIn(order.noteOrderByFolder.value(*move.container), dragged.id);
    return move;
}

namespace {

/// Rows that lie in one folder, or at the top.
struct Siblings {
    std::optional<QUuid> folder;
    QSet<QUuid> selected;
    bool hasFolders = false;
    bool hasNotes = false;
};

std::optional<Siblings> siblingsOf(const QList<BinderRowID>& rows,
                                   const RecordTable<FolderRecord>& folders,
                                   const RecordTable<NoteRecord>& notes)
{
    Siblings siblings;
    for (const BinderRowID& row : rows) {
        std::optional<QUuid> folder;
        if (row.kind == BinderRowID::Kind::Folder) {
            const auto* record = folders.find(row.id);
            if (!record || (*record)->isTrash())
                return std::nullopt;
            folder = (*record)->parentFolderID;
            siblings.hasFolders = true;
        } else {
            const auto* record = notes.find(row.id);
            if (!record || (*record)->folderID == FolderRecord::trashFolderID)
                return std::nullopt;
            folder = (*record)->folderID;
            siblings.hasNotes = true;
        }
        if (folder && !folders.contains(*folder))
            folder.reset();
        if (!siblings.selected.isEmpty() && siblings.folder != folder)
            return std::nullopt;
        siblings.folder = folder;
        siblings.selected.insert(row.id);
    }
    return rows.isEmpty() ? std::nullopt : std::optional(std::move(siblings));
}

} // namespace

std::optional<RowsMove> resolveStep(const QList<BinderRowID>& rows, RowsStep step,
                                    BinderSortOrder sorting, const BinderOrder& order,
                                    const RecordTable<FolderRecord>& folders,
                                    const RecordTable<NoteRecord>& notes, const QUuid& projectID)
{
    const auto siblings = siblingsOf(rows, folders, notes);
    if (!siblings)
        return std::nullopt;
    const auto foldersIn = [&](const std::optional<QUuid>& folder) {
        return folder ? order.childFolderOrder.value(*folder) : order.rootFolderOrder;
    };
    const auto notesIn = [&](const std::optional<QUuid>& folder) {
        return order.noteOrderByFolder.value(folder.value_or(projectID));
    };
    const auto isSelected = [&](const QUuid& id) {
        return siblings->selected.contains(id);
    };
    const auto kind = siblings->hasFolders ? BinderRowID::Kind::Folder : BinderRowID::Kind::Note;
    const auto before = [&](const QList<QUuid>& list, qsizetype at) {
        return at < list.size() ? std::optional(BinderRowID{kind, list.at(at)}) : std::nullopt;
    };
    switch (step) {
    case RowsStep::Up:
    case RowsStep::Down: {
        if ((siblings->hasFolders && siblings->hasNotes) ||
            (siblings->hasNotes && sorting != BinderSortOrder::Custom))
            return std::nullopt;
        const QList<QUuid> list =
            siblings->hasFolders ? foldersIn(siblings->folder) : notesIn(siblings->folder);
        const auto first = std::ranges::find_if(list, isSelected) - list.begin();
        const auto end =
            list.size() - (std::find_if(list.rbegin(), list.rend(), isSelected) - list.rbegin());
        // What lies between rows that are apart goes below them, or above them.
        const bool isApart = end - first > siblings->selected.size();
        if (step == RowsStep::Up && (first > 0 || isApart))
            return RowsMove{siblings->folder, before(list, std::max<qsizetype>(first - 1, 0))};
        if (step == RowsStep::Down && (end < list.size() || isApart))
            return RowsMove{siblings->folder, before(list, end + 1)};
        return std::nullopt;
    }
    case RowsStep::Outward: {
        const auto* from = siblings->folder ? folders.find(*siblings->folder) : nullptr;
        if (!from)
            return std::nullopt;
        const auto parent = (*from)->parentFolderID;
        const auto above = parent && folders.contains(*parent) ? parent : std::nullopt;
        const QList<QUuid> list = siblings->hasFolders ? foldersIn(above) : notesIn(above);
        const qsizetype at = siblings->hasFolders ? list.indexOf(*siblings->folder) + 1 : 0;
        return RowsMove{above, before(list, at)};
    }
    case RowsStep::Inward: {
        std::optional<QUuid> into;
        for (const QUuid& each : foldersIn(siblings->folder)) {
            if (isSelected(each))
                break;
            into = each;
        }
        return into && *into != FolderRecord::trashFolderID
                   ? std::optional(RowsMove{into, std::nullopt})
                   : std::nullopt;
    }
    }
    return std::nullopt;
}

std::optional<QUuid> neighbourAfterRemoval(const QList<QUuid>& list, const QSet<QUuid>& removed)
{
    std::optional<QUuid> before;
    bool passedRemoved = false;
    for (const QUuid& id : list) {
        if (removed.contains(id)) {
            passedRemoved = true;
            continue;
        }
        if (passedRemoved)
            return id;
        before = id;
    }
    return before;
}

} // namespace orvane
