// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ViewFixture.h"

#include <QAccessible>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

class EditorAccessibleTest : public ViewFixture {
protected:
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&view);
    QAccessibleTextInterface* text() { return interface->textInterface(); }
};

TEST_F(EditorAccessibleTest, IsATextWithCaretAndSelection)
{
    ASSERT_NE(interface, nullptr);
    ASSERT_NE(text(), nullptr);
    EXPECT_EQ(interface->role(), QAccessible::EditableText);
    set(u"one [two] three"_s);
    EXPECT_EQ(text()->characterCount(), 13);
    EXPECT_EQ(text()->text(4, 7), u"two"_s);
    EXPECT_EQ(text()->cursorPosition(), 7);
    int start = 0;
    int end = 0;
    text()->selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(4, 7));
    text()->setSelection(0, 0, 3);
    EXPECT_EQ(marked(), u"[one] two three"_s);
    text()->setCursorPosition(5);
    EXPECT_EQ(marked(), u"one t|wo three"_s);
    interface->editableTextInterface()->replaceText(0, 3, u"1"_s);
    EXPECT_EQ(view.plainText(), u"1 two three"_s);
    view.setEditable(false);
    EXPECT_TRUE(interface->state().readOnly);
    interface->editableTextInterface()->deleteText(0, 3);
    EXPECT_EQ(view.plainText(), u"1 two three"_s);
}

TEST_F(EditorAccessibleTest, ReadsByUnits)
{
    set(u"|First one. Second two.\nNext paragraph"_s);
    struct Case {
        const char* name;
        QAccessible::TextBoundaryType boundary;
        QString before;
        QString at;
        QString after;
    };
    const Case cases[] = {
        {"characters", QAccessible::CharBoundary, u" "_s, u"S"_s, u"e"_s},
        {"words", QAccessible::WordBoundary, u" "_s, u"Second"_s, u" "_s},
        {"sentences", QAccessible::SentenceBoundary, u"First one. "_s, u"Second two.\n"_s,
         u"Next paragraph"_s},
        {"paragraphs", QAccessible::ParagraphBoundary, u""_s, u"First one. Second two.\n"_s,
         u"Next paragraph"_s},
        {"lines", QAccessible::LineBoundary, u""_s, u"First one. Second two."_s, {}},
    };
    for (const Case& one : cases) {
        int start = 0;
        int end = 0;
        EXPECT_EQ(text()->textBeforeOffset(11, one.boundary, &start, &end), one.before) << one.name;
        EXPECT_EQ(text()->textAtOffset(11, one.boundary, &start, &end), one.at) << one.name;
        EXPECT_LE(start, 11) << one.name;
        EXPECT_GT(end, 11) << one.name;
        if (!one.after.isNull()) {
            EXPECT_EQ(text()->textAfterOffset(11, one.boundary, &start, &end), one.after)
                << one.name;
        }
    }
}

TEST_F(EditorAccessibleTest, KnowsPlacesAlsoWhereNothingWasDrawn)
{
    QString lines;
    for (int i = 0; i < 2000; ++i)
        lines += u"line %1\n"_s.arg(i);
    set(u"|"_s + lines);
    const auto far = int(lines.indexOf(u"line 1500"_s));
    const QRect rect = text()->characterRect(far);
    EXPECT_GT(rect.width(), 2);
    EXPECT_GT(rect.height(), 10);
    EXPECT_GT(rect.top(), view.height());
    EXPECT_EQ(text()->offsetAtPoint(rect.center() - QPoint(rect.width() / 4, 0)), far);
    text()->scrollToSubstring(far, far + 4);
    EXPECT_TRUE(view.viewport()->rect().contains(
        view.viewport()->mapFromGlobal(text()->characterRect(far).center())));
}

TEST_F(EditorAccessibleTest, TellsAttributesOfRuns)
{
    CharacterStyle bold;
    bold.font = TextFont{u"Inter"_s, 14, 700, true};
    bold.foreground = RgbaColor{1, 0, 0, 1};
    AttributedString content(u"plain "_s);
    content.append(u"bold"_s, bold);
    content.append(u" end"_s, {});
    view.gateway().load(content, {});
    int start = 0;
    int end = 0;
    const QString attributes = text()->attributes(8, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(6, 10));
    for (const QString& part :
         {u"font-family:Inter;"_s, u"font-size:14pt;"_s, u"font-weight:700;"_s,
          u"font-style:italic;"_s, u"color:rgb(255\\,0\\,0);"_s})
        EXPECT_TRUE(attributes.contains(part)) << attributes.toStdString();
}

} // namespace
} // namespace orvane
