// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/SlowNotes.h"

#include "core/state/SessionKeys.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QEvent>

namespace orvane {

namespace {

bool hasLongParagraph(const TextStore& text)
{
    if (text.length() <= ordinaryParagraph)
        return false;
    for (QTextBlock block = text.document().firstBlock(); block.isValid(); block = block.next()) {
        if (block.length() > ordinaryParagraph)
            return true;
    }
    return false;
}

} // namespace

SlowNotes::SlowNotes(EditorView& view, UserDefaults& defaults)
    : m_defaults(defaults)
{
    view.viewport()->installEventFilter(this);
}

SlowNotes::~SlowNotes()
{
    end();
}

void SlowNotes::begin(const std::optional<QUuid>& noteID, const TextStore& text)
{
    end();
    if (!noteID || !hasLongParagraph(text))
        return;
    m_noteID = noteID;
    m_spent = 0;
    ++m_begun;
    mark(*noteID, Pace::slow);
    m_timer.start();
}

void SlowNotes::pause()
{
    if (m_timer.isValid())
        m_spent += m_timer.elapsed();
    m_timer.invalidate();
}

bool SlowNotes::eventFilter(QObject* watched, QEvent* event)
{
    if (m_noteID && event->type() == QEvent::Paint) {
        if (!m_timer.isValid())
            m_timer.start();
        // Behind the painting that now begins.
        const auto painted = [this, begun = m_begun] {
            if (begun == m_begun)
                end();
        };
        QMetaObject::invokeMethod(this, painted, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void SlowNotes::end()
{
    pause();
    if (m_noteID && m_spent <= m_limit)
        mark(*m_noteID, Pace::inTime);
    m_noteID.reset();
}

void SlowNotes::mark(const QUuid& noteID, Pace pace)
{
    QList<QUuid> notes = SessionKeys::readUuids(m_defaults, SessionKeys::slowNoteIDs);
    if (notes.contains(noteID) == (pace == Pace::slow))
        return;
    if (pace == Pace::slow)
        notes.append(noteID);
    else
        notes.removeAll(noteID);
    if (notes.isEmpty())
        m_defaults.remove(SessionKeys::slowNoteIDs);
    else
        SessionKeys::writeUuids(m_defaults, SessionKeys::slowNoteIDs, notes);
    // The program may be ended from outside while it lays the text out.
    (void)m_defaults.flush();
}

} // namespace orvane
