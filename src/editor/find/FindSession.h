// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/find/FindMatches.h"
#include "editor/view/EditorExtension.h"
#include "platform/Machine.h"

#include <QColor>
#include <QObject>

namespace orvane {

class EditorView;

/// Finding and replacing in one text view: knows all matches, marks them in the view, and keeps
/// them up to date while the text is edited. The controls for it stand elsewhere. Main thread.
class FindSession final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`; both arguments outlive it.
    FindSession(EditorView& view, Beeper& beeper, QObject* parent = nullptr);
    ~FindSession() override;

    /// Looks for `query` from now on; an empty one ends it.
    void setQuery(const QString& query);
    [[nodiscard]] const QString& query() const { return m_matches.query().query(); }
    /// After another note has been put into the view.
    void refresh();

    [[nodiscard]] qsizetype matchCount() const { return m_matches.ranges().size(); }
    /// Which match is selected, from 1; 0 if none is.
    [[nodiscard]] qsizetype selectedMatch() const;

    /// Selects and shows the next match from the selection on, round the end of the text. Beeps and
    /// answers false if there is none.
    bool find(FindDirection direction);
    /// Selects the match that begins where the selection does, else the next one, and shows it:
    /// what a person sees while typing the query. Without a match nothing happens.
    void showNearest();
    /// Replaces the selection if it is a match, else the next match, and goes on to the one after.
    bool replaceCurrent(const QString& replacement);
    /// Replaces all in one step to undo and answers how many. Beeps if there are none.
    qsizetype replaceAll(const QString& replacement);

    void paintBehindText(QPainter& painter, const EditorPaint& paint) override;
    void paintOverText(QPainter& painter, const EditorPaint& paint) override;

signals:
    /// The number of matches or which one is selected.
    void matchesChanged();

private:
    [[nodiscard]] QList<TextRange> matchesNear(qsizetype location, qsizetype length) const;
    void onTextChanged(const TextChange& change);
    void select(TextRange match);
    bool selectOrBeep(std::optional<TextRange> match);
    void drawMarks(QPainter& painter, const EditorPaint& paint,
                   const std::function<void(TextRange, const QRectF&)>& draw) const;

    EditorView& m_view;
    Beeper& m_beeper;
    FindMatches m_matches;
};

} // namespace orvane
