// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/InspectorView.h"

#include "commands/AppCommandEvents.h"
#include "core/records/Wording.h"
#include "core/versions/NoteVersion.h"
#include "shell/inspector/ImageSection.h"
#include "shell/inspector/TableSection.h"
#include "shell/inspector/TagsSection.h"
#include "shell/inspector/VersionHistorySection.h"
#include "shell/layout/PaneLayoutSettings.h"
#include "shell/window/ElidedLabel.h"
#include "shell/window/PaneRail.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QStackedLayout>
#include <QTimer>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int padding = 16;
/// A long note takes a while to count, so a burst of changes is shown once.
constexpr int refreshPause = 150;

/// A line in the border colour from one edge of the pane to the other.
class Divider final : public QWidget {
public:
    Divider(const Look& look, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
    {
        setFixedHeight(1);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), m_look.tokens().on(Surface::Inspector).border);
    }

private:
    const Look& m_look;
};

QString nameOf(InspectorView::Section section)
{
    return section == InspectorView::Section::Versions ? InspectorView::tr("Versions")
                                                       : InspectorView::tr("Details");
}

// As the settings hold it.
QString storedName(InspectorView::Section section)
{
    return section == InspectorView::Section::Versions ? QStringLiteral("versions")
                                                       : QStringLiteral("details");
}

} // namespace

InspectorView::InspectorView(AppState& appState, SheetHost& sheets, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Inspector, parent)
    , m_appState(appState)
    , m_sections(new QButtonGroup(this))
    , m_stack(new QStackedLayout)
    , m_scroll(new QScrollArea(this))
    , m_nothing(makeLabel({}, TextStyle::Body, LabelInk::Secondary, this))
    , m_heading(makeLabel({}, TextStyle::SectionHead, LabelInk::Secondary))
    , m_grid(new QGridLayout)
    , m_versions(new VersionHistorySection(appState, sheets, look, this))
    , m_refreshTimer(new QTimer(this))
{
    setMinimumWidth(220);
    m_nothing->setWordWrap(true);
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setContentsMargins(padding, 0, padding, 0);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->viewport()->setAutoFillBackground(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 8, 0, 8);
    column->setSpacing(0);
    column->addWidget(makeRail());
    column->addLayout(m_stack, 1);
    column->addWidget(makeLowerRail());
    m_scroll->setWidget(makeDetails(sheets));
    m_scroll->widget()->setAutoFillBackground(false);
    m_stack->setContentsMargins({});
    m_stack->addWidget(m_scroll);
    m_stack->addWidget(m_versions);
    m_stack->addWidget(m_nothing);
    m_refreshTimer->setSingleShot(true);
    m_refreshTimer->setInterval(refreshPause);
    connectAppState();
    const QString chosen = PaneLayoutSettings::inspectorSection.read(appState.services().defaults);
    showSection(chosen == storedName(Section::Versions) ? Section::Versions : Section::Details);
}

void InspectorView::showEvent(QShowEvent* event)
{
    SurfacePanel::showEvent(event);
    // What stands in a scroll area is laid out by posted events; the first frame has to be whole.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

QWidget* InspectorView::makeRail()
{
    auto* rail = new PaneRail(look(), Surface::InspectorTopRail, this);
    auto* row = new QHBoxLayout(rail->capsule());
    row->setContentsMargins(2, 0, 10, 0);
    row->setSpacing(0);
    const auto add = [&](Section section, Symbol symbol) {
        QToolButton* button = rail->makeButton(symbol, nameOf(section));
        button->setCheckable(true);
        m_sections->addButton(button, int(section));
        row->addWidget(button);
    };
    add(Section::Details, Symbol::Details);
    add(Section::Versions, Symbol::History);
    row->addSpacing(8);
    m_sectionName = rail->makeText();
    row->addWidget(m_sectionName, 1);
    connect(m_sections, &QButtonGroup::idClicked, this,
            [this](int section) { showSection(Section(section)); });
    return rail;
}

QWidget* InspectorView::makeLowerRail()
{
    m_lowerRail = new PaneRail(look(), Surface::InspectorRail, this);
    auto* row = new QHBoxLayout(m_lowerRail->capsule());
    row->setContentsMargins(10, 0, 4, 0);
    row->setSpacing(0);
    QLabel* text = m_lowerRail->makeText();
    text->setText(tr("Keep It as It Is Now"));
    row->addWidget(text, 1);
    QToolButton* keep = m_lowerRail->makeButton(Symbol::Plus, tr("Save a Version"));
    row->addWidget(keep);
    connect(keep, &QToolButton::clicked, this,
            [this] { m_appState.services().notifications.post(AppCommandEvents::saveDocument); });
    m_lowerRail->hide();
    return m_lowerRail;
}

InspectorView::Section InspectorView::section() const
{
    return Section(m_sections->checkedId());
}

void InspectorView::showSection(Section section)
{
    m_sections->button(int(section))->setChecked(true);
    m_sectionName->setText(nameOf(section));
    UserDefaults& defaults = m_appState.services().defaults;
    if (PaneLayoutSettings::inspectorSection.read(defaults) != storedName(section))
        PaneLayoutSettings::inspectorSection.write(defaults, storedName(section));
    refresh();
}

void InspectorView::focusSection()
{
    QWidget* shown = m_stack->currentWidget();
    for (QWidget* next = shown; (next = next->nextInFocusChain()) != shown;) {
        if (shown->isAncestorOf(next) && next->isVisible() && next->isEnabled() &&
            next->focusPolicy() & Qt::TabFocus)
            return next->setFocus(Qt::TabFocusReason);
    }
    m_sections->checkedButton()->setFocus(Qt::TabFocusReason);
}

QWidget* InspectorView::makeDetails(SheetHost& sheets)
{
    auto* details = new QWidget;
    auto* layout = new QVBoxLayout(details);
    layout->setContentsMargins(0, 15, 0, 8);
    layout->setSpacing(0);
    m_image = new ImageSection(m_appState.services().notifications, look(), details);
    layout->addWidget(m_image);
    layout->addWidget(makeFacts(details));
    m_table = new TableSection(m_appState.services().notifications, look(), details);
    layout->addWidget(m_table);
    m_tagsPart = new QWidget(details);
    auto* inside = new QVBoxLayout(m_tagsPart);
    inside->setContentsMargins({});
    inside->setSpacing(0);
    inside->addSpacing(16);
    inside->addWidget(makeDivider(m_tagsPart));
    inside->addSpacing(12);
    m_tags = new TagsSection(m_appState, sheets, look(), m_tagsPart);
    inside->addWidget(m_tags);
    inside->addSpacing(16);
    inside->addWidget(makeDivider(m_tagsPart));
    layout->addWidget(m_tagsPart);
    layout->addStretch();
    return details;
}

QWidget* InspectorView::makeFacts(QWidget* parent)
{
    auto* facts = new QWidget(parent);
    auto* layout = new QVBoxLayout(facts);
    layout->setContentsMargins(padding, 0, padding, 0);
    layout->setSpacing(13);
    layout->addWidget(m_heading);
    m_grid->setHorizontalSpacing(16);
    m_grid->setVerticalSpacing(6);
    m_grid->setColumnStretch(1, 1);
    layout->addLayout(m_grid);
    m_title = addRow(tr("Title"));
    m_created = addRow(tr("Created"));
    m_changed = addRow(tr("Changed"));
    m_words = addRow(tr("Words"));
    m_characters = addRow(tr("Characters"));
    m_folder = addRow(tr("Folder"));
    m_folders = addRow(tr("Folders"));
    m_notes = addRow(tr("Notes"));
    return facts;
}

QWidget* InspectorView::makeDivider(QWidget* parent)
{
    return new Divider(look(), parent);
}

void InspectorView::connectAppState()
{
    connect(&m_appState.selection(), &Selection::selectionChanged, this, &InspectorView::refresh);
    connect(&m_appState.selection(), &Selection::rowsChanged, this, &InspectorView::refresh);
    connect(&m_appState, &AppState::notebookReset, this, &InspectorView::refresh);
    connect(&m_appState, &AppState::notebookCompleted, this, &InspectorView::refresh);
    const auto later = [this] {
        m_refreshTimer->start();
    };
    connect(&m_appState, &AppState::notebookChanged, this, later);
}

QLabel* InspectorView::addRow(const QString& label)
{
    const int row = m_grid->rowCount();
    auto* name = makeLabel(label, TextStyle::Body, LabelInk::Secondary);
    auto* value = new ElidedLabel;
    setTextStyle(value, TextStyle::Body);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
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
    m_stack->setCurrentWidget(m_scroll);
}

void InspectorView::showNothing(const QString& why)
{
    m_nothing->setText(why);
    m_stack->setCurrentWidget(m_nothing);
}

void InspectorView::showCounts(const QUuid& note, int words, qsizetype characters)
{
    const auto row = m_appState.selection().selectedBinderRowID();
    if (row != BinderRowID{BinderRowID::Kind::Note, note})
        return;
    m_words->setText(grouped(words));
    m_characters->setText(grouped(characters));
}

void InspectorView::refresh()
{
    m_refreshTimer->stop();
    showSubject();
    const auto id = m_appState.selection().selectedNoteID();
    const NoteRecord* note = id ? m_appState.note(*id) : nullptr;
    m_lowerRail->setVisible(m_stack->currentWidget() == m_versions && note &&
                            note->folderID != FolderRecord::trashFolderID &&
                            m_appState.canCreateOrEdit());
}

void InspectorView::showSubject()
{
    const QList<BinderRowID>& rows = m_appState.selection().rows();
    const auto row = m_appState.selection().selectedBinderRowID();
    const bool isOne = rows.isEmpty() && row;
    const NoteRecord* note =
        isOne && row->kind == BinderRowID::Kind::Note ? m_appState.note(row->id) : nullptr;
    m_table->setNote(note ? std::optional(note->id) : std::nullopt);
    m_image->setNote(note ? std::optional(note->id) : std::nullopt);
    const FolderRecord* folder =
        isOne && row->kind == BinderRowID::Kind::Folder ? m_appState.folder(row->id) : nullptr;
    if (section() == Section::Versions) {
        if (note)
            return showVersions(*note);
        return showNothing(tr("Select a note to see its versions."));
    }
    if (!rows.isEmpty())
        showRows(rows);
    else if (note)
        showNote(*note);
    else if (folder)
        showFolder(*folder);
    else
        showNothing(tr("Select a note to see its details."));
}

void InspectorView::showNote(const NoteRecord& note)
{
    const Timestamp now = m_appState.services().clock.now();
    const FolderRecord* folder = m_appState.folder(note.folderID);
    const QString body = note.body.readOrNothing();
    m_tags->setSubjects({{BinderRowID::Kind::Note, note.id}});
    m_tagsPart->show();
    show(tr("Note"), {{m_title, note.titleForList()},
                      {m_created, dayInWords(note.createdAt)},
                      {m_changed, momentInWords(note.updatedAt, now)},
                      {m_words, grouped(wordCount(body))},
                      {m_characters, grouped(body.size())},
                      {m_folder, folder ? folder->titleForList() : tr("None")}});
}

void InspectorView::showVersions(const NoteRecord& note)
{
    m_versions->setNote(note.id);
    m_versions->refresh(wordCount(note.body.readOrNothing()));
    m_stack->setCurrentWidget(m_versions);
}

void InspectorView::showRows(const QList<BinderRowID>& rows)
{
    const auto notes = std::ranges::count(rows, BinderRowID::Kind::Note, &BinderRowID::kind);
    m_tagsPart->show();
    m_tags->setSubjects(rows);
    QList<std::pair<QLabel*, QString>> values;
    if (notes > 0)
        values.append({m_notes, grouped(notes)});
    if (notes < rows.size())
        values.append({m_folders, grouped(rows.size() - notes)});
    show(tr("%n Selected", nullptr, int(rows.size())), values);
}

void InspectorView::showFolder(const FolderRecord& folder)
{
    const FolderRecord* parent =
        folder.parentFolderID ? m_appState.folder(*folder.parentFolderID) : nullptr;
    const qsizetype notes = m_appState.orderedNotes(folder.id).size();
    const qsizetype folders =
        std::count_if(m_appState.folders().begin(), m_appState.folders().end(),
                      [&](const auto& each) { return each->parentFolderID == folder.id; });
    m_tagsPart->setVisible(!folder.isTrash());
    if (folder.isTrash())
        return show(tr("Trash"), {{m_notes, grouped(notes)}});
    m_tags->setSubjects({{BinderRowID::Kind::Folder, folder.id}});
    show(tr("Folder"), {{m_title, folder.titleForList()},
                        {m_created, dayInWords(folder.createdAt)},
                        {m_folder, parent ? parent->titleForList() : tr("None")},
                        {m_folders, grouped(folders)},
                        {m_notes, grouped(notes)}});
}

} // namespace orvane
