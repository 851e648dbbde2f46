// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSamples.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "writing/WritingBench.h"
#include "writing/WritingPane.h"

#include <QTextEdit>
#include <QThread>

#include <memory>
#include <sqlite3.h>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

enum class Page { column, paperWithRuler };

Measurement key(Page page)
{
    const AttributedString text = sampleText(100'000);
    Pane ours;
    pageViewEnabledSetting.write(ours.test.defaults, page == Page::paperWithRuler);
    rulerVisibleSetting.write(ours.test.defaults, page == Page::paperWithRuler);
    ours.app.selection().selectNote(ours.addNote(text));
    EditorView& view = ours.pane.textView();

    TextStore store;
    EditGateway gateway(store);
    gateway.load(view.store().attributedText(), {});
    EditorView bare;
    bare.setLook(view.look());
    bare.setBaseFont({u"Georgia"_s, 16});
    bare.setZoom(view.zoom());
    bare.setGeometry(view.textGeometry());
    bare.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    bare.setGateway(&gateway);
    PaintedFrames frames(bare.viewport());
    showForKeys(bare);
    bare.resize(view.size());
    bare.setSelection(TextSelection::caret(store.paragraphRange(store.length() / 2).location + 20));
    bare.ensureCaretVisible();
    settle();

    ours.focusMiddle();
    int inPane = 0;
    int inBare = 0;
    const Measurement measured = interleave(
        200, [&] { return typeNext(view, ours.frames, inPane); },
        [&] { return typeNext(bare, frames, inBare); });
    bare.setGateway(nullptr);
    return measured;
}

/// One row of as many bytes, with the store's settings: the write-ahead log is not checkpointed
/// while one waits.
class PlainRow {
public:
    PlainRow()
    {
        if (sqlite3_open((m_folder.path() + u"/plain.sqlite"_s).toUtf8().constData(), &m_sqlite))
            qFatal("no database");
        run("PRAGMA journal_mode = WAL");
        run("PRAGMA synchronous = FULL");
        run("PRAGMA wal_autocheckpoint = 0");
        run("CREATE TABLE note (id INTEGER PRIMARY KEY, body BLOB, rtf BLOB, rich BLOB)");
        run("INSERT INTO note VALUES (1, NULL, NULL, NULL)");
        sqlite3_prepare_v2(m_sqlite, "UPDATE note SET body = ?, rtf = ?, rich = ?", -1, &m_update,
                           nullptr);
    }
    ~PlainRow()
    {
        sqlite3_finalize(m_update);
        sqlite3_close(m_sqlite);
    }
    void updateAndCommit(const QByteArray& body, const QByteArray& rtf, const QByteArray& rich)
    {
        run("BEGIN IMMEDIATE");
        int place = 0;
        for (const QByteArray* bytes : {&body, &rtf, &rich})
            sqlite3_bind_blob(m_update, ++place, bytes->constData(), int(bytes->size()),
                              SQLITE_STATIC);
        if (sqlite3_step(m_update) != SQLITE_DONE)
            qFatal("%s", sqlite3_errmsg(m_sqlite));
        sqlite3_reset(m_update);
        run("COMMIT");
    }

    /// What the store does when nobody waits.
    void checkpoint() { run("PRAGMA wal_checkpoint(TRUNCATE)"); }

private:
    void run(const char* statement)
    {
        if (sqlite3_exec(m_sqlite, statement, nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("%s", sqlite3_errmsg(m_sqlite));
    }

    QTemporaryDir m_folder;
    sqlite3* m_sqlite = nullptr;
    sqlite3_stmt* m_update = nullptr;
};

/// A flush right after a key, with nothing made beforehand, or after a pause in which the forms
/// were made. Both sides are whole times: what the main thread waits for counts.
Measurement flush(bool afterPause)
{
    Pane ours;
    const QUuid note = ours.addNote(sampleText(100'000));
    ours.app.selection().selectNote(note);
    ours.focusMiddle();
    PlainRow plain;
    int typed = 0;
    return interleave(
        15,
        [&] {
            typeNext(ours.pane.textView(), ours.frames, typed);
            for (int i = 0; afterPause && i < 60; ++i) {
                QApplication::processEvents(QEventLoop::AllEvents, 10);
                QThread::msleep(10);
            }
            return 1e3 * seconds([&] { ours.pane.session().flushDraftToDisk(note); });
        },
        [&] {
            const NoteRecord& stored = *ours.app.note(note);
            QByteArray body = stored.body.utf8().readOrNothing();
            body[0] = char('a' + typed % 26);
            const QByteArray rtf = stored.bodyRTF->readOrNothing();
            const QByteArray rich = stored.richContentPayload->readOrNothing();
            const double time = seconds([&] { plain.updateAndCommit(body, rtf, rich); });
            plain.checkpoint();
            return 1e3 * time;
        });
}

/// Switching among `count` notes; with more than are kept open, each is read anew.
Measurement switchNotes(int count)
{
    const AttributedString text = sampleText(10'000);
    Pane ours;
    QList<QUuid> notes;
    for (int i = 0; i < count; ++i)
        notes.append(ours.addNote(text));
    ours.app.selection().selectNote(notes.first());
    ours.focusMiddle();
    for (const QUuid& note : std::as_const(notes)) {
        ours.app.selection().selectNote(note);
        settle();
    }
    const QString html = stockDocument(text)->toHtml();
    QTextEdit stock;
    PaintedFrames frames(stock.viewport());
    showForKeys(stock);
    int turn = count - 1; // the last one is shown
    return interleave(
        20,
        [&] {
            const QUuid next = notes.at(++turn % count);
            return ours.frames.until([&] { ours.app.selection().selectNote(next); });
        },
        [&] { return frames.until([&] { stock.setHtml(html); }); });
}

/// Keys in a project of 50,000 notes, all of whose texts a worker reads meanwhile, over and over,
/// against keys without it: what 99 of 100 keys stay below.
Measurement readBeside()
{
    constexpr int noteCount = 50'000;
    Pane ours;
    const QUuid note = ours.addNote(sampleText(10'000));
    NotebookSnapshot snapshot = snapshotOf(ours.app.notebook());
    for (int i = 0; i < noteCount; ++i) {
        NoteRecord other;
        other.id = QUuid::createUuid();
        other.folderID = ours.project;
        other.title = u"Note %1"_s.arg(i);
        other.body = u"Words of note %1, and more words. "_s.arg(i).repeated(60);
        snapshot.notes.append(other);
    }
    (void)ours.app.projectSession().persistenceController()->save(snapshot);
    ours.app.projectSession().closeProject();
    ours.app.projectSession().openProject(ours.project, false);
    ours.app.selection().selectNote(note);
    ours.focusMiddle();
    StoreWorker& worker = *ours.app.projectSession().persistenceController()->worker();
    bool isReading = false;
    const auto readAll = [&] {
        isReading = true;
        worker.read(
            [](StoreReading& store) {
                return store.forEachBody(
                    [](const QUuid&, QByteArrayView) { return StoreReading::Next::GoOn; });
            },
            [&](const StoreReading::Result<int>& damaged) {
                if (!damaged)
                    qFatal("the worker can't read");
                isReading = false;
            });
    };
    int typed = 0;
    std::vector<double> beside;
    std::vector<double> alone;
    for (int block = 0; block < 20; ++block) {
        for (int i = 0; i < 50; ++i) {
            if (!isReading)
                readAll();
            beside.push_back(typeNext(ours.pane.textView(), ours.frames, typed));
        }
        while (isReading)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        for (int i = 0; i < 50; ++i)
            alone.push_back(typeNext(ours.pane.textView(), ours.frames, typed));
    }
    return {percentile(std::move(beside), 0.99), percentile(std::move(alone), 0.99)};
}

} // namespace

void addSessionRows()
{
    add({"session/key", "ms", 1.15, [] {
             return key(Page::column);
         }});
    add({"session/key-page", "ms", 1.25, [] {
             return key(Page::paperWithRuler);
         }});
    add({"session/flush", "ms", 2, [] {
             return flush(false);
         }});
    add({"session/flush-prepared", "ms", 2, [] {
             return flush(true);
         }});
    add({"session/switch", "ms", 0.5, [] {
             return switchNotes(2);
         }});
    add({"session/switch-unread", "ms", 0.5, [] {
             return switchNotes(30);
         }});
    add({"store/read-beside", "ms", 1.5, readBeside});
}

} // namespace orvane::bench
