// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/NoRecordPage.h"

#include "appearance/Look.h"
#include "core/state/AppState.h"
#include "editor/session/EditorDraft.h"
#include "text/store/Graphemes.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

NoRecordPage::NoRecordPage(AppState& appState, QWidget* parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_text(makeLabel({}, TextStyle::Body, LabelInk::Secondary))
    , m_newNote(new QPushButton(tr("New Note"), this))
    , m_openAnyway(new QPushButton(tr("Open It Anyway"), this))
{
    for (QPushButton* each : {m_newNote, m_openAnyway})
        each->setAutoDefault(true); // Return presses it, too
    connect(m_newNote, &QPushButton::clicked, this, &NoRecordPage::newNoteRequested);
    connect(m_openAnyway, &QPushButton::clicked, this, [this] {
        if (const auto note = m_appState.selection().noteHeldBack())
            m_appState.openNote(*note);
    });
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    layout->addStretch(5);
    layout->addWidget(makeLabel(tr("No Note Selected"), TextStyle::WindowTitle), 0,
                      Qt::AlignHCenter);
    layout->addWidget(m_text, 0, Qt::AlignHCenter);
    layout->addSpacing(8);
    layout->addWidget(m_newNote, 0, Qt::AlignHCenter);
    layout->addWidget(m_openAnyway, 0, Qt::AlignHCenter);
    layout->addStretch(6);
    connect(&appState.selection(), &Selection::noteHeldBackChanged, this, &NoRecordPage::refresh);
    connect(&appState, &AppState::notebookReset, this, &NoRecordPage::refresh);
    connect(&appState, &AppState::notebookCompleted, this, &NoRecordPage::refresh);
    connect(&appState.projectSession(), &ProjectSession::currentProjectChanged, this,
            &NoRecordPage::refresh);
    refresh();
}

void NoRecordPage::refresh()
{
    constexpr qsizetype longestTitle = 60;
    const auto held = m_appState.selection().noteHeldBack();
    const NoteRecord* note = held ? m_appState.note(*held) : nullptr;
    const QString title = note ? editableTitle(*note).simplified() : QString();
    const QString shown = title.size() <= longestTitle
                              ? title
                              : title.left(graphemeStart(title, longestTitle)) + u'…';
    m_text->setText(!note ? tr("Create a note or select one from the list.")
                    : shown.isEmpty()
                        ? tr("The last note took too long to show, so it wasn’t opened.")
                        : tr("“%1” took too long to show, so it wasn’t opened.").arg(shown));
    m_newNote->setVisible(!note && m_appState.canCreateOrEdit());
    m_openAnyway->setVisible(note);
}

} // namespace orvane
