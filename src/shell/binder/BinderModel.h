// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/binder/BinderRows.h"

#include <QAbstractItemModel>
#include <QTimer>

#include <memory>
#include <vector>

namespace orvane {

/// The Binder as a tree over the open notebook, with the rows of `BinderRows`. Follows `AppState`
/// by single changes: only another notebook resets it. What is below a folder is listed when the
/// folder is first opened.
class BinderModel : public QAbstractItemModel {
    Q_OBJECT
public:
    enum Role {
        IsFolderRole = Qt::UserRole + 1,
        IdRole,
        /// The second line of a note: its first words, or the day of its last change.
        SecondLineRole,
        /// Notes in a folder and everything below it.
        CountRole,
        DepthRole,
        IsPdfRole,
        IsTrashRole,
        IsPinnedRole,
        /// Tags in the note's order.
        TagsRole,
        /// The stored name of the picture that was chosen; empty for the usual one.
        IconRole,
    };

    explicit BinderModel(AppState& appState, QObject* parent = nullptr);
    ~BinderModel() override;

    [[nodiscard]] BinderRowID rowIdOf(const QModelIndex& index) const;
    /// The index of a folder or note, listing what lies on the way to it; invalid when there is
    /// none or the filter hides it.
    [[nodiscard]] QModelIndex indexOf(const BinderRowID& row);

    /// Shows only what has the text in its title, whatever its case, and the folders above it.
    void setTitleFilter(const QString& text);
    [[nodiscard]] const QString& titleFilter() const { return m_rows.titleFilter(); }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    /// A new title ends a rich one; the same title leaves it.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

signals:
    /// Rows that are selected, current or otherwise remembered show something else now.
    void rowsReplaced();

private:
    struct Node;

    void reset();
    void complete();
    /// Has every listed row shown anew; without roles all of it.
    void showAnew(const QList<int>& roles);
    void syncStructure();
    void syncChildren(Node& node);
    void removeMissing(Node& node, const QSet<BinderRowID>& wanted);
    void insertNew(Node& node, const QList<BinderRowID>& wanted);
    void reorder(Node& node, const QList<BinderRowID>& wanted);
    void follow(const NotebookChange& change);
    /// Moves a note whose place hangs on what changed of it, found by halving.
    void placeAgain(const BinderRowID& row);
    [[nodiscard]] size_t placeOf(const NoteRecord& note, const Node& node) const;
    void move(Node& parent, size_t from, size_t to);
    [[nodiscard]] QList<BinderRowID> wantedChildren(const Node& node) const;
    [[nodiscard]] Node* nodeOf(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex indexOfNode(const Node& node) const;
    Node* findOrList(const BinderRowID& row);
    [[nodiscard]] QVariant folderData(const FolderRecord& folder, int role) const;
    [[nodiscard]] QVariant noteData(const NoteRecord& note, int role) const;
    /// The second line as far as the text is known; the rest is read beside this thread.
    [[nodiscard]] QString secondLine(const NoteRecord& note) const;
    void learnSecondLines();

    AppState& m_appState;
    /// Notes whose second line was asked for and isn't known, until the event loop comes round.
    mutable QSet<QUuid> m_unknownLines;
    mutable QTimer m_learning;
    BinderRows m_rows;
    std::unique_ptr<Node> m_root;
    QHash<BinderRowID, Node*> m_nodes;
};

/// The line below a note's title in lists, as far as the text is known without reading.
[[nodiscard]] QString secondLineOf(const NoteRecord& note);

} // namespace orvane
