// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderModel.h"

#include "core/NaiveRows.h"
#include "core/records/Wording.h"
#include "support/TestServices.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

/// A model over an open project, watched by the toolkit's own checker of models.
class BinderModelTest : public testing::Test {
protected:
    BinderModelTest()
        : m_state(m_test.services())
        , m_created(m_state.projectSession().createProject(u"Novel"_s, {}))
        , m_model(m_state)
        , m_checker(&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal)
        , m_resets(&m_model, &QAbstractItemModel::modelReset)
    {
        // Left to itself the checker opens every folder in the middle of changes.
        m_checker.setUseFetchMore(false);
        EXPECT_TRUE(m_created.has_value());
    }

    /// What the model lists when everything in it is opened, one line a row.
    QStringList listing(const QModelIndex& parent = {})
    {
        QStringList lines;
        if (m_model.canFetchMore(parent))
            m_model.fetchMore(parent);
        for (int row = 0; row < m_model.rowCount(parent); ++row) {
            const QModelIndex index = m_model.index(row, 0, parent);
            lines.append(QString(index.data(BinderModel::DepthRole).toInt(), u' ') +
                         index.data().toString());
            lines.append(listing(index));
        }
        return lines;
    }

    /// The same from the state, with every folder expanded.
    QStringList expected()
    {
        BinderOrder order = m_state.order();
        for (const auto& folder : m_state.folders())
            order.expandedFolderIDs.insert(folder->id);
        QStringList lines;
        for (const NaiveRow& row : naiveRows(order, m_state.folders(), m_state.notes(),
                                             *m_state.projectRootContainerID()))
            lines.append(QString(row.depth, u' ') + (row.isFolder() ? row.folder().titleForList()
                                                                    : row.note().titleForList()));
        return lines;
    }

    QUuid folder(const QString& name, const std::optional<QUuid>& parent = {})
    {
        if (parent)
            m_state.selection().selectFolder(*parent);
        else
            m_state.selection().selectProjectRoot();
        return m_state.createFolder(name).value_or(QUuid());
    }
    QUuid note(const QString& text, const std::optional<QUuid>& container = {})
    {
        if (container)
            m_state.selection().selectFolder(*container);
        else
            m_state.selection().selectProjectRoot();
        return m_state.createNote(text, {}).value_or(QUuid());
    }

    TestServices m_test;
    AppState m_state;
    std::expected<QUuid, QString> m_created;
    BinderModel m_model;
    QAbstractItemModelTester m_checker;
    QSignalSpy m_resets;
};

TEST_F(BinderModelTest, ListsFoldersThenNotesAndTheTrashLast)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    folder(u"Part One"_s, manuscript);
    note(u"Chapter"_s, manuscript);
    note(u"Loose"_s);
    folder(u"Research"_s);
    EXPECT_EQ(listing(), (QStringList{u"Manuscript"_s, u" Part One"_s, u" Chapter"_s, u"Research"_s,
                                      u"Loose"_s, u"Trash"_s}));
    EXPECT_EQ(m_resets.count(), 0);
}

TEST_F(BinderModelTest, OneChangeIsOneChange)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    const QUuid first = note(u"First"_s, manuscript);
    listing();
    QSignalSpy inserted(&m_model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&m_model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy layout(&m_model, &QAbstractItemModel::layoutChanged);

    note(u"Second"_s, manuscript);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted.first().at(1).toInt(), 1);
    EXPECT_EQ(inserted.first().at(2).toInt(), 1);

    m_state.moveNoteToTrash(first);
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(listing(), expected());
    EXPECT_EQ(layout.count(), 0);
    EXPECT_EQ(m_resets.count(), 0);
    EXPECT_TRUE(m_model.indexOf({BinderRowID::Kind::Note, first}).isValid());
}

TEST_F(BinderModelTest, PersistentIndexesFollowAReorderedFolder)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    const QUuid first = note(u"First"_s, manuscript);
    note(u"Second"_s, manuscript);
    const QUuid third = note(u"Third"_s, manuscript);
    listing();
    const QPersistentModelIndex kept = m_model.indexOf({BinderRowID::Kind::Note, third});
    m_state.moveNote(third, manuscript, first);
    EXPECT_EQ(kept.row(), 0);
    EXPECT_EQ(kept.data().toString(), u"Third"_s);
    EXPECT_EQ(listing(), expected());
}

TEST_F(BinderModelTest, TitlesAndCountsFollow)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    const QUuid inner = folder(u"Part One"_s, manuscript);
    const QUuid id = note(u"A line\nand its second"_s, inner);
    const QModelIndex index = m_model.indexOf({BinderRowID::Kind::Note, id});
    ASSERT_TRUE(index.isValid()) << "the way down is listed where it is asked for";
    EXPECT_EQ(index.data(BinderModel::SecondLineRole).toString(), u"and its second"_s);
    QSignalSpy changed(&m_model, &QAbstractItemModel::dataChanged);
    m_state.applyLiveTitle(id, u"Another"_s);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(index.data().toString(), u"Another"_s);
    const QModelIndex outer = m_model.indexOf({BinderRowID::Kind::Folder, manuscript});
    EXPECT_EQ(outer.data(BinderModel::CountRole).toInt(), 1);
    m_state.moveNoteToTrash(id);
    EXPECT_EQ(outer.data(BinderModel::CountRole).toInt(), 0);
}

TEST_F(BinderModelTest, FilterKeepsMatchesAndTheFoldersAboveThem)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    const QUuid inner = folder(u"Part One"_s, manuscript);
    note(u"Harbour"_s, inner);
    note(u"Salt"_s, inner);
    folder(u"Research"_s);
    m_model.setTitleFilter(u"HARB"_s);
    EXPECT_EQ(listing(), (QStringList{u"Manuscript"_s, u" Part One"_s, u"  Harbour"_s}));
    note(u"Harbour lights"_s);
    EXPECT_EQ(listing().last(), u"Harbour lights"_s) << "new notes are filtered as well";
    m_model.setTitleFilter({});
    EXPECT_EQ(listing(), expected());
    EXPECT_EQ(m_resets.count(), 0);
}

// Whatever changes of a note, it stands where a sort of all of them puts it, and what is remembered
// of rows goes along.
TEST_F(BinderModelTest, AChangedNoteFindsItsPlaceInEachOrder)
{
    const QUuid manuscript = folder(u"Manuscript"_s);
    folder(u"Inner"_s, manuscript);
    QList<QUuid> ids;
    for (int i = 0; i < 25; ++i) {
        m_test.clock.advance(std::chrono::seconds(1));
        ids.append(
            note(u"n%1"_s.arg(i * 7 % 25), i % 2 ? std::optional(manuscript) : std::nullopt));
        (void)m_state.updateNoteTags(ids.last(), {u"sea"_s});
    }
    const auto notesShown = [&](const QModelIndex& parent) {
        QList<QUuid> shown;
        for (int row = 0; row < m_model.rowCount(parent); ++row) {
            const BinderRowID id = m_model.rowIdOf(m_model.index(row, 0, parent));
            if (id.kind == BinderRowID::Kind::Note)
                shown.append(id.id);
        }
        return shown;
    };
    const auto wanted = [&](const QUuid& container) {
        QList<QUuid> ids;
        const bool filters = !m_state.activeTagFilter().isEmpty();
        for (const auto& each :
             filters ? m_state.tagFilteredNotes()
                     : sortedNotes(m_state.orderedNotes(container), m_state.binderSortOrder()))
            ids.append(each->id);
        return ids;
    };
    QRandomGenerator random(20'261'122);
    for (int turn = 0; turn <= binderSortOrderCount; ++turn) {
        const bool filters = turn == binderSortOrderCount;
        if (filters)
            m_state.toggleTagFilter(u"sea"_s);
        else
            m_state.setBinderSortOrder(BinderSortOrder(turn));
        SCOPED_TRACE(filters ? "filtered" : rawValue(BinderSortOrder(turn)).toStdString());
        listing();
        const QUuid followed = ids.at(3);
        const QPersistentModelIndex kept = m_model.indexOf({BinderRowID::Kind::Note, followed});
        for (int step = 0; step < 60; ++step) {
            const QUuid id = random.bounded(4) ? ids.at(random.bounded(int(ids.size()))) : followed;
            m_test.clock.advance(std::chrono::milliseconds(random.bounded(2) * 10));
            switch (random.bounded(4)) {
            case 0:
                m_state.applyLiveTitle(id, u"n%1"_s.arg(random.bounded(12)));
                break;
            case 1:
                (void)m_state.updateNoteBinderTitle(id, u"n%1"_s.arg(random.bounded(12)), {});
                break;
            case 2:
                (void)m_state.updateNoteTags(id, filters && random.bounded(3) == 0
                                                     ? QStringList()
                                                     : QStringList{u"sea"_s, u"ebb"_s});
                break;
            default:
                (void)m_state.togglePinNote(id);
            }
            const QModelIndex inside =
                filters ? QModelIndex() : m_model.indexOf({BinderRowID::Kind::Folder, manuscript});
            ASSERT_EQ(notesShown(inside), wanted(manuscript)) << step;
            ASSERT_EQ(notesShown({}), wanted(*m_state.projectRootContainerID())) << step;
            if (!filters) {
                ASSERT_EQ(m_model.rowIdOf(kept).id, followed) << step;
            }
        }
    }
    EXPECT_EQ(m_resets.count(), 0);
}

TEST_F(BinderModelTest, FollowsRandomOperations)
{
    QRandomGenerator random(20'261'121);
    const auto any = [&](const auto& table) {
        return table.records().at(qsizetype(random.bounded(quint32(table.size()))))->id;
    };
    folder(u"f"_s);
    note(u"n"_s);
    for (int step = 0; step < 600; ++step) {
        const QUuid someFolder = any(m_state.folders());
        const QUuid otherFolder = any(m_state.folders());
        switch (random.bounded(6)) {
        case 0:
            folder(u"f%1"_s.arg(step), someFolder);
            break;
        case 1:
            note(u"n%1"_s.arg(step), someFolder);
            break;
        case 2:
            if (!m_state.notes().isEmpty())
                m_state.moveNote(any(m_state.notes()), someFolder, {});
            break;
        case 3:
            m_state.moveFolder(someFolder, otherFolder, {});
            break;
        case 4:
            m_state.toggleExpanded(someFolder);
            break;
        default:
            if (m_state.folders().size() > 12)
                m_state.deleteFolder(someFolder);
        }
        if (step % 3 == 0) {
            ASSERT_EQ(listing(), expected()) << "step " << step;
        }
    }
    EXPECT_EQ(m_resets.count(), 0);
}

TEST(SecondLineTest, IsWhatTheTitleDoesNotSay)
{
    struct Row {
        const char* name;
        QString title;
        QString body;
        QString line;
    };
    const Row rows[] = {
        {"first line below a title", u"Title"_s, u"\n\n  First words. \nMore"_s, u"First words."_s},
        {"body's first line is the title", {}, u"Start Here\n\nWrite."_s, u"Write."_s},
        {"empty note", {}, {}, u"2 November 2026"_s},
        {"blank note", u"Title"_s, u" \n\t\n"_s, u"2 November 2026"_s},
    };
    for (const Row& row : rows) {
        NoteRecord note;
        note.title = row.title;
        note.body = row.body;
        note.updatedAt = *fromIso8601(u"2026-11-02T14:32:00Z"_s);
        EXPECT_EQ(secondLineOf(note), row.line) << row.name;
    }
}

TEST(WordingTest, MomentsAsAPersonSaysThem)
{
    struct Row {
        QString moment;
        QString words;
    };
    const Timestamp now = *fromIso8601(u"2026-11-21T15:00:00Z"_s);
    const Row rows[] = {
        {u"2026-11-21T14:32:00Z"_s, u"today, 14:32"_s},
        {u"2026-11-20T23:59:00Z"_s, u"yesterday"_s},
        {u"2026-11-12T08:00:00Z"_s, u"12 November"_s},
        {u"2025-11-20T08:00:00Z"_s, u"20 November 2025"_s},
        {u"2026-11-22T00:10:00Z"_s, u"22 November"_s},
    };
    for (const Row& row : rows)
        EXPECT_EQ(momentInWords(*fromIso8601(row.moment), now), row.words);
}

} // namespace
} // namespace orvane
