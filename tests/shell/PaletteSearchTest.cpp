// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/PaletteSearch.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;
using Kind = PaletteRow::Kind;

PaletteSearch sample()
{
    std::vector<PaletteCommand> commands;
    for (const char* title :
         {"New Note", "Insert Shape", "Insert Table", "Toggle Right Pane (Inspector)", "Brain Map"})
        commands.push_back({nullptr, QString::fromLatin1(title), {}, {}});
    std::vector<PaletteNote> notes;
    qint64 changed = 0;
    for (const char* title : {"Inside the wall", "Salt", "Insurance table, 1909", "Brain Map"})
        notes.push_back(
            {QUuid(), QString::fromLatin1(title), QUuid(), Timestamp{++changed}, false});
    return {std::move(commands), std::move(notes)};
}

/// "Commands: a, b; Notes: c", the row that is meant best in brackets.
QString shown(const PaletteSearch& search, const QString& query)
{
    const QList<PaletteRow> rows = search.rows(query);
    const qsizetype best = PaletteSearch::bestRow(rows);
    QString text;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const PaletteRow& row = rows[i];
        if (row.isHead()) {
            text += row.kind == Kind::CommandsHead ? u"| Commands: "_s : u"| Notes: "_s;
            continue;
        }
        const QString title =
            row.kind == Kind::Command ? search.command(row).title : search.note(row).title;
        text += (i == best ? u"[%1] "_s : u"%1, "_s).arg(title);
    }
    return text.trimmed();
}

TEST(PaletteSearch, BothSectionsByHowWellTheyMatch)
{
    struct Row {
        const char* name;
        QString query;
        QString expected;
    };
    const Row rows[] = {
        {"both", u"ins t"_s,
         u"| Commands: [Insert Table] | Notes: Inside the wall, Insurance table, 1909,"_s},
        {"letters here and there give way to a word, also of the other section", u"wall"_s,
         u"| Notes: [Inside the wall]"_s},
        {"and are better than nothing", u"nwnt"_s, u"| Commands: [New Note]"_s},
        {"initials are no chance", u"nn"_s, u"| Commands: [New Note]"_s},
        {"a piece of a word", u"spec"_s, u"| Commands: [Toggle Right Pane (Inspector)]"_s},
        {"the best is a note", u"salt"_s, u"| Notes: [Salt]"_s},
        {"equals: the command is meant", u"brain map"_s,
         u"| Commands: [Brain Map] | Notes: Brain Map,"_s},
        {"blanks around", u"  shape "_s, u"| Commands: [Insert Shape]"_s},
        {"nothing", u"xyz"_s, QString()},
        {"no query: all commands, notes by their last change", QString(),
         u"| Commands: [New Note] Insert Shape, Insert Table, Toggle Right Pane (Inspector), Brain "
         "Map, | Notes: Brain Map, Insurance table, 1909, Salt, Inside the wall,"_s},
    };
    const PaletteSearch search = sample();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(shown(search, row.query).toStdString(), row.expected.toStdString());
    }
}

TEST(PaletteSearch, KeepsTheBestOfVeryMany)
{
    std::vector<PaletteNote> notes;
    for (int i = 0; i < 20'000; ++i)
        notes.push_back({QUuid(), u"a long title %1 of a tide"_s.arg(i), QUuid(), {i}, false});
    notes.push_back({QUuid(), u"Tide"_s, QUuid(), {-1}, false});
    const PaletteSearch search({}, std::move(notes));
    const auto rows = search.rows(u"tide"_s);
    EXPECT_EQ(rows.size(), 51);
    EXPECT_EQ(search.note(rows[1]).title, u"Tide"_s);
    EXPECT_EQ(search.note(rows[2]).title, u"a long title 19999 of a tide"_s);
}

} // namespace
} // namespace orvane
