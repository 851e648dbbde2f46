// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

namespace orvane {
namespace {

/// An edge of a cell, in twips; none stands farther out than some eighteen metres.
int edgeAt(int twips)
{
    constexpr int farthest = 1 << 20;
    return std::clamp(twips, -farthest, farthest);
}

constexpr int defaultBorderTwips = 15;

qint16 boundedPadding(int twips)
{
    return qint16(std::clamp(twips, 0, 1'440));
}

void beginRow(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.row = std::make_shared<const RtfRowDefinition>();
    interpreter.nextCell = {};
    interpreter.borderEdge = -1;
}

void setRowLeft(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.editRow().left = edgeAt(parameter.value);
}

void setRowGap(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    RtfRowDefinition& row = interpreter.editRow();
    row.padding[std::size_t(BoxEdge::left)] = boundedPadding(parameter.value);
    row.padding[std::size_t(BoxEdge::right)] = boundedPadding(parameter.value);
}

void setRowPadding(RtfInterpreter& interpreter, RtfParameter parameter, int edge)
{
    interpreter.editRow().padding[std::size_t(edge)] = boundedPadding(parameter.value);
}

void setCellPadding(RtfInterpreter& interpreter, RtfParameter parameter, int edge)
{
    interpreter.nextCell.padding[std::size_t(edge)] = boundedPadding(parameter.value);
}

void endCellDefinition(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.nextCell.right = edgeAt(parameter.value);
    interpreter.editRow().cells.append(interpreter.nextCell);
    interpreter.nextCell = {};
    interpreter.borderEdge = -1;
}

void setCellBackground(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.nextCell.background = interpreter.color(fillColorIndex(parameter.value));
}

void mergeLeft(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.nextCell.mergesLeft = true;
}

void mergeUp(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.nextCell.mergesUp = true;
}

void beginBorder(RtfInterpreter& interpreter, RtfParameter, int edge)
{
    interpreter.borderEdge = edge;
}

void setBorderWidth(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.borderEdge >= 0) {
        interpreter.nextCell.borderWidth[std::size_t(interpreter.borderEdge)] =
            quint16(std::clamp(parameter.value, 0, 255));
    }
}

void setBorderColor(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.borderEdge >= 0) {
        const QRgb color = interpreter.color(parameter.value);
        interpreter.nextCell.borderColor[std::size_t(interpreter.borderEdge)] =
            qAlpha(color) ? color : qRgb(0, 0, 0);
    }
}

void setBorderKind(RtfInterpreter& interpreter, RtfParameter, int isDrawn)
{
    if (interpreter.borderEdge < 0)
        return;
    const auto edge = std::size_t(interpreter.borderEdge);
    interpreter.nextCell.borderWidth[edge] = quint16(isDrawn ? defaultBorderTwips : 0);
    interpreter.nextCell.borderColor[edge] = qRgb(0, 0, 0);
}

void leaveBorders(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.borderEdge = -1;
}

void beginParagraphBorder(RtfInterpreter& interpreter, RtfParameter parameter, int side)
{
    leaveBorders(interpreter, parameter, 0);
    interpreter.paragraph().borders |= side;
}

void endCell(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.endCell();
}

void endRow(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.endRow();
}

// A cell of a table within a cell becomes a line of that cell.
void endNestedCell(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.insertText(QStringView(&lineSeparator, 1));
}

} // namespace

void addTableWords(RtfWordTable& table)
{
    const int top = int(BoxEdge::top);
    const int right = int(BoxEdge::right);
    const int bottom = int(BoxEdge::bottom);
    const int left = int(BoxEdge::left);
    // The long-standing names of a cell's top and left padding are each other's.
    table.insert({
        {"trowd", {beginRow}},
        {"trleft", {setRowLeft}},
        {"trgaph", {setRowGap}},
        {"trpaddt", {setRowPadding, top}},
        {"trpaddr", {setRowPadding, right}},
        {"trpaddb", {setRowPadding, bottom}},
        {"trpaddl", {setRowPadding, left}},
        {"clpadt", {setCellPadding, left}},
        {"clpadr", {setCellPadding, right}},
        {"clpadb", {setCellPadding, bottom}},
        {"clpadl", {setCellPadding, top}},
        {"cellx", {endCellDefinition}},
        {"clcbpat", {setCellBackground}},
        {"clmrg", {mergeLeft}},
        {"clvmrg", {mergeUp}},
        {"clbrdrt", {beginBorder, top}},
        {"clbrdrr", {beginBorder, right}},
        {"clbrdrb", {beginBorder, bottom}},
        {"clbrdrl", {beginBorder, left}},
        {"brdrl", {beginParagraphBorder, 1}},
        {"brdrt", {beginParagraphBorder, 2}},
        {"brdrr", {beginParagraphBorder, 4}},
        {"brdrb", {beginParagraphBorder, 8}},
        {"brdrw", {setBorderWidth}},
        {"brdrcf", {setBorderColor}},
        {"brdrnone", {setBorderKind, 0}},
        {"brdrnil", {setBorderKind, 0}},
        {"brdrtbl", {setBorderKind, 0}},
        {"cell", {endCell}},
        {"row", {endRow}},
        {"nestcell", {endNestedCell}},
    });
    for (const char* drawn : {"brdrs", "brdrth", "brdrsh", "brdrdb", "brdrdot", "brdrdash",
                              "brdrhair", "brdrdashsm", "brdrdashd", "brdrdashdd", "brdrtriple",
                              "brdrtnthsg", "brdrthtnsg", "brdrinset", "brdroutset"})
        table.insert({drawn, {setBorderKind, 1}});
    for (const char* other :
         {"trbrdrt", "trbrdrb", "trbrdrl", "trbrdrr", "trbrdrh", "trbrdrv", "brdrbtw", "brdrbar",
          "box", "pgbrdrt", "pgbrdrb", "pgbrdrl", "pgbrdrr", "cldglu", "cldgll"})
        table.insert({other, {leaveBorders}});
}

} // namespace orvane
