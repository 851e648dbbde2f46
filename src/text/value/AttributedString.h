// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributeRuns.h"
#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"
#include "text/value/TextRange.h"

#include <QString>

#include <optional>
#include <type_traits>

namespace orvane {

/// Text with attributes, as a value. Copies share their contents, so a copy is cheap, and one that
/// nobody changes may be read on another thread.
///
/// **Positions** count UTF-16 units. A range given to a function must lie within the text.
///
/// **Paragraphs.** "\n" ends a paragraph and belongs to it; a text with n of them has n + 1
/// paragraphs, of which the last may be empty. Every paragraph has one `ParagraphStyle`, also the
/// empty last one, which is found at position `length()`. No other character ends a paragraph;
/// U+2028 breaks a line within one.
///
/// **Attributes** are kept as runs that share their `CharacterStyle`; neighbouring equal runs are
/// merged, so how a text was put together never shows. Looking up a position takes the logarithm of
/// the number of runs.
class AttributedString {
public:
    using CharacterRuns = AttributeRuns<SharedCharacterStyle>;
    using ParagraphRuns = AttributeRuns<SharedParagraphStyle>;

    AttributedString();
    explicit AttributedString(const QString& text, const SharedCharacterStyle& style = {},
                              const SharedParagraphStyle& paragraphStyle = {});

    /// From runs that another part has put together. They must be as long as the text says, and no
    /// stretch of paragraph styles may end within a paragraph; else there is no result.
    [[nodiscard]] static std::optional<AttributedString>
    fromRuns(QString text, CharacterRuns characters, ParagraphRuns paragraphs);

    /// One object character with an attachment.
    [[nodiscard]] static AttributedString object(TextAttachment attachment,
                                                 CharacterStyle style = {});

    [[nodiscard]] qsizetype length() const { return m_text.size(); }
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] const CharacterRuns& characterRuns() const { return m_characters; }
    /// One position longer than the text: the last paragraph's end counts.
    [[nodiscard]] const ParagraphRuns& paragraphRuns() const { return m_paragraphs; }
    [[nodiscard]] TextRange fullRange() const { return {0, length()}; }

    /// Equal text, equal attributes at every position, equal paragraph styles.
    bool operator==(const AttributedString&) const = default;

    // Reading

    /// The style of the character at `position`, which must be below `length()`.
    [[nodiscard]] const SharedCharacterStyle& characterStyle(qsizetype position) const;
    /// The style of the paragraph that holds `position`, from 0 to `length()`.
    [[nodiscard]] const SharedParagraphStyle& paragraphStyle(qsizetype position) const;

    /// The paragraph that holds `position`, with its "\n".
    [[nodiscard]] TextRange paragraphRange(qsizetype position) const;
    /// All paragraphs that `range` touches, with their "\n"; an empty range touches one.
    [[nodiscard]] TextRange paragraphsRange(TextRange range) const;

    /// Calls `visit(TextRange, const SharedCharacterStyle&)` for each run within `range`.
    template <typename Visit>
    void forEachCharacterRun(TextRange range, Visit&& visit) const
    {
        visitRuns(m_characters, range, visit);
    }
    /// Calls `visit(TextRange, const SharedParagraphStyle&)` for each stretch of equal paragraph
    /// styles within `range`.
    template <typename Visit>
    void forEachParagraphRun(TextRange range, Visit&& visit) const
    {
        visitRuns(m_paragraphs, range, visit);
    }
    /// Calls `visit(TextRange, const SharedParagraphStyle&)` for each paragraph of the text in
    /// turn, the empty last one included. The ranges have no "\n".
    template <typename Visit>
    void forEachParagraph(Visit&& visit) const
    {
        qsizetype from = 0;
        for (;;) {
            const qsizetype newline = m_text.indexOf(u'\n', from);
            const qsizetype to = newline < 0 ? length() : newline;
            visit(TextRange::between(from, to), paragraphStyle(from));
            if (newline < 0)
                return;
            from = newline + 1;
        }
    }

    /// Enumerates one attribute over `range`: calls `visit(TextRange, const Value&)` for each
    /// longest stretch on which it has one value. `attribute` is a member, as in
    /// `text.enumerate(&CharacterStyle::font, range, …)`.
    template <typename Style, typename Value, typename Visit>
    void enumerate(Value Style::*attribute, TextRange range, Visit&& visit) const
    {
        TextRange pending{range.location, 0};
        const Value* value = nullptr;
        const auto step = [&](TextRange run, const SharedValue<Style>& style) {
            const Value& next = (*style).*attribute;
            if (value && !(*value == next)) {
                visit(pending, *value);
                pending = {run.location, 0};
            }
            value = &next;
            pending.length += run.length;
        };
        if constexpr (std::is_same_v<Style, CharacterStyle>)
            visitRuns(m_characters, range, step);
        else
            visitRuns(m_paragraphs, range, step);
        if (value)
            visit(pending, *value);
    }

    /// The text of `range` with its attributes. Its last paragraph has the style of the paragraph
    /// that holds the range's end.
    [[nodiscard]] AttributedString sliced(TextRange range) const;

    // Changing

    /// Puts `insertion` in the place of `range`. Each paragraph of the result has the style of its
    /// first character; an insertion that is not empty, at the end, brings its own last paragraph's
    /// style for an empty last paragraph.
    void replace(TextRange range, const AttributedString& insertion);
    /// Replaces by plain text in `style`, which takes the paragraph style at the place.
    void replace(TextRange range, const QString& text, const SharedCharacterStyle& style);
    void insert(qsizetype position, const AttributedString& insertion);
    void remove(TextRange range);

    void append(const AttributedString& other);
    /// Appends text that is all in one style. The paragraph style counts for paragraphs that begin
    /// in `text`, not for one that had begun before. Appending in many pieces is linear in all.
    void append(QStringView text, const SharedCharacterStyle& style,
                const SharedParagraphStyle& paragraphStyle = {});

    void setCharacterStyle(TextRange range, const SharedCharacterStyle& style);
    /// Calls `change(CharacterStyle&)` on a copy of each style within `range`, once for each shared
    /// style, and puts the copies in their place.
    template <typename Change>
    void modifyCharacterStyles(TextRange range, Change&& change)
    {
        m_characters.transform(range, changedBy<CharacterStyle>(change));
    }
    /// Sets one attribute over `range`, as in `text.setAttribute(&CharacterStyle::link, url,
    /// range)`.
    template <typename Value>
    void setAttribute(Value CharacterStyle::*attribute, const std::type_identity_t<Value>& value,
                      TextRange range)
    {
        modifyCharacterStyles(range, [&](CharacterStyle& style) { style.*attribute = value; });
    }

    /// Sets the style of all paragraphs that `range` touches; an empty range touches one.
    void setParagraphStyle(TextRange range, const SharedParagraphStyle& style);
    /// As `modifyCharacterStyles`, for all paragraphs that `range` touches.
    template <typename Change>
    void modifyParagraphStyles(TextRange range, Change&& change)
    {
        m_paragraphs.transform(paragraphPositions(range), changedBy<ParagraphStyle>(change));
    }

    /// Makes room for a text of about this length.
    void reserve(qsizetype textLength) { m_text.reserve(textLength); }

private:
    template <typename Runs, typename Visit>
    static void visitRuns(const Runs& runs, TextRange range, Visit& visit)
    {
        if (range.isEmpty())
            return;
        qsizetype from = range.location;
        for (qsizetype i = runs.indexAt(from); from < range.end(); ++i) {
            const qsizetype to = std::min(runs.runs()[i].end, range.end());
            visit(TextRange::between(from, to), runs.runs()[i].style);
            from = to;
        }
    }

    template <typename Style, typename Change>
    static auto changedBy(Change& change)
    {
        return [&change](const SharedValue<Style>& before) {
            Style style = *before;
            change(style);
            return style == *before ? before : SharedValue<Style>(std::move(style));
        };
    }

    [[nodiscard]] bool isParagraphStart(qsizetype position) const;
    [[nodiscard]] TextRange paragraphPositions(TextRange range) const;

    QString m_text;
    CharacterRuns m_characters;
    ParagraphRuns m_paragraphs;
};

} // namespace orvane
