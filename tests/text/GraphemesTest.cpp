// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/Graphemes.h"

#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

const QString family = u"\U0001F469\u200D\U0001F467"_s;
const QString flag = u"\U0001F1E9\U0001F1EA"_s;

TEST(GraphemesTest, StandWhereverTheyAreInATextOfAnyLength)
{
    struct Row {
        const char* name;
        QString text;
    };
    const Row rows[] = {
        {"a surrogate pair", u"\U0001F600"_s},
        {"a letter and its accents", u"e\u0301\u0302"_s},
        {"a skin tone", u"\U0001F44D\U0001F3FD"_s},
        {"a family", family},
        {"a flag", flag},
        {"a letter under many accents", u'e' + QString(200, QChar(0x301))},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const qsizetype before : {0, 1, 31, 32, 33, 500}) {
            for (const QString& ahead : {QString(before, u'x'), flag.repeated(before)}) {
                const QString text = ahead + row.text + u"y\n"_s;
                TextStore store;
                EditGateway gateway(store);
                gateway.loadPlainText(text);
                const qsizetype from = ahead.size();
                const qsizetype to = from + row.text.size();
                for (qsizetype at = from; at <= to; ++at) {
                    const bool isBoundary = at == from || at == to;
                    EXPECT_EQ(isGraphemeBoundary(text, at), isBoundary) << at - from;
                    EXPECT_EQ(isGraphemeBoundary(store, at), isBoundary) << at - from;
                    EXPECT_EQ(graphemeStart(text, at), at == to ? to : from);
                    EXPECT_EQ(graphemeEnd(text, at), at == from ? from : to);
                    gateway.setSelection(TextSelection::caret(at));
                    EXPECT_EQ(gateway.selection().position, at == from ? from : to);
                    gateway.setSelection({to + 1, at});
                    EXPECT_EQ(gateway.selection(), (TextSelection{to + 1, at == to ? to : from}));
                    gateway.setSelection({0, at});
                    EXPECT_EQ(gateway.selection().position, at == from ? from : to);
                }
            }
        }
    }
}

TEST(GraphemesTest, WhatAnEditPutsTogetherIsNotParted)
{
    TextStore store;
    EditGateway gateway(store);
    gateway.loadPlainText(u"\u0301z"_s);
    gateway.type(u"e"_s);
    EXPECT_EQ(gateway.selection(), TextSelection::caret(2));
    gateway.type(u"!"_s);
    EXPECT_EQ(store.text(), u"e\u0301!z"_s);
    gateway.undo();
    EXPECT_EQ(store.text(), u"\u0301z"_s);
}

} // namespace
} // namespace orvane
