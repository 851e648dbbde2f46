// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/EditGateway.h"

#include "text/store/TextStore.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct Note {
    TextStore store;
    EditGateway gateway{store};

    explicit Note(const AttributedString& content = AttributedString())
    {
        gateway.load(content, {});
    }
    QString text() const { return store.text(); }
    void select(qsizetype from, qsizetype to) { gateway.setSelection({from, to}); }
    void caret(qsizetype at) { gateway.setSelection(TextSelection::caret(at)); }
    void type(const QString& keys)
    {
        for (const QChar key : keys)
            gateway.type(QString(key));
    }
};

SharedCharacterStyle bold()
{
    CharacterStyle style;
    style.font = TextFont{u"Georgia"_s, 16, 700, false};
    return style;
}

/// Keeps a copy of the text by what the change signal says alone.
struct Mirror {
    explicit Mirror(Note& note)
        : text(note.text())
    {
        QObject::connect(&note.gateway, &EditGateway::textChanged,
                         [this, &note](const TextChange& change) {
                             text.replace(change.location, change.lengthBefore,
                                          note.store.text({change.location, change.lengthAfter}));
                         });
    }
    QString text;
};

class RandomEdits {
public:
    explicit RandomEdits(unsigned seed)
        : m_random(seed)
    {}

    qsizetype below(qsizetype n) { return qsizetype(m_random() % std::size_t(n)); }
    TextRange range(qsizetype length)
    {
        const qsizetype from = below(length + 1);
        return {from, std::min(length - from, below(4) == 0 ? below(40) : below(6))};
    }
    QString words()
    {
        static const QString alphabet = u"ab c\nd\u2028e\u05d0\u00a0\nf"_s;
        QString text;
        for (qsizetype i = below(9); i > 0; --i)
            text += alphabet[below(alphabet.size())];
        return text;
    }
    SharedCharacterStyle style()
    {
        CharacterStyle style;
        if (below(2))
            style.underline = TextLine::single;
        if (below(3) == 0)
            style.background = RgbaColor{1, 1, 0, 1};
        if (below(3) == 0)
            style.font = TextFont{u"Inter"_s, 10.0 + double(below(3)) / 2, 400, below(2) == 0};
        return style;
    }
    SharedParagraphStyle paragraphStyle()
    {
        ParagraphStyle style;
        style.headIndent = double(below(3)) * 10;
        style.alignment = TextAlignment(below(4));
        return style;
    }
    AttributedString rich()
    {
        AttributedString text;
        for (qsizetype i = below(4); i > 0; --i)
            text.append(words(), style(), paragraphStyle());
        return text;
    }

private:
    std::mt19937 m_random;
};

/// One random command on both the note and the naive model.
void editBoth(RandomEdits& random, Note& note, AttributedString& model)
{
    const TextRange range = random.range(model.length());
    const qsizetype kind = random.below(5);
    const AttributedString rich = random.rich();
    const QString words = random.words();
    const SharedCharacterStyle style = random.style();
    const SharedParagraphStyle paragraph = random.paragraphStyle();
    const auto change = [&](auto& target) {
        if (kind == 0)
            target.replace(range, rich);
        else if (kind == 1)
            target.replace(range, words, style);
        else if (kind == 2)
            target.remove(range);
        else if (kind == 3)
            target.setCharacterStyle(range, style);
        else
            target.setParagraphStyle(range, paragraph);
    };
    note.gateway.performUndoableDocumentEdit(u"Edit"_s,
                                             [&](DocumentEditor& editor) { change(editor); });
    change(model);
}

TEST(EditGateway, RandomEditsEqualNaiveModelAndUndoToTheStart)
{
    for (const unsigned seed : {11U, 12U, 13U, 14U}) {
        RandomEdits random(seed);
        const AttributedString start = random.rich();
        Note note(start);
        Mirror mirror(note);
        AttributedString model = start;
        int custom = 0;
        std::vector<std::pair<AttributedString, int>> states; // before each registered step
        std::size_t at = 0;
        for (int step = 0; step < 700; ++step) {
            const qsizetype what = random.below(10);
            if (what == 0 && note.gateway.canUndo()) {
                note.gateway.undo();
                model = states[--at].first;
                ASSERT_EQ(custom, states[at].second) << "seed " << seed << " step " << step;
            } else if (what == 1 && note.gateway.canRedo()) {
                note.gateway.redo();
                model = states[++at].first;
                ASSERT_EQ(custom, states[at].second);
            } else {
                const AttributedString before = model;
                const int customBefore = custom;
                if (what == 2) {
                    note.gateway.registerUndo(u"Shape"_s, {[&] { --custom; },
                                                           [&] {
                                                               ++custom;
                                                           }});
                    ++custom;
                } else if (what < 5) {
                    const TextRange range = random.range(model.length());
                    const QString text = random.words();
                    note.gateway.setSelection(TextSelection::of(range));
                    note.gateway.breakUndoCoalescing();
                    const SharedCharacterStyle style = note.gateway.typingStyle();
                    note.gateway.type(text);
                    if (!text.isEmpty()) {
                        model.remove(range);
                        model.replace({range.location, 0}, text, style);
                    }
                } else {
                    editBoth(random, note, model);
                }
                if (!(before == model) || custom != customBefore) {
                    states.resize(at);
                    states.emplace_back(before, customBefore);
                    states.emplace_back(model, custom);
                    ++at;
                }
            }
            ASSERT_EQ(note.store.attributedText(), model) << "seed " << seed << " step " << step;
            ASSERT_EQ(mirror.text, model.text()) << "seed " << seed << " step " << step;
        }
        EXPECT_EQ(note.store.snapshot().toAttributedString(), model);
        while (note.gateway.undo()) {
        }
        EXPECT_EQ(note.store.attributedText(), start) << "seed " << seed;
        EXPECT_EQ(custom, 0);
        EXPECT_EQ(mirror.text, start.text());
    }
}

TEST(EditGateway, TypingIsUndoneByWords)
{
    struct Case {
        const char* name;
        std::function<void(Note&)> work;
        QStringList undone; // the text after each undo
    };
    const Case cases[] = {
        {"words", [](Note& n) { n.type(u"one two"_s); }, {u"one "_s, u""_s}},
        {"a moved caret separates",
         [](Note& n) {
             n.type(u"ab"_s);
             n.caret(0);
             n.type(u"cd"_s);
         },
         {u"ab"_s, u""_s}},
        {"Return separates", [](Note& n) { n.type(u"a\nb"_s); }, {u"a\n"_s, u"a"_s, u""_s}},
        {"backspaces are one step",
         [](Note& n) {
             n.type(u"abc"_s);
             n.gateway.remove({2, 1}, EditKind::deletingBackward, u"Delete"_s);
             n.gateway.remove({1, 1}, EditKind::deletingBackward, u"Delete"_s);
         },
         {u"abc"_s, u""_s}},
        {"typing over a selection brings it back",
         [](Note& n) {
             n.type(u"abc"_s);
             n.select(0, 3);
             n.type(u"xy"_s);
         },
         {u"abc"_s, u""_s}},
        {"an amended keystroke goes with it",
         [](Note& n) {
             n.type(u"tag"_s);
             n.gateway.amendLastEdit(u"Tag"_s, [](DocumentEditor& editor) {
                 editor.replace({0, 3}, u"TAG"_s, {});
             });
         },
         {u""_s}},
    };
    for (const Case& one : cases) {
        Note note;
        one.work(note);
        for (const QString& expected : one.undone) {
            EXPECT_TRUE(note.gateway.undo()) << one.name;
            EXPECT_EQ(note.text(), expected) << one.name;
        }
        EXPECT_FALSE(note.gateway.canUndo()) << one.name;
        while (note.gateway.redo()) {
        }
        EXPECT_FALSE(note.text().isEmpty()) << one.name;
    }
}

TEST(EditGateway, CommandsThatChangeNothingRegisterNothing)
{
    const auto edit = [](auto body) {
        return EditGateway::Edit(body);
    };
    struct Case {
        const char* name;
        EditGateway::Edit edit;
        bool registers;
    };
    const Case cases[] = {
        {"nothing done", edit([](DocumentEditor&) {}), false},
        {"replaced by the same", edit([](DocumentEditor& e) {
             e.replace({1, 2}, u"bc"_s, {});
         }),
         false},
        {"there and back", edit([](DocumentEditor& e) {
             e.remove({0, 2});
             e.replace({3, 0}, u"zz"_s, {});
             e.replace({0, 0}, u"ab"_s, {});
             e.remove({5, 2});
         }),
         false},
        {"only the selection", edit([](DocumentEditor& e) {
             e.setSelection({1, 3});
         }),
         true},
        {"only the typing style", edit([](DocumentEditor& e) { e.setTypingStyle(bold()); }), true},
        {"only attributes", edit([](DocumentEditor& e) {
             e.setCharacterStyle({0, 1}, bold());
         }),
         true},
        {"only a paragraph style", edit([](DocumentEditor& e) {
             e.modifyParagraphStyles({0, 0}, [](ParagraphStyle& s) { s.headIndent = 9; });
         }),
         true},
    };
    for (const Case& one : cases) {
        Note note(AttributedString(u"abc\ndef"_s));
        note.gateway.performUndoableDocumentEdit(u"First"_s, [](DocumentEditor& editor) {
            editor.replace({7, 0}, u"!"_s, {});
        });
        const EditState before{note.gateway.selection(), note.gateway.typingStyle()};
        const AttributedString content = note.store.attributedText();
        QSignalSpy changes(&note.gateway, &EditGateway::historyChanged);
        EXPECT_EQ(note.gateway.performUndoableDocumentEdit(u"Second"_s, one.edit), one.registers)
            << one.name;
        EXPECT_EQ(changes.count(), one.registers ? 1 : 0) << one.name;
        EXPECT_EQ(note.gateway.undoName(), one.registers ? u"Second"_s : u"First"_s) << one.name;
        if (one.registers)
            note.gateway.undo();
        EXPECT_EQ(note.store.attributedText(), content) << one.name;
        EXPECT_EQ(note.gateway.selection(), before.selection) << one.name;
        EXPECT_EQ(note.gateway.typingStyle(), before.typingStyle) << one.name;
        note.gateway.undo();
        EXPECT_EQ(note.text(), u"abc\ndef"_s) << one.name;
    }
}

TEST(EditGateway, RefusesWhatItMayNotChange)
{
    Note note(AttributedString(u"abc"_s));
    note.gateway.setChangeFilter(
        [](TextRange, const QString& replacement) { return replacement != u"x"_s; });
    EXPECT_FALSE(note.gateway.type(u"x"_s));
    EXPECT_TRUE(note.gateway.type(u"y"_s));
    note.gateway.setEditable(false);
    EXPECT_FALSE(note.gateway.type(u"z"_s));
    EXPECT_FALSE(note.gateway.undo());
    EXPECT_FALSE(note.gateway.performUndoableDocumentEdit(u"Edit"_s, [](DocumentEditor& editor) {
        editor.remove({0, 1});
    }));
    EXPECT_EQ(note.text(), u"yabc"_s);
}

TEST(EditGateway, TypingStyleFollowsTheCaret)
{
    CharacterStyle link;
    link.link = u"orvaneworkspace://note/1"_s;
    AttributedString text(u"plain "_s);
    text.append(u"bold"_s, bold());
    text.append(u" "_s, {});
    text.append(u"link"_s, link);
    text.append(u"\n\nend"_s, {});
    struct Case {
        const char* name;
        qsizetype caret;
        SharedCharacterStyle expected;
    };
    const Case cases[] = {
        {"after a bold letter", 8, bold()},
        {"behind the bold word", 10, bold()},
        {"before the bold word", 6, {}},
        {"within a link", 13, link},
        {"behind a link it does not go on", 15, {}},
        {"an empty paragraph", 16, {}},
    };
    for (const Case& one : cases) {
        Note note(text);
        note.caret(one.caret);
        EXPECT_EQ(note.gateway.typingStyle(), one.expected) << one.name;
    }
}

TEST(EditGateway, KeepsEveryCharacterThatItIsGiven)
{
    const QString given = u"a\u00a0b\u2028c\u200dd\U0001F600\te\fz"_s;
    Note note;
    note.gateway.loadPlainText(given + u"\r\nnext\rlast"_s);
    EXPECT_EQ(note.text(), given + u"\nnext\nlast"_s);
    note.caret(0);
    note.gateway.type(u"\u2029\ufdd0"_s);
    EXPECT_EQ(note.text().first(2), u"\u2028\ufffd"_s);
}

TEST(EditGatewayTest, WhatTheGuardRefusesIsNotDone)
{
    Note note;
    note.type(u"one two"_s);
    note.gateway.undo();
    const QString before = note.text();
    ASSERT_TRUE(note.gateway.canUndo() && note.gateway.canRedo());
    int asked = 0;
    note.gateway.setEditGuard([&] {
        ++asked;
        return false;
    });
    struct Row {
        const char* name;
        std::function<bool()> edit;
    };
    EditGateway& gateway = note.gateway;
    const Row rows[] = {
        {"undo",
         [&] {
             return gateway.undo();
         }},
        {"redo",
         [&] {
             return gateway.redo();
         }},
        {"an edit",
         [&] {
             return gateway.performUndoableDocumentEdit(u"Cut"_s, [](DocumentEditor& editor) {
                 editor.remove({0, 1});
             });
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        asked = 0;
        EXPECT_FALSE(row.edit());
        EXPECT_EQ(asked, 1);
        EXPECT_EQ(note.text(), before);
        EXPECT_TRUE(gateway.canUndo() && gateway.canRedo());
    }
    gateway.setEditGuard({});
    EXPECT_TRUE(gateway.redo());
    EXPECT_EQ(note.text(), u"one two"_s);
}

} // namespace
} // namespace orvane
