// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Formatting as menus and toolbars ask for it: by commands to the view that is meant.
#include "appearance/AppearanceTokens.h"
#include "commands/EditorFormatNotifications.h"
#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/pane/WritingTools.h"
#include "editor/view/EditorView.h"
#include "support/TestServices.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
namespace Format = EditorFormatNotifications;
using Role = EditorParagraphStyleRole;

const TextFont body{u"Inter"_s, 16};

CharacterStyle styled(TextFont font)
{
    CharacterStyle style;
    style.font = std::move(font);
    return style;
}

/// A window with one view and its tools.
struct Pane {
    Pane(TestServices& services, Look& look, WritingLibrary& library)
        : view(new EditorView(&window))
        , tools(*view, library, services.services(), look, window)
    {
        view->setBaseFont(body);
        view->resize(500, 300);
        window.resize(500, 300);
        window.show();
    }
    void show(const AttributedString& text, EditorMode mode)
    {
        view->gateway().load(text, SharedCharacterStyle(styled(body)));
        tools.prepareText(view->gateway(), mode);
        tools.showText(note);
    }
    [[nodiscard]] const CharacterStyle& at(qsizetype position) const
    {
        return *view->store().characterStyle(position);
    }
    [[nodiscard]] QString text() const { return view->plainText(); }
    void select(qsizetype from, qsizetype to) { view->setSelection({from, to}); }

    const QUuid note = QUuid::createUuid();
    QWidget window;
    EditorView* view;
    WritingTools tools;
};

class FormatCommands : public ::testing::Test {
protected:
    FormatCommands()
    {
        AttributedString text(u"Mara reads.\nThe tide turns.\n"_s,
                              SharedCharacterStyle(styled(body)));
        pane.show(text, EditorMode::richText);
    }

    template <typename Payload>
    void post(const Notification<Payload>& command, const Payload& payload = {})
    {
        services.notifications.post(command, payload);
    }
    EditGateway& gateway() { return pane.view->gateway(); }
    const CharacterStyle& typing() { return *gateway().typingStyle(); }

    TestServices services;
    Look look{signatureDarkTokens()};
    WritingLibrary library{services.services(), {}, u"en_US"_s};
    Pane pane{services, look, library};
};

TEST_F(FormatCommands, ATogglePassesOverWhatIsMixed)
{
    struct Row {
        const char* name;
        Notification<CommandTarget> command;
        bool (*has)(const CharacterStyle&);
    };
    const Row rows[] = {
        {"bold", Format::bold,
         [](const CharacterStyle& s) {
             return s.font->isBold();
         }},
        {"italic", Format::italic,
         [](const CharacterStyle& s) {
             return s.font->italic;
         }},
        {"underline", Format::underline,
         [](const CharacterStyle& s) {
             return s.underline == TextLine::single;
         }},
        {"strikethrough", Format::strikethrough,
         [](const CharacterStyle& s) {
             return s.strikethrough == TextLine::single;
         }},
        {"superscript", Format::superscript,
         [](const CharacterStyle& s) {
             return s.baselineShift == BaselineShift::superscript;
         }},
        {"subscript", Format::subscript,
         [](const CharacterStyle& s) {
             return s.baselineShift == BaselineShift::subscript;
         }},
    };
    for (const Row& row : rows) {
        const AttributedString before = pane.view->store().attributedText();
        pane.select(0, 4);
        post(row.command);
        EXPECT_TRUE(row.has(pane.at(3)) && !row.has(pane.at(4))) << row.name;
        EXPECT_TRUE(row.has(typing())) << row.name << ": text typed over it looks the same";
        pane.select(2, 14);
        post(row.command);
        EXPECT_TRUE(row.has(pane.at(2)) && row.has(pane.at(10)) && row.has(pane.at(13)))
            << row.name << ": part of it had it, so all gets it";
        pane.select(14, 2);
        post(row.command);
        EXPECT_TRUE(row.has(pane.at(1)) && !row.has(pane.at(2)) && !row.has(pane.at(13)))
            << row.name;
        pane.select(12, 15);
        post(row.command);
        pane.select(12, 15);
        post(row.command);
        EXPECT_FALSE(row.has(pane.at(12))) << row.name;
        for (int i = 0; i < 5; ++i)
            gateway().undo();
        EXPECT_EQ(pane.view->store().attributedText(), before) << row.name << ": one step each";
        EXPECT_FALSE(gateway().canUndo()) << row.name;
    }
}

TEST_F(FormatCommands, ACaretFormatsWhatIsTypedNext)
{
    pane.select(4, 4);
    post(Format::bold);
    post(Format::foregroundNSColor, {RgbaColor{1, 0, 0}, {}});
    gateway().type(u" K"_s);
    EXPECT_EQ(pane.text().left(6), u"Mara K"_s);
    EXPECT_TRUE(pane.at(5).font->isBold());
    EXPECT_EQ(pane.at(5).foreground, (RgbaColor{1, 0, 0}));
    EXPECT_FALSE(pane.at(3).font->isBold());
    post(Format::bold);
    post(Format::foregroundNSColor);
    gateway().type(u"r"_s);
    EXPECT_FALSE(pane.at(6).font->isBold());
    EXPECT_FALSE(pane.at(6).foreground);
}

TEST_F(FormatCommands, AFontKeepsWeightAndSlant)
{
    installFontSubstitutions();
    pane.select(0, 4);
    post(Format::bold);
    pane.select(2, 7);
    post(Format::italic);
    post(Format::setFont, {u"Menlo"_s, {}, {}});
    EXPECT_EQ(*pane.at(3).font, (TextFont{u"Menlo"_s, 16, 700, true}));
    EXPECT_EQ(*pane.at(5).font, (TextFont{u"Menlo"_s, 16, 400, true}));
    post(Format::setFont, {{}, 24.0, {}});
    EXPECT_EQ(*pane.at(3).font, (TextFont{u"Menlo"_s, 24, 700, true}));
    const AttributedString before = pane.view->store().attributedText();
    post(Format::setFont, {u"No Such Family At All"_s, {}, {}});
    post(Format::setFont, {{}, -4.0, {}});
    EXPECT_EQ(pane.view->store().attributedText(), before);
}

TEST_F(FormatCommands, AHighlightIsMadeFitAndTakenAway)
{
    editorHighlightStrengthSetting.write(services.defaults, u"Subtle"_s);
    pane.select(0, 4);
    post(Format::highlightNSColor, {RgbaColor{1, 1, 0}, {}});
    ASSERT_TRUE(pane.at(0).background);
    EXPECT_NEAR(pane.at(0).background->alpha, 0.24, 1e-9);
    post(Format::highlightNSColor);
    EXPECT_FALSE(pane.at(0).background);
}

TEST_F(FormatCommands, ARoleIsASizeAndAWeight)
{
    headingTitleSizeSetting.write(services.defaults, 40);
    pane.select(0, 4);
    post(Format::italic);
    pane.select(6, 14);
    post(AppCommandEvents::applyHeading1);
    EXPECT_EQ(*pane.at(0).font, (TextFont{u"Inter"_s, 40, 700, true}));
    EXPECT_EQ(*pane.at(20).font, (TextFont{u"Inter"_s, 40, 700})) << "whole paragraphs";
    pane.select(13, 13);
    post(Format::setParagraphRole, {u"Heading 2"_s, {}});
    EXPECT_EQ(pane.at(0).font->size, 40);
    EXPECT_EQ(pane.at(20).font->size, 28);
    post(Format::setParagraphRole, {u"Heading 9"_s, {}});
    EXPECT_EQ(pane.at(20).font->size, 28);
    post(Format::paragraphBody);
    EXPECT_EQ(*pane.at(20).font, body);
    const qsizetype end = pane.view->store().length();
    pane.select(end, end);
    post(Format::paragraphHeading);
    gateway().type(u"Ebb"_s);
    EXPECT_EQ(*pane.at(end).font, (TextFont{u"Inter"_s, 40, 700})) << "an empty paragraph, too";
}

TEST_F(FormatCommands, ReturnEndsAHeadingWhereItsTextEnds)
{
    struct Row {
        const char* name;
        qsizetype caret;
        double size; // of what is typed after Return
    };
    const Row rows[] = {
        {"at the end", 11, 16},
        {"before its text", 0, 32},
        {"within its text", 4, 32},
        {"in a body paragraph", 27, 16},
    };
    pane.select(0, 0);
    post(AppCommandEvents::applyHeading1);
    const AttributedString before = pane.view->store().attributedText();
    for (const Row& row : rows) {
        pane.select(row.caret, row.caret);
        QTest::keyClick(pane.view, Qt::Key_Return);
        EXPECT_EQ(typing().font->size, row.size) << row.name;
        EXPECT_EQ(typing().font->isBold(), row.size > 16) << row.name;
        EXPECT_EQ(pane.text().size(), before.length() + 1) << row.name;
        gateway().undo();
        EXPECT_EQ(pane.view->store().attributedText(), before) << row.name;
    }
}

TEST_F(FormatCommands, ParagraphsTakeWhatIsGivenAndKeepTheRest)
{
    const auto style = [this](qsizetype position) {
        return *pane.view->store().paragraphStyle(position);
    };
    pane.select(8, 13);
    post(Format::alignCenter);
    ParagraphMetrics metrics;
    metrics.lineSpacing = 6;
    metrics.paragraphSpacingAfter = 12;
    metrics.keepWithNext = true;
    post(Format::setParagraphMetrics, metrics);
    metrics = {};
    metrics.firstLineHeadIndent = 18;
    metrics.widowControl = true;
    post(Format::setParagraphMetrics, metrics);
    post(Format::setParagraphBackgroundColor, {RgbaColor{0, 0, 1, 0.2}, {}});
    for (const qsizetype position : {0, 20}) {
        ParagraphStyle expected;
        expected.alignment = TextAlignment::center;
        expected.lineSpacing = 6;
        expected.spacingAfter = 12;
        expected.keepWithNext = true;
        expected.firstLineHeadIndent = 18;
        expected.widowControl = true;
        expected.background = RgbaColor{0, 0, 1, 0.2};
        EXPECT_EQ(style(position), expected) << position;
    }
    EXPECT_EQ(style(pane.view->store().length()), ParagraphStyle());
    for (int i = 0; i < 4; ++i)
        gateway().undo();
    EXPECT_EQ(style(0), ParagraphStyle());
    EXPECT_FALSE(gateway().canUndo());
}

TEST_F(FormatCommands, CaseKeepsTheLooksOfEachLetter)
{
    CharacterStyle link = styled(body);
    link.link = u"https://example.org"_s;
    AttributedString text(u"gro"_s, SharedCharacterStyle(styled(body)));
    text.append(u"ße", SharedCharacterStyle(link));
    text.append(u" flut\nebbe", SharedCharacterStyle(styled({u"Inter"_s, 16, 700})));
    pane.show(text, EditorMode::richText);
    pane.select(0, text.length());
    post(AppCommandEvents::makeUppercase);
    EXPECT_EQ(pane.text(), u"GROSSE FLUT\nEBBE"_s);
    EXPECT_EQ(pane.at(2).link, QString());
    EXPECT_EQ(pane.at(3).link, link.link);
    EXPECT_EQ(pane.at(5).link, link.link);
    EXPECT_TRUE(pane.at(6).font->isBold());
    EXPECT_EQ(pane.view->selection(), (TextSelection{0, 16})) << "all of it stays selected";
    gateway().undo();
    EXPECT_EQ(pane.view->store().attributedText(), text);
    EXPECT_FALSE(gateway().canUndo());
}

TEST_F(FormatCommands, CaseActsOnTheWordAtACaretInEveryMode)
{
    for (const EditorMode mode :
         {EditorMode::richText, EditorMode::plainText, EditorMode::markdown}) {
        pane.show(AttributedString(u"low water, high"_s), mode);
        pane.select(9, 9);
        post(AppCommandEvents::capitalize);
        EXPECT_EQ(pane.text(), u"low Water, high"_s) << "at its end";
        pane.select(5, 5);
        post(AppCommandEvents::makeUppercase);
        EXPECT_EQ(pane.text(), u"low WATER, high"_s);
        EXPECT_EQ(pane.view->selection(), (TextSelection{5, 5}));
        post(AppCommandEvents::makeUppercase);
        gateway().undo();
        EXPECT_EQ(pane.text(), u"low Water, high"_s) << "what changes nothing is no step";
    }
}

TEST_F(FormatCommands, ReachOnlyTheNoteThatIsMeantAndNeverPlainText)
{
    Pane other(services, look, library);
    const AttributedString text(u"Salt"_s, SharedCharacterStyle(styled(body)));
    other.show(text, EditorMode::richText);
    other.select(0, 4);
    pane.select(0, 4);
    post(Format::bold, {other.note});
    EXPECT_TRUE(other.at(0).font->isBold());
    EXPECT_FALSE(pane.at(0).font->isBold());
    other.window.hide();
    post(Format::bold);
    EXPECT_TRUE(other.at(0).font->isBold()) << "it isn't seen";
    EXPECT_TRUE(pane.at(0).font->isBold());
    for (const EditorMode mode : {EditorMode::plainText, EditorMode::markdown}) {
        pane.show(text, mode);
        pane.select(0, 4);
        post(Format::bold);
        post(Format::setFont, {u"Menlo"_s, 20.0, {}});
        post(AppCommandEvents::applyHeading1);
        post(Format::alignRight, {pane.note});
        EXPECT_EQ(pane.view->store().attributedText(), text);
    }
    pane.show(text, EditorMode::richText);
    pane.view->setEditable(false);
    pane.select(0, 4);
    post(Format::bold);
    post(AppCommandEvents::makeUppercase);
    EXPECT_EQ(pane.view->store().attributedText(), text) << "it may not be edited";
}

/// What has been published since it was last asked.
class Published {
public:
    explicit Published(NotificationCenter& notifications)
        : m_observation(notifications.observe(
              editorSelectionSnapshotDidChange,
              [this](const EditorSelectionChange& change) { m_changes.append(change); }))
    {}
    QList<EditorSelectionChange> take()
    {
        QApplication::processEvents();
        return std::exchange(m_changes, {});
    }

private:
    QList<EditorSelectionChange> m_changes;
    NotificationCenter::Observation m_observation;
};

TEST_F(FormatCommands, WhatIsUnderTheSelectionIsPublished)
{
    Published published(services.notifications);
    pane.select(0, 4);
    post(Format::bold);
    post(Format::foregroundNSColor, {RgbaColor{0, 0.5, 1}, {}});
    pane.select(2, 20);
    const auto changes = published.take();
    ASSERT_EQ(changes.size(), 1) << "once for all";
    EXPECT_EQ(changes[0].targetNoteID, pane.note);
    const EditorSelectionSnapshot& first = changes[0].snapshot;
    EXPECT_TRUE(first.isBold) << "the first character of what is mixed";
    EXPECT_EQ(first.foregroundColor, (RgbaColor{0, 0.5, 1}));
    EXPECT_EQ(first.fontName, u"Inter"_s);
    EXPECT_EQ(first.paragraphRole, Role::body);
    EXPECT_EQ(first.listKind, u"none"_s);

    pane.select(3, 5);
    EXPECT_TRUE(published.take().isEmpty()) << "another place that looks the same";
    pane.select(8, 8);
    post(Format::italic);
    EXPECT_TRUE(published.take().last().snapshot.isItalic) << "what would be typed";
    post(AppCommandEvents::applyHeading3);
    EXPECT_EQ(published.take().last().snapshot.paragraphRole, Role::heading3);
    post(Format::alignRight);
    EXPECT_EQ(published.take().last().snapshot.alignment, TextAlignment::right);
    pane.select(14, 14);
    post(Format::setListStyle, {u"upperRoman"_s, {}});
    const EditorSelectionSnapshot item = published.take().last().snapshot;
    EXPECT_EQ(item.listKind, u"numbered"_s);
    EXPECT_EQ(item.listStyle, EditorListStyle::upperRoman);
    pane.show(AttributedString(u"Plain"_s), EditorMode::plainText);
    gateway().type(u"x"_s);
    EXPECT_TRUE(published.take().isEmpty());
}

} // namespace
} // namespace orvane
