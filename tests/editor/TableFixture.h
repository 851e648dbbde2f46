// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "ToolsFixture.h"
#include "editor/tables/TableEngine.h"
#include "editor/tables/TableText.h"
#include "text/layout/ParagraphLayout.h"

namespace orvane {

/// A table in a rich text with its tools.
class TableTest : public ToolsTest {
protected:
    TableTest() { show(note, EditorMode::richText); }

    /// Rows of words; "," parts cells. The caret is in the first one.
    void load(const QString& rows, const QString& behind = QStringLiteral("end"))
    {
        CellContents contents;
        for (const QString& row : rows.split(u';')) {
            QList<AttributedString> cells;
            for (const QString& cell : row.split(u','))
                cells.append(AttributedString(cell));
            contents.append(cells);
        }
        AttributedString text = TableEngine::tableOf(contents, {});
        text.remove({text.length() - 1, 1});
        text.append(behind, {}, ParagraphStyle{});
        view->gateway().load(text, {});
        goTo(0, 0);
    }
    [[nodiscard]] TableGrid grid() const { return *tableAt(view->store(), 1); }
    [[nodiscard]] TextRange cell(int row, int column) const
    {
        return grid().cells[grid().indexOver(row, column)].range;
    }
    void goTo(int row, int column)
    {
        view->setSelection(TextSelection::caret(cell(row, column).location));
    }
    void selectCells(int row, int column, int toRow, int toColumn)
    {
        view->setSelection({cell(row, column).location, cell(toRow, toColumn).location});
    }
    /// In pixels of the view.
    [[nodiscard]] QRectF cellRect(int row, int column) const
    {
        const QTextBlock block = view->store().blockAt(cell(row, column).location);
        return view->toViewport(view->layout().cellRect(block));
    }
    /// The cells that are selected: "1,0-2,3".
    [[nodiscard]] std::string rectangle() const
    {
        QStringList corners;
        const TableGrid table = grid();
        const TextRange selected = view->selection().range();
        for (const qsizetype at : {selected.location, selected.end()}) {
            const GridCell& one = table.cells[table.indexAt(at)];
            corners += QStringLiteral("%1,%2").arg(one.row).arg(one.column);
        }
        return corners.join(u'-').toStdString();
    }
    [[nodiscard]] std::string shown() const
    {
        return tabbedText(view->store().attributedText())
            .replace(u'\t', u',')
            .replace(u'\n', u';')
            .toStdString();
    }
    void press(const QString& keys)
    {
        const QKeyCombination key = QKeySequence(keys)[0];
        QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    }
};

} // namespace orvane
