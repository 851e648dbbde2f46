// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/InspectorView.h"

#include "core/NoteVersionHistoryStore.h"
#include "shell/ElidedLabel.h"
#include "shell/Wording.h"

#include <QGridLayout>
#include <QLabel>
#include <QTimer>

namespace orvane {

namespace {

constexpr int padding = 16;
/// A long note takes a while to count, so a burst of changes is shown once.
constexpr int refreshPause = 150;

} // namespace

InspectorView::InspectorView(AppState& appState, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Inspector, parent)
    , m_appState(appState)
    , m_details(new QWidget(this))
    , m_nothing(makeLabel(tr("Select a note to see its details."), TextStyle::Body,
                          LabelInk::Secondary, this))
    , m_heading(makeLabel({}, TextStyle::SectionHead, LabelInk::Secondary))
    , m_grid(new QGridLayout)
    , m_refreshTimer(new QTimer(this))
{
    setMinimumWidth(220);
    setMaximumWidth(420);
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 20, padding, padding);
    layout->setSpacing(0);
    auto* details = new QVBoxLayout(m_details);
    details->setContentsMargins({});
    details->setSpacing(12);
    details->addWidget(m_heading);
    m_grid->setHorizontalSpacing(16);
    m_grid->setVerticalSpacing(6);
    m_grid->setColumnStretch(1, 1);
    details->addLayout(m_grid);
    m_title = addRow(tr("Title"));
    m_created = addRow(tr("Created"));
    m_changed = addRow(tr("Changed"));
    m_words = addRow(tr("Words"));
    m_folder = addRow(tr("Folder"));
    m_notes = addRow(tr("Notes"));
    layout->addWidget(m_details);
    layout->addStretch(2);
    layout->addWidget(m_nothing);
    layout->addStretch(3);
    m_refreshTimer->setSingleShot(true);
    m_refreshTimer->setInterval(refreshPause);
    connect(m_refreshTimer, &QTimer::timeout, this, &InspectorView::refresh);
    connect(&appState, &AppState::selectionChanged, this, &InspectorView::refresh);
    connect(&appState, &AppState::notebookReset, this, &InspectorView::refresh);
    const auto later = [this] {
        m_refreshTimer->start();
    };
    connect(&appState, &AppState::noteChanged, this, later);
    connect(&appState, &AppState::folderChanged, this, later);
    connect(&appState, &AppState::binderStructureChanged, this, later);
    refresh();
}

QLabel* InspectorView::addRow(const QString& label)
{
    const int row = m_grid->rowCount();
    auto* name = makeLabel(label, TextStyle::Body, LabelInk::Secondary);
    auto* value = new ElidedLabel(m_details);
    setTextStyle(value, TextStyle::Body);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setAccessibleName(label);
    name->setBuddy(value);
    m_grid->addWidget(name, row, 0);
    m_grid->addWidget(value, row, 1);
    return value;
}

void InspectorView::show(const QString& heading, const QList<std::pair<QLabel*, QString>>& values)
{
    m_heading->setText(heading);
    for (int i = 0; i < m_grid->count(); ++i)
        m_grid->itemAt(i)->widget()->hide();
    for (const auto& [label, text] : values) {
        label->setText(text);
        label->show();
        const int at = m_grid->indexOf(label);
        m_grid->itemAt(at - 1)->widget()->show();
    }
    m_details->setVisible(!values.isEmpty());
    m_nothing->setVisible(values.isEmpty());
}

void InspectorView::refresh()
{
    m_refreshTimer->stop();
    const auto row = m_appState.selectedBinderRowID();
    if (row && row->kind == BinderRowID::Kind::Note) {
        if (const NoteRecord* note = m_appState.note(row->id))
            return showNote(*note);
    } else if (row) {
        if (const FolderRecord* folder = m_appState.folder(row->id))
            return showFolder(*folder);
    }
    show({}, {});
}

void InspectorView::showNote(const NoteRecord& note)
{
    const Timestamp now = m_appState.services().clock.now();
    const FolderRecord* folder = m_appState.folder(note.folderID);
    show(tr("Note"), {{m_title, note.titleForList()},
                      {m_created, dayInWords(note.createdAt)},
                      {m_changed, momentInWords(note.updatedAt, now)},
                      {m_words, grouped(wordCount(note.body))},
                      {m_folder, folder ? folder->titleForList() : tr("None")}});
}

void InspectorView::showFolder(const FolderRecord& folder)
{
    const FolderRecord* parent =
        folder.parentFolderID ? m_appState.folder(*folder.parentFolderID) : nullptr;
    show(folder.isTrash() ? tr("Trash") : tr("Folder"),
         {{m_title, folder.titleForList()},
          {m_created, dayInWords(folder.createdAt)},
          {m_folder, parent ? parent->titleForList() : tr("None")},
          {m_notes, grouped(m_appState.orderedNotes(folder.id).size())}});
}

} // namespace orvane
