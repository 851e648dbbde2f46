// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceTokens.h"
#include "editor/markdown/MarkdownHighlighting.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "writing/StockMarkdown.h"
#include "writing/WritingBench.h"

#include <QPlainTextEdit>
#include <QTextBlock>

#include <memory>
#include <random>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int sampleLines = 60'000;

/// A note as people write them: mostly prose with emphasis here and there, headings, lists, quotes,
/// links, and a fenced block in every few hundred lines.
QString sampleNote()
{
    static const QString lines[] = {
        u"## A heading of a few words"_s,
        u"The tide stood under the harbour wall, and nobody had written it down."_s,
        u"She kept the **ledger** in *one* hand and pressed the page with the other."_s,
        u"A line without anything to colour in it, as most lines of prose are."_s,
        u"- an item with `code` in it"_s,
        u"- [x] a task that is done"_s,
        u"1. a numbered item with a [link](https://example.org/page)"_s,
        u"> a quotation of somebody, at some length"_s,
        u""_s,
        u"It was ~~noon~~ dry at sixty-one figures, from where she had seen them go down."_s,
        u"---"_s,
    };
    std::mt19937 random(3);
    QString note;
    for (int i = 0; i < sampleLines; ++i) {
        if (i % 400 == 100)
            note += u"```cpp\n"_s;
        else if (i % 400 == 120)
            note += u"```\n"_s;
        else
            note += lines[random() % std::size(lines)] + u'\n';
    }
    return note;
}

MarkdownSyntaxHighlighter::Theme theme()
{
    return MarkdownSyntaxHighlighter::Theme::of(signatureDarkTokens());
}

struct Ours {
    TextStore store;
    EditGateway gateway{store};
    EditorView view;
    std::unique_ptr<MarkdownHighlighting> highlighting;
    PaintedFrames frames{view.viewport()};

    Ours()
    {
        view.setBaseFont({u"Inter"_s, 16});
        view.setFormatting(TextFormatting::plain);
        showForKeys(view);
    }
    ~Ours() { view.setGateway(nullptr); }

    void load(const QString& note)
    {
        gateway.loadPlainText(note);
        highlighting = std::make_unique<MarkdownHighlighting>(view, gateway, theme());
        view.setGateway(&gateway);
    }
    double keyAt(int line)
    {
        const QTextBlock block = store.document().findBlockByNumber(line);
        view.setSelection(TextSelection::caret(block.position() + block.length() / 2));
        view.ensureCaretVisible();
        settle();
        return frames.until([&] { pressKey(view, Qt::Key_E, u"e"_s); });
    }
};

struct Stock {
    QPlainTextEdit edit;
    StockMarkdown highlighter{edit.document()};
    PaintedFrames frames{edit.viewport()};

    Stock()
    {
        QFont font(u"Inter"_s);
        font.setPixelSize(16);
        edit.setFont(font);
        showForKeys(edit);
    }
    double keyAt(int line)
    {
        const QTextBlock block = edit.document()->findBlockByNumber(line);
        QTextCursor cursor(block);
        cursor.setPosition(block.position() + block.length() / 2);
        edit.setTextCursor(cursor);
        settle();
        return frames.until([&] { pressKey(edit, Qt::Key_E, u"e"_s); });
    }
};

Measurement key()
{
    const QString note = sampleNote();
    Ours ours;
    ours.load(note);
    Stock stock;
    stock.edit.setPlainText(note);
    settle();
    std::mt19937 linesOfOurs(9);
    std::mt19937 linesOfStock(9);
    return interleave(
        300, [&] { return ours.keyAt(int(linesOfOurs() % sampleLines)); },
        [&] { return stock.keyAt(int(linesOfStock() % sampleLines)); }, 0.99);
}

Measurement load()
{
    const QString note = sampleNote();
    return interleave(
        5,
        [&] {
            Ours ours;
            return ours.frames.until([&] { ours.load(note); });
        },
        [&] {
            Stock stock;
            return stock.frames.until([&] { stock.edit.setPlainText(note); });
        });
}

} // namespace

void addMarkdownRows()
{
    add({"markdown/key", "ms", 0.5, key});
    add({"markdown/load", "ms", 0.5, load});
}

} // namespace orvane::bench
