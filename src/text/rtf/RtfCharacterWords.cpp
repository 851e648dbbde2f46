// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

namespace orvane {
namespace {

void setFont(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.state().destination == RtfDestination::fontTable) {
        interpreter.fontInTable = parameter.value;
        interpreter.fonts[parameter.value] = {};
        interpreter.forgetCollected();
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

void setForeground(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().characters.foreground = parameter.value;
}

void setBackground(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().characters.background = fillColorIndex(parameter.value);
}

void setShift(RtfInterpreter& interpreter, RtfParameter parameter, int shift)
{
    interpreter.state().characters.baselineShift =
        parameter.isOn() ? BaselineShift(shift) : BaselineShift::none;
}

void setRunDirection(RtfInterpreter& interpreter, RtfParameter, int isRightToLeft)
{
    interpreter.state().characters.rightToLeft = isRightToLeft != 0;
    interpreter.state().characters.associatesOtherScripts = false;
}

void setScript(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.state().characters.associatesOtherScripts = true;
}

/// The properties that right-to-left runs have of their own, or null where others are spoken of.
RtfCharacterFormat* associated(RtfInterpreter& interpreter)
{
    RtfCharacterFormat& format = interpreter.state().characters;
    return format.rightToLeft && !format.associatesOtherScripts ? &format : nullptr;
}

void setAssociatedFont(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (RtfCharacterFormat* format = associated(interpreter))
        format->rightToLeftFont = parameter.value;
}

void setAssociatedSize(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (RtfCharacterFormat* format = associated(interpreter))
        format->rightToLeftHalfPoints = std::clamp(parameter.valueOr(24), 1, 3276);
}

template <std::optional<bool> RtfCharacterFormat::*member>
void setAssociatedFlag(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (RtfCharacterFormat* format = associated(interpreter))
        format->*member = parameter.isOn();
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
        {"deleted", {setFlag<&RtfCharacterFormat::deleted>}},
        {"cf", {setForeground}},
        {"cb", {setBackground}},
        {"chcbpat", {setBackground}},
        {"highlight", {setBackground}},
        {"plain", {setPlain}},
        {"super", {setShift, int(BaselineShift::superscript)}},
        {"up", {setShift, int(BaselineShift::superscript)}},
        {"sub", {setShift, int(BaselineShift::subscript)}},
        {"dn", {setShift, int(BaselineShift::subscript)}},
        {"nosupersub", {setShift, int(BaselineShift::none)}},
        {"ltrch", {setRunDirection, 0}},
        {"rtlch", {setRunDirection, 1}},
        {"loch", {setScript}},
        {"hich", {setScript}},
        {"dbch", {setScript}},
        {"af", {setAssociatedFont}},
        {"afs", {setAssociatedSize}},
        {"ab", {setAssociatedFlag<&RtfCharacterFormat::rightToLeftBold>}},
        {"ai", {setAssociatedFlag<&RtfCharacterFormat::rightToLeftItalic>}},
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
