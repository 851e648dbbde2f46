// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

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

} // namespace

void addNumberingWords(RtfWordTable& table)
{
    table.insert({
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
