// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/WritingMenu.h"

#include "commands/AppCommandEvents.h"
#include "editor/session/StoredText.h"
#include "editor/view/EditorView.h"
#include "editor/writing/FocusMode.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/store/TextStore.h"

#include <QActionGroup>
#include <QMenu>

namespace orvane {

WritingMenu::WritingMenu(EditorView& view, const Services& services, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_services(services)
{
    m_view.addExtension(this, ExtensionPriority::writing);
}

WritingMenu::~WritingMenu()
{
    m_view.removeExtension(this);
}

void WritingMenu::showText(const std::optional<QUuid>& note, EditorMode mode)
{
    m_note = note;
    m_mode = mode;
}

void WritingMenu::saveSelectionToNewNote()
{
    const TextRange selected = m_view.selection().range();
    SelectionForNewNote selection;
    selection.text = plainForm(m_view.store().text(selected));
    if (m_mode == EditorMode::richText)
        selection.rtf =
            OrvaneWorkspaceRTF::data(m_view.store().attributedText(selected), m_view.headingSizes())
                .value_or(QByteArray());
    m_services.notifications.post(AppCommandEvents::saveSelectionToNewNote, selection);
}

void WritingMenu::addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype /*position*/)
{
    if (!m_note)
        return;
    if (!m_view.selection().isEmpty() && m_view.isEditable()) {
        menu.addAction(tr("Save Selection to New Note"), this,
                       &WritingMenu::saveSelectionToNewNote);
        menu.addAction(tr("Link Selection to Note…"), this, [this] {
            m_services.notifications.post(AppCommandEvents::linkSelectionToNote, {m_note});
        });
    }
    fillFocusMenu(*menu.addMenu(tr("Focus Mode")));
    menu.addSeparator();
}

void WritingMenu::fillFocusMenu(QMenu& menu)
{
    const bool isOn = focusModeSetting.read(m_services.defaults);
    menu.addAction(isOn ? tr("Disable Focus Mode") : tr("Enable Focus Mode"), this,
                   [this] { toggleFocusMode(m_services); });
    menu.addSeparator();
    const FocusGranularity current =
        focusGranularityNamed(focusModeGranularitySetting.read(m_services.defaults));
    auto* group = new QActionGroup(&menu);
    const auto add = [&](const QString& text, FocusGranularity granularity,
                         void (*choose)(const Services&)) {
        QAction* action = menu.addAction(text, this, [this, choose] { choose(m_services); });
        action->setCheckable(true);
        action->setChecked(granularity == current);
        group->addAction(action);
    };
    add(tr("Paragraph"), FocusGranularity::paragraph, setFocusParagraph);
    add(tr("Sentence"), FocusGranularity::sentence, setFocusSentence);
}

} // namespace orvane
