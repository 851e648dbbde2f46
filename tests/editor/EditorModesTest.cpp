// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SessionFixture.h"
#include "editor/session/FormattingLoss.h"
#include "support/Versions.h"
#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QTest>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct EditorModesTest : SessionFixture {
    EditorModesTest() { session->setMode(EditorMode::richText); }

    void makeBold(TextRange range)
    {
        session->gateway().performUndoableDocumentEdit(u"Bold"_s, [&](DocumentEditor& editor) {
            editor.modifyCharacterStyles(range,
                                         [](CharacterStyle& style) { style.font->weight = 700; });
        });
    }
    [[nodiscard]] bool isBold(qsizetype position) const
    {
        const auto& font = session->gateway().store().characterStyle(position)->font;
        return font && font->isBold();
    }
    [[nodiscard]] NoteContent content(const QUuid& id) const
    {
        return NoteContent::of(*app->note(id));
    }
};

TEST_F(EditorModesTest, ARichNoteIsStoredInAllItsFormsAndComesBack)
{
    type(u" bold\u2028next"_s);
    makeBold({8, 4});
    EXPECT_FALSE(content(a).richContentPayload) << "nothing is made before the delay is over";
    test.clock.advance(1500ms);
    EXPECT_EQ(content(a).body, u"A\nfirst bold\nnext"_s);
    const auto stored =
        AttachmentManager::decodePayload(content(a).richContentPayload->readOrNothing());
    ASSERT_TRUE(stored);
    EXPECT_EQ(*stored, session->gateway().store().attributedText());
    const auto rtf = OrvaneWorkspaceRTF::read(content(a).bodyRTF->readOrNothing());
    EXPECT_EQ(rtf->text.text(), stored->text());

    reopen();
    EXPECT_EQ(session->gateway().store().attributedText(), *stored);
    EXPECT_TRUE(isBold(9));
    EXPECT_FALSE(session->isDirty());
}

TEST_F(EditorModesTest, HeadingsOfAPersonsOwnSizesAreStoredAsHeadings)
{
    // By the usual sizes it would be a heading of the first level.
    heading3SizeSetting.write(test.services().defaults, 60);
    for (const qsizetype length : {0, 60'000}) {
        session->gateway().performUndoableDocumentEdit(u"H"_s, [&](DocumentEditor& editor) {
            editor.replace({0, session->gateway().store().length()},
                           AttributedString(u"head\n"_s + QString(length, u'x')));
            editor.modifyCharacterStyles({0, 5}, [](CharacterStyle& style) {
                style.font = TextFont{u"Inter"_s, 60, 700, false};
            });
        });
        session->flushDraftToDisk(a);
        const QByteArray rtf = content(a).bodyRTF->readOrNothing();
        EXPECT_TRUE(rtf.contains("heading 4")) << length;
        EXPECT_EQ(rtf.count("\\outlinelevel3"), 2) << length;
    }
}

TEST_F(EditorModesTest, ARichNoteOpensFromTheFirstFormThatCanBeRead)
{
    const auto payloadOf = [](const QString& text) {
        return Blob(AttachmentManager::archivePayload(AttributedString(text)));
    };
    const auto rtfOf = [](const QString& text) {
        return Blob(*OrvaneWorkspaceRTF::data(AttributedString(text), {}));
    };
    QByteArray versionTwo = payloadOf(u"payload"_s).readOrNothing();
    versionTwo.replace("\"version\":1", "\"version\":2");
    struct Row {
        const char* name;
        std::optional<Blob> rich;
        std::optional<Blob> rtf;
        QString shown;
    };
    const Row rows[] = {
        {"all three", payloadOf(u"payload"_s), rtfOf(u"rtf"_s), u"payload"_s},
        {"a later version", Blob(versionTwo), rtfOf(u"rtf"_s), u"rtf"_s},
        {"damaged payload", Blob("{}"), rtfOf(u"rtf"_s), u"rtf"_s},
        {"an empty document", payloadOf(QString()), rtfOf(u"rtf"_s), u"rtf"_s},
        {"nothing readable", Blob("x"), Blob("y"), u"plain"_s},
        {"plain text alone", std::nullopt, std::nullopt, u"plain"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        test.clock.advance(1ms);
        app->updateNote(a, {u"A"_s, u"plain"_s, row.rtf, row.rich, {}, {}});
        EXPECT_EQ(shown(), row.shown);
        session->setMode(EditorMode::markdown);
        EXPECT_EQ(shown(), u"plain"_s);
        session->setMode(EditorMode::richText);
        EXPECT_EQ(shown(), row.shown);
        EXPECT_EQ(session->gateway().store().characterStyle(0)->font->size > 0, true);
        EXPECT_FALSE(session->isDirty());
    }
}

TEST_F(EditorModesTest, ModesChangeNothingUntilTheTextIsEdited)
{
    type(u"!"_s);
    makeBold({0, 1});
    session->setShapes(Blob("[1]"));
    session->gateway().setSelection(TextSelection::caret(1));
    test.clock.advance(1500ms);
    const NoteContent rich = content(a);
    ASSERT_TRUE(rich.richContentPayload && rich.bodyRTF && rich.editorTypingAttributesPayload);

    session->gateway().setSelection({1, 4});
    session->setMode(EditorMode::plainText);
    EXPECT_EQ(session->gateway().selection(), (TextSelection{1, 4}));
    EXPECT_FALSE(isBold(0));
    session->saveFromExplicitCommand();
    EXPECT_EQ(content(a), rich);
    session->setMode(EditorMode::richText);
    EXPECT_TRUE(isBold(0));
    EXPECT_EQ(content(a), rich);

    session->setMode(EditorMode::markdown);
    test.questions.answers = {{0}};
    type(u"x"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(content(a).body, u"A\nfirst!x"_s);
    EXPECT_FALSE(content(a).bodyRTF || content(a).richContentPayload ||
                 content(a).editorTypingAttributesPayload || content(a).shapesPayload);
    session->setMode(EditorMode::richText);
    EXPECT_EQ(shown(), u"A\nfirst!x"_s);
    EXPECT_FALSE(isBold(0));
}

TEST_F(EditorModesTest, AnEditThatWouldEraseFormattingIsAskedAboutOnce)
{
    type(u"!"_s);
    makeBold({0, 1});
    session->gateway().insert(AttributedString::object(OrvaneNoteImageAttachment()), u"Image"_s);
    test.clock.advance(1500ms);
    session->setMode(EditorMode::plainText);
    const NoteContent rich = content(a);

    type(u"x"_s); // answered with Cancel
    ASSERT_EQ(test.questions.asked.size(), 1);
    EXPECT_TRUE(test.questions.asked.first().text.contains(u"formatting and images"_s));
    EXPECT_EQ(shown(), rich.body);
    EXPECT_FALSE(session->gateway().performUndoableDocumentEdit(u"Replace All"_s,
                                                                [](DocumentEditor& editor) {
                                                                    editor.remove({0, 1});
                                                                }));
    EXPECT_EQ(test.questions.asked.size(), 2);
    EXPECT_EQ(content(a), rich);

    test.questions.answers = {{0}};
    type(u"x"_s);
    type(u"y"_s);
    session->gateway().undo();
    EXPECT_EQ(test.questions.asked.size(), 3);
    EXPECT_EQ(shown(), rich.body);

    // The version that was kept brings everything back.
    const auto versions = versionsOf(*app, a);
    ASSERT_FALSE(versions.isEmpty());
    EXPECT_EQ(versions.last().label, u"Before Losing Formatting"_s);
    app->restoreVersion(versions.last());
    type(u"z"_s);
    EXPECT_EQ(test.questions.asked.size(), 4) << "there is something to lose again";
    session->setMode(EditorMode::richText);
    EXPECT_TRUE(isBold(0));
    EXPECT_EQ(content(a).richContentPayload, rich.richContentPayload);
}

TEST_F(EditorModesTest, NothingIsAskedWhereNothingIsLost)
{
    type(u" more"_s);
    session->setMode(EditorMode::markdown);
    type(u"!"_s);
    EXPECT_TRUE(test.questions.asked.isEmpty());
    EXPECT_EQ(shown(), u"A\nfirst more!"_s);

    session->setMode(EditorMode::richText);
    makeBold({0, 1});
    session->setMode(EditorMode::markdown);
    app->versionHistory().waitForAll();
    QDir(app->projectSession().currentProject()->rootPath + u"/.orvaneworkspace/history"_s)
        .removeRecursively();
    QFile blocked(app->projectSession().currentProject()->rootPath +
                  u"/.orvaneworkspace/history"_s);
    ASSERT_TRUE(blocked.open(QIODevice::WriteOnly));
    test.questions.answers = {{0}, {0}};
    type(u"?"_s);
    EXPECT_EQ(test.questions.asked.size(), 2) << "no version could be kept, so nothing was lost";
    EXPECT_EQ(shown(), u"A\nfirst more!"_s);
}

TEST_F(EditorModesTest, ALongNoteIsPreparedElsewhereAndNeverLosesALetter)
{
    const auto wait = [this] {
        for (int i = 0; session->isDirty() && i < 2000; ++i)
            QTest::qWait(1);
    };
    type(QString(60'000, u'x') + u"\n1"_s);
    test.clock.advance(1500ms);
    EXPECT_TRUE(session->isDirty()) << "its forms are still being made";
    wait();
    EXPECT_EQ(content(a).body, shown());

    // Typed while the forms are made: they don't count, and the next pause writes everything.
    type(u"2"_s);
    test.clock.advance(1500ms);
    type(u"3"_s);
    QTest::qWait(100);
    EXPECT_TRUE(session->isDirty());
    test.clock.advance(1500ms);
    wait();
    EXPECT_TRUE(content(a).body.endsWith(u"123"_s));

    // A flush point doesn't wait for the event loop, whether the forms are being made, or have been
    // made of what stands there or of what stood there before the last key.
    struct Row {
        std::chrono::milliseconds pause;
        bool typesAfter;
    };
    for (const auto& [pause, typesAfter] :
         {Row{0ms, false}, Row{300ms, false}, Row{300ms, true}, Row{1400ms, true}}) {
        type(u"4"_s);
        test.clock.advance(pause);
        if (typesAfter)
            type(u"5"_s);
        const QString text = shown();
        app->selection().selectNote(b);
        EXPECT_EQ(content(a).body, text);
        const auto archived =
            AttachmentManager::decodePayload(content(a).richContentPayload->readOrNothing());
        EXPECT_EQ(archived->text(), text);
        EXPECT_EQ(OrvaneWorkspaceRTF::read(content(a).bodyRTF->readOrNothing())->text.text(), text);
        const Timestamp written = app->note(a)->updatedAt;
        test.clock.advance(5s);
        QTest::qWait(20);
        EXPECT_EQ(app->note(a)->updatedAt, written) << "written once";
        app->selection().selectNote(a);
    }
}

TEST_F(EditorModesTest, AttachmentsAreSpacesInThePlainFormAndCountAsContent)
{
    session->gateway().setSelection({0, session->gateway().store().length()});
    OrvaneNoteImageAttachment image;
    session->gateway().insert(AttributedString::object(image), u"Insert Image"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(content(a).body, u" "_s);
    EXPECT_TRUE(content(a).bodyRTF && content(a).richContentPayload);

    session->gateway().remove({0, 1}, EditKind::other, u"Delete"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(content(a).body, QString());
    EXPECT_FALSE(content(a).bodyRTF || content(a).richContentPayload);
}

TEST_F(EditorModesTest, ANoteThatCantBeReadIsLeftAsItIs)
{
    struct FailingSource final : BlobSource {
        std::expected<QByteArray, QString> read(qint64, qsizetype) override
        {
            return std::unexpected(u"the disk is gone"_s);
        }
    };
    NoteContent unread = content(a);
    unread.richContentPayload = Blob(100, SharedBlobSource(new FailingSource), 1);
    app->updateNote(a, unread);
    EXPECT_FALSE(session->isReadable());
    type(u"!"_s);
    EXPECT_FALSE(session->isDirty());
    session->saveFromExplicitCommand();
    EXPECT_TRUE(content(a).richContentPayload->isSameCell(*unread.richContentPayload));
    app->selection().selectNote(b);
    EXPECT_TRUE(session->isEditable());
}

TEST_F(EditorModesTest, WhatIsTypedNextComesBackWithTheNote)
{
    EditGateway& text = session->gateway();
    makeBold({0, 1});
    test.clock.advance(1500ms);
    text.setSelection(TextSelection::caret(4));
    test.clock.advance(1500ms);
    const auto regular = content(a).editorTypingAttributesPayload;

    // A caret in other formatting is an edit, one in the same is none.
    text.setSelection(TextSelection::caret(5));
    EXPECT_FALSE(session->isDirty());
    text.setSelection({2, 5});
    EXPECT_FALSE(session->isDirty());
    text.setSelection(TextSelection::caret(1));
    EXPECT_TRUE(session->isDirty());
    test.clock.advance(1500ms);
    EXPECT_NE(content(a).editorTypingAttributesPayload, regular);

    reopen();
    EXPECT_FALSE(session->isDirty());
    EXPECT_TRUE(session->gateway().typingStyle()->font->isBold());
    session->gateway().type(u"Z"_s);
    EXPECT_TRUE(isBold(0));
}

TEST_F(EditorModesTest, EachNoteRemembersItsModeAndFont)
{
    editorFontFamilySetting.write(test.defaults, u"Inter"_s);
    editorFontSizeSetting.write(test.defaults, 20);
    const QUuid c = *app->createNote(u"C"_s, {}); // takes over what it finds
    EXPECT_EQ(session->mode(), EditorMode::richText);
    session->setMode(EditorMode::markdown);
    editorFontSizeSetting.write(test.defaults, 12);
    app->selection().selectNote(a);
    EXPECT_EQ(session->mode(), EditorMode::richText);
    EXPECT_EQ(session->baseFont(), (TextFont{u"Inter"_s, 20}));
    app->selection().selectNote(c);
    EXPECT_EQ(session->mode(), EditorMode::markdown);
    EXPECT_EQ(session->baseFont(), (TextFont{u"Inter"_s, 12}));

    const QString key = u"settings.editor.perNoteProfiles.v1"_s;
    const QByteArray stored = test.defaults.get(key, QByteArray());
    EXPECT_TRUE(stored.contains(a.toString(QUuid::WithoutBraces).toUpper().toUtf8()));
    PerNoteEditorProfiles read(test.defaults);
    EXPECT_EQ(read.profile(a)->fontSize, 20);
    EXPECT_EQ(read.profile(b)->mode, u"Plain Text"_s);
    EXPECT_EQ(read.profile(c)->mode, u"Markdown"_s);
    test.defaults.set(key, DefaultsValue(QByteArray("no JSON")));
    app->selection().selectNote(a);
    EXPECT_EQ(session->mode(), EditorMode::richText) << "as on a machine that never saw the note";
    EXPECT_EQ(session->baseFont(), (TextFont{u"Inter"_s, 20}));
    app->selection().selectNote(c);
    EXPECT_EQ(session->mode(), EditorMode::markdown);
    app->selection().selectNote(b);
    EXPECT_EQ(session->mode(), EditorMode::markdown) << "without a profile it takes what it finds";

    // A rich note of an earlier version, on a machine that knows nothing of it.
    const QUuid rich = *app->createNote(u"R"_s, {});
    session->setMode(EditorMode::richText);
    type(u" and more"_s);
    session->saveFromExplicitCommand();
    app->selection().selectNote(c);
    app->keepEditorProfile(rich, u"{"_s);
    test.defaults.set(key, DefaultsValue(QByteArray("{}")));
    app->selection().selectNote(rich);
    EXPECT_EQ(session->mode(), EditorMode::richText);
}

TEST_F(EditorModesTest, ANoteInTheTrashCanBeReadAndNotChanged)
{
    type(u" once more"_s);
    const QString before = session->currentBodyPlain();
    int told = 0;
    QObject::connect(session.get(), &EditorSession::trashedChanged, [&] { ++told; });
    (void)app->moveNoteToTrash(a);
    app->openNote(a);
    EXPECT_TRUE(session->isTrashed());
    EXPECT_FALSE(session->isEditable());
    EXPECT_EQ(app->note(a)->body, before) << "what was typed went along";
    session->setTitle(u"Another"_s);
    EXPECT_FALSE(session->isDirty());
    (void)app->restoreNoteFromTrash(a);
    EXPECT_TRUE(session->isEditable());
    EXPECT_GT(told, 0);
}

TEST_F(EditorModesTest, AnotherFontIsForWhatIsTypedNextNotForWhatStands)
{
    session->gateway().setSelection(TextSelection::caret(3));
    const TextFont before = *session->gateway().store().characterStyle(0)->font;
    editorFontSizeSetting.write(test.defaults, 24);
    EXPECT_FALSE(session->isDirty());
    session->gateway().type(u"Q"_s);
    EXPECT_EQ(session->gateway().store().characterStyle(3)->font->size, 24);
    EXPECT_EQ(session->gateway().store().characterStyle(0)->font, before);
}

TEST_F(EditorModesTest, UndoIsThereWhenAPersonComesBack)
{
    type(u" one"_s);
    makeBold({0, 1});
    app->selection().selectNote(b);
    type(u" two"_s);
    app->selection().selectNote(a);
    EXPECT_EQ(session->gateway().undoName(), u"Bold"_s);
    EXPECT_EQ(session->gateway().selection(), TextSelection::caret(11));
    session->gateway().undo();
    session->gateway().undo();
    EXPECT_EQ(shown(), u"A\nfirst"_s);
    app->selection().selectNote(b);
    app->selection().selectNote(a);
    session->gateway().redo();
    EXPECT_EQ(shown(), u"A\nfirst one"_s);
    test.clock.advance(1500ms);
    EXPECT_EQ(content(a).body, u"A\nfirst one"_s);

    // Between modes without attributes too; with the record changed meanwhile it is over.
    session->setMode(EditorMode::plainText);
    type(u"+"_s);
    session->setMode(EditorMode::markdown);
    EXPECT_TRUE(session->gateway().canUndo());
    app->selection().selectNote(b);
    NoteContent other = content(a);
    other.body += u" from elsewhere"_s;
    app->updateNote(a, other);
    app->selection().selectNote(a);
    EXPECT_FALSE(session->gateway().canUndo());
    EXPECT_EQ(shown(), other.body);
}

TEST(EditedTextsTest, TheLatestTextsAreKeptWithinLimits)
{
    OpenTexts texts;
    QList<QUuid> notes;
    const auto keep = [&](const QString& content) {
        notes.append(QUuid::createUuid());
        auto text = std::make_unique<OpenText>(notes.last(), TextForm::plain);
        text->gateway.loadPlainText(content);
        text->stored.plain = content;
        texts.keep(std::move(text));
    };
    const auto isKept = [&](const QUuid& note, const QString& content) {
        return texts.take(note, TextForm::plain, {content, {}, {}}) != nullptr;
    };
    for (std::size_t i = 0; i <= OpenTexts::mostTexts; ++i)
        keep(u"text"_s);
    EXPECT_FALSE(isKept(notes.at(0), u"text"_s));
    EXPECT_TRUE(isKept(notes.at(1), u"text"_s));
    EXPECT_FALSE(isKept(notes.at(2), u"another text"_s));
    EXPECT_FALSE(isKept(notes.at(2), u"text"_s)) << "what is no longer stored is gone for good";

    const QString large(OpenTexts::mostCharacters - 10, u'x');
    keep(large);
    EXPECT_FALSE(isKept(notes.at(3), u"text"_s));
    EXPECT_TRUE(isKept(notes.at(notes.size() - 2), u"text"_s));
    EXPECT_TRUE(isKept(notes.last(), large));
}

TEST_F(EditorModesTest, ARestoredVersionShowsAtOnce)
{
    type(u" bold"_s);
    makeBold({2, 5});
    session->saveFromExplicitCommand();
    test.clock.advance(1min);
    session->gateway().setSelection({0, 12});
    session->gateway().type(u"all gone"_s);
    const auto versions = versionsOf(*app, a);
    app->restoreVersion(versions.last());
    EXPECT_EQ(shown(), u"A\nfirst bold"_s);
    EXPECT_TRUE(isBold(3));
    EXPECT_FALSE(session->isDirty());

    // A change of the record beside its text leaves caret and undo alone.
    type(u"!"_s);
    test.clock.advance(1500ms);
    app->updateNoteTags(a, {u"tag"_s});
    EXPECT_EQ(session->gateway().selection(), TextSelection::caret(13));
    EXPECT_TRUE(session->gateway().canUndo());
}

TEST_F(EditorModesTest, WordsTypedUnderTheQuestionGoWhereTheAnswerSays)
{
    struct Row {
        const char* name;
        std::deque<Answer> answers;
        QString shown;
        QString copied;
        EditorMode mode = EditorMode::plainText;
    };
    const Answer yes{0, false, 0, u"ide was low.\nSo"_s};
    const Answer no{1, false, 0, u"ide was"_s};
    const Row rows[] = {
        {"the note", {yes}, u"A\nfirst Tide was low.\nSo"_s, {}},
        {"the clipboard", {no, {copyWords}}, u"A\nfirst"_s, u" Tide was"_s},
        {"the clipboard, with what came later",
         {no, {copyWords, false, 0, u" low"_s}},
         u"A\nfirst"_s,
         u" Tide was low"_s},
        {"the note as it is", {no, {writeRich}}, u"A\nfirst Tide was"_s, {}, EditorMode::richText},
        {"nowhere, as was asked for", {no, {dropWords}}, u"A\nfirst"_s, {}},
        {"nowhere, for one key alone", {{1}}, u"A\nfirst"_s, {}},
    };
    makeBold({0, 1});
    const NoteContent before = session->draft().content();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        session->flushDraftToDisk(a);
        app->updateNote(a, before);
        session->setMode(EditorMode::plainText);
        QGuiApplication::clipboard()->clear();
        test.questions.answers = row.answers;
        type(u" T"_s);
        QCoreApplication::processEvents();
        EXPECT_EQ(shown(), row.shown);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), row.copied);
        EXPECT_EQ(session->mode(), row.mode);
        EXPECT_EQ(content(a).richContentPayload.has_value() && isBold(0),
                  row.mode == EditorMode::richText);
        EXPECT_TRUE(test.questions.answers.empty());
    }
}

} // namespace
} // namespace orvane
