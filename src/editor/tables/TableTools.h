// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/TableCommands.h"
#include "editor/formatting/EditorSelectionSnapshot.h"
#include "editor/tables/ColumnDrag.h"
#include "editor/tables/TableControls.h"
#include "editor/tables/TableEngine.h"
#include "editor/view/EditorExtension.h"
#include "platform/Services.h"

#include <QObject>

namespace orvane {

class CommandReceiver;
class EditorView;
class ListEditing;
class Look;

/// Tables in a text view: keys, commands, the part of the context menu, cells that are selected as
/// a rectangle, and what is copied from cells and pasted into them. A selection from one cell to
/// another of the same table is the rectangle between them. Main thread.
class TableTools final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`; all outlive it.
    TableTools(EditorView& view, CommandReceiver& commands, const ListEditing& lists, Look& look,
               const Services& services);
    ~TableTools() override;

    /// What a new table looks like.
    [[nodiscard]] TableStyle style() const;
    /// Lets a person choose a size, below `anchor` in global coordinates.
    void chooseSize(const QRect& anchor);
    struct Selected {
        TableGrid grid;
        CellRectangle cells;
    };
    /// The cells that are selected as a rectangle, with their table; null where none are. Until the
    /// next change of text or selection.
    [[nodiscard]] const Selected* selectedRectangle() const;
    /// Those of the rectangle, or the caret's one.
    [[nodiscard]] CellRectangle cellsAtCaret() const { return cellsAt(caret()); }
    /// Selects the cells of a rectangle of `grid`, which is the table as it is now.
    void selectCells(const TableGrid& grid, const CellRectangle& cells);
    /// Whether the caret is in a cell.
    [[nodiscard]] bool isInTable() const { return isInCell(caret()); }
    /// What there is to tell of the table in which the caret is. Costs the same in a table of any
    /// size while one types in a cell.
    [[nodiscard]] std::optional<EditorTableSnapshot> snapshot() const;
    /// After the last row, or the last column, whatever cell the caret is in.
    void appendRow();
    void appendColumn();
    /// Where the caret's cell is, with the words of its header; empty outside of tables. What the
    /// view is described as to screen readers.
    [[nodiscard]] QString cellDescription() const;

    bool command(EditAction action) override;
    [[nodiscard]] bool takesKey(const QKeyEvent& event) const override;
    bool keyPressed(const QKeyEvent& event) override;
    bool textTyped(const QString& text) override;
    bool mousePressed(const EditorMouse& mouse) override;
    [[nodiscard]] bool hasSelection() const override;
    [[nodiscard]] QList<TextRange> selectedRanges() const override;
    [[nodiscard]] std::unique_ptr<QMimeData> copySelection() const override;
    void removeSelection(const QString& actionName) override;
    bool paste(const QMimeData& data) override;
    void addToContextMenu(QMenu& menu, QPointF page, qsizetype position) override;
    void paintOverText(QPainter& painter, const EditorPaint& paint) override;

private:
    using Result = TableEngine::Result;

    struct Summary {
        const TextStore* text = nullptr;
        QUuid table;
        int rows = 0;
        int columns = 0;
        std::optional<RgbaColor> headerFill;
    };

    void observeCommands();
    void observeSelecting();
    void onTextChanged(const TextChange& change);
    [[nodiscard]] qsizetype caret() const;
    [[nodiscard]] bool isInCell(qsizetype position) const;
    [[nodiscard]] const std::optional<Selected>& selected() const;
    /// Those that are selected where the place is among them, else the cell there.
    [[nodiscard]] CellRectangle cellsAt(qsizetype position) const;
    void onSelectionChanged();
    [[nodiscard]] std::optional<CellRectangle> selectedCells() const;
    void describeCell();
    /// Tells what could not be done.
    void tell(const Result& result) const;
    void goToCell(const TableGrid& grid, qsizetype index);
    bool goToNextCell();
    bool goToPreviousCell();
    bool deleteAtBoundary(EditAction action);
    /// On which side of a column its neighbour at the left or right edge stands.
    [[nodiscard]] TableSide sideOf(Qt::Edge edge, qsizetype position) const;
    void openFill(TableFill fill, qsizetype position, const QRect& anchor);
    void openCustomFill(TableFill fill, qsizetype position, const QRect& anchor);
    Result applyFill(TableFill fill, qsizetype position, const CellRectangle& cells,
                     const std::optional<RgbaColor>& color);
    void fillMenu(QMenu& menu, qsizetype position);
    [[nodiscard]] QRect globalCaret() const;

    EditorView& m_view;
    CommandReceiver& m_commands;
    const ListEditing& m_lists;
    Look& m_look;
    Services m_services;
    ColumnDrag m_columnDrag;
    TableControls m_controls;
    mutable std::optional<Selected> m_selected; // what is known of the present selection
    mutable bool m_isKnown = false;
    mutable std::optional<Summary> m_summary;
    int m_paragraphs = 0;
    std::optional<CellRectangle> m_shown;
    int m_described = -1; // where the paragraph begins that was told to screen readers
};

} // namespace orvane
