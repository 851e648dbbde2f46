// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/MoveToSheet.h"

#include "appearance/OrvaneStyle.h"
#include "shell/binder/MoveTargets.h"

#include <QHBoxLayout>
#include <QListView>
#include <QPushButton>

namespace orvane {

QString MoveToSheet::titleFor(const QList<BinderRowID>& rows)
{
    const auto isNote = [](const BinderRowID& row) {
        return row.kind == BinderRowID::Kind::Note;
    };
    const int count = int(rows.size());
    if (std::ranges::all_of(rows, isNote))
        return tr("Move %n notes to…", nullptr, count);
    if (std::ranges::none_of(rows, isNote))
        return tr("Move %n folders to…", nullptr, count);
    return tr("Move %n rows to…", nullptr, count);
}

MoveToSheet::MoveToSheet(AppState& appState, QList<BinderRowID> rows, Look& look, QWidget* parent)
    : MoveToSheet(std::make_unique<MoveTargets>(appState, rows), appState, rows, look, parent)
{}

MoveToSheet::MoveToSheet(std::unique_ptr<MoveTargets> targets, AppState& appState,
                         QList<BinderRowID> rows, Look& look, QWidget* parent)
    : SearchListSheet({titleFor(rows), tr("Find a folder")}, *targets, Form::Popover, look, parent)
    , m_targets(std::move(targets))
    , m_appState(appState)
    , m_rows(std::move(rows))
{
    list().setItemDelegate(new MoveTargetDelegate(look, this));
    auto* newFolder =
        new QPushButton(look.icon(Symbol::NewFolder, Surface::Card), tr("New Folder"), this);
    buttons().insertWidget(0, newFolder);
    QPushButton* cancel = addButton(tr("Cancel"));
    QPushButton* move = addButton(tr("Move"));
    setButtonTone(move, ButtonTone::Accent);
    connect(newFolder, &QPushButton::clicked, this, [this] {
        const QModelIndex at = marked();
        emit newFolderRequested(at.isValid() ? m_targets->folder(at) : std::nullopt);
    });
    connect(cancel, &QPushButton::clicked, this, [this] { dismiss(); });
    connect(move, &QPushButton::clicked, this, [this] {
        if (marked().isValid())
            choose(marked());
    });
    refresh();
}

MoveToSheet::~MoveToSheet() = default;

void MoveToSheet::search(const QString& text)
{
    m_targets->search(text);
}

QModelIndex MoveToSheet::best() const
{
    return m_targets->best();
}

void MoveToSheet::clicked(const QModelIndex& index)
{
    mark(index);
}

void MoveToSheet::choose(const QModelIndex& index)
{
    if (!m_appState.moveRows(m_rows, m_targets->folder(index)))
        m_appState.services().beeper.beep();
    close();
}

} // namespace orvane
