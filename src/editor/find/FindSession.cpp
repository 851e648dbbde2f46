// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindSession.h"

#include "editor/EditorView.h"
#include "editor/MarkGeometry.h"
#include "text/TextStore.h"

#include <QPainter>

namespace orvane {

FindSession::FindSession(EditorView& view, Beeper& beeper, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_beeper(beeper)
{
    m_view.addExtension(this);
    connect(&m_view, &EditorView::textChanged, this, &FindSession::onTextChanged);
    connect(&m_view, &EditorView::selectionChanged, this, [this] {
        if (!m_matches.query().isEmpty())
            emit matchesChanged();
    });
}

FindSession::~FindSession()
{
    m_view.removeExtension(this);
}

void FindSession::setQuery(const QString& query)
{
    if (query == this->query())
        return;
    if (query.isEmpty())
        m_matches.clear();
    else
        m_matches.search(query, m_view.store().text());
    m_view.viewport()->update();
    emit matchesChanged();
}

void FindSession::refresh()
{
    if (query().isEmpty())
        return;
    m_matches.search(query(), m_view.store().text());
    m_view.viewport()->update();
    emit matchesChanged();
}

qsizetype FindSession::selectedMatch() const
{
    return m_matches.indexOf(m_view.selection().range()) + 1;
}

void FindSession::onTextChanged(const TextChange& change)
{
    if (query().isEmpty())
        return;
    const TextStore& store = m_view.store();
    m_matches.update(change, store.length(), [&](TextRange range) { return store.text(range); });
    m_view.viewport()->update();
    emit matchesChanged();
}

bool FindSession::select(std::optional<TextRange> match)
{
    if (!match) {
        m_beeper.beep();
        return false;
    }
    m_view.setSelection(TextSelection::of(*match));
    m_view.scrollToRange(*match);
    return true;
}

bool FindSession::find(FindDirection direction)
{
    if (query().isEmpty())
        return false;
    return select(
        m_matches.query().next(m_view.store().text(), m_view.selection().range(), direction));
}

bool FindSession::replaceCurrent(const QString& replacement)
{
    if (query().isEmpty())
        return false;
    const auto selected = m_view.selection().range();
    const bool isMatch = m_matches.query().matches(m_view.store().text(selected));
    if (!isMatch && !find(FindDirection::forward))
        return false;
    const TextRange match = m_view.selection().range();
    TextEdits edits =
        replacingAll(m_view.store().text(), {match}, replacement, m_view.selection().range());
    edits.name = tr("Replace");
    edits.selection = {match.location + replacement.size(), 0};
    if (!apply(edits, m_view.gateway()))
        return false;
    // That there is no further match is no failure.
    if (const auto next =
            m_matches.query().next(m_view.store().text(), edits.selection, FindDirection::forward))
        return select(next);
    return true;
}

qsizetype FindSession::replaceAll(const QString& replacement)
{
    const QList<TextRange> matches = m_matches.ranges();
    if (matches.isEmpty()) {
        if (!query().isEmpty())
            m_beeper.beep();
        return 0;
    }
    const TextEdits edits =
        replacingAll(m_view.store().text(), matches, replacement, m_view.selection().range());
    return apply(edits, m_view.gateway()) ? matches.size() : 0;
}

void FindSession::setMarkColor(const QColor& color)
{
    m_markColor = color;
    m_view.viewport()->update();
}

void FindSession::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    if (m_matches.ranges().isEmpty())
        return;
    const TextRange visible = visibleText(m_view, paint);
    const auto [first, end] = m_matches.touching(visible);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_markColor);
    for (qsizetype i = first; i < end; ++i) {
        for (const QRectF& rect : markRects(m_view, paint, m_matches.ranges()[i]))
            painter.drawRoundedRect(rect, 2, 2);
    }
    painter.restore();
}

} // namespace orvane
