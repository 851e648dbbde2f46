// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableTools.h"

#include "appearance/Look.h"
#include "commands/KeyCodes.h"
#include "commands/KeyTable.h"
#include "editor/lists/ListEditing.h"
#include "editor/pane/CommandReceiver.h"
#include "editor/tables/TableText.h"
#include "editor/view/EditorView.h"
#include "text/layout/LineBreaker.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/CellRules.h"
#include "text/store/TableRow.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace orvane {

namespace {

constexpr double tableFontSize = 13;
/// A table keeps its lines when the look becomes light or dark.
constexpr RgbaColor lineOnAnyPage{0.5, 0.5, 0.5, 0.32};

/// The key's row in the table of keys, where it works in tables.
const KeyRow* tableKey(const QKeyEvent& event)
{
    const auto pressed = KeyPress::of(event).shortcut();
    return pressed ? keyRowFor(*pressed, KeyPlace::Table) : nullptr;
}

} // namespace

TableTools::TableTools(EditorView& view, CommandReceiver& commands, const ListEditing& lists,
                       Look& look, const Services& services)
    : m_view(view)
    , m_commands(commands)
    , m_lists(lists)
    , m_look(look)
    , m_services(services)
    , m_columnDrag(view, look)
    , m_controls(view, *this, commands, look, services)
{
    m_view.addExtension(this, ExtensionPriority::tables);
    connect(&view, &EditorView::textChanged, this, &TableTools::onTextChanged);
    connect(&view, &EditorView::selectionChanged, this, &TableTools::onSelectionChanged);
    observeCommands();
}

TableTools::~TableTools()
{
    m_view.removeExtension(this);
}

TableStyle TableTools::style() const
{
    const SurfaceTokens& page = m_look.tokens().on(Surface::Page);
    TableStyle style;
    style.borderColor = lineOnAnyPage;
    style.headerBackground = RgbaColor::fromQColor(page.accent);
    style.headerBackground.alpha = 0.12;
    style.cellFont = TextFont{QGuiApplication::font().family(), tableFontSize};
    style.headerFont = style.cellFont;
    style.headerFont.weight = 700;
    // One in a text that runs from the right runs so, too.
    const QTextBlock here = m_view.store().blockAt(caret());
    const WritingDirection said = m_view.store().paragraphStyle(caret())->direction;
    if (!isInTable() && baseDirection(m_view.store(), here, said).rightToLeft)
        style.direction = WritingDirection::rightToLeft;
    return style;
}

qsizetype TableTools::caret() const
{
    return m_view.selection().position;
}

bool TableTools::isInCell(qsizetype position) const
{
    return cellRules::isInCell(m_view.store(), position);
}

// What is typed or removed within a paragraph leaves a table's shape and fills as they were.
void TableTools::onTextChanged(const TextChange& change)
{
    m_isKnown = false;
    const TextStore& store = m_view.store();
    const int paragraphs = store.document().blockCount();
    const bool isWithinParagraph =
        std::exchange(m_paragraphs, paragraphs) == paragraphs &&
        change.lengthBefore != change.lengthAfter &&
        store.blockAt(change.location) == store.blockAt(change.location + change.lengthAfter);
    if (isWithinParagraph)
        return m_controls.textTyped();
    m_summary.reset();
    m_controls.tableChanged();
}

std::optional<EditorTableSnapshot> TableTools::snapshot() const
{
    const TextStore& store = m_view.store();
    const QTextBlock block = store.blockAt(caret());
    if (!orvane::isCell(block, store.styles()))
        return std::nullopt;
    const TableCellBlock& cell = *cellOf(block, store.styles());
    if (!m_summary || m_summary->text != &store || m_summary->table != cell.table.id) {
        const auto grid = tableAt(store, caret());
        m_summary = Summary{&store, cell.table.id, grid->rows, grid->columns,
                            TableEngine::cellBackground(store, grid->cells.first())};
    }
    EditorTableSnapshot told{m_summary->rows, m_summary->columns, 1, m_summary->headerFill,
                             cell.look->background};
    if (const Selected* rectangle = selectedRectangle())
        told.selectedCells =
            int(std::ranges::count_if(rectangle->grid.cells, [&](const GridCell& each) {
                return rectangle->cells.holds(each.row, each.column);
            }));
    return told;
}

// Cells that are selected

bool TableTools::hasSelection() const
{
    const TextSelection selection = m_view.selection();
    if (selection.isEmpty())
        return false;
    const TextStore& store = m_view.store();
    const QTextBlock anchor = store.blockAt(selection.anchor);
    const QTextBlock head = store.blockAt(selection.position);
    if (anchor == head || !orvane::isCell(anchor, store.styles()) ||
        !orvane::isCell(head, store.styles()))
        return false;
    const TableCellBlock& first = *cellOf(anchor, store.styles());
    const TableCellBlock& last = *cellOf(head, store.styles());
    return first.table.id == last.table.id && selected().has_value();
}

const std::optional<TableTools::Selected>& TableTools::selected() const
{
    if (std::exchange(m_isKnown, true))
        return m_selected;
    m_selected.reset();
    const TextSelection selection = m_view.selection();
    auto grid = tableAt(m_view.store(), selection.anchor);
    const qsizetype first = grid ? grid->indexAt(selection.anchor) : -1;
    const qsizetype last = grid ? grid->indexAt(selection.position) : -1;
    const bool isWithin = grid && last >= 0 && selection.position <= grid->range().end() &&
                          selection.position < grid->cells[last].range.end();
    if (!isWithin || first == last)
        return m_selected;
    const GridCell& one = grid->cells[first];
    const GridCell& other = grid->cells[last];
    CellRectangle cells{std::min(one.row, other.row), std::min(one.column, other.column),
                        std::max(one.pastRow(), other.pastRow()) - 1,
                        std::max(one.pastColumn(), other.pastColumn()) - 1};
    // A cell that reaches in belongs to it as a whole.
    for (bool grows = true; grows;) {
        const CellRectangle before = cells;
        for (const GridCell& cell : grid->cells) {
            if (cell.row > cells.lastRow || cell.pastRow() <= cells.firstRow ||
                cell.column > cells.lastColumn || cell.pastColumn() <= cells.firstColumn)
                continue;
            cells = {std::min(cells.firstRow, cell.row), std::min(cells.firstColumn, cell.column),
                     std::max(cells.lastRow, cell.pastRow() - 1),
                     std::max(cells.lastColumn, cell.pastColumn() - 1)};
        }
        grows = !(cells == before);
    }
    m_selected = Selected{*std::move(grid), cells};
    return m_selected;
}

const TableTools::Selected* TableTools::selectedRectangle() const
{
    return hasSelection() ? &*selected() : nullptr;
}

std::optional<CellRectangle> TableTools::selectedCells() const
{
    return hasSelection() ? std::optional(selected()->cells) : std::nullopt;
}

// From the first cell that stands on the upper or left side to the last on the other two.
void TableTools::selectCells(const TableGrid& grid, const CellRectangle& cells)
{
    const auto isWithin = [&](const GridCell& cell) {
        return cell.row <= cells.lastRow && cell.pastRow() > cells.firstRow &&
               cell.column <= cells.lastColumn && cell.pastColumn() > cells.firstColumn;
    };
    const auto first = std::ranges::find_if(grid.cells, isWithin);
    if (first == grid.cells.end())
        return;
    const auto last = std::find_if(grid.cells.rbegin(), grid.cells.rend(), isWithin);
    if (&*first == &*last)
        goToCell(grid, first - grid.cells.begin());
    else
        m_view.setSelection({first->range.location, last->range.location});
}

CellRectangle TableTools::cellsAt(qsizetype position) const
{
    const auto grid = tableAt(m_view.store(), position);
    if (!grid)
        return {};
    const GridCell& cell = grid->cells[grid->indexAt(position)];
    if (hasSelection() && selected()->grid.table.id == grid->table.id &&
        selected()->cells.holds(cell.row, cell.column))
        return selected()->cells;
    return {cell.row, cell.column, cell.row, cell.column};
}

QList<TextRange> TableTools::selectedRanges() const
{
    QList<TextRange> ranges;
    if (!hasSelection())
        return ranges;
    for (const GridCell& cell : selected()->grid.cells) {
        if (!selected()->cells.holds(cell.row, cell.column))
            continue;
        // Cells side by side are one stretch.
        if (!ranges.isEmpty() && ranges.last().end() == cell.range.location)
            ranges.last().length += cell.range.length;
        else
            ranges.append(cell.range);
    }
    return ranges;
}

std::unique_ptr<QMimeData> TableTools::copySelection() const
{
    if (!hasSelection())
        return nullptr;
    return textMime::encode(
        TableEngine::copyOf(m_view.store(), selected()->grid, selected()->cells),
        m_view.formatting(), m_view.headingSizes());
}

void TableTools::removeSelection(const QString& actionName)
{
    if (hasSelection())
        (void)TableEngine::clearCells(m_view.gateway(), caret(), selected()->cells, actionName);
}

// What is typed goes into the first of them, whose content it replaces with that of the others.
bool TableTools::textTyped(const QString& text)
{
    if (!hasSelection() || !m_view.isEditable())
        return false;
    EditGateway& gateway = m_view.gateway();
    const CellRectangle cells = selected()->cells;
    gateway.performUndoableDocumentEdit(
        EditGateway::tr("Typing"),
        [&](DocumentEditor& editor) {
            (void)TableEngine::clearCells(gateway, caret(), cells, {});
            const auto grid = tableAt(gateway.store(), caret());
            const qsizetype first = grid->indexOver(cells.firstRow, cells.firstColumn);
            if (first >= 0)
                editor.setSelection(TextSelection::caret(grid->cells[first].range.location));
            else
                editor.setSelection(TextSelection::caret(caret()));
            gateway.type(text);
        },
        EditEffect::changesText);
    return true;
}

void TableTools::onSelectionChanged()
{
    m_isKnown = false;
    if (QAccessible::isActive())
        describeCell();
    const auto now = selectedCells();
    if (now == m_shown)
        return;
    m_shown = now;
    m_view.viewport()->update();
}

// Screen readers tell what a widget is described as when that changes.
void TableTools::describeCell()
{
    const int block = m_view.store().blockAt(caret()).position();
    if (std::exchange(m_described, block) != block)
        m_view.setAccessibleDescription(cellDescription());
}

QString TableTools::cellDescription() const
{
    const TextStore& store = m_view.store();
    const auto grid = tableAt(store, caret());
    if (!grid)
        return {};
    const GridCell& cell = grid->cells[grid->indexAt(caret())];
    const qsizetype header = cell.row > 0 ? grid->indexOver(0, cell.column) : -1;
    const QString words =
        header < 0 ? QString() : TableEngine::cellText(store, grid->cells[header].range).trimmed();
    const QString place = words.isEmpty() ? tr("Row %1 of %2, column %3 of %4")
                                          : tr("%5, row %1 of %2, column %3 of %4");
    const QString told =
        place.arg(cell.row + 1).arg(grid->rows).arg(cell.column + 1).arg(grid->columns);
    return words.isEmpty() ? told : told.arg(words);
}

// A press on selected cells puts the caret there; they are not dragged.
bool TableTools::mousePressed(const EditorMouse& mouse)
{
    if (mouse.button == Qt::LeftButton && !mouse.modifiers.testFlag(Qt::ShiftModifier) &&
        hasSelection())
        m_view.setSelection(TextSelection::caret(m_view.positionAt(m_view.toViewport(mouse.page))));
    return false;
}

void TableTools::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    if (!hasSelection())
        return;
    const QColor accent = m_look.tokens().on(Surface::Page).accent;
    QColor tint = accent;
    tint.setAlphaF(0.14F);
    const CellRectangle& cells = selected()->cells;
    const QRectF clip = m_view.viewport()->rect();
    ParagraphLayout& layout = m_view.layout();
    painter.save();
    for (const GridCell& cell : selected()->grid.cells) {
        if (!cells.holds(cell.row, cell.column))
            continue;
        const QTextBlock block = m_view.store().blockAt(cell.range.location);
        const qreal top = paint.origin.y() + layout.topOf(block) * paint.scale;
        const qreal bottom = paint.origin.y() + layout.bottomOf(block) * paint.scale;
        if (cell.rowSpan == 1 && (bottom < clip.top() || top > clip.bottom()))
            continue;
        const QRectF rect = layout.cellRect(block);
        const QRectF onView(paint.origin + rect.topLeft() * paint.scale, rect.size() * paint.scale);
        painter.fillRect(onView, tint);
        painter.setPen(QPen(accent, 2, Qt::SolidLine, Qt::SquareCap));
        if (cell.row == cells.firstRow)
            painter.drawLine(onView.topLeft(), onView.topRight());
        if (cell.pastRow() > cells.lastRow)
            painter.drawLine(onView.bottomLeft(), onView.bottomRight());
        if (cell.column == cells.firstColumn)
            painter.drawLine(onView.topLeft(), onView.bottomLeft());
        if (cell.pastColumn() > cells.lastColumn)
            painter.drawLine(onView.topRight(), onView.bottomRight());
    }
    painter.restore();
}

// Keys

bool TableTools::takesKey(const QKeyEvent& event) const
{
    return m_view.isEditable() && isInCell(caret()) && tableKey(event);
}

bool TableTools::keyPressed(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape && hasSelection()) {
        m_view.setSelection(TextSelection::caret(caret()));
        return true;
    }
    const KeyRow* row = takesKey(event) ? tableKey(event) : nullptr;
    if (!row || !row->command)
        return false; // Tab comes as a command of the text
    row->command.post(m_services.notifications);
    return true;
}

bool TableTools::command(EditAction action)
{
    if (!m_view.isEditable())
        return false;
    const bool isOneCell = !hasSelection();
    switch (action) {
    case EditAction::insertTab:
    case EditAction::insertBacktab:
        if (!isInCell(caret()) || (isOneCell && m_lists.listContext(caret())))
            return false;
        return action == EditAction::insertTab ? goToNextCell() : goToPreviousCell();
    case EditAction::insertNewline:
    case EditAction::insertLineBreak:
        return textTyped(QString(QChar(lineSeparator)));
    case EditAction::deleteBackward:
    case EditAction::deleteForward:
        return m_view.selection().isEmpty() && deleteAtBoundary(action);
    }
    return false;
}

void TableTools::goToCell(const TableGrid& grid, qsizetype index)
{
    TextRange content = grid.cells[index].range;
    content.length = std::max<qsizetype>(0, content.length - 1);
    m_view.setSelection(TextSelection::of(content));
}

bool TableTools::goToNextCell()
{
    auto grid = tableAt(m_view.store(), caret());
    const qsizetype next = grid->indexAt(caret()) + 1;
    if (next == grid->cells.size()) {
        const Result added =
            TableEngine::insertRow(m_view.gateway(), caret(), TableSide::after, style());
        tell(added);
        if (!added)
            return true;
        grid = tableAt(m_view.store(), caret());
    }
    goToCell(*grid, std::min(next, grid->cells.size() - 1));
    return true;
}

bool TableTools::goToPreviousCell()
{
    const auto grid = tableAt(m_view.store(), caret());
    goToCell(*grid, std::max<qsizetype>(0, grid->indexAt(caret()) - 1));
    return true;
}

bool TableTools::deleteAtBoundary(EditAction action)
{
    const qsizetype at = caret();
    const qsizetype length = m_view.store().length();
    const bool isBefore = at > 0 && isInCell(at - 1);
    const bool isHere = at < length && isInCell(at);
    const bool isBackward = action == EditAction::deleteBackward;
    if (isBackward ? !isBefore || isHere : isBefore || !isHere)
        return false;
    return TableEngine::deleteTable(m_view.gateway(), isBackward ? at - 1 : at).has_value();
}

TableSide TableTools::sideOf(Qt::Edge edge, qsizetype position) const
{
    const TextStore& store = m_view.store();
    const QTextBlock cell = store.blockAt(position);
    const bool isMirrored = orvane::isCell(cell, store.styles()) &&
                            runsRightToLeft(rowOf(cell, store.styles()), store.styles());
    return (edge == Qt::LeftEdge) != isMirrored ? TableSide::before : TableSide::after;
}

void TableTools::appendRow()
{
    if (const auto grid = tableAt(m_view.store(), caret()))
        tell(TableEngine::insertRow(m_view.gateway(), grid->cells.last().range.location,
                                    TableSide::after, style()));
}

void TableTools::appendColumn()
{
    const auto grid = tableAt(m_view.store(), caret());
    if (!grid)
        return;
    const auto& last = std::ranges::max_element(grid->cells, {}, &GridCell::pastColumn);
    tell(TableEngine::insertColumn(m_view.gateway(), last->range.location, TableSide::after,
                                   style()));
}

// What comes from elsewhere

bool TableTools::paste(const QMimeData& data)
{
    const qsizetype at = hasSelection() ? m_view.selection().range().location : caret();
    if (m_view.formatting() != TextFormatting::rich || !isInCell(at))
        return false;
    const CellContents contents = cellsIn(data);
    const bool isOneCell = contents.size() == 1 && contents.first().size() == 1;
    if (contents.isEmpty() || (isOneCell && !hasSelection()))
        return false;
    qsizetype first = at;
    if (hasSelection()) {
        const auto& [grid, cells] = *selected();
        const qsizetype corner = grid.indexOver(cells.firstRow, cells.firstColumn);
        first = corner >= 0 ? grid.cells[corner].range.location : at;
    }
    const Result filled =
        TableEngine::fillCells(m_view.gateway(), first, contents, EditorView::tr("Paste"), style());
    tell(filled);
    if (filled)
        m_view.setSelection(TextSelection::caret(first));
    return true;
}

void TableTools::tell(const Result& result) const
{
    if (result)
        return;
    m_services.beeper.beep();
    const QString message = messageFor(result.error());
    if (!message.isEmpty())
        QToolTip::showText(globalCaret().bottomLeft(), message, m_view.viewport());
}

QRect TableTools::globalCaret() const
{
    const QRect caret = m_view.caretRect().toAlignedRect() & m_view.viewport()->rect();
    return {m_view.viewport()->mapToGlobal(caret.topLeft()), caret.size().expandedTo({1, 1})};
}

} // namespace orvane
