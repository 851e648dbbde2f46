// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/LinkSheet.h"

#include "appearance/OrvaneStyle.h"
#include "core/records/InternalNoteLink.h"
#include "core/state/AppState.h"
#include "editor/session/EditorSession.h"
#include "editor/writing/LinkAddress.h"
#include "text/store/TextStore.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int cardWidth = 440;
constexpr int padding = 28;

/// An address that `text` is without a doubt, or nothing.
QString plainAddress(const QString& text)
{
    const QString trimmed = text.trimmed();
    const bool looksLikeOne = trimmed.startsWith("http://"_L1) ||
                              trimmed.startsWith("https://"_L1) || trimmed.startsWith("www."_L1) ||
                              trimmed.contains(u'@');
    return looksLikeOne && linkAddress(trimmed) ? trimmed : QString();
}

} // namespace

LinkSheet::LinkSheet(EditorSession& session, const AppState& appState, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_session(session)
    , m_appState(appState)
    , m_note(session.noteID())
    , m_place(linkPlaceAt(session.gateway().store(), session.gateway().selection()))
    , m_text(new QLineEdit(this))
    , m_target(new QComboBox(this))
    , m_address(new QLineEdit(this))
    , m_notes(new QComboBox(this))
    , m_problem(makeLabel({}, TextStyle::Body, LabelInk::Primary, this))
    , m_accept(new QPushButton(m_place.isLink() ? tr("Change Link") : tr("Insert Link"), this))
{
    const QString title = m_place.isLink() ? tr("Edit Link") : tr("Insert Link");
    setAccessibleName(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(4);
    layout->addWidget(makeLabel(title, TextStyle::WindowTitle));
    addFields(*layout);
    layout->addSpacing(12);
    layout->addLayout(makeButtons());
    fill();
    connect(m_target, &QComboBox::currentIndexChanged, this, &LinkSheet::showTarget);
    connect(m_address, &QLineEdit::textChanged, this, [this] { showProblem({}); });
    showTarget();
}

void LinkSheet::addFields(QLayout& layout)
{
    auto& column = static_cast<QVBoxLayout&>(layout);
    const auto add = [&](const QString& name, std::initializer_list<QWidget*> fields) {
        column.addSpacing(8);
        auto* label = makeLabel(name, TextStyle::Label, LabelInk::Secondary, this);
        column.addWidget(label);
        label->setBuddy(*fields.begin());
        for (QWidget* field : fields) {
            field->setAccessibleName(name);
            column.addWidget(field);
        }
        return label;
    };
    QLabel* text = add(tr("Text"), {m_text});
    text->setVisible(m_place.isOneLine());
    m_text->setVisible(m_place.isOneLine());
    add(tr("Leads to"), {m_target});
    column.addSpacing(4);
    m_address->setAccessibleName(tr("Address"));
    m_address->setPlaceholderText(u"https://"_s);
    m_notes->setAccessibleName(tr("Note"));
    setLongList(m_notes);
    m_notes->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    column.addWidget(m_address);
    column.addWidget(m_notes);
    m_problem->setWordWrap(true);
    m_problem->hide();
    setAlarming(*m_problem);
    column.addSpacing(4);
    column.addWidget(m_problem);
}

QLayout* LinkSheet::makeButtons()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    if (m_place.isLink()) {
        auto* remove = new QPushButton(tr("Remove Link"), this);
        connect(remove, &QPushButton::clicked, this, [this] {
            change([this](EditGateway& text) { return removeLink(text, m_place); });
        });
        row->addWidget(remove);
    }
    row->addStretch();
    auto* cancel = new QPushButton(tr("Cancel"), this);
    connect(cancel, &QPushButton::clicked, this, [this] { dismiss(); });
    row->addWidget(cancel);
    m_accept->setDefault(true);
    connect(m_accept, &QPushButton::clicked, this, &LinkSheet::accept);
    row->addWidget(m_accept);
    return row;
}

void LinkSheet::fill()
{
    m_text->setText(m_place.text);
    m_target->addItem(tr("A web or mail address"), int(Target::address));
    const bool hasNotes = m_appState.notes().size() > 1;
    if (hasNotes)
        m_target->addItem(tr("Another note"), int(Target::note));
    m_target->setVisible(hasNotes);
    const auto note = InternalNoteLink::noteID(m_place.address);
    if (hasNotes && note && note != m_note && m_appState.note(*note)) {
        m_target->setCurrentIndex(1);
        fillNotes();
        m_notes->setCurrentIndex(m_notes->findData(*note));
        return;
    }
    QString address = m_place.address;
    if (address.isEmpty())
        address = plainAddress(m_place.text);
    if (address.isEmpty())
        address = plainAddress(QGuiApplication::clipboard()->text());
    m_address->setText(address);
    m_address->selectAll();
}

void LinkSheet::fillNotes()
{
    if (m_notes->count() > 0)
        return;
    for (const LinkableNote& note : linkableNotes(m_appState, m_note))
        m_notes->addItem(note.title, note.id);
}

LinkSheet::Target LinkSheet::target() const
{
    return Target(m_target->currentData().toInt());
}

void LinkSheet::showTarget()
{
    if (target() == Target::note)
        fillNotes();
    m_address->setVisible(target() == Target::address);
    m_notes->setVisible(target() == Target::note);
    showProblem({});
}

QWidget* LinkSheet::initialFocus()
{
    if (m_place.range.isEmpty() && m_address->text().isEmpty())
        return m_text;
    return target() == Target::note ? static_cast<QWidget*>(m_notes) : m_address;
}

QSize LinkSheet::sizeHint() const
{
    return {cardWidth, layout()->hasHeightForWidth() ? layout()->heightForWidth(cardWidth)
                                                     : layout()->sizeHint().height()};
}

std::optional<QString> LinkSheet::address() const
{
    if (target() == Target::note) {
        const QUuid note = m_notes->currentData().toUuid();
        // With the place in the note that it names.
        return InternalNoteLink::noteID(m_place.address) == note ? m_place.address
                                                                 : InternalNoteLink::link(note);
    }
    return linkAddress(m_address->text());
}

void LinkSheet::updateButton()
{
    m_accept->setEnabled(target() == Target::note || !m_address->text().trimmed().isEmpty());
}

void LinkSheet::showProblem(const QString& problem)
{
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    updateButton();
    if (auto* host = qobject_cast<SheetHost*>(parentWidget()))
        host->layOut();
}

void LinkSheet::accept()
{
    const auto address = this->address();
    if (!address) {
        showProblem(tr("This can’t be opened. A link leads to a web page (https://example.org), a "
                       "mail address or a note."));
        m_address->setFocus();
        return;
    }
    change([&](EditGateway& text) { return setLink(text, m_place, m_text->text(), *address); });
}

void LinkSheet::change(const std::function<bool(EditGateway&)>& edit)
{
    const bool isSameText =
        m_session.noteID() == m_note && m_session.mode() == EditorMode::richText;
    if (isSameText && m_session.isEditable())
        edit(m_session.gateway());
    close();
}

} // namespace orvane
