// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Icons.h"
#include "shell/commands/PaletteSearch.h"

#include <QAbstractListModel>

namespace orvane {

/// What one line of the palette shows.
struct PaletteLine {
    PaletteRow::Kind kind = PaletteRow::Kind::Command;
    Symbol symbol = Symbol::Note; ///< where there is no drawing
    QString drawing;              ///< of a command, by its name in the icon theme's actions
    QString title;
    QList<qsizetype> found; ///< places in the title
    QString place;          ///< the menu of a command, the folder of a note
    QString key;
};

/// The lines of the palette for one query. Heads of sections are no items: they can't be marked.
class CommandPaletteModel : public QAbstractListModel {
    Q_OBJECT
public:
    CommandPaletteModel(PaletteSearch search, std::function<QString(const QUuid&)> containerTitle,
                        QObject* parent = nullptr);

    void setQuery(const QString& query);
    /// The line that is meant best; invalid when there is none.
    [[nodiscard]] QModelIndex best() const;
    /// The nearest item `by` lines away, without wrapping; `from` when there is none.
    [[nodiscard]] QModelIndex stepped(const QModelIndex& from, int by) const;

    [[nodiscard]] PaletteLine line(const QModelIndex& index) const;
    /// The command of a line, or null.
    [[nodiscard]] const Command* command(const QModelIndex& index) const;
    /// The note of a line; nothing for a command.
    [[nodiscard]] std::optional<QUuid> note(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    [[nodiscard]] const PaletteRow& row(const QModelIndex& index) const
    {
        return m_rows[index.row()];
    }

    PaletteSearch m_search;
    std::function<QString(const QUuid&)> m_containerTitle;
    QList<PaletteRow> m_rows;
};

} // namespace orvane
