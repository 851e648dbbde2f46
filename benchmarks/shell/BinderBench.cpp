// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"
#include "appearance/AppearanceTokens.h"
#include "appearance/Look.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"
#include "support/Bench.h"
#include "support/TestServices.h"

#include <QAction>
#include <QPixmap>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

namespace orvane::bench {

namespace {

using namespace Qt::StringLiterals;

constexpr int noteCount = 50'000;
constexpr int folderCount = 2'000;
constexpr int expandedCount = 200;
constexpr QSize paneSize(288, 800);

NotebookSnapshot largeNotebook()
{
    NotebookSnapshot snapshot;
    BinderLayoutSnapshot layout;
    layout.folderOrderEntries.append({std::nullopt, {}});
    for (int i = 0; i < folderCount; ++i) {
        FolderRecord folder;
        folder.id = QUuid::createUuid();
        folder.name = u"Folder %1"_s.arg(i);
        folder.createdAt = {i};
        layout.folderOrderEntries.first().childFolderIDs.append(folder.id);
        layout.noteOrderEntries.append({folder.id, {}});
        if (i < expandedCount)
            layout.expandedFolderIDs.append(folder.id);
        snapshot.folders.append(folder);
    }
    for (int i = 0; i < noteCount; ++i) {
        NoteRecord note;
        note.id = QUuid::createUuid();
        note.folderID = snapshot.folders.at(i % folderCount)->id;
        note.title = u"Note %1"_s.arg(i);
        note.body = u"The first words of note %1 and some more of them."_s.arg(i);
        note.createdAt = note.updatedAt = {i};
        layout.noteOrderEntries[i % folderCount].noteIDs.append(note.id);
        snapshot.notes.append(note);
    }
    snapshot.binderLayout = layout;
    return snapshot;
}

struct LargeNotebook {
    TestServices test;
    AppState app{test.services()};
    Look look{signatureDarkTokens()};

    LargeNotebook() { app.loadNotebookSnapshot(largeNotebook(), false, std::nullopt); }
};

/// The tree as the pane builds it: its rows, what is expanded, the first picture.
struct OurBinder {
    BinderModel model;
    BinderTreeView tree;

    explicit OurBinder(LargeNotebook& notebook)
        : model(notebook.app)
        , tree(notebook.look)
    {
        tree.resize(paneSize);
        tree.setModel(&model);
        for (const QUuid& id : notebook.app.order().expandedFolderIDs)
            tree.setExpanded(model.indexOf({BinderRowID::Kind::Folder, id}), true);
    }
};

struct StockBinder {
    QStandardItemModel model;
    QTreeView tree;

    explicit StockBinder(LargeNotebook& notebook)
    {
        const BinderOrder& order = notebook.app.order();
        QList<QStandardItem*> expanded;
        for (const QUuid& id : order.rootFolderOrder) {
            auto* folder = new QStandardItem(notebook.app.folder(id)->name);
            for (const QUuid& note : order.noteOrderByFolder.value(id))
                folder->appendRow(new QStandardItem(notebook.app.note(note)->title));
            model.appendRow(folder);
            if (order.expandedFolderIDs.contains(id))
                expanded.append(folder);
        }
        tree.resize(paneSize);
        tree.setModel(&model);
        for (const QStandardItem* folder : expanded)
            tree.setExpanded(folder->index(), true);
    }
};

Measurement openBinder()
{
    LargeNotebook notebook;
    return interleave(
        8,
        [&] {
            return 1e3 * seconds([&] {
                       OurBinder binder(notebook);
                       (void)binder.tree.grab();
                   });
        },
        [&] {
            return 1e3 * seconds([&] {
                       StockBinder binder(notebook);
                       (void)binder.tree.grab();
                   });
        });
}

double scrollPage(QTreeView& tree)
{
    QScrollBar* bar = tree.verticalScrollBar();
    QPixmap picture(tree.viewport()->size());
    return 1e3 * seconds([&] {
               const int next = bar->value() + bar->pageStep();
               bar->setValue(next >= bar->maximum() ? 0 : next);
               tree.viewport()->render(&picture);
           });
}

Measurement scrollBinder()
{
    LargeNotebook notebook;
    OurBinder ours(notebook);
    StockBinder stock(notebook);
    stock.tree.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    (void)ours.tree.grab();
    (void)stock.tree.grab();
    return interleave(
        120, [&] { return scrollPage(ours.tree); }, [&] { return scrollPage(stock.tree); });
}

} // namespace

void addBinderRows()
{
    add({"binder/open-50k", "ms", 0.2, openBinder});
    add({"binder/scroll-50k", "ms", 1.0, scrollBinder});
}

} // namespace orvane::bench
