// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindSession.h"

#include "editor/view/EditorView.h"
#include "editor/view/MarkGeometry.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr qreal markCorner = 3;

bool areSameMatches(const QList<TextRange>& before, const QList<TextRange>& after,
                    const TextChange& change)
{
    return std::equal(
        before.begin(), before.end(), after.begin(), after.end(), [&](TextRange was, TextRange is) {
            const bool isBehind = was.location >= change.location + change.lengthBefore;
            was.location += isBehind ? change.lengthAfter - change.lengthBefore : 0;
            return was == is;
        });
}

} // namespace

FindSession::FindSession(EditorView& view, Beeper& beeper, QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_beeper(beeper)
{
    m_view.addExtension(this, ExtensionPriority::matches);
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

QList<TextRange> FindSession::matchesNear(qsizetype location, qsizetype length) const
{
    const qsizetype reach = m_matches.query().longestMatch();
    const auto [first, end] = m_matches.touching({location - reach, length + 2 * reach});
    return m_matches.ranges().mid(first, end - first);
}

void FindSession::onTextChanged(const TextChange& change)
{
    if (query().isEmpty())
        return;
    const TextStore& store = m_view.store();
    const QList<TextRange> before = matchesNear(change.location, change.lengthBefore);
    m_matches.update(change, store.length(), [&](TextRange range) { return store.text(range); });
    const QList<TextRange> after = matchesNear(change.location, change.lengthAfter);
    // Marks further off move with their lines. One that comes or goes may begin a line before.
    if (!areSameMatches(before, after, change)) {
        ParagraphLayout& layout = m_view.layout();
        const qreal top = layout.topOf(store.blockAt(change.location));
        const QTextBlock last = store.blockAt(change.location + change.lengthAfter);
        m_view.updatePage({0, top, layout.width(), layout.bottomOf(last) - top});
    }
    emit matchesChanged();
}

void FindSession::select(TextRange match)
{
    m_view.setSelection(TextSelection::of(match));
    m_view.scrollToRange(match);
}

bool FindSession::selectOrBeep(std::optional<TextRange> match)
{
    if (match)
        select(*match);
    else
        m_beeper.beep();
    return match.has_value();
}

bool FindSession::find(FindDirection direction)
{
    if (query().isEmpty())
        return false;
    return selectOrBeep(
        m_matches.query().next(m_view.store().text(), m_view.selection().range(), direction));
}

void FindSession::showNearest()
{
    const QList<TextRange>& ranges = m_matches.ranges();
    if (ranges.isEmpty())
        return;
    const qsizetype from = m_view.selection().range().location;
    const auto next =
        std::lower_bound(ranges.begin(), ranges.end(), from,
                         [](TextRange match, qsizetype at) { return match.location < at; });
    select(next == ranges.end() ? ranges.first() : *next);
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
        select(*next);
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

void FindSession::drawMarks(QPainter& painter, const EditorPaint& paint,
                            const std::function<void(TextRange, const QRectF&)>& draw) const
{
    if (m_matches.ranges().isEmpty())
        return;
    const auto [first, end] = m_matches.touching(visibleText(m_view, paint));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (qsizetype i = first; i < end; ++i) {
        for (const QRectF& rect : markRects(m_view, paint, m_matches.ranges()[i]))
            draw(m_matches.ranges()[i], rect.adjusted(-1, 0, 1, 0));
    }
    painter.restore();
}

void FindSession::paintBehindText(QPainter& painter, const EditorPaint& paint)
{
    drawMarks(painter, paint, [&](TextRange, const QRectF& rect) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_view.look().match);
        painter.drawRoundedRect(rect, markCorner, markCorner);
    });
}

/// The edges also show where the text brings a ground of its own.
void FindSession::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    const TextRange selected = m_view.selection().range();
    drawMarks(painter, paint, [&](TextRange match, const QRectF& rect) {
        const bool isSelected = match == selected;
        painter.setPen(isSelected ? QPen(m_view.look().selectedMatch, 2)
                                  : QPen(m_view.look().matchEdge, 1));
        const qreal inset = isSelected ? 0 : 0.5;
        painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), markCorner,
                                markCorner);
    });
}

} // namespace orvane
