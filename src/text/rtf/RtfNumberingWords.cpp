// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

#include <array>

namespace orvane {
namespace {

constexpr int mostLevels = 9;

/// The numbering that is being defined, or null outside of a definition.
RtfNumbering* defined(RtfInterpreter& interpreter)
{
    const bool isDefining = interpreter.state().destination == RtfDestination::numbering;
    return isDefining ? &interpreter.numbering : nullptr;
}

void begin(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (interpreter.state().destination != RtfDestination::body)
        return interpreter.skipGroup();
    interpreter.state().destination = RtfDestination::numbering;
    interpreter.numbering = {};
}

void beginText(RtfInterpreter& interpreter, RtfParameter, int destination)
{
    if (defined(interpreter))
        interpreter.collect(RtfDestination(destination));
    else
        interpreter.skipGroup();
}

void setBullet(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (RtfNumbering* numbering = defined(interpreter))
        numbering->isBullet = true;
}

void setUnmarked(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (RtfNumbering* numbering = defined(interpreter))
        numbering->isUnmarked = true;
}

void setKind(RtfInterpreter& interpreter, RtfParameter, int kind)
{
    if (RtfNumbering* numbering = defined(interpreter))
        numbering->kind = ListMarker(kind);
}

void setStart(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (RtfNumbering* numbering = defined(interpreter))
        numbering->start = std::clamp(parameter.valueOr(1), 0, 1'000'000);
}

void setLevel(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (RtfNumbering* numbering = defined(interpreter))
        numbering->level = std::clamp(parameter.valueOr(1), 1, mostLevels) - 1;
}

// The list tables.

template <void (RtfListCounter::*begin)(), RtfDestination within>
void beginDefinition(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (interpreter.state().destination == within)
        (interpreter.lists.*begin)();
}

bool definesLists(RtfInterpreter& interpreter)
{
    const RtfDestination present = interpreter.state().destination;
    return present == RtfDestination::listTable || present == RtfDestination::listOverrideTable;
}

void beginTable(RtfInterpreter& interpreter, RtfParameter, int destination)
{
    interpreter.state().destination = RtfDestination(destination);
}

void beginLevel(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (definesLists(interpreter))
        interpreter.lists.beginLevel();
}

void setListId(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (definesLists(interpreter))
        interpreter.lists.setListId(parameter.value);
}

void setLevelStart(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (definesLists(interpreter))
        interpreter.lists.setStart(parameter.value);
}

void setLevelKind(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    constexpr int bullet = 23;
    constexpr int none = 255;
    constexpr std::array kinds{ListMarker::decimal, ListMarker::upperRoman, ListMarker::lowerRoman,
                               ListMarker::upperAlpha, ListMarker::lowerAlpha};
    RtfListCounter::Level* level = definesLists(interpreter) ? interpreter.lists.level() : nullptr;
    if (!level)
        return;
    level->isBullet = parameter.value == bullet;
    level->isUnmarked = parameter.value == none;
    const bool isKnown = parameter.value >= 0 && parameter.value < int(kinds.size());
    level->kind = isKnown ? kinds[std::size_t(parameter.value)] : ListMarker::decimal;
}

void beginLevelText(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (definesLists(interpreter))
        interpreter.collect(RtfDestination::levelText);
    else
        interpreter.skipGroup();
}

} // namespace

void addNumberingWords(RtfWordTable& table)
{
    table.insert({
        {"listtable", {beginTable, int(RtfDestination::listTable)}},
        {"listoverridetable", {beginTable, int(RtfDestination::listOverrideTable)}},
        {"list", {beginDefinition<&RtfListCounter::beginList, RtfDestination::listTable>}},
        {"listoverride",
         {beginDefinition<&RtfListCounter::beginOverride, RtfDestination::listOverrideTable>}},
        {"lfolevel",
         {beginDefinition<&RtfListCounter::beginLevelOverride, RtfDestination::listOverrideTable>}},
        {"listlevel", {beginLevel}},
        {"listid", {setListId}},
        {"levelstartat", {setLevelStart}},
        {"levelnfc", {setLevelKind}},
        {"levelnfcn", {setLevelKind}},
        {"leveltext", {beginLevelText}},
        {"pn", {begin}},
        {"pntxtb", {beginText, int(RtfDestination::numberingBefore)}},
        {"pntxta", {beginText, int(RtfDestination::numberingAfter)}},
        {"pnlvlblt", {setBullet}},
        {"pnlvlcont", {setUnmarked}},
        {"pnlvl", {setLevel}},
        {"pnstart", {setStart}},
        {"pndec", {setKind, int(ListMarker::decimal)}},
        {"pnucrm", {setKind, int(ListMarker::upperRoman)}},
        {"pnlcrm", {setKind, int(ListMarker::lowerRoman)}},
        {"pnucltr", {setKind, int(ListMarker::upperAlpha)}},
        {"pnlcltr", {setKind, int(ListMarker::lowerAlpha)}},
    });
}

} // namespace orvane
