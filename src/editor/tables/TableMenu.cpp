// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The commands of tables, and what chooses sizes and colours for them.
#include "appearance/Look.h"
#include "appearance/studio/ColorEditor.h"
#include "editor/formatting/ColorPopup.h"
#include "editor/formatting/TranslucentPalette.h"
#include "editor/pane/CommandReceiver.h"
#include "editor/tables/TableGridPopup.h"
#include "editor/tables/TableText.h"
#include "editor/tables/TableTools.h"
#include "editor/view/EditorView.h"

#include <QMenu>

namespace orvane {

void TableTools::observeCommands()
{
    namespace Do = TableCommands;
    namespace T = TableEngine;
    constexpr auto rich = CommandScope::richNotes;
    const auto observe = [&](const Notification<CommandTarget>& command, auto act) {
        m_commands.observe(command, rich, [this, act](const CommandTarget&) {
            if (isInCell(caret()))
                tell(act());
        });
    };
    const auto row = [this](TableSide side) {
        return T::insertRow(m_view.gateway(), caret(), side, style());
    };
    const auto column = [this](Qt::Edge edge) {
        return T::insertColumn(m_view.gateway(), caret(), sideOf(edge, caret()), style());
    };
    observe(Do::addRowAbove, [row] { return row(TableSide::before); });
    observe(Do::addRowBelow, [row] { return row(TableSide::after); });
    observe(Do::addColumnLeft, [column] { return column(Qt::LeftEdge); });
    observe(Do::addColumnRight, [column] { return column(Qt::RightEdge); });
    observe(Do::removeRow, [this] { return T::removeRow(m_view.gateway(), caret(), style()); });
    observe(Do::removeColumn, [this] { return T::removeColumn(m_view.gateway(), caret()); });
    observe(Do::deleteTable, [this] { return T::deleteTable(m_view.gateway(), caret()); });
    const auto moveRow = [this](TableSide to) {
        return T::moveRow(m_view.gateway(), caret(), to);
    };
    const auto moveColumn = [this](Qt::Edge to) {
        return T::moveColumn(m_view.gateway(), caret(), sideOf(to, caret()));
    };
    observe(Do::moveRowUp, [moveRow] { return moveRow(TableSide::before); });
    observe(Do::moveRowDown, [moveRow] { return moveRow(TableSide::after); });
    observe(Do::moveColumnLeft, [moveColumn] { return moveColumn(Qt::LeftEdge); });
    observe(Do::moveColumnRight, [moveColumn] { return moveColumn(Qt::RightEdge); });
    observe(Do::clearCellFill, [this] {
        return applyFill(TableFill::cells, caret(), cellsAt(caret()), std::nullopt);
    });
    const auto sort = [this](Qt::SortOrder order) {
        return T::sortRows(m_view.gateway(), caret(), cellsAt(caret()).firstColumn, order);
    };
    observe(Do::sortAscending, [sort] { return sort(Qt::AscendingOrder); });
    observe(Do::sortDescending, [sort] { return sort(Qt::DescendingOrder); });
    observe(Do::convertTableToText, [this] { return T::convertToText(m_view.gateway(), caret()); });
    const auto openFillAt = [this](TableFill fill) {
        openFill(fill, caret(), globalCaret());
        return Result();
    };
    observe(Do::headerFillColor, [openFillAt] { return openFillAt(TableFill::header); });
    observe(Do::cellFillColor, [openFillAt] { return openFillAt(TableFill::cells); });
    m_commands.observe(Do::chooseFill, rich, [this](const TableFillChoice& choice) {
        if (isInTable() && m_view.isEditable())
            openFill(choice.fill, caret(), choice.anchor);
    });
    observeSelecting();
    m_commands.observe(Do::convertTextToTable, rich, [this](const CommandTarget&) {
        tell(T::convertToTable(m_view.gateway(), m_view.selection().range(), style()));
    });
    m_commands.observe(Do::insertOfSize, rich, [this](const TableSize& size) {
        tell(T::insertTable(m_view.gateway(), size.rows, size.columns, style()));
        m_view.ensureCaretVisible();
    });
    m_commands.observe(AppCommandEvents::insertTable, rich,
                       [this](const CommandTarget&) { chooseSize(globalCaret()); });
}

void TableTools::observeSelecting()
{
    const auto observe = [this](const Notification<CommandTarget>& command, auto cellsOf) {
        m_commands.observe(command, CommandScope::richNotes, [=, this](const CommandTarget&) {
            if (const auto grid = tableAt(m_view.store(), caret()))
                selectCells(*grid, cellsOf(*grid, cellsAtCaret()));
        });
    };
    observe(TableCommands::selectRow, [](const TableGrid& grid, CellRectangle cells) {
        cells.firstColumn = 0;
        cells.lastColumn = grid.columns - 1;
        return cells;
    });
    observe(TableCommands::selectColumn, [](const TableGrid& grid, CellRectangle cells) {
        cells.firstRow = 0;
        cells.lastRow = grid.rows - 1;
        return cells;
    });
    observe(TableCommands::selectTable, [](const TableGrid& grid, const CellRectangle&) {
        return CellRectangle{0, 0, grid.rows - 1, grid.columns - 1};
    });
    m_commands.observe(TableCommands::goToTools, CommandScope::richNotes,
                       [this](const CommandTarget&) {
                           if (isInTable())
                               m_controls.takeKeyboard();
                       });
}

void TableTools::chooseSize(const QRect& anchor)
{
    if (!m_view.isEditable())
        return;
    if (isInCell(caret()))
        return tell(std::unexpected(TableRefusal::withinTable));
    auto* popup = new TableGridPopup(m_look, &m_view);
    connect(popup, &TableGridPopup::chosen, this, [this](int rows, int columns) {
        tell(TableEngine::insertTable(m_view.gateway(), rows, columns, style()));
        m_view.ensureCaretVisible();
        m_view.setFocus(Qt::OtherFocusReason);
    });
    popup->popUpAt(anchor, m_view);
}

TableEngine::Result TableTools::applyFill(TableFill fill, qsizetype position,
                                          const CellRectangle& cells,
                                          const std::optional<RgbaColor>& color)
{
    EditGateway& gateway = m_view.gateway();
    return fill == TableFill::header && color
               ? TableEngine::setHeaderFill(gateway, position, *color)
               : TableEngine::setCellFill(gateway, position, cells, color);
}

void TableTools::openFill(TableFill fill, qsizetype position, const QRect& anchor)
{
    const QString name =
        fill == TableFill::header ? tr("Header Fill Color") : tr("Cell Fill Color");
    const auto block = TableEngine::tableBlock(m_view.store(), position);
    const auto current = block ? block->look->background : std::nullopt;
    auto* popup = new ColorPopup(translucentPalette(name, current, m_look, m_services.defaults),
                                 m_look, &m_view);
    connect(popup, &ColorPopup::chosen, this, [this, fill, position](const QColor& color) {
        CellRectangle cells = cellsAt(position);
        if (fill == TableFill::header)
            cells = {0, 0, 0, TableGrid::mostColumns};
        std::optional<RgbaColor> fit;
        if (color.isValid())
            fit = fitBehindText(RgbaColor::fromQColor(color), m_services.defaults);
        (void)applyFill(fill, position, cells, fit);
    });
    connect(popup, &ColorPopup::customRequested, this,
            [this, fill, position, anchor] { openCustomFill(fill, position, anchor); });
    popup->popUpAt(anchor, m_view);
}

// Each colour that is tried takes the place of the one before, so that one step is left to undo.
void TableTools::openCustomFill(TableFill fill, qsizetype position, const QRect& anchor)
{
    const CellRectangle cells = cellsAt(position);
    const auto block = TableEngine::tableBlock(m_view.store(), position);
    const QColor start = block && block->look->background
                             ? block->look->background->toQColor()
                             : m_look.tokens().on(Surface::Page).accent;
    const AppearanceColor first{true, start.redF(), start.greenF(), start.blueF(), start.alphaF()};
    const QString name =
        fill == TableFill::header ? tr("Header Fill Color") : tr("Cell Fill Color");
    auto* editor = new ColorEditor({name, first, {}, false}, m_look, &m_view);
    connect(editor, &ColorEditor::edited, this,
            [this, editor, fill, position, cells, first, isApplied = false]() mutable {
                if (isApplied)
                    m_view.gateway().undo();
                const AppearanceColor& color = editor->color();
                isApplied = !(color == first) &&
                            applyFill(fill, position, cells,
                                      RgbaColor{color.red, color.green, color.blue, color.alpha})
                                .has_value();
            });
    editor->popUpAt(anchor);
}

void TableTools::addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype position)
{
    if (m_view.formatting() != TextFormatting::rich || !m_view.isEditable() || !isInCell(position))
        return;
    fillMenu(*menu.addMenu(tr("Table")), position);
}

void TableTools::fillMenu(QMenu& menu, qsizetype position)
{
    namespace T = TableEngine;
    const auto grid = tableAt(m_view.store(), position);
    EditGateway& gateway = m_view.gateway();
    const auto add = [&](const QString& text, auto act, bool enabled = true) {
        QAction* action = menu.addAction(text);
        action->setEnabled(enabled);
        connect(action, &QAction::triggered, this, [this, act] { tell(act()); });
    };
    const auto row = [this, &gateway, position](TableSide side) {
        return [=, this, &gateway] {
            return T::insertRow(gateway, position, side, style());
        };
    };
    const auto column = [this, &gateway, position](Qt::Edge edge) {
        return [=, this, &gateway] {
            return T::insertColumn(gateway, position, sideOf(edge, position), style());
        };
    };
    const auto fill = [this, position](TableFill kind) {
        return [=, this] {
            openFill(kind, position, globalCaret());
            return Result();
        };
    };
    add(tr("Add Row Above"), row(TableSide::before));
    add(tr("Add Row Below"), row(TableSide::after));
    add(tr("Add Column Left"), column(Qt::LeftEdge));
    add(tr("Add Column Right"), column(Qt::RightEdge));
    add(
        tr("Remove Row"), [=, this, &gateway] { return T::removeRow(gateway, position, style()); },
        grid->rows > 1);
    add(
        tr("Remove Column"), [=, &gateway] { return T::removeColumn(gateway, position); },
        grid->columns > 1);
    add(tr("Header Fill Color..."), fill(TableFill::header));
    add(tr("Cell Fill Color..."), fill(TableFill::cells));
    add(tr("Clear Cell Fill"), [=, this] {
        return applyFill(TableFill::cells, position, cellsAt(position), std::nullopt);
    });
    add(tr("Delete Table"), [=, &gateway] { return T::deleteTable(gateway, position); });
    menu.addSeparator();
    const int sorted = cellsAt(position).firstColumn;
    const auto sort = [=, &gateway](Qt::SortOrder order) {
        return [=, &gateway] {
            return T::sortRows(gateway, position, sorted, order);
        };
    };
    add(tr("Sort Rows Ascending"), sort(Qt::AscendingOrder), grid->rows > 2);
    add(tr("Sort Rows Descending"), sort(Qt::DescendingOrder), grid->rows > 2);
    add(tr("Convert Table to Text"), [=, &gateway] { return T::convertToText(gateway, position); });
}

} // namespace orvane
