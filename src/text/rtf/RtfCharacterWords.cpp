// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

namespace orvane {
namespace {

void setFont(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.state().destination == RtfDestination::fontTable) {
        interpreter.fontInTable = parameter.value;
        interpreter.fonts[parameter.value] = {};
    } else {
        interpreter.state().characters.font = parameter.value;
    }
}

void setSize(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().characters.halfPoints = std::clamp(parameter.valueOr(24), 1, 3276);
}

void setUnderline(RtfInterpreter& interpreter, RtfParameter parameter, int line)
{
    interpreter.state().characters.underline = quint8(parameter.isOn() ? line : 0);
}

void setStrikethrough(RtfInterpreter& interpreter, RtfParameter parameter, int line)
{
    interpreter.state().characters.strikethrough = quint8(parameter.isOn() ? line : 0);
}

template <bool RtfCharacterFormat::*member>
void setFlag(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().characters.*member = parameter.isOn();
}

template <int RtfCharacterFormat::*member>
void setColor(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().characters.*member = parameter.value;
}

void setPlain(RtfInterpreter& interpreter, RtfParameter, int)
{
    const int link = interpreter.state().characters.link;
    interpreter.state().characters = {};
    interpreter.state().characters.link = link;
}

} // namespace

void addCharacterWords(RtfWordTable& table)
{
    table.insert({
        {"f", {setFont}},
        {"fs", {setSize}},
        {"b", {setFlag<&RtfCharacterFormat::bold>}},
        {"i", {setFlag<&RtfCharacterFormat::italic>}},
        {"v", {setFlag<&RtfCharacterFormat::hidden>}},
        {"cf", {setColor<&RtfCharacterFormat::foreground>}},
        {"cb", {setColor<&RtfCharacterFormat::background>}},
        {"chcbpat", {setColor<&RtfCharacterFormat::background>}},
        {"highlight", {setColor<&RtfCharacterFormat::background>}},
        {"plain", {setPlain}},
        {"strike", {setStrikethrough, int(TextLine::single)}},
        {"striked", {setStrikethrough, int(TextLine::doubled)}},
        {"ul", {setUnderline, int(TextLine::single)}},
        {"ulw", {setUnderline, int(TextLine::single)}},
        {"ulnone", {setUnderline, int(TextLine::none)}},
        {"uldb", {setUnderline, int(TextLine::doubled)}},
        {"ulth", {setUnderline, int(TextLine::thick)}},
        {"uld", {setUnderline, int(TextLine::dotted)}},
        {"ulthd", {setUnderline, int(TextLine::dotted)}},
        {"uldash", {setUnderline, int(TextLine::dashed)}},
        {"uldashd", {setUnderline, int(TextLine::dashed)}},
        {"uldashdd", {setUnderline, int(TextLine::dashed)}},
        {"ulldash", {setUnderline, int(TextLine::dashed)}},
        {"ulthdash", {setUnderline, int(TextLine::dashed)}},
        {"ulwave", {setUnderline, int(TextLine::wavy)}},
        {"ulhwave", {setUnderline, int(TextLine::wavy)}},
        {"ululdbwave", {setUnderline, int(TextLine::wavy)}},
    });
}

} // namespace orvane
