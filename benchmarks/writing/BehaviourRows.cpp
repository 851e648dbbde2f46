// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSamples.h"
#include "editor/view/EditorView.h"
#include "editor/writing/WritingBehaviours.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"
#include "writing/WritingBench.h"

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int million = 1'000'000;

/// A note of a million words with the caret in its middle.
struct LongNote {
    TextStore store;
    EditGateway gateway{store};
    EditorView view;
    PaintedFrames frames{view.viewport()};
    int typed = 0;

    explicit LongNote(const AttributedString& text)
    {
        gateway.load(text, {});
        view.setBaseFont({u"Inter"_s, 16});
        view.setGateway(&gateway);
        showForKeys(view);
        view.setSelection(
            TextSelection::caret(store.paragraphRange(store.length() / 2).location + 20));
        view.ensureCaretVisible();
        settle();
    }
    ~LongNote() { view.setGateway(nullptr); }

    double key(int code, const QString& text)
    {
        QApplication::setActiveWindow(&view);
        view.setFocus();
        settle();
        return frames.until([&] { pressKey(view, code, text); });
    }
    /// Words, with the end of a sentence now and then.
    double typeNext()
    {
        const QString piece = u"and so he wrote on and on. So it went"_s;
        const QChar c = piece[typed++ % piece.size()];
        return key(c == u' ' ? int(Qt::Key_Space) : int(Qt::Key_X), c);
    }
};

struct Behaving {
    TestServices test;
    LongNote note;
    WritingBehaviours behaviours{note.view, test.services()};

    explicit Behaving(const AttributedString& text)
        : note(text)
    {
        behaviours.showText(QUuid::createUuid(), EditorMode::richText);
    }
};

Measurement focusKey()
{
    const AttributedString text = sampleText(million);
    Behaving focused(text);
    focusModeSetting.write(focused.test.defaults, true);
    setFocusSentence(focused.test.services());
    typewriterModeSetting.write(focused.test.defaults, true);
    settle();
    LongNote bare(text);
    return interleave(
        200, [&] { return focused.note.typeNext(); }, [&] { return bare.typeNext(); });
}

/// Whether a quote opens or closes depends on those before it in its paragraph.
Measurement quoteKey()
{
    const AttributedString text = sampleText(million);
    Behaving bracketed(text);
    LongNote bare(text);
    return interleave(
        50, [&] { return bracketed.note.key(Qt::Key_QuoteDbl, u"\""_s); },
        [&] { return bare.key(Qt::Key_QuoteDbl, u"\""_s); });
}

} // namespace

void addBehaviourRows()
{
    add({"focus/key-1m", "ms", 1.5, focusKey});
    add({"brackets/quote-1m", "ms", 1.5, quoteKey});
}

} // namespace orvane::bench
