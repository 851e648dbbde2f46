// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/binder/BinderOrder.h"
#include "platform/StoredWords.h"

#include <QString>

#include <optional>

namespace orvane {

/// How the notes of each folder are shown. Only what is shown changes; the order by hand stays.
enum class BinderSortOrder {
    Custom,
    RecentModified,
    OldestModified,
    AlphabeticalAZ,
    AlphabeticalZA,
    CreatedNewest,
    CreatedOldest,
};
inline constexpr int binderSortOrderCount = 7;

inline constexpr QLatin1StringView binderSortOrderKey("settings.binder.sortOrder");
template <>
inline constexpr auto storedWords<BinderSortOrder> =
    std::to_array<QStringView>({u"Custom", u"Recent", u"Oldest", u"A \u2192 Z", u"Z \u2192 A",
                                u"Created (Newest)", u"Created (Oldest)"});

/// As the menu names it.
[[nodiscard]] QString label(BinderSortOrder order);
/// `Custom` for a text that names none.
[[nodiscard]] BinderSortOrder binderSortOrder(const QString& stored);

/// How two notes stand to each other in a sort order.
class NoteOrder {
public:
    explicit NoteOrder(BinderSortOrder order)
        : m_order(order)
    {}
    /// Less than 0 where `a` comes first; 0 where the order by hand decides, and always in
    /// `Custom`.
    [[nodiscard]] int compare(const NoteRecord& a, const NoteRecord& b) const;

private:
    BinderSortOrder m_order;
};

/// The notes of one container as they are shown; those that the sort order doesn't tell apart keep
/// their order.
[[nodiscard]] QList<Shared<NoteRecord>> sortedNotes(QList<Shared<NoteRecord>> notes,
                                                    BinderSortOrder order);

/// What a dragged row says: "folder:" or "note:" and an id.
namespace BinderDragPayload {
[[nodiscard]] QString text(const BinderRowID& row);
[[nodiscard]] std::optional<BinderRowID> parse(const QString& text);
} // namespace BinderDragPayload

/// Whether `folder` lies somewhere below `ancestor`.
[[nodiscard]] bool isDescendant(const QUuid& folder, const QUuid& ancestor,
                                const RecordTable<FolderRecord>& folders);
/// False for the folder itself and for what lies below it, for the Trash, and into the Trash.
[[nodiscard]] bool canReparentFolder(const QUuid& folder, const std::optional<QUuid>& parent,
                                     const RecordTable<FolderRecord>& folders);
/// The folder and everything below it, from the top down.
[[nodiscard]] QList<QUuid> folderSubtreeIDs(const QUuid& root, const BinderOrder& order);

/// Where a dropped row goes.
struct BinderMove {
    BinderRowID row;
    /// The new parent folder, or absent for the top level; for notes the container.
    std::optional<QUuid> container;
    std::optional<QUuid> before;

    bool operator==(const BinderMove&) const = default;
};

/// The effect of dropping `dragged` on the row `target` at `y`, in logical pixels from the top of
/// that row (folder rows are 48 high, note rows 40); nothing when the drop is refused. A folder
/// goes before, into or after a folder; a note before or after a note, before the first note of a
/// folder, or to its end.
[[nodiscard]] std::optional<BinderMove>
resolveDrop(const BinderRowID& dragged, const BinderRowID& target, double y,
            const BinderOrder& order, const RecordTable<FolderRecord>& folders,
            const RecordTable<NoteRecord>& notes, const QUuid& projectID);

/// One step of selected rows by the keyboard.
enum class RowsStep {
    Up,
    Down,
    Outward, ///< out of their folder, behind it
    Inward,  ///< into the folder above them, to its end
};
struct RowsMove {
    std::optional<QUuid> folder; ///< absent for the top level
    std::optional<BinderRowID> before;

    bool operator==(const RowsMove&) const = default;
};
/// Where rows of one folder go; nothing where they can't go that way: rows of several folders or of
/// the Trash, a first row up, a last one down, both kinds at once up or down, notes up or down in
/// an order that isn't by hand.
[[nodiscard]] std::optional<RowsMove> resolveStep(const QList<BinderRowID>& rows, RowsStep step,
                                                  BinderSortOrder sorting, const BinderOrder& order,
                                                  const RecordTable<FolderRecord>& folders,
                                                  const RecordTable<NoteRecord>& notes,
                                                  const QUuid& projectID);

/// What to select when the given notes leave a list: the next that stays behind the first of them,
/// else the last that stays.
[[nodiscard]] std::optional<QUuid> neighbourAfterRemoval(const QList<QUuid>& list,
                                                         const QSet<QUuid>& removed);

} // namespace orvane
