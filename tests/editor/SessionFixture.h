// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "SelectedNoteFixture.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>

namespace orvane {

/// A session over a real project.
struct SessionFixture : ::testing::Test {
    TestServices test;
    std::unique_ptr<AppState> app = std::make_unique<AppState>(test.services());
    QUuid project = *app->projectSession().createProject(QStringLiteral("P"), {});
    QUuid a = *app->createNote(QStringLiteral("A\nfirst"), {});
    QUuid b = *app->createNote(QStringLiteral("B\nsecond"), {});
    std::unique_ptr<EditorSession> session = sessionOfSelection(*app);

    SessionFixture() { app->selection().selectNote(a); }

    [[nodiscard]] QString shown() const { return session->gateway().store().text(); }
    /// Types at the end of the text.
    void type(const QString& text)
    {
        EditGateway& gateway = session->gateway();
        gateway.setSelection(TextSelection::caret(gateway.store().length()));
        gateway.type(text);
    }
    /// Closes the project and opens it with `a` selected, in a session of its own.
    void reopen()
    {
        app->projectSession().closeProject();
        session = sessionOfSelection(*app);
        app->projectSession().openProject(project, false);
        app->selection().selectNote(a);
    }
    QString stored(const QUuid& id)
    {
        for (const auto& note : app->projectSession().persistenceController()->load().notes) {
            if (note->id == id)
                return note->title + u'|' + note->body.readOrNothing();
        }
        return {};
    }
};

} // namespace orvane
