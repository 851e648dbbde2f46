// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "SessionFixture.h"
#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>
#include <QTest>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What a note must hold, kept by the simplest means.
struct ModelNote {
    QString title;
    QString body;
    std::optional<AttributedString> rich;
    EditorMode mode = EditorMode::plainText;
    /// What undoing leads to, newest last, for the text with attributes and the one without.
    std::array<std::vector<AttributedString>, 2> undo;
};

/// Says yes to everything.
class AgreeingQuestions final : public ScriptedQuestions {
public:
    Answer ask(const Question& question) override
    {
        ++count;
        lastTitle = question.title;
        return {0};
    }
    int count = 0;
    QString lastTitle;
};

struct WritingRunTest : ::testing::Test {
    TestServices test;
    AgreeingQuestions questions;
    std::unique_ptr<AppState> app = std::make_unique<AppState>(services());
    QUuid project = *app->projectSession().createProject(u"P"_s, {});
    std::unique_ptr<EditorSession> session = sessionOfSelection(*app);
    QList<QUuid> notes;
    QHash<QUuid, ModelNote> model;
    std::mt19937 random{19'110'206};
    int undone = 0;
    int undoneAfterReturn = 0;
    bool hasReturned = false;

    Services services()
    {
        const Services all = test.services();
        return {all.defaults, all.notifications, questions,   all.beeper,
                all.trash,    all.clock,         all.licence, all.folders};
    }
    [[nodiscard]] int below(int limit) { return int(random() % unsigned(limit)); }
    [[nodiscard]] QUuid anyNote() { return notes.at(below(int(notes.size()))); }
    [[nodiscard]] ModelNote* selected()
    {
        const auto id = app->selection().selectedNoteID();
        return id ? &model[*id] : nullptr;
    }
    void addNote(const QString& body)
    {
        notes.append(*app->createNote(body, {}));
        const NoteRecord& note = *app->note(notes.last());
        ModelNote added{note.title, note.body.readOrNothing(), {}, EditorMode::plainText, {}};
        added.mode = session->mode();
        model.insert(note.id, added);
    }

    [[nodiscard]] static AttributedString loaded(const ModelNote& note)
    {
        if (note.mode != EditorMode::richText)
            return AttributedString(note.body);
        CharacterStyle base;
        base.font = TextFont{u"Georgia"_s, 16};
        return note.rich ? *note.rich : AttributedString(note.body, base);
    }
    /// The note's text has become `text` by an edit in its mode.
    static void store(ModelNote& note, const AttributedString& text)
    {
        const QString plain = plainForm(text.text());
        if (note.mode == EditorMode::richText)
            note.rich = text.isEmpty() ? std::nullopt : std::optional(text);
        else if (plain != note.body)
            note.rich.reset();
        note.body = plain;
    }
    [[nodiscard]] static std::vector<AttributedString>& undoOf(ModelNote& note)
    {
        return note.undo[note.mode == EditorMode::richText ? 0 : 1];
    }

    /// A short range that parts no surrogate pair.
    [[nodiscard]] TextRange anyRange(const QString& text)
    {
        qsizetype from = below(int(text.size()) + 1);
        qsizetype to = std::min(from + below(6), text.size());
        if (from < text.size() && text.at(from).isLowSurrogate())
            --from;
        if (to < text.size() && text.at(to).isLowSurrogate())
            ++to;
        return TextRange::between(from, to);
    }
    void edit(ModelNote& note)
    {
        EditGateway& text = session->gateway();
        AttributedString now = loaded(note);
        ASSERT_EQ(text.store().attributedText(), now);
        text.breakUndoCoalescing();
        if (!text.canUndo())
            undoOf(note).clear();
        undoOf(note).push_back(now);
        const TextRange range = anyRange(now.text());
        if (note.mode == EditorMode::richText && below(4) == 0 && range.length > 0) {
            const int weight = now.characterStyle(range.location)->font->weight == 700 ? 400 : 700;
            const auto change = [weight](CharacterStyle& style) {
                style.font->weight = weight;
            };
            text.performUndoableDocumentEdit(u"Bold"_s, [&](DocumentEditor& editor) {
                editor.modifyCharacterStyles(range, change);
            });
            now.modifyCharacterStyles(range, change);
        } else if (below(4) == 0 && range.length > 0) {
            text.remove(range, EditKind::other, u"Delete"_s);
            now.remove(range);
        } else {
            static const QString pieces[] = {u"a"_s,          u"word "_s,         u"\n"_s,
                                             u"\U0001F469"_s, u"\u05d0\u05d1 "_s, u"\u2028"_s};
            // Without attributes a line separator is a newline as soon as it is stored.
            const int kinds = note.mode == EditorMode::richText ? 6 : 5;
            const QString typed = pieces[below(kinds)];
            text.setSelection(TextSelection::of(range));
            const SharedCharacterStyle style = text.typingStyle();
            ASSERT_TRUE(text.type(typed));
            now.replace(range, typed, style);
        }
        store(note, now);
    }
    void undo(ModelNote& note)
    {
        if (!session->gateway().canUndo()) {
            undoOf(note).clear();
            return;
        }
        ASSERT_FALSE(undoOf(note).empty());
        ASSERT_TRUE(session->gateway().undo());
        store(note, undoOf(note).back());
        undoOf(note).pop_back();
        ++undone;
        undoneAfterReturn += hasReturned;
        hasReturned = false;
        ASSERT_EQ(session->gateway().store().attributedText(), loaded(note));
    }
    void changeElsewhere(const QUuid& id)
    {
        const bool draftWins = id == app->selection().selectedNoteID() && session->isDirty();
        test.clock.advance(1ms);
        const bool isStillDirty = id == app->selection().selectedNoteID() && session->isDirty();
        NoteContent content = NoteContent::of(*app->note(id));
        content.body += u" changed elsewhere"_s;
        if (below(2) == 0) {
            content.richContentPayload.reset();
            content.bodyRTF.reset();
        }
        if (!draftWins && !isStillDirty) {
            model[id].body = content.body;
            if (!content.richContentPayload)
                model[id].rich.reset();
        } else if (!isStillDirty) {
            return;
        }
        app->updateNote(id, content);
    }
    void startAgain()
    {
        if (below(2) == 0) {
            app->projectSession().closeProject();
        } else {
            app->projectSession().terminate();
            session.reset();
            app = std::make_unique<AppState>(services());
            app->projectSession().refreshProjects();
            session = sessionOfSelection(*app);
        }
        app->projectSession().openProject(project, below(2) == 0);
    }
    void checkRecord(const NoteRecord& note)
    {
        const ModelNote& wanted = model[note.id];
        ASSERT_EQ(note.title, wanted.title);
        ASSERT_EQ(note.body.readOrNothing(), wanted.body);
        ASSERT_EQ(note.richContentPayload.has_value(), wanted.rich.has_value());
        if (!wanted.rich)
            return;
        const auto archived =
            AttachmentManager::decodePayload(note.richContentPayload->readOrNothing());
        ASSERT_EQ(*archived, *wanted.rich);
        const auto rtf = OrvaneWorkspaceRTF::read(note.bodyRTF->readOrNothing());
        ASSERT_EQ(rtf->text.text(), wanted.rich->text());
    }
    void checkStored()
    {
        for (const auto& note : app->projectSession().persistenceController()->load().notes)
            checkRecord(*note);
        ASSERT_EQ(app->notes().size(), notes.size());
    }
    void step();
};

void WritingRunTest::step()
{
    ModelNote* note = selected();
    std::optional<QUuid> before;
    switch (below(20)) {
    case 0:
    case 1:
        before = app->selection().selectedNoteID();
        app->selection().selectNote(anyNote());
        hasReturned = true;
        if (before && before != app->selection().selectedNoteID()) {
            ASSERT_NO_FATAL_FAILURE(checkRecord(*app->note(*before)));
        }
        if (note = selected(); note && session->mode() != note->mode)
            FAIL() << "a note remembers its mode";
        break;
    case 2:
        if (note) {
            note->title = u"T%1"_s.arg(random());
            session->setTitle(note->title);
        }
        break;
    case 3:
        test.clock.advance(std::chrono::milliseconds(below(2500)));
        break;
    case 4:
        changeElsewhere(anyNote());
        break;
    case 5:
        if (below(20) == 0)
            app->selection().selectProjectRoot();
        else if (below(20) == 0 && notes.size() < 12)
            addNote(u"Another\nnote"_s);
        break;
    case 6:
        autosaveEnabledSetting.write(test.defaults, below(3) != 0);
        break;
    case 7:
        if (below(50) == 0)
            startAgain();
        else if (below(10) == 0)
            session->saveFromExplicitCommand();
        break;
    case 8:
        if (note && below(3) == 0) {
            note->mode = EditorMode(below(3));
            session->setMode(note->mode);
        }
        break;
    case 9:
        if (note)
            undo(*note);
        break;
    case 10:
    case 11:
        if (note)
            session->gateway().setSelection(
                TextSelection::caret(below(int(session->gateway().store().length()) + 1)));
        break;
    case 12:
        // What was made on another thread arrives.
        QCoreApplication::processEvents();
        break;
    default:
        if (note)
            edit(*note);
    }
}

TEST_F(WritingRunTest, NothingTypedIsEverLost)
{
    maxSnapshotsSetting.write(test.defaults, 5);
    const int steps = qEnvironmentVariableIsSet("ORVANE_LONG") ? 50'000 : 2'500;
    addNote(u"A\nfirst"_s);
    addNote(u"B\nsecond"_s);
    addNote(QString(60'000, u'x')); // one that is long enough to be prepared elsewhere
    for (int i = 0; i < steps; ++i) {
        step();
        ASSERT_FALSE(HasFatalFailure()) << "step " << i;
        const EditGateway& text = session->gateway();
        ASSERT_TRUE(isGraphemeBoundary(text.store(), text.selection().anchor)) << "step " << i;
        ASSERT_TRUE(isGraphemeBoundary(text.store(), text.selection().position)) << "step " << i;
        if (i % 2500 == 0 && !session->isDirty()) {
            checkStored();
        }
    }
    app->selection().selectProjectRoot();
    checkStored();
    EXPECT_GT(undone, steps / 100);
    EXPECT_GT(undoneAfterReturn, 0);
    EXPECT_GT(questions.count, 0);
    EXPECT_EQ(questions.lastTitle, u"Edit Without Formatting?"_s);
}

} // namespace
} // namespace orvane
