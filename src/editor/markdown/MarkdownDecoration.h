// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/markdown/MarkdownStyle.h"

#include <QString>

#include <optional>
#include <span>

namespace orvane {

/// A line that has been coloured.
struct MarkdownLine {
    qsizetype length = 0; ///< without its line break
    MarkdownSpans spans;
};

} // namespace orvane

Q_DECLARE_TYPEINFO(orvane::MarkdownLine, Q_RELOCATABLE_TYPE);

namespace orvane {

/// One change of a text, told by lines.
struct MarkdownChange {
    qsizetype firstLine = 0;    ///< the line in which the change begins
    qsizetype linesBefore = 1;  ///< how many lines it touched
    qsizetype linesAfter = 1;   ///< how many stand in their place
    qsizetype offset = 0;       ///< where it begins, from the start of the first line
    qsizetype lengthBefore = 0; ///< UTF-16 units that went
    qsizetype lengthAfter = 0;  ///< UTF-16 units that came
};

struct LineSpan {
    qsizetype first = 0;
    qsizetype count = 0;

    bool operator==(const LineSpan&) const = default;
};

/// The decoration of a Markdown text, line by line, kept up to date while it is edited.
///
/// The whole text is coloured when it is loaded. A change colours only the lines that it touched
/// and one line on each side, and the patterns see nothing else: a fence that is typed or removed
/// leaves what stands further off as it is, and a font that was once applied stays with its
/// characters, until the text is loaded anew.
class MarkdownDecoration {
public:
    void clear() { m_lines.clear(); }
    void load(QStringView text);

    /// The lines that `update` is going to look at, as they stand after the change.
    [[nodiscard]] LineSpan neighbourhood(const MarkdownChange& change) const;
    /// Follows a change. `text` is the text of the neighbourhood, with the line break behind its
    /// last line if there is one. Returns the lines whose decoration is another than before, apart
    /// from the changed lines themselves, which always count.
    LineSpan update(const MarkdownChange& change, QStringView text);

    [[nodiscard]] qsizetype lineCount() const { return m_lines.size(); }
    [[nodiscard]] const MarkdownSpans& spans(qsizetype line) const { return m_lines[line].spans; }

private:
    [[nodiscard]] qsizetype countAfter(const MarkdownChange& change) const;
    [[nodiscard]] QList<MarkdownStyle> stylesOf(LineSpan lines) const;

    QList<MarkdownLine> m_lines;
};

} // namespace orvane
