// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/VersionHistorySection.h"

#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"
#include "editor/pane/EditorPaneView.h"
#include "shell/inspector/FlowLayout.h"
#include "shell/inspector/VersionListView.h"
#include "shell/inspector/VersionPreviewSheet.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

namespace orvane {

namespace {

constexpr int padding = 16;
/// A file up to this size is read within a frame.
constexpr qint64 readAtOnce = 1'000'000;

/// What stands in the place of a list of versions.
QString inWords(const std::optional<VersionHistoryError>& problem)
{
    if (!problem)
        return VersionHistorySection::tr("No snapshots yet.");
    if (problem->code == VersionHistoryError::Code::Damaged)
        return VersionHistorySection::tr(
            "The snapshots of this note are damaged. Their file stays as it is and "
            "is set aside when the next snapshot is kept.");
    return VersionHistorySection::tr(
        "The snapshots of this note can't be read at the moment. Nothing is "
        "changed in their file.");
}

} // namespace

VersionHistorySection::VersionHistorySection(AppState& appState, SheetHost& sheets, Look& look,
                                             QWidget* parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_sheets(sheets)
    , m_look(look)
    , m_count(makeLabel({}, TextStyle::Label, LabelInk::Secondary, this))
    , m_nothing(makeLabel(tr("No snapshots yet."), TextStyle::Body, LabelInk::Secondary, this))
    , m_list(new VersionListView(look, this))
    , m_hint(makeLabel(tr("Select a snapshot to preview or restore."), TextStyle::Label,
                       LabelInk::Secondary, this))
{
    m_list->setActions(makeButtons());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 15, 0, 0);
    layout->setSpacing(0);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(padding, 0, padding, 0);
    head->addWidget(makeLabel(tr("Version History"), TextStyle::SectionHead, LabelInk::Secondary),
                    1);
    head->addWidget(m_count);
    layout->addLayout(head);
    layout->addSpacing(8);
    const QMargins sides(padding, 0, padding, 0);
    m_nothing->setContentsMargins(sides);
    m_nothing->setWordWrap(true);
    m_hint->setContentsMargins(padding, 8, padding, 0);
    m_hint->setWordWrap(true);
    layout->addWidget(m_nothing);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_hint);
    layout->addStretch();
    connect(m_list, &VersionListView::selectionMoved, this, &VersionHistorySection::showChoice);
    connect(m_list, &VersionListView::versionActivated, this, &VersionHistorySection::preview);
    connect(m_list, &VersionListView::deletionRequested, this,
            &VersionHistorySection::removeSelected);
    m_observation =
        appState.services().notifications.observe(snapshotsDidChange, [this](const QUuid& noteID) {
            if (noteID == m_noteID)
                load();
        });
    showRows();
}

QWidget* VersionHistorySection::makeButtons()
{
    auto* holder = new QWidget;
    auto* outer = new QVBoxLayout(holder);
    outer->setContentsMargins(padding, 0, padding, 0);
    auto* row = new QWidget(holder);
    outer->addWidget(row);
    auto* flow = new FlowLayout(row, 8);
    auto* preview = new QPushButton(tr("Preview"), row);
    m_restore = new QPushButton(tr("Restore"), row);
    m_delete = new QPushButton(tr("Delete"), row);
    setButtonTone(m_delete, ButtonTone::DangerText);
    int at = 0;
    for (QPushButton* button : {preview, m_restore, m_delete}) {
        button->setFixedHeight(28);
        flow->insertWidget(at++, button);
    }
    connect(preview, &QPushButton::clicked, this, &VersionHistorySection::preview);
    connect(m_restore, &QPushButton::clicked, this, [this] {
        if (const auto version = readSelected())
            restore(*version);
    });
    connect(m_delete, &QPushButton::clicked, this, &VersionHistorySection::removeSelected);
    return holder;
}

void VersionHistorySection::setNote(const QUuid& noteID)
{
    if (m_noteID == noteID)
        return;
    m_noteID = noteID;
    m_list->selectVersion(-1);
    show(Versions());
    load();
}

void VersionHistorySection::refresh(int wordsNow)
{
    m_wordsNow = wordsNow;
    showRows();
}

void VersionHistorySection::load()
{
    const quint64 wish = ++m_load;
    const auto& project = m_appState.projectSession().currentProject();
    if (!project)
        return show(Versions());
    NoteVersionHistoryStore& history = m_appState.versionHistory();
    const HistoryPlace place = m_appState.historyPlace();
    const QFileInfo file(VersionFiles::filePath(place.projectRootPath, m_noteID));
    if (file.size() <= readAtOnce && !history.isPending(m_noteID))
        return show(history.list(m_noteID, place));
    history.listLater(m_noteID, place, [self = QPointer(this), wish](const Versions& versions) {
        if (self && self->m_load == wish)
            self->show(versions);
    });
}

void VersionHistorySection::show(const Versions& oldestFirst)
{
    const auto before = selected();
    const QList<NoteVersionSummary> all = oldestFirst.value_or(QList<NoteVersionSummary>());
    m_newestFirst = {all.rbegin(), all.rend()};
    m_problem = oldestFirst ? std::nullopt : std::optional(oldestFirst.error());
    showRows();
    int again = -1;
    for (qsizetype i = 0; before && i < m_newestFirst.size(); ++i) {
        if (m_newestFirst.at(i).id == before->id)
            again = int(i);
    }
    m_list->selectVersion(again);
    showChoice();
}

void VersionHistorySection::showRows()
{
    const bool any = !m_newestFirst.isEmpty();
    m_count->setText(tr("%Ln snapshots", nullptr, int(m_newestFirst.size())));
    m_count->setVisible(any);
    m_nothing->setText(inWords(m_problem));
    m_nothing->setToolTip(m_problem ? m_problem->detail : QString());
    m_nothing->setVisible(!any);
    m_list->setVisible(any);
    m_list->setRows(versionRows(m_newestFirst, m_wordsNow, m_appState.services().clock.now()));
    showChoice();
}

void VersionHistorySection::showChoice()
{
    const bool any = !m_newestFirst.isEmpty();
    const bool chosen = selected().has_value();
    m_hint->setVisible(any && !chosen);
    m_list->setMaximumHeight(m_list->contentHeight());
    m_restore->setEnabled(!m_appState.projectSession().isReadOnly());
    m_delete->setEnabled(!m_appState.projectSession().isReadOnly());
}

std::optional<NoteVersionSummary> VersionHistorySection::selected() const
{
    const int at = m_list->selectedVersion();
    if (at < 0 || at >= m_newestFirst.size())
        return std::nullopt;
    return m_newestFirst.at(at);
}

std::optional<NoteVersionSnapshot> VersionHistorySection::readSelected()
{
    const auto version = selected();
    if (!version)
        return std::nullopt;
    auto whole = VersionFiles::read(m_appState.historyPlace().projectRootPath, *version);
    if (whole)
        return *std::move(whole);
    tell(tr("The Version Can't Be Read"), tr("Nothing is changed in its file.\n\n%1"),
         whole.error());
    return std::nullopt;
}

void VersionHistorySection::preview()
{
    const auto version = readSelected();
    const NoteRecord* note = m_appState.note(m_noteID);
    if (!version || !note)
        return;
    const Services& services = m_appState.services();
    auto* sheet = new VersionPreviewSheet(
        *version, *note, services.clock.now(), editorFontFamilySetting.read(services.defaults),
        m_appState.projectSession().isReadOnly() ? VersionPreviewSheet::Restoring::NotPossible
                                                 : VersionPreviewSheet::Restoring::Offered,
        m_look);
    connect(sheet, &VersionPreviewSheet::restoreRequested, this,
            [this, version = *version] { restore(version); });
    m_sheets.present(sheet);
}

void VersionHistorySection::restore(const NoteVersionSnapshot& version)
{
    if (const auto restored = m_appState.restoreVersion(version); !restored)
        return tell(tr("The Version Was Not Restored"),
                    tr("The note as it is now could not be kept as a version first, so it stays "
                       "as it is.\n\n%1"),
                    restored.error());
    m_list->selectVersion(-1);
    m_list->setFocus(Qt::OtherFocusReason);
}

void VersionHistorySection::tell(const QString& title, const QString& text,
                                 const VersionHistoryError& error)
{
    if (error.code == VersionHistoryError::Code::NotAllowed)
        return;
    m_appState.services().questions.ask({.title = title,
                                         .text = text.arg(error.detail),
                                         .buttons = {tr("OK")},
                                         .suppression = {},
                                         .choices = {},
                                         .tone = Question::Tone::Warning});
}

void VersionHistorySection::removeSelected()
{
    const auto version = selected();
    if (!version || m_appState.projectSession().isReadOnly())
        return;
    const QPointer<VersionHistorySection> self(this);
    const Services& services = m_appState.services();
    const QString moment = versionMoment(version->capturedAt, services.clock.now());
    const Answer answer = services.questions.ask(
        {.title = tr("Delete This Snapshot?"),
         .text = tr("The version of %1 goes for good. The note stays as it is.").arg(moment),
         .buttons = {tr("Delete"), tr("Cancel")},
         .suppression = {},
         .choices = {},
         .tone = Question::Tone::Destructive});
    if (!self || answer.button != 0)
        return;
    const int at = m_list->selectedVersion();
    if (const auto deleted = m_appState.deleteVersion(version->noteID, version->id); !deleted)
        return tell(tr("The Snapshot Was Not Deleted"), tr("It is still there.\n\n%1"),
                    deleted.error());
    m_list->selectVersion(at);
    m_list->setFocus(Qt::OtherFocusReason);
}

} // namespace orvane
