// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownDecoration.h"
#include "editor/markdown/MarkdownSyntaxHighlighter.h"
#include "text/value/TextRange.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

#include <ctime>
#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
namespace highlighter = MarkdownSyntaxHighlighter;

QList<MarkdownStyle> decorated(const QString& text)
{
    QList<MarkdownStyle> styles(text.size());
    highlighter::applyAllPatterns(text, styles);
    return styles;
}

/// "1" to "6" for a heading, B, I, C(ode font), U, S(truck out), then the colour's letter.
QString letters(MarkdownStyle style)
{
    QString shown;
    if (style.headingLevel)
        shown += QString::number(style.headingLevel);
    shown += style.isBold ? u"B"_s : QString();
    shown += style.isItalic ? u"I"_s : QString();
    shown += style.isCode ? u"C"_s : QString();
    shown += style.isUnderlined ? u"U"_s : QString();
    shown += style.isStruckOut ? u"S"_s : QString();
    if (style.color != MarkdownColor::text)
        shown += u" hcltqmxp"[int(style.color)];
    return shown;
}

/// The text with each decorated stretch as "<letters:text>".
QString show(const QString& text, const QList<MarkdownStyle>& styles)
{
    QString shown;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = from + 1;
        while (to < text.size() && styles[to] == styles[from])
            ++to;
        const QString piece = text.sliced(from, to - from);
        const QString code = letters(styles[from]);
        shown += code.isEmpty() ? piece : u"<%1:%2>"_s.arg(code, piece);
        from = to;
    }
    return shown;
}

TEST(Markdown, Patterns)
{
    struct Row {
        const char* name;
        QString text;
        QString shown;
    };
    const Row rows[] = {
        {"heading", u"## a"_s, u"<2p:##><2h: a>"_s},
        {"no space, no heading", u"#a"_s, u"#a"_s},
        {"seven signs", u"####### a"_s, u"####### a"_s},
        {"bold", u"a **b** c"_s, u"a <p:**><B:b><p:**> c"_s},
        {"low lines are both", u"__c__"_s, u"<p:_><Ip:_><BI:c><Ip:_><p:_>"_s},
        {"italic", u"a *b* _c_"_s, u"a <p:*><I:b><p:*> <p:_><I:c><p:_>"_s},
        {"within a word", u"a_b_c"_s, u"a_b_c"_s},
        {"letters of all scripts are words", u"é_b_ж"_s, u"é_b_ж"_s},
        {"three stars", u"***a***"_s, u"<p:**><B:*a><p:**>*"_s},
        {"space inside", u"* a*"_s, u"<m:*> a*"_s},
        {"italic in bold", u"**a _b_ c**"_s, u"<p:**><B:a ><Bp:_><BI:b><Bp:_><B: c><p:**>"_s},
        {"bold in a heading", u"# **a**"_s, u"<1p:#><1h: ><1p:**><1Bh:a><1p:**>"_s},
        {"strikethrough", u"~~a~~"_s, u"<p:~~><S:a><p:~~>"_s},
        {"code takes the font", u"**`a`**"_s, u"<p:**><Cp:`><Cc:a><Cp:`><p:**>"_s},
        {"link", u"[a](b)"_s, u"<p:[><Ul:a><p:](><t:b><p:)>"_s},
        {"link over lines", u"[a\nb](c)"_s, u"<p:[><Ul:a\nb><p:](><t:c><p:)>"_s},
        {"quote", u"> a"_s, u"<p:> ><q:a>"_s},
        {"lists", u"- a\n 12. b\n+ c"_s, u"<m:-> a\n <m:12.> b\n<m:+> c"_s},
        {"task", u"- [x] a"_s, u"<m:-> <x:[x]> a"_s},
        {"rule", u"---"_s, u"<p:--->"_s},
        {"fence", u"a\n```c\n# b\n```\n*c*"_s, u"a\n<Cc:```c\n# b\n```>\n<p:*><I:c><p:*>"_s},
        {"fence without end", u"```\n# b"_s, u"```\n<1p:#><1h: b>"_s},
        {"a longer run doesn't close", u"```\na\n````"_s, u"```\na\n````"_s},
        {"a surrogate pair", u"**😀**"_s, u"<p:**><B:😀><p:**>"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(show(row.text, decorated(row.text)).toStdString(), row.shown.toStdString());
    }
}

QString randomText(std::mt19937& random, int pieces)
{
    static const QString parts[] = {u"```"_s,  u"````"_s, u"\n"_s,   u"\n"_s,  u"# "_s, u"*"_s,
                                    u"**"_s,   u"_"_s,    u"__"_s,   u"a"_s,   u"é"_s,  u" "_s,
                                    u"~~"_s,   u"`"_s,    u"["_s,    u"]("_s,  u")"_s,  u"> "_s,
                                    u"\n- "_s, u"1. "_s,  u"[x] "_s, u"---"_s, u"]"_s,  u"b c"_s};
    QString text;
    for (int i = 0; i < pieces; ++i)
        text += parts[random() % std::size(parts)];
    return text;
}

/// The patterns as they read, each over the whole text at once.
QList<MarkdownStyle> paintedPlainly(const QString& text)
{
    using Color = MarkdownColor;
    QList<MarkdownStyle> styles(text.size());
    QList<TextRange> fences;
    const auto each = [&](const QString& pattern, const auto& paint) {
        const QRegularExpression expression(pattern,
                                            QRegularExpression::MultilineOption |
                                                QRegularExpression::UseUnicodePropertiesOption);
        for (const auto& match : expression.globalMatch(text)) {
            const auto overlaps = [&](TextRange fence) {
                return fence.location < match.capturedEnd() && match.capturedStart() < fence.end();
            };
            if (std::none_of(fences.begin(), fences.end(), overlaps))
                paint(match);
        }
    };
    const auto change = [&](qsizetype from, qsizetype length, const auto& changeOne) {
        for (qsizetype i = from; i < from + length && i < text.size(); ++i)
            changeOne(styles[i]);
    };
    const auto color = [&](qsizetype from, qsizetype length, Color which) {
        change(from, length, [which](MarkdownStyle& style) { style.color = which; });
    };
    const auto setCode = [](MarkdownStyle& style) {
        style.headingLevel = style.isBold = style.isItalic = 0;
        style.isCode = 1;
        style.color = Color::code;
    };
    QList<TextRange> blocks;
    each(uR"(^(`{3,})(.*?)\n([\s\S]*?)^\1\s*$)"_s, [&](const auto& m) {
        change(m.capturedStart(), m.capturedLength(), setCode);
        blocks.append({m.capturedStart(), m.capturedLength()});
    });
    fences = blocks;
    each(uR"(^(#{1,6})\s(.+)$)"_s, [&](const auto& m) {
        MarkdownStyle heading;
        heading.headingLevel = quint8(m.capturedLength(1) & 7);
        heading.color = Color::heading;
        change(m.capturedStart(), m.capturedLength(),
               [heading](MarkdownStyle& style) { style = heading; });
        color(m.capturedStart(), m.capturedLength(1), Color::punctuation);
    });
    const auto emphasis = [&](const QString& pattern, const auto& trait) {
        each(pattern, [&](const auto& m) {
            change(m.capturedStart(2), m.capturedLength(2), trait);
            color(m.capturedStart(1), m.capturedLength(1), Color::punctuation);
            color(m.capturedEnd(2), m.capturedLength(1), Color::punctuation);
        });
    };
    emphasis(uR"((\*\*|__)(.+?)\1)"_s, [](MarkdownStyle& style) { style.isBold = 1; });
    emphasis(uR"((?<!\*|\w)(\*|_)(?!\*|\s)(.+?)(?<!\*|\s)\1(?!\*|\w))"_s,
             [](MarkdownStyle& style) { style.isItalic = 1; });
    each(u"~~(.+?)~~"_s, [&](const auto& m) {
        change(m.capturedStart(1), m.capturedLength(1),
               [](MarkdownStyle& style) { style.isStruckOut = 1; });
        color(m.capturedStart(), 2, Color::punctuation);
        color(m.capturedEnd() - 2, 2, Color::punctuation);
    });
    each(uR"(`([^`\n]+?)`)"_s, [&](const auto& m) {
        change(m.capturedStart(), m.capturedLength(), setCode);
        color(m.capturedStart(), 1, Color::punctuation);
        color(m.capturedEnd() - 1, 1, Color::punctuation);
    });
    each(uR"(\[([^\]]+)\]\(([^)]+)\))"_s, [&](const auto& m) {
        change(m.capturedStart(1), m.capturedLength(1), [](MarkdownStyle& style) {
            style.isUnderlined = 1;
            style.color = Color::link;
        });
        color(m.capturedStart(2), m.capturedLength(2), Color::linkTarget);
        color(m.capturedStart(), 1, Color::punctuation);
        color(m.capturedEnd(1), 2, Color::punctuation);
        color(m.capturedEnd(2), 1, Color::punctuation);
    });
    each(uR"(^(>\s?)(.*)$)"_s, [&](const auto& m) {
        color(m.capturedStart(), m.capturedLength(), Color::blockquote);
        color(m.capturedStart(1), m.capturedLength(1), Color::punctuation);
    });
    const auto marker = [&](const auto& m) {
        color(m.capturedStart(2), m.capturedLength(2), Color::listMarker);
    };
    each(uR"(^(\s*)([-*+])\s)"_s, marker);
    each(uR"(^(\s*)(\d+\.)\s)"_s, marker);
    each(uR"(^(\s*[-*+]\s)\[([ xX])\]\s)"_s,
         [&](const auto& m) { color(m.capturedEnd(1), 3, Color::taskCheckbox); });
    each(uR"(^([-*_]){3,}\s*$)"_s,
         [&](const auto& m) { color(m.capturedStart(), m.capturedLength(), Color::punctuation); });
    return styles;
}

QString withoutLineBreakStyles(const QString& text, QList<MarkdownStyle> styles)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\n')
            styles[i] = {};
    }
    return show(text, styles);
}

TEST(Markdown, LineByLineIsTheSameAsTheWholeTextAtOnce)
{
    std::mt19937 random(11);
    for (int round = 0; round < 800; ++round) {
        QString text = randomText(random, 40);
        while (text.contains(u"\n\n"_s))
            text.replace(u"\n\n"_s, u"\n"_s);
        ASSERT_EQ(withoutLineBreakStyles(text, decorated(text)).toStdString(),
                  withoutLineBreakStyles(text, paintedPlainly(text)).toStdString());
    }
}

/// A text under edit with its decoration, and the plainest way to the same: a style for each
/// character, and the patterns over the neighbouring lines.
struct OpenText {
    QString text;
    MarkdownDecoration decoration;
    QList<MarkdownStyle> naive;

    explicit OpenText(const QString& content)
        : text(content)
        , naive(decorated(content))
    {
        decoration.load(text);
    }

    static qsizetype linesIn(QStringView text) { return text.count(u'\n'); }

    LineSpan replace(qsizetype at, qsizetype length, const QString& insertion)
    {
        MarkdownChange change;
        change.firstLine = linesIn(text.first(at));
        change.offset = at - (at == 0 ? 0 : text.lastIndexOf(u'\n', at - 1) + 1);
        change.lengthBefore = length;
        change.lengthAfter = insertion.size();
        change.linesBefore = linesIn(text.sliced(at, length)) + 1;
        change.linesAfter = linesIn(insertion) + 1;
        const LineSpan near = decoration.neighbourhood(change);
        text.replace(at, length, insertion);
        naive.remove(at, length);
        naive.insert(at, insertion.size(), MarkdownStyle{});

        qsizetype from = 0;
        for (qsizetype i = 0; i < near.first; ++i)
            from = text.indexOf(u'\n', from) + 1;
        qsizetype to = from;
        for (qsizetype i = 0; i < near.count; ++i) {
            const qsizetype newline = text.indexOf(u'\n', to);
            to = newline < 0 ? text.size() : newline + 1;
        }
        const auto styles = std::span(naive).subspan(std::size_t(from), std::size_t(to - from));
        const QStringView nearText = QStringView(text).sliced(from, to - from);
        highlighter::resetToBase(styles);
        highlighter::applyAllPatterns(nearText, styles);
        return decoration.update(change, nearText);
    }

    [[nodiscard]] QList<MarkdownStyle> shown() const
    {
        QList<MarkdownStyle> styles(text.size());
        qsizetype start = 0;
        for (qsizetype line = 0; line < decoration.lineCount(); ++line) {
            for (const MarkdownSpan& span : decoration.spans(line))
                std::fill_n(styles.begin() + start + span.start, span.length, span.style);
            const qsizetype newline = text.indexOf(u'\n', start);
            start = newline + 1;
        }
        return styles;
    }
};

TEST(Markdown, EditsDecorateTheNeighbourhood)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        OpenText edited(randomText(random, 40));
        for (int step = 0; step < 60; ++step) {
            const auto at = qsizetype(random() % unsigned(edited.text.size() + 1));
            const auto length =
                std::min(edited.text.size() - at, qsizetype(random() % (random() % 4 ? 3 : 20)));
            edited.replace(at, length, randomText(random, int(random() % 4)));
            ASSERT_EQ(edited.decoration.lineCount(), edited.text.count(u'\n') + 1);
            ASSERT_EQ(withoutLineBreakStyles(edited.text, edited.shown()).toStdString(),
                      withoutLineBreakStyles(edited.text, edited.naive).toStdString());
        }
    }
}

TEST(Markdown, WhatStaysUntilTheTextIsLoadedAnew)
{
    struct Row {
        const char* name;
        QString before;
        qsizetype at;
        qsizetype length;
        QString insertion;
        QString shown;
        LineSpan changed;
    };
    const Row rows[] = {
        {"the heading's font", u"# a\nb"_s, 0, 1, u""_s, u"<1: a>\nb"_s, {0, 1}},
        {"typing in a fenced block",
         u"```\nx\n- y\nz\n```"_s,
         6,
         1,
         u"*"_s,
         u"<Cc:```>\n<C:x>\n<m:*><C: y>\n<C:z>\n<Cc:```>"_s,
         {1, 3}},
        {"a fence typed above",
         u"a\nb\nc\n```"_s,
         0,
         0,
         u"```\n"_s,
         u"```\na\nb\nc\n```"_s,
         {0, 2}},
        {"the lines around", u"a\n[b\nc](d)"_s, 7, 1, u""_s, u"a\n[<U:b>\n<U:c>]d)"_s, {1, 2}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        OpenText edited(row.before);
        const LineSpan changed = edited.replace(row.at, row.length, row.insertion);
        EXPECT_EQ(changed, row.changed);
        EXPECT_EQ(withoutLineBreakStyles(edited.text, edited.shown()).toStdString(),
                  row.shown.toStdString());
    }
}

/// Texts that make a backtracking search take time by the square of their length.
TEST(Markdown, HostileTextsTakeLinearTime)
{
    const QString texts[] = {
        u"["_s.repeated(400'000) + u"]"_s,
        u"```\n"_s.repeated(99'999) + u"````"_s,
        u"_a "_s.repeated(200'000),
        u"\n"_s.repeated(400'000) + u"- "_s,
        u"[a]("_s.repeated(200'000),
        u"**"_s.repeated(200'000) + u"a"_s,
        u"__a__ `b` ~~c~~ "_s.repeated(30'000),
    };
    for (const QString& text : texts) {
        SCOPED_TRACE(text.first(8).toStdString());
        const std::clock_t start = std::clock();
        decorated(text);
        EXPECT_LT(std::clock() - start, 3 * CLOCKS_PER_SEC);
    }
}

} // namespace
} // namespace orvane
