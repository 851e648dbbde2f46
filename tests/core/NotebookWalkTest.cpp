// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// A random walk over the notebook's operations against a naive model: vectors in their order and
// nothing clever. After each step the notebook, its order and a fresh load from the store agree.
#include "core/Records.h"
#include "core/records/RecordJson.h"
#include "core/state/AppState.h"
#include "support/TestServices.h"

#include <QJsonDocument>
#include <QProcess>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

struct ModelNote {
    QUuid id;
    QUuid container;
    QUuid from; ///< the container before the Trash
    QString title;
    QString body;
    QStringList tags;
    bool pinned = false;
};

struct ModelFolder {
    QUuid id;
    std::optional<QUuid> parent;
    QString name;
};

/// Notes of one container, and folders of one parent, stand in the order of these vectors.
struct Model {
    std::vector<ModelNote> notes;
    std::vector<ModelFolder> folders;

    ModelNote& note(const QUuid& id)
    {
        return *std::find_if(notes.begin(), notes.end(), [&](const auto& n) { return n.id == id; });
    }
    ModelFolder& folder(const QUuid& id)
    {
        return *std::find_if(folders.begin(), folders.end(),
                             [&](const auto& f) { return f.id == id; });
    }
    template <typename Item>
    static void place(std::vector<Item>& items, Item item, const std::optional<QUuid>& before)
    {
        std::erase_if(items, [&](const Item& each) { return each.id == item.id; });
        const auto at = std::find_if(items.begin(), items.end(),
                                     [&](const Item& each) { return each.id == before; });
        items.insert(at, std::move(item));
    }
    template <typename Item>
    static void placeAfter(std::vector<Item>& items, Item item, const QUuid& after)
    {
        const auto at = std::find_if(items.begin(), items.end(),
                                     [&](const Item& each) { return each.id == after; });
        items.insert(at + 1, std::move(item));
    }
    QList<QUuid> notesIn(const QUuid& container) const
    {
        QList<QUuid> ids;
        for (const auto& n : notes) {
            if (n.container == container)
                ids.append(n.id);
        }
        return ids;
    }
    QList<QUuid> foldersIn(const std::optional<QUuid>& parent) const
    {
        QList<QUuid> ids;
        for (const auto& f : folders) {
            if (f.parent == parent)
                ids.append(f.id);
        }
        return ids;
    }
    bool isBelow(std::optional<QUuid> id, const QUuid& ancestor)
    {
        while (id && *id != ancestor)
            id = folder(*id).parent;
        return id.has_value();
    }
    void deleteFolder(const QUuid& id)
    {
        QList<QUuid> subtree{id};
        for (qsizetype i = 0; i < subtree.size(); ++i)
            subtree += foldersIn(subtree[i]);
        for (const QUuid& each : subtree) {
            for (const QUuid& noteID : notesIn(each)) {
                ModelNote moved = note(noteID);
                moved.from = each;
                moved.container = FolderRecord::trashFolderID;
                place(notes, moved, std::nullopt);
            }
        }
        std::erase_if(folders, [&](const auto& f) { return subtree.contains(f.id); });
    }
};

class Walk {
public:
    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        m_project = *m_app->projectSession().createProject(u"Walk"_s, {});
        createNote();
    }

    void step()
    {
        m_test.clock.advance(std::chrono::milliseconds(1 + m_random() % 5000));
        switch (m_random() % 14) {
        case 0:
        case 1:
            return createNote();
        case 2:
            return createFolder();
        case 3:
        case 4:
            return updateNote();
        case 5:
        case 6:
            return moveNote();
        case 7:
            return moveFolder();
        case 8:
            return trashOrRestore();
        case 9:
            return duplicate();
        case 10:
            return tag();
        case 11:
            return renameOrRemoveTag();
        case 12:
            return select();
        default:
            return m_random() % 6 ? togglePin() : m_random() % 2 ? deleteFolder() : erase();
        }
    }

    void compareMemory()
    {
        ASSERT_EQ(size_t(m_app->notes().size()), m_model.notes.size());
        ASSERT_EQ(size_t(m_app->folders().size()), m_model.folders.size() + 1);
        for (const ModelNote& expected : m_model.notes) {
            const NoteRecord* note = m_app->note(expected.id);
            ASSERT_TRUE(note);
            ASSERT_EQ(note->folderID, expected.container);
            ASSERT_EQ(note->title, expected.title);
            ASSERT_EQ(note->body, expected.body);
            ASSERT_EQ(note->tags, expected.tags);
            ASSERT_EQ(note->isPinned, expected.pinned);
        }
        const BinderOrder& order = m_app->order();
        ASSERT_EQ(order.rootFolderOrder, m_model.foldersIn(std::nullopt));
        ASSERT_EQ(order.noteOrderByFolder.value(m_project), m_model.notesIn(m_project));
        ASSERT_EQ(order.noteOrderByFolder.value(FolderRecord::trashFolderID),
                  m_model.notesIn(FolderRecord::trashFolderID));
        for (const ModelFolder& expected : m_model.folders) {
            ASSERT_EQ(m_app->folder(expected.id)->parentFolderID, expected.parent);
            ASSERT_EQ(m_app->folder(expected.id)->name, expected.name);
            ASSERT_EQ(order.childFolderOrder.value(expected.id), m_model.foldersIn(expected.id));
            ASSERT_EQ(order.noteOrderByFolder.value(expected.id), m_model.notesIn(expected.id));
        }
        TagIndex fresh;
        fresh.rebuild(m_app->folders(), m_app->notes());
        ASSERT_EQ(m_app->tagLibrary(), fresh.library());
        for (const TagRecord& each : fresh.library())
            ASSERT_EQ(m_app->tagCount(each.name), fresh.noteCount(each.name));
    }

    /// What the store would give to a program that starts now.
    void compareStore()
    {
        const NotebookSnapshot stored = m_app->projectSession().persistenceController()->load();
        ASSERT_TRUE(stored.binderLayout);
        const RecordTable<FolderRecord> folders(stored.folders);
        const RecordTable<NoteRecord> notes(stored.notes);
        ASSERT_EQ(notes.size(), m_app->notes().size());
        ASSERT_EQ(folders.size(), m_app->folders().size());
        for (const auto& note : m_app->notes())
            ASSERT_EQ(**notes.find(note->id), *note);
        for (const auto& folder : m_app->folders())
            ASSERT_EQ(**folders.find(folder->id), *folder);
        const auto repaired = [&](const BinderOrder& order) {
            return BinderDisplayOrdering::reconciled(order, folders, notes, m_project);
        };
        const BinderOrder order = repaired(BinderDisplayOrdering::orderOf(*stored.binderLayout));
        const BinderOrder expected = repaired(m_app->order());
        ASSERT_EQ(order.rootFolderOrder, expected.rootFolderOrder);
        ASSERT_EQ(order.childFolderOrder, expected.childFolderOrder);
        ASSERT_EQ(order.noteOrderByFolder, expected.noteOrderByFolder);
    }

    /// The program ends, and another process opens the project.
    void compareInANewProcess()
    {
        const QByteArray expected =
            QJsonDocument(toJson(m_app->projectSession().persistenceController()->load())).toJson();
        m_app->projectSession().terminate();
        m_app.reset();
        QProcess process;
        process.start(QStringLiteral(ORVANE_WRITER_PROCESS), {u"print"_s, m_test.folder.path()});
        ASSERT_TRUE(process.waitForFinished(60'000));
        ASSERT_EQ(process.exitCode(), 0);
        ASSERT_EQ(process.readAllStandardOutput(), expected);
    }

    void restart()
    {
        m_app->projectSession().terminate();
        m_app = std::make_unique<AppState>(m_test.services());
        m_app->projectSession().refreshProjects();
        m_app->projectSession().openProject(m_project, true);
        ASSERT_TRUE(m_app->projectSession().currentProject());
    }

private:
    QUuid anyNote() { return m_model.notes[m_random() % m_model.notes.size()].id; }
    QUuid anyFolder() { return m_model.folders[m_random() % m_model.folders.size()].id; }
    bool hasNotes() const { return !m_model.notes.empty(); }
    bool hasFolders() const { return !m_model.folders.empty(); }
    QString anyTag() { return u"tag%1"_s.arg(m_random() % 9); }

    void createNote()
    {
        const auto selected = m_app->selection().selectedFolderID();
        const bool inFolder = selected && *selected != FolderRecord::trashFolderID;
        const QUuid id = *m_app->createNote();
        m_model.notes.push_back({id, inFolder ? *selected : m_project, {}, {}, {}, {}, false});
    }
    void createFolder()
    {
        auto parent = m_app->selection().selectedFolderID();
        if (parent == FolderRecord::trashFolderID)
            parent.reset();
        const QString name = u"Folder %1"_s.arg(m_random() % 1000);
        m_model.folders.push_back({*m_app->createFolder(name), parent, name});
    }
    void updateNote()
    {
        if (!hasNotes())
            return;
        ModelNote& note = m_model.note(anyNote());
        note.title = u"Title %1"_s.arg(m_random());
        note.body = u"Body %1"_s.arg(m_random());
        std::optional<Blob> payload;
        if (m_random() % 2)
            payload = Blob(QByteArray::number(m_random()));
        m_app->updateNote(note.id, {note.title, note.body, {}, payload, {}, {}});
    }
    void moveNote()
    {
        if (!hasNotes())
            return;
        ModelNote moved = m_model.note(anyNote());
        moved.container = hasFolders() && m_random() % 3 ? anyFolder() : m_project;
        QList<QUuid> there = m_model.notesIn(moved.container);
        there.removeAll(moved.id);
        std::optional<QUuid> before;
        if (!there.isEmpty() && m_random() % 2)
            before = there[qsizetype(m_random() % size_t(there.size()))];
        m_app->moveNote(moved.id, moved.container, before);
        Model::place(m_model.notes, moved, before);
    }
    void moveFolder()
    {
        if (!hasFolders())
            return;
        ModelFolder moved = m_model.folder(anyFolder());
        const std::optional<QUuid> parent =
            m_random() % 3 ? std::optional(anyFolder()) : std::nullopt;
        QList<QUuid> there = m_model.foldersIn(parent);
        there.removeAll(moved.id);
        std::optional<QUuid> before;
        if (!there.isEmpty() && m_random() % 2)
            before = there[qsizetype(m_random() % size_t(there.size()))];
        m_app->moveFolder(moved.id, parent, before);
        if (m_model.isBelow(parent, moved.id))
            return; // refused
        moved.parent = parent;
        Model::place(m_model.folders, moved, before);
    }
    void trashOrRestore()
    {
        if (!hasNotes())
            return;
        ModelNote moved = m_model.note(anyNote());
        if (moved.container == FolderRecord::trashFolderID) {
            (void)m_app->restoreNoteFromTrash(moved.id);
            const bool isThere = std::ranges::count(m_model.folders, moved.from, &ModelFolder::id);
            moved.container = isThere ? moved.from : m_project;
            const QList<QUuid> there = m_model.notesIn(moved.container);
            Model::place(m_model.notes, moved,
                         there.isEmpty() ? std::nullopt : std::optional(there.first()));
        } else {
            m_app->moveNoteToTrash(moved.id);
            moved.from = moved.container;
            moved.container = FolderRecord::trashFolderID;
            Model::place(m_model.notes, moved, std::nullopt);
        }
    }
    void duplicate()
    {
        if (hasNotes() && m_random() % 4) {
            const ModelNote source = m_model.note(anyNote());
            ModelNote copy = source;
            copy.id = *m_app->duplicateNote(source.id);
            copy.title = source.title.isEmpty() ? u"Untitled Copy"_s : source.title + u" Copy"_s;
            Model::placeAfter(m_model.notes, copy, source.id);
        } else if (hasFolders()) {
            const ModelFolder source = m_model.folder(anyFolder());
            const ModelFolder copy{*m_app->duplicateFolder(source.id), source.parent,
                                   u"Copy of "_s + source.name};
            Model::placeAfter(m_model.folders, copy, source.id);
        }
    }
    void tag()
    {
        if (!hasNotes())
            return;
        ModelNote& note = m_model.note(anyNote());
        const QString tag = anyTag();
        m_app->addTagToNote(note.id, m_random() % 2 ? tag : tag.toUpper());
        if (!note.tags.contains(tag, Qt::CaseInsensitive))
            note.tags = m_app->note(note.id)->tags;
        ASSERT_TRUE(note.tags.contains(tag, Qt::CaseInsensitive));
    }
    void renameOrRemoveTag()
    {
        const QString from = anyTag();
        const QString to = anyTag();
        const bool removes = m_random() % 3 == 0;
        if (removes)
            m_app->removeTagFromLibrary(from);
        else
            m_app->renameTag(from, to);
        if (!removes && from == to)
            return;
        for (ModelNote& note : m_model.notes) {
            if (!note.tags.contains(from, Qt::CaseInsensitive))
                continue;
            QStringList rest;
            for (const QString& each : note.tags) {
                if (each.compare(from, Qt::CaseInsensitive) != 0)
                    rest.append(each);
                else if (!removes)
                    rest.append(to);
            }
            note.tags = normalizeTags(rest);
        }
    }
    void select()
    {
        if (m_random() % 3 == 0)
            m_app->selection().selectBinderRow(std::nullopt);
        else if (m_random() % 2 && hasFolders())
            m_app->selection().selectFolder(anyFolder());
        else if (hasNotes())
            m_app->openNote(anyNote());
    }
    void togglePin()
    {
        if (!hasNotes())
            return;
        ModelNote& note = m_model.note(anyNote());
        note.pinned = !note.pinned;
        m_app->togglePinNote(note.id);
    }
    void erase()
    {
        if (!hasNotes())
            return;
        const QUuid id = anyNote();
        m_app->eraseNotePermanently(id);
        std::erase_if(m_model.notes, [&](const auto& n) { return n.id == id; });
    }
    void deleteFolder()
    {
        if (!hasFolders())
            return;
        const QUuid id = anyFolder();
        m_app->deleteFolder(id);
        m_model.deleteFolder(id);
    }

    std::mt19937 m_random;
    TestServices m_test;
    std::unique_ptr<AppState> m_app = std::make_unique<AppState>(m_test.services());
    QUuid m_project;
    Model m_model;
};

TEST(NotebookWalk, AgreesWithANaiveModelAndWithTheStore)
{
    const bool isLong = qEnvironmentVariableIsSet("ORVANE_LONG");
    const int steps = isLong ? 20'000 : 1'200;
    Walk walk(20'261'102);
    for (int i = 0; i < steps && !::testing::Test::HasFatalFailure(); ++i) {
        SCOPED_TRACE(i);
        walk.step();
        walk.compareMemory();
        if (isLong || i % 5 == 0)
            walk.compareStore();
        if (i % 400 == 399) {
            walk.restart();
            walk.compareMemory();
        }
    }
    walk.compareInANewProcess();
}

} // namespace
} // namespace orvane
