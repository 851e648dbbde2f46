// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/state/Selection.h"

#include "core/records/JsonObjectReader.h"
#include "core/state/SessionKeys.h"
#include "platform/Log.h"

#include <QScopedValueRollback>

namespace orvane {

namespace {

QString text(const std::optional<QUuid>& id)
{
    return id ? uuidText(*id) : QStringLiteral("nil");
}

} // namespace

Selection::Selection(const Notebook& notebook, UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , m_notebook(notebook)
    , m_defaults(defaults)
{}

std::optional<BinderRowID> Selection::selectedBinderRowID() const
{
    if (m_noteID)
        return BinderRowID{BinderRowID::Kind::Note, *m_noteID};
    if (m_folderID)
        return BinderRowID{BinderRowID::Kind::Folder, *m_folderID};
    return std::nullopt;
}

void Selection::select(const std::optional<QUuid>& folder, const std::optional<QUuid>& note)
{
    selectRows({});
    if (m_folderID == folder && m_noteID == note)
        return;
    if (m_noteID != note)
        emit selectedNoteAboutToChange(m_noteID, note);
    m_folderID = folder;
    m_noteID = note;
    if (note)
        holdBack(std::nullopt);
    emit selectionChanged();
}

void Selection::selectRows(const QList<BinderRowID>& rows)
{
    const QList<BinderRowID> together = rows.size() < 2 ? QList<BinderRowID>() : rows;
    if (m_rows == together)
        return;
    m_rows = together;
    emit rowsChanged();
}

void Selection::dropMissingRows()
{
    QList<BinderRowID> there = m_rows;
    there.removeIf([this](const BinderRowID& row) {
        return row.kind == BinderRowID::Kind::Note ? !m_notebook.notes.contains(row.id)
                                                   : !m_notebook.folders.contains(row.id);
    });
    selectRows(there);
}

void Selection::holdBack(const std::optional<QUuid>& note)
{
    if (m_noteHeldBack == note)
        return;
    m_noteHeldBack = note;
    emit noteHeldBackChanged();
}

void Selection::selectNote(const std::optional<QUuid>& id)
{
    const auto* selected = id ? m_notebook.notes.find(*id) : nullptr;
    if (id && !selected)
        return;
    if (!selected || !m_projectID) {
        select(m_folderID, id);
        if (m_projectID)
            m_defaults.remove(SessionKeys::lastOpenedNoteID(*m_projectID));
        return;
    }
    const QUuid container = (*selected)->folderID;
    const QUuid project = *m_projectID;
    select(m_notebook.folders.contains(container) ? std::optional(container) : std::nullopt, id);
    m_defaults.set(SessionKeys::lastOpenedNoteID(project), uuidText(*id));
    m_defaults.set(SessionKeys::lastOpenedProjectID, uuidText(project));
    selectProjectFolder(m_openFolder);
    if (!m_isFromHistory)
        m_history.record(*id);
    emit historyFlagsChanged();
    log("selectNote");
}

void Selection::selectFolder(const QUuid& id)
{
    if (!m_notebook.folders.contains(id))
        return;
    select(id, std::nullopt);
    if (m_projectID)
        selectProjectFolder(m_openFolder);
    log("selectFolder");
}

void Selection::selectBinderRow(const std::optional<BinderRowID>& row)
{
    if (!row) {
        selectProjectRoot();
        log("selectBinderRow.nil");
    } else if (row->kind == BinderRowID::Kind::Note) {
        selectNote(row->id);
    } else {
        selectFolder(row->id);
    }
}

void Selection::selectProjectRoot()
{
    if (!m_projectID)
        return;
    selectProjectFolder(m_openFolder);
    select(std::nullopt, std::nullopt);
}

void Selection::selectProjectFolder(const std::optional<QString>& folder)
{
    if (m_projectFolder == folder)
        return;
    m_projectFolder = folder;
    emit selectedProjectChanged();
}

std::optional<QUuid> Selection::stepThroughHistory(int delta)
{
    return m_history.navigate(delta,
                              [this](const QUuid& id) { return m_notebook.notes.contains(id); });
}

void Selection::selectFromHistory(const QUuid& note)
{
    const QScopedValueRollback fromHistory(m_isFromHistory, true);
    selectNote(note);
}

void Selection::setProject(const std::optional<QUuid>& id, const QString& folder)
{
    m_projectID = id;
    m_openFolder = folder;
}

void Selection::projectMoved(const QString& from, const QString& to)
{
    m_openFolder = to;
    if (m_projectFolder == from)
        m_projectFolder = to;
}

void Selection::forget()
{
    m_history.clear();
    m_rows.clear();
    m_folderID.reset();
    m_noteID.reset();
    holdBack(std::nullopt);
}

void Selection::log(const char* reason) const
{
    const auto* selected = m_noteID ? m_notebook.notes.find(*m_noteID) : nullptr;
    qCDebug(selectionSyncLog,
            "binderSelection reason=%s selectedRow=%ls selectedDocumentID=%ls "
            "selectedDocumentTitle=%ls",
            reason, qUtf16Printable(text(m_noteID ? m_noteID : m_folderID)),
            qUtf16Printable(text(m_noteID)),
            qUtf16Printable(selected ? (*selected)->title : QString()));
}

} // namespace orvane
