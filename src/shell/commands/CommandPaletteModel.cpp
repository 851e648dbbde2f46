// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/CommandPaletteModel.h"

#include "shell/commands/CommandIcons.h"

namespace orvane {

using Kind = PaletteRow::Kind;

CommandPaletteModel::CommandPaletteModel(PaletteSearch search,
                                         std::function<QString(const QUuid&)> containerTitle,
                                         QObject* parent)
    : QAbstractListModel(parent)
    , m_search(std::move(search))
    , m_containerTitle(std::move(containerTitle))
{
    setQuery({});
}

void CommandPaletteModel::setQuery(const QString& query)
{
    beginResetModel();
    m_rows = m_search.rows(query);
    endResetModel();
}

QModelIndex CommandPaletteModel::best() const
{
    const qsizetype best = PaletteSearch::bestRow(m_rows);
    return best < 0 ? QModelIndex() : index(int(best));
}

QModelIndex CommandPaletteModel::stepped(const QModelIndex& from, int by) const
{
    const int direction = by > 0 ? 1 : -1;
    QModelIndex reached = from;
    int left = std::abs(by);
    for (int at = from.row() + direction; left > 0 && at >= 0 && at < m_rows.size();
         at += direction) {
        if (m_rows[at].isHead())
            continue;
        reached = index(at);
        --left;
    }
    return reached;
}

PaletteLine CommandPaletteModel::line(const QModelIndex& index) const
{
    const PaletteRow& row = this->row(index);
    PaletteLine line;
    line.kind = row.kind;
    line.found = row.found;
    switch (row.kind) {
    case Kind::CommandsHead:
        line.title = tr("Commands");
        break;
    case Kind::NotesHead:
        line.title = tr("Notes");
        break;
    case Kind::Command: {
        const PaletteCommand& command = m_search.command(row);
        line.drawing = commandDrawing(*command.command);
        line.title = command.title;
        line.place = command.menu;
        line.key = command.key;
        break;
    }
    case Kind::Note: {
        const PaletteNote& note = m_search.note(row);
        line.symbol = note.isPdf ? Symbol::PdfNote : Symbol::Note;
        line.title = note.title;
        line.place = m_containerTitle(note.container);
        break;
    }
    }
    return line;
}

const Command* CommandPaletteModel::command(const QModelIndex& index) const
{
    return row(index).kind == Kind::Command ? m_search.command(row(index)).command : nullptr;
}

std::optional<QUuid> CommandPaletteModel::note(const QModelIndex& index) const
{
    if (row(index).kind != Kind::Note)
        return std::nullopt;
    return m_search.note(row(index)).id;
}

int CommandPaletteModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant CommandPaletteModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::DisplayRole)
        return line(index).title;
    if (role == Qt::AccessibleTextRole) {
        const PaletteLine shown = line(index);
        QStringList parts{shown.title, shown.place, shown.key};
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
    return {};
}

Qt::ItemFlags CommandPaletteModel::flags(const QModelIndex& index) const
{
    return row(index).isHead() ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

} // namespace orvane
