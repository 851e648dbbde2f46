// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/AppearanceTokens.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/session/SelectedNote.h"
#include "editor/session/StoredText.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"
#include "writing/WritingBench.h"

namespace orvane::bench {

/// The editor pane over a project on the disk.
struct Pane {
    TestServices test;
    SystemClock clock;
    AppState app{services()};
    Look look{signatureDarkTokens()};
    QUuid project = *app.projectSession().createProject(QStringLiteral("P"), {});
    EditorPaneView pane{app, look};
    PaintedFrames frames{pane.textView().viewport()};

    Pane()
    {
        followSelection(pane.session(), app);
        pane.session().setMode(EditorMode::richText);
        showForKeys(pane);
    }
    Services services()
    {
        const Services all = test.services();
        return {all.defaults, all.notifications, all.questions, all.beeper, all.trash,
                clock,        all.licence,       all.folders};
    }
    QUuid addNote(const AttributedString& text)
    {
        const QUuid id = *app.createNote(QStringLiteral("Note"), {});
        const RichForms forms = richForms(text, HeadingSizes());
        NoteContent content = NoteContent::of(*app.note(id));
        content.body = plainForm(text.text());
        content.bodyRTF = Blob(*forms.rtf);
        content.richContentPayload = Blob(*forms.rich);
        app.updateNote(id, content);
        return id;
    }
    void focusMiddle()
    {
        pane.focusText();
        EditorView& view = pane.textView();
        view.setSelection(TextSelection::caret(
            view.store().paragraphRange(view.store().length() / 2).location + 20));
        view.ensureCaretVisible();
        settle();
    }
};

template <typename View>
inline double typeNext(View& view, PaintedFrames& frames, int& typed)
{
    const bool isSpace = ++typed % 7 == 0;
    return frames.until([&] {
        pressKey(view, isSpace ? Qt::Key_Space : Qt::Key_X,
                 isSpace ? QStringLiteral(" ") : QStringLiteral("x"));
    });
}

} // namespace orvane::bench
