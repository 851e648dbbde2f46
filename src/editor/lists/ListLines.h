// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/lists/ListText.h"
#include "editor/view/TextEdits.h"

#include <vector>

namespace orvane::ListContinuationHelper {

/// A line as the list functions see it.
struct ListLine {
    TextRange range;                     ///< in the text before, without what ends the line
    qsizetype prefixLength = 0;          ///< of tabs and marker; 0 for a line that was no item
    int level = 0;                       ///< as it is or will be
    std::optional<EditorListStyle> item; ///< as it is or will be; nothing for a plain line
    bool isWholeParagraph = true;
    bool isLabelled = false; ///< its paragraph style says that it belongs to a list
    int change = -1;         ///< into the changes, or -1

    [[nodiscard]] bool isItem() const { return item.has_value(); }
    [[nodiscard]] TextRange prefixRange() const { return {range.location, prefixLength}; }
    [[nodiscard]] qsizetype contentStart() const { return range.location + prefixLength; }
};

/// The line `full`, which may include what ends it, read by itself.
[[nodiscard]] ListLine recognisedLine(const ListText& text, TextRange full);

/// Whether a line that reads so by itself may be something else behind other items: letters that
/// are Roman digits too, or several lower letters.
[[nodiscard]] bool dependsOnLinesAbove(const ListText& text, const ListLine& line);

/// What the line's marker is, for a line that was an item.
[[nodiscard]] std::optional<PrefixMatch> matchOf(const ListText& text, const ListLine& line);

/// All lines of a text and what a list operation makes of them. Reading them resolves markers that
/// could be two things by the item before: the "C." that follows a "B." is a letter, and so is the
/// "aa." that follows a "z.".
class ListLines {
public:
    explicit ListLines(const ListText& text);

    [[nodiscard]] const ListLine& operator[](qsizetype index) const
    {
        return m_lines[std::size_t(index)];
    }
    [[nodiscard]] qsizetype indexAt(qsizetype position) const;
    /// Whether a line with no item above it only happens to begin like one.
    [[nodiscard]] bool isProseAt(qsizetype index) const;
    /// The lines that `range` touches, from `first` up to `end`; an empty range touches one.
    struct Span {
        qsizetype first = 0;
        qsizetype end = 0;
    };
    [[nodiscard]] Span touchedBy(TextRange range) const;

    /// Puts `prefix` in the place of the line's tabs and marker, and makes it an item. The marker
    /// stays as it is where it is the same.
    void setItem(qsizetype index, EditorListStyle style, int level, const QString& prefix);
    /// Takes tabs and marker away.
    void setPlain(qsizetype index);
    /// Ends the line at `position` and begins an item with what follows.
    void split(qsizetype index, qsizetype position, EditorListStyle style, int level,
               const QString& prefix);
    /// Colours the marker of a line that is or becomes an item; absent for no colour of its own.
    void setMarkerColor(qsizetype index, const std::optional<RgbaColor>& color);

    /// Marks lines as if they had been changed, so that `renumber` reaches them.
    void touch(Span span);
    /// Counts the numbered items of each list anew. A list is a run of items; it is reached if one
    /// of its lines or a neighbour was changed, or else where its lines are labelled as a list.
    void renumber();

    [[nodiscard]] TextEdits edits(const QString& name) const;

private:
    struct Change {
        std::optional<QString> prefix;
        std::optional<SharedParagraphStyle> style;
        std::optional<std::optional<RgbaColor>> color;
        bool beginsLine = false; ///< a line that was not there before
        bool isTouched = true;
    };
    class Counters;

    ListLine& at(qsizetype index) { return m_lines[std::size_t(index)]; }
    Change& changeOf(qsizetype index);
    [[nodiscard]] const Change* changeOf(const ListLine& line) const;
    [[nodiscard]] bool isTouched(qsizetype index) const;
    [[nodiscard]] bool isProse(const ListLine& line, qsizetype runLength) const;
    [[nodiscard]] qsizetype runEnd(qsizetype first) const;
    void readLetters(ListLine& line, const Counters& counters) const;
    void resolveLetters();
    void renumberRun(qsizetype first, qsizetype end);
    [[nodiscard]] std::optional<qsizetype> styleSource(const ListLine& line) const;
    void appendStyle(TextEdits& edits, const ListLine& line, const Change& change,
                     qsizetype start) const;

    const ListText& m_text;
    std::vector<ListLine> m_lines;
    std::vector<Change> m_changes;
};

} // namespace orvane::ListContinuationHelper
