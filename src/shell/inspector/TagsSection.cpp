// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/TagsSection.h"

#include "core/tags/TagColorPalette.h"
#include "shell/inspector/FlowLayout.h"
#include "shell/inspector/TagChip.h"
#include "shell/inspector/TagField.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int padding = 16;
constexpr int chipGap = 6;
/// How many chips are made at once: more take longer than a frame.
constexpr qsizetype chipsAtOnce = 100;
/// More are found by typing on.
constexpr qsizetype mostChoices = 200;

} // namespace

TagsSection::TagsSection(AppState& appState, SheetHost& sheets, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_look(look)
    , m_actions(new TagActions(appState, sheets, look, this))
    , m_mostChips(chipsAtOnce)
    , m_more(new QToolButton(this))
    , m_field(new TagField(look, this))
    , m_plus(new QToolButton(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(6);
    auto* head = new QHBoxLayout;
    // The picture of the button ends where the text does, not the button.
    head->setContentsMargins(padding, 0, padding - 6, 0);
    head->addWidget(makeLabel(tr("Tags"), TextStyle::SectionHead, LabelInk::Secondary), 1);
    m_plus->setIcon(look.icon(Symbol::Plus, Surface::Inspector));
    m_plus->setIconSize({16, 16});
    m_plus->setFixedSize(28, 28);
    m_plus->setToolTip(tr("Add a Tag"));
    m_plus->setAccessibleName(tr("Add a Tag"));
    m_plus->setFocusPolicy(Qt::NoFocus);
    head->addWidget(m_plus);
    layout->addLayout(head);
    auto* sides = new QHBoxLayout;
    sides->setContentsMargins(padding, 0, padding, 0);
    auto* chips = new QWidget(this);
    sides->addWidget(chips);
    m_flow = new FlowLayout(chips, chipGap);
    m_flow->insertWidget(0, m_more);
    m_flow->insertWidget(1, m_field);
    m_more->setFocusPolicy(Qt::TabFocus);
    setTextStyle(m_more, TextStyle::Body);
    connect(m_more, &QToolButton::clicked, this, &TagsSection::showMore);
    layout->addLayout(sides);
    m_field->setChoices([this](const QString& text) { return choicesFor(text); });
    connect(m_plus, &QToolButton::clicked, this,
            [this] { m_field->setFocus(Qt::OtherFocusReason); });
    connect(m_field, &TagField::tagEntered, this, &TagsSection::add);
    connect(m_field, &TagField::leftAtFront, this, [this] { focusChip(m_chips.size() - 1); });
    connect(&appState, &AppState::notebookChanged, this, [this](const NotebookChange& change) {
        if (change.concernsTags)
            refresh();
    });
    connect(&appState, &AppState::tagSettingsChanged, this, &TagsSection::refresh);
}

void TagsSection::setSubjects(const QList<BinderRowID>& subjects)
{
    if (m_subjects != subjects) {
        m_field->clear();
        m_mostChips = chipsAtOnce;
    }
    m_subjects = subjects;
    refresh();
}

QStringList TagsSection::subjectTags() const
{
    return commonTags(m_appState, m_subjects);
}

void TagsSection::refresh()
{
    const QStringList tags = subjectTags();
    showChips(tags.first(qMin(tags.size(), m_mostChips)));
    m_more->setText(tr("%n more", nullptr, int(tags.size() - m_chips.size())));
    m_more->setVisible(tags.size() > m_chips.size());
    for (TagChip* chip : m_chips) {
        chip->setColor(tagColor(m_appState.tagSettings(), chip->tag()).toQColor());
        chip->setEnabled(mayChange());
    }
    m_field->setVisible(mayChange());
    m_plus->setVisible(mayChange());
}

/// What lies in the Trash stays as it is.
bool TagsSection::mayChange() const
{
    return !m_appState.projectSession().isReadOnly() &&
           std::ranges::none_of(m_subjects, [this](const BinderRowID& row) {
               const NoteRecord* note = m_appState.note(row.id);
               return note && note->folderID == FolderRecord::trashFolderID;
           });
}

QStringList TagsSection::choicesFor(const QString& text) const
{
    const QStringList tags = subjectTags();
    QStringList choices = tagsContaining(m_appState.tagLibrary(), text, mostChoices + tags.size());
    choices.removeIf([&](const QString& tag) { return containsTag(tags, tag); });
    return choices.first(qMin(choices.size(), mostChoices));
}

TagChip* TagsSection::makeChip(const QString& tag)
{
    auto* chip = new TagChip(tag, {}, m_look, m_flow->parentWidget());
    connect(chip, &TagChip::removalRequested, this, &TagsSection::remove);
    connect(chip, &TagChip::menuRequested, this, &TagsSection::showMenu);
    connect(chip, &TagChip::stepRequested, this,
            [this, chip](int step) { focusChip(m_chips.indexOf(chip) + step); });
    return chip;
}

void TagsSection::showChips(const QStringList& tags)
{
    const auto drop = [this](qsizetype at) {
        TagChip* gone = m_chips.takeAt(at);
        m_flow->removeWidget(gone);
        gone->hide();
        gone->deleteLater();
    };
    // Chips that stay keep the keyboard.
    for (qsizetype i = m_chips.size() - 1; i >= 0; --i) {
        if (!tags.contains(m_chips.at(i)->tag()))
            drop(i);
    }
    for (qsizetype i = 0; i < tags.size(); ++i) {
        if (i < m_chips.size() && m_chips.at(i)->tag() == tags.at(i))
            continue;
        TagChip* chip = makeChip(tags.at(i));
        m_chips.insert(i, chip);
        m_flow->insertWidget(int(i), chip);
        chip->show();
    }
    while (m_chips.size() > tags.size())
        drop(m_chips.size() - 1);
    QWidget* before = m_plus;
    for (TagChip* chip : m_chips) {
        setTabOrder(before, chip);
        before = chip;
    }
    setTabOrder(before, m_more);
    setTabOrder(m_more, m_field);
    updateGeometry();
}

void TagsSection::showMore()
{
    const qsizetype before = m_chips.size();
    m_mostChips += chipsAtOnce;
    refresh();
    focusChip(before);
}

void TagsSection::add(const QString& tag)
{
    const QStringList tags = subjectTags();
    if (m_subjects.isEmpty() || !mayChange() || containsTag(tags, tag))
        return;
    QString spelling = tag;
    for (const TagRecord& record : m_appState.tagLibrary()) {
        if (record.name.compare(tag, Qt::CaseInsensitive) == 0)
            spelling = record.name;
    }
    (void)m_appState.addTagToRows(m_subjects, spelling);
}

void TagsSection::remove(const QString& tag)
{
    const auto rest = removingTag(subjectTags(), tag);
    if (!rest || !mayChange())
        return;
    qsizetype at = 0;
    while (at < m_chips.size() && m_chips.at(at)->tag() != tag)
        ++at;
    (void)m_appState.removeTagFromRows(m_subjects, tag);
    focusChip(at);
}

void TagsSection::showMenu(const QString& tag, QPoint position)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isOne = m_subjects.size() == 1;
    const bool isNote = isOne && m_subjects.first().kind == BinderRowID::Kind::Note;
    connect(menu->addAction(!isOne   ? tr("Remove from All Selected\tDel")
                            : isNote ? tr("Remove from This Note\tDel")
                                     : tr("Remove from This Folder\tDel")),
            &QAction::triggered, this, [this, tag] { remove(tag); });
    menu->addSeparator();
    m_actions->addTo(*menu, tag);
    menu->popup(position);
}

void TagsSection::focusChip(qsizetype at)
{
    if (at >= 0 && at < m_chips.size())
        m_chips.at(at)->setFocus(Qt::OtherFocusReason);
    else if (at >= m_chips.size())
        m_field->setFocus(Qt::OtherFocusReason);
}

} // namespace orvane
