// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownHighlighting.h"

#include "ViewFixture.h"
#include "appearance/AppearanceTokens.h"

#include <QInputMethodEvent>
#include <QTextBlock>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class MarkdownHighlightingTest : public ViewFixture {
protected:
    MarkdownSyntaxHighlighter::Theme theme =
        MarkdownSyntaxHighlighter::Theme::of(signatureDarkTokens());
    MarkdownHighlighting highlighting{view, view.gateway(), theme};

    /// How the character at `position` is shown.
    QTextCharFormat formatAt(int position)
    {
        const QTextBlock block = view.store().blockAt(position);
        for (const QTextLayout::FormatRange& range : view.layout().decorationsOf(block)) {
            const int within = position - block.position();
            if (within >= range.start && within < range.start + range.length)
                return range.format;
        }
        return {};
    }
    qreal heightOf(int line)
    {
        const QTextBlock block = view.store().document().findBlockByNumber(line);
        view.layout().ensureLaidOut(block);
        return view.layout().bottomOf(block) - view.layout().topOf(block);
    }
};

TEST_F(MarkdownHighlightingTest, FontsAreLaidOutAndNothingIsStored)
{
    set(u"|Title\nbody\n`code`"_s);
    const qreal plain = heightOf(0);
    type(u"# "_s);
    EXPECT_GT(heightOf(0), plain * 1.2);
    EXPECT_DOUBLE_EQ(heightOf(1), plain);
    EXPECT_EQ(formatAt(0).foreground().color(), theme.syntaxPunctuationColor);
    EXPECT_EQ(formatAt(16).fontFamilies().toStringList(),
              QStringList{codeFontFamily(theme.codeFontName)});
    EXPECT_EQ(highlighting.codeIn(view.store().blockAt(13)), (QList<TextRange>{{13, 6}}));
    EXPECT_EQ(view.store().attributedText(), AttributedString(u"# Title\nbody\n`code`"_s));
    EXPECT_EQ(view.gateway().undoName(), u"Typing"_s);
}

TEST_F(MarkdownHighlightingTest, TheThemeAndTheFontSizeTakeEffectAtOnce)
{
    set(u"# Title\n> quote"_s);
    const qreal before = heightOf(0);
    theme.blockquoteColor = Qt::red;
    highlighting.setTheme(theme);
    EXPECT_EQ(formatAt(10).foreground().color(), QColor(Qt::red));
    view.setBaseFont({u"Inter"_s, 32});
    EXPECT_NEAR(heightOf(0), 2 * before, 2);
}

TEST_F(MarkdownHighlightingTest, AnInputMethodsTextMovesTheFormats)
{
    set(u"a **b** c|"_s);
    view.setSelection(TextSelection::caret(2));
    QInputMethodEvent event(u"xyz"_s, {});
    QApplication::sendEvent(&view, &event);
    const QTextBlock block = view.store().blockAt(0);
    EXPECT_EQ(view.layout().decorationsOf(block).first().start, 5);
    QInputMethodEvent commit;
    commit.setCommitString(u"q"_s);
    QApplication::sendEvent(&view, &commit);
    EXPECT_EQ(view.layout().decorationsOf(block).first().start, 3);
}

TEST_F(MarkdownHighlightingTest, TwoViewsOfOneTextShowTheirMarks)
{
    set(u"plain|"_s);
    EditorView other;
    other.setGateway(&view.gateway());
    other.resize(300, 200);
    MarkdownSyntaxHighlighter::Theme red = theme;
    red.syntaxPunctuationColor = Qt::red;
    auto second = std::make_unique<MarkdownHighlighting>(other, view.gateway(), red);
    press(u"Ctrl+Home"_s);
    type(u"# "_s);
    const auto colourIn = [](const EditorView& shown) {
        const auto marks = shown.layout().decorationsOf(shown.store().blockAt(0));
        return marks.isEmpty() ? QColor() : marks.first().format.foreground().color();
    };
    EXPECT_EQ(colourIn(view), theme.syntaxPunctuationColor);
    EXPECT_EQ(colourIn(other), QColor(Qt::red));
    second.reset();
    EXPECT_EQ(colourIn(other), QColor());
    EXPECT_EQ(colourIn(view), theme.syntaxPunctuationColor);
}

TEST_F(MarkdownHighlightingTest, EachTextThatAViewShowsInTurnKeepsItsOwn)
{
    set(u"# one|"_s);
    TextStore store;
    EditGateway hidden(store);
    hidden.loadPlainText(u"> two"_s);
    auto second = std::make_unique<MarkdownHighlighting>(view, hidden, theme);
    EXPECT_EQ(formatAt(0).foreground().color(), theme.syntaxPunctuationColor);
    view.setGateway(&hidden);
    EXPECT_EQ(formatAt(2).foreground().color(), theme.blockquoteColor);
    second.reset();
    EXPECT_EQ(formatAt(2), QTextCharFormat());
    view.setGateway(nullptr);
    EXPECT_EQ(formatAt(0).foreground().color(), theme.syntaxPunctuationColor);
}

/// After any edits the paragraphs show what the patterns say of a text loaded anew, where no font
/// stays behind.
TEST_F(MarkdownHighlightingTest, RandomEditsStayInStepWithTheParagraphs)
{
    std::mt19937 random(5);
    const QString pieces[] = {u"- a"_s, u"\n"_s, u"> b"_s, u"~~c~~"_s, u"\n\n"_s, u" d "_s};
    set(u"|"_s);
    for (int step = 0; step < 300; ++step) {
        const auto length = unsigned(view.store().length());
        const auto from = qsizetype(random() % (length + 1));
        const auto to = std::min<qsizetype>(length, from + qsizetype(random() % 5));
        view.setSelection({from, to});
        if (random() % 8 == 0)
            view.undo();
        else
            view.gateway().insert(AttributedString(pieces[random() % std::size(pieces)]),
                                  u"Edit"_s);
    }
    MarkdownDecoration fresh;
    fresh.load(view.store().text());
    for (QTextBlock block = view.store().document().firstBlock(); block.isValid();
         block = block.next()) {
        QList<QPair<int, int>> shown;
        QList<QPair<int, int>> expected;
        for (const auto& range : view.layout().decorationsOf(block))
            shown.append({range.start, range.length});
        for (const MarkdownSpan& span : fresh.spans(block.blockNumber()))
            expected.append({span.start, span.length});
        ASSERT_EQ(shown, expected) << block.text().toStdString();
    }
}

} // namespace
} // namespace orvane
