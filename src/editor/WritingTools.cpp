// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/WritingTools.h"

#include "core/AppCommandEvents.h"
#include "editor/EditorView.h"
#include "text/TextStore.h"

#include <QShortcut>

namespace orvane {

namespace {

/// A longer selection is a place to work in and no query.
constexpr qsizetype longestSuggestion = 200;

QString suggestedQuery(const EditorView& view)
{
    const TextRange selection = view.selection().range();
    if (selection.length > longestSuggestion)
        return {};
    const QString text = view.store().text(selection);
    const bool isOneLine = std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == u'\n' || c == QChar::LineSeparator || c == QChar::ObjectReplacementCharacter;
    });
    return isOneLine ? text : QString();
}

} // namespace

WritingTools::WritingTools(EditorView& view, WritingLibrary& library, const Services& services,
                           Look& look, QWidget& pane)
    : m_view(view)
    , m_look(look)
    , m_find(view, services.beeper)
    , m_spelling(view, library.spelling)
    , m_strip(new FindStrip(m_find, look, &pane))
{
    connect(m_strip, &FindStrip::dismissed, &m_view,
            [this] { m_view.setFocus(Qt::OtherFocusReason); });
    connect(m_strip, &FindStrip::undoRequested, &m_view, &EditorView::undo);
    connect(m_strip, &FindStrip::redoRequested, &m_view, &EditorView::redo);
    connect(&look, &Look::changed, this, &WritingTools::applyLook);
    m_toggleFind = services.notifications.observe(AppCommandEvents::toggleDocumentFind,
                                                  [this](const NoPayload&) { toggleFind(); });
    makeKeys(pane);
    applyLook();
}

void WritingTools::makeKeys(QWidget& pane)
{
    const auto addKey = [&](const QKeySequence& keys, auto act) {
        auto* shortcut = new QShortcut(keys, &pane);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    addKey(QKeySequence(Qt::CTRL | Qt::Key_H),
           [this] { openFind(FindStrip::Controls::findAndReplace); });
    addKey(QKeySequence(Qt::Key_F3), [this] { findAgain(FindDirection::forward); });
    addKey(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { findAgain(FindDirection::backward); });
}

void WritingTools::leaveText()
{
    m_spelling.setNote(std::nullopt);
}

void WritingTools::showText(const std::optional<QUuid>& note, EditorMode /*mode*/)
{
    m_note = note;
    m_find.refresh();
    m_spelling.setNote(note);
}

void WritingTools::toggleFind()
{
    if (m_strip->hasKeyboard())
        m_strip->dismiss();
    else
        openFind(FindStrip::Controls::find);
}

void WritingTools::openFind(FindStrip::Controls controls)
{
    if (!m_note)
        return;
    const bool isInText = !m_strip->hasKeyboard();
    m_strip->open(controls, isInText ? suggestedQuery(m_view) : QString());
}

void WritingTools::findAgain(FindDirection direction)
{
    if (m_find.query().isEmpty())
        openFind(FindStrip::Controls::find);
    else
        m_strip->find(direction);
}

void WritingTools::applyLook()
{
    const Tokens& t = m_look.tokens();
    m_find.setColors({t.match, t.matchEdge, t.on(Surface::Page).accent});
    m_spelling.setMarkColor(t.on(Surface::Page).danger);
}

} // namespace orvane
