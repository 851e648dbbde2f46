// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

namespace orvane {
namespace {

// Longest lengths and most tab stops that a page could have use for: 22 inches by 1,440, and 64.
constexpr int longestTwips = 31'680;
constexpr qsizetype mostTabs = 64;

int bounded(int twips)
{
    return std::clamp(twips, -longestTwips, longestTwips);
}

template <int RtfParagraphFormat::*member>
void setLength(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.paragraph().*member = bounded(parameter.value);
}

template <bool RtfParagraphFormat::*member>
void setFlag(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.paragraph().*member = parameter.isOn();
}

void reset(RtfInterpreter& interpreter, RtfParameter, int)
{
    static const QSharedDataPointer<RtfParagraphFormat> plain(new RtfParagraphFormat);
    interpreter.state().paragraph = plain;
}

void align(RtfInterpreter& interpreter, RtfParameter, int alignment)
{
    interpreter.paragraph().alignment = TextAlignment(alignment);
}

void setDirection(RtfInterpreter& interpreter, RtfParameter, int direction)
{
    interpreter.paragraph().direction = WritingDirection(direction);
}

void setLineSpacingRule(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.paragraph().lineSpacingIsMultiple = parameter.value != 0;
}

void setBackground(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.paragraph().background = fillColorIndex(parameter.value);
}

void setTabKind(RtfInterpreter& interpreter, RtfParameter, int alignment)
{
    interpreter.paragraph().nextTab = TabAlignment(alignment);
}

void addTab(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    RtfParagraphFormat& paragraph = interpreter.paragraph();
    const TextTab tab{bounded(parameter.value) / twipsPerPoint, paragraph.nextTab};
    paragraph.nextTab = TabAlignment::left;
    if (paragraph.tabs.size() >= mostTabs)
        return;
    const auto after =
        std::find_if(paragraph.tabs.cbegin(), paragraph.tabs.cend(),
                     [&](const TextTab& other) { return other.location > tab.location; });
    paragraph.tabs.insert(after, tab);
}

void setPageBegin(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.beginPage(parameter.isOn());
}

void setList(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.state().destination == RtfDestination::listOverrideTable)
        interpreter.lists.setOverrideNumber(parameter.value);
    else
        interpreter.paragraph().list = std::max(0, parameter.value);
}

void setListLevel(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.paragraph().listLevel = std::clamp(parameter.value, 0, 8);
}

} // namespace

void addParagraphWords(RtfWordTable& table)
{
    table.insert({
        {"pard", {reset}},
        {"ql", {align, int(TextAlignment::left)}},
        {"qc", {align, int(TextAlignment::center)}},
        {"qr", {align, int(TextAlignment::right)}},
        {"qj", {align, int(TextAlignment::justified)}},
        {"ltrpar", {setDirection, int(WritingDirection::leftToRight)}},
        {"rtlpar", {setDirection, int(WritingDirection::rightToLeft)}},
        {"fi", {setLength<&RtfParagraphFormat::firstIndent>}},
        {"li", {setLength<&RtfParagraphFormat::leftIndent>}},
        {"lin", {setLength<&RtfParagraphFormat::leftIndent>}},
        {"ri", {setLength<&RtfParagraphFormat::rightIndent>}},
        {"rin", {setLength<&RtfParagraphFormat::rightIndent>}},
        {"sb", {setLength<&RtfParagraphFormat::spaceBefore>}},
        {"sa", {setLength<&RtfParagraphFormat::spaceAfter>}},
        {"sl", {setLength<&RtfParagraphFormat::lineSpacing>}},
        {"slmult", {setLineSpacingRule}},
        {"keep", {setFlag<&RtfParagraphFormat::keepsTogether>}},
        {"keepn", {setFlag<&RtfParagraphFormat::keepsWithNext>}},
        {"pagebb", {setPageBegin}},
        {"widctlpar", {setFlag<&RtfParagraphFormat::controlsWidows>}},
        {"hyphpar", {setFlag<&RtfParagraphFormat::hyphenates>}},
        {"intbl", {setFlag<&RtfParagraphFormat::inTable>}},
        {"cbpat", {setBackground}},
        {"tx", {addTab}},
        {"tql", {setTabKind, int(TabAlignment::left)}},
        {"tqc", {setTabKind, int(TabAlignment::center)}},
        {"tqr", {setTabKind, int(TabAlignment::right)}},
        {"tqdec", {setTabKind, int(TabAlignment::decimal)}},
        {"ls", {setList}},
        {"ilvl", {setListLevel}},
    });
}

} // namespace orvane
