// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourTables.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "commands/EditorFormatNotifications.h"
#include "commands/TableCommands.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/tables/TableBar.h"
#include "editor/tables/TableEngine.h"
#include "editor/view/EditorView.h"
#include "shell/window/MainWindow.h"
#include "tour/TourHand.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> tides{
    {u"Date"_s, u"Predicted"_s, u"Observed"_s, u"Difference"_s, u"Written by"_s},
    {u"1 February"_s, u"2.31 m"_s, u"2.30 m"_s, u"−0.01"_s, u"the reeve"_s},
    {u"2 February"_s, u"2.36 m"_s, u"2.38 m"_s, u"+0.02"_s, u"the reeve"_s},
    {u"3 February"_s, u"2.41 m"_s, u"2.39 m"_s, u"−0.02"_s, u"the clerk"_s},
    {u"4 February"_s, u"2.58 m"_s, u"0.31 m"_s, u"−2.27"_s, u"a third hand"_s},
    {u"5 February"_s, u"2.66 m"_s, u"4.90 m"_s, u"+2.24"_s, u"a third hand"_s},
    {u"6 February"_s, u"2.70 m"_s, QString(), QString(), QString()},
};

/// The caret's table.
TableGrid gridOf(const EditorView& view)
{
    return tableAt(view.store(), view.selection().position).value_or(TableGrid());
}

void select(EditorView& view, int row, int column, int toRow, int toColumn)
{
    const TableGrid grid = gridOf(view);
    const qsizetype first = grid.indexOver(row, column);
    const qsizetype last = grid.indexOver(toRow, toColumn);
    if (first >= 0 && last >= 0)
        view.setSelection({grid.cells[first].range.location, grid.cells[last].range.location});
    TourHand::settle();
}

void writeTable(const TourStop& stop, EditorView& view)
{
    stop.hand.press(Qt::Key_End, Qt::ControlModifier);
    // Out of the list, and a line further down.
    stop.hand.type(u"\n\n\n"_s);
    stop.notifications.post(TableCommands::insertOfSize,
                            {int(tides.size()), int(tides.first().size()), {}});
    TourHand::settle();
    stop.hand.press(Qt::Key_End, Qt::ShiftModifier);
    for (const QStringList& row : tides) {
        for (const QString& cell : row) {
            if (!cell.isEmpty())
                stop.hand.type(cell);
            if (&row != &tides.last() || &cell != &row.last())
                stop.hand.press(Qt::Key_Tab);
        }
    }
    stop.expect(gridOf(view).cells.size() == 35, u"the table has its cells"_s);
    select(view, 0, 1, 6, 3);
    stop.notifications.post(EditorFormatNotifications::alignRight, {});
    (void)TableEngine::setColumnWidths(view.gateway(), view.selection().position,
                                       {22, 17, 17, 17, 27});
    select(view, 4, 2, 5, 3);
    view.scrollCaretTo(0.6);
    TourHand::settle();
}

bool showsBar(const EditorView& view)
{
    return TourHand::waitFor([&] {
        const auto* bar = view.findChild<TableBar*>();
        return bar && bar->isVisible();
    });
}

} // namespace

void tourTables(const TourStop& stop)
{
    EditorPaneView& pane = stop.window.editorPane();
    EditorView& view = pane.textView();
    pane.focusText();
    const QString before = view.plainText();
    writeTable(stop, view);
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        stop.themes.applyTheme(signatureBundle().id, mode);
        stop.expect(showsBar(view), u"the bar stands beside the table"_s);
        stop.picture(u"table-"_s + modeText(mode));
    }
    for (int i = 0; i < 200 && view.plainText() != before; ++i)
        view.undo();
    stop.expect(view.plainText() == before, u"the table is taken back"_s);
    TourHand::settle();
}

} // namespace orvane
