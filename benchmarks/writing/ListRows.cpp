// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/CustomBulletLibrary.h"
#include "editor/lists/ListEditing.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "writing/WritingBench.h"

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

AttributedString numberedList(int items)
{
    const SharedParagraphStyle style(
        ListContinuationHelper::listParagraphStyle(EditorListStyle::decimal, 0));
    AttributedString text;
    for (int i = 1; i <= items; ++i)
        text.append(u"%1. an item of some ten words, as lists have them\n"_s.arg(i), {}, style);
    return text;
}

struct ListNote {
    UserDefaults defaults;
    NotificationCenter notifications;
    CustomBulletLibrary library{defaults, notifications};
    TextStore store;
    EditGateway gateway{store};
    EditorView view;
    ListEditing lists{view, library};
    PaintedFrames frames{view.viewport()};

    explicit ListNote(int items)
    {
        gateway.load(numberedList(items), {});
        view.setBaseFont({u"Inter"_s, 16});
        view.setGateway(&gateway);
        showForKeys(view);
    }
    ~ListNote() { view.setGateway(nullptr); }

    double returnInTheMiddle()
    {
        const TextRange item = store.paragraphRange(store.length() / 2);
        view.setSelection(TextSelection::caret(item.end() - 1));
        view.ensureCaretVisible();
        settle();
        const int before = store.paragraphCount();
        const double time = frames.until([&] { pressKey(view, Qt::Key_Return); });
        if (store.paragraphCount() != before + 1 || gateway.undoName() != "List"_L1)
            qFatal("the list did not go on");
        view.undo();
        settle();
        return time;
    }
};

Measurement returnIn5000()
{
    ListNote subject(5000);
    ListNote baseline(50);
    return interleave(
        15, [&] { return subject.returnInTheMiddle(); },
        [&] { return baseline.returnInTheMiddle(); });
}

} // namespace

void addListRows()
{
    add({"lists/return-5k", "ms", 12, returnIn5000});
}

} // namespace orvane::bench
