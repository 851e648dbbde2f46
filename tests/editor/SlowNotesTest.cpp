// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/SlowNotes.h"

#include "ViewFixture.h"
#include "core/state/SessionKeys.h"

#include <QTemporaryDir>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct SlowNotesTest : ViewFixture {
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"settings.json"_s)};
    SlowNotes notes{view, defaults};
    QUuid note = QUuid::createUuid();

    /// What another run of the program would find.
    [[nodiscard]] bool isMarked() const
    {
        const UserDefaults stored(folder.filePath(u"settings.json"_s));
        return SessionKeys::readUuids(stored, SessionKeys::slowNoteIDs).contains(note);
    }
    void begin(const QString& text)
    {
        view.setPlainText(text);
        notes.begin(note, view.store());
    }
    void paint()
    {
        view.viewport()->repaint();
        QApplication::processEvents();
    }
};

TEST_F(SlowNotesTest, AMarkIsOnTheDiskFromBeforeTheLayoutUntilItIsPaintedInTime)
{
    const QString longLine = u"a\n"_s + QString(ordinaryParagraph + 1, u'x');
    begin(u"words\n"_s.repeated(ordinaryParagraph));
    EXPECT_FALSE(isMarked());
    begin(longLine);
    EXPECT_TRUE(isMarked());
    notes.pause();
    EXPECT_TRUE(isMarked());
    paint();
    EXPECT_FALSE(isMarked());

    notes.setLimit(-1);
    begin(longLine);
    paint();
    EXPECT_TRUE(isMarked()) << "it took longer than that";
    begin(longLine);
    notes.setLimit(60'000);
    paint();
    EXPECT_FALSE(isMarked()) << "this time it did not";
    begin(longLine);
    begin(u"short"_s);
    EXPECT_FALSE(isMarked()) << "left in time";
}

} // namespace
} // namespace orvane
