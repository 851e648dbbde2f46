// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/EditorPage.h"

#include "appearance/OrvaneStyle.h"
#include "core/records/PageSizePreset.h"
#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/page/LengthUnit.h"
#include "editor/spelling/Spelling.h"
#include "editor/view/EditorSettings.h"
#include "editor/writing/FocusedText.h"
#include "shell/settings/EditorFontSample.h"
#include "shell/settings/FontFamilies.h"
#include "shell/settings/SettingsPage.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(SettingsPages)
};

NumberForm points()
{
    NumberForm form;
    form.lowest = 8;
    form.highest = 96;
    form.unit = Words::tr("pt");
    return form;
}

void addTextRows(SettingsPage* page, Look& look)
{
    page->addHead(Words::tr("Text"));
    QList<Choice> modes;
    for (const auto mode : {EditorMode::richText, EditorMode::plainText, EditorMode::markdown})
        modes.append({rawValue(mode), rawValue(mode)});
    page->addChoice(
        editorModeSetting,
        {Words::tr("Written as"),
         Words::tr("The note on the screen. A new note begins like the one before it.")},
        modes);
    SettingRow* font = page->addChoice(
        editorFontFamilySetting,
        {Words::tr("Font"), Words::tr("Each note remembers how it is written, its font and size.")},
        fontFamilyChoices());
    setLongList(qobject_cast<QComboBox*>(font->control()));
    page->addNumber(editorFontSizeSetting, {Words::tr("Size"), {}}, points());
    page->addSpace(16);
    auto* sample = new EditorFontSample(look);
    page->addWidget(sample);
    const auto showSample = [page, sample] {
        sample->showFont(editorFontFamilySetting.read(page->defaults()),
                         editorFontSizeSetting.read(page->defaults()));
    };
    page->follow(editorFontFamilySetting.keyText(), showSample);
    page->follow(editorFontSizeSetting.keyText(), showSample);
}

/// A length in points, shown in what the person measures in.
NumberForm margin()
{
    const LengthUnit unit = lengthUnit();
    NumberForm form;
    form.scale = 1 / pointsIn(unit);
    form.lowest = 0;
    form.highest = unit == LengthUnit::inch ? 3 : 7.5;
    form.step = unit == LengthUnit::inch ? 0.1 : 0.25;
    form.decimals = 2;
    form.unit = unitName(unit);
    return form;
}

void addPaperRows(SettingsPage* page)
{
    page->addHead(Words::tr("Page View"));
    page->addSwitch(pageViewEnabledSetting,
                    {Words::tr("Write on a sheet of paper"),
                     Words::tr("One sheet that grows with the text, instead of the open column.")});
    QList<Choice> sizes;
    for (const PageSizePreset preset : pageSizePresets)
        sizes.append({rawValue(preset), label(preset)});
    page->addChoice(
        pageSizePresetSetting,
        {Words::tr("Paper"),
         Words::tr("For printing and export. The sheet on the screen is as wide for all.")},
        sizes);
    page->addNumber(pageMarginTopSetting, {Words::tr("Top margin"), {}}, margin());
    page->addNumber(pageMarginBottomSetting, {Words::tr("Bottom margin"), {}}, margin());
    page->addNumber(pageMarginLeftSetting, {Words::tr("Left margin"), {}}, margin());
    page->addNumber(
        pageMarginRightSetting,
        {Words::tr("Right margin"), Words::tr("Where the sheet has no room, less of it is shown.")},
        margin());
}

void addHeadingRows(SettingsPage* page)
{
    page->addHead(Words::tr("Formatting"));
    page->addSwitch(showFormattingToolbarSetting,
                    {Words::tr("Formatting toolbar"), Words::tr("Above the text of rich notes.")});
    QList<Choice> strengths;
    using enum EditorHighlightStrength;
    for (const auto& [strength, label] : {std::pair(subtle, Words::tr("Subtle")),
                                          {standard, Words::tr("Standard")},
                                          {strong, Words::tr("Strong")}})
        strengths.append({rawValue(strength), label});
    page->addChoice(
        editorHighlightStrengthSetting,
        {Words::tr("Highlights"), Words::tr("How strongly new highlights cover the page.")},
        strengths);
    page->addHead(Words::tr("Headings"));
    NumberForm form = points();
    form.above0 = true;
    for (const EditorParagraphStyleRole heading : headingCases) {
        const bool isFirst = heading == headingCases.front();
        const QString hint =
            isFirst ? Words::tr("Headings that are made from now on take these sizes.") : QString();
        page->addNumber(sizeSetting(heading), {rawValue(heading), hint}, form);
    }
}

void addPageRows(SettingsPage* page)
{
    page->addHead(Words::tr("Page"));
    NumberForm percent;
    percent.lowest = 50;
    percent.highest = 300;
    percent.step = 5;
    percent.unit = Words::tr("%");
    percent.scale = 100;
    page->addNumber(
        editorDisplayZoomSetting,
        {Words::tr("Zoom"),
         Words::tr("How large the page is shown. Lines still break in the same places.")},
        percent);
    page->addSwitch(
        rulerVisibleSetting,
        {Words::tr("Ruler over rich text"),
         Words::tr("Shows and moves the indents and tab stops of the selected paragraphs.")});
    NumberForm room;
    room.lowest = 0;
    room.highest = 2000;
    room.step = 20;
    room.unit = Words::tr("px");
    page->addNumber(bottomDocumentPaddingSetting,
                    {Words::tr("Room below the text"),
                     Words::tr("So that the last line can be written in the middle of the page.")},
                    room);
}

void addWritingRows(SettingsPage* page)
{
    page->addHead(Words::tr("Writing"));
    page->addSwitch(autoBracketingSetting,
                    {Words::tr("Close brackets and quotes"),
                     Words::tr("Typing the first of a pair writes both, or puts them round what is "
                               "selected. Not in Markdown.")});
    page->addSwitch(
        smartPasteSetting,
        {Words::tr("Fit pasted text to the note"),
         Words::tr("Text from elsewhere takes the font, size and colour of the place. Bold, "
                   "italic and links stay.")});
    page->addSwitch(
        typewriterModeSetting,
        {Words::tr("Typewriter mode"),
         Words::tr("The line that is written stays at one height, and the text moves.")});
}

void addFocusRows(SettingsPage* page)
{
    page->addHead(Words::tr("Focus"));
    page->addSwitch(
        focusModeSetting,
        {Words::tr("Focus mode"), Words::tr("Everything but what is being written is dimmed.")});
    SettingRow* granularity =
        page->addChoice(focusModeGranularitySetting, {Words::tr("Kept in sight"), {}},
                        {{rawValue(FocusGranularity::paragraph), Words::tr("The paragraph")},
                         {rawValue(FocusGranularity::sentence), Words::tr("The sentence")}});
    NumberForm percent;
    percent.lowest = 5;
    percent.highest = 100;
    percent.step = 5;
    percent.unit = Words::tr("%");
    percent.scale = 100;
    SettingRow* ink = page->addNumber(focusModeDimOpacitySetting,
                                      {Words::tr("Strength of the rest"),
                                       Words::tr("How much of their colour dimmed words keep.")},
                                      percent);
    for (SettingRow* row : {granularity, ink})
        page->enableWith(row, focusModeSetting);
}

void addLanguageRows(SettingsPage* page)
{
    page->addHead(Words::tr("Language"));
    page->addSwitch(spellingEnabledSetting, {Words::tr("Check spelling while writing"),
                                             Words::tr("Words not found are underlined.")});
}

} // namespace

QWidget* makeEditorPage(const SettingsServices& s)
{
    auto* page = new SettingsPage({title(SettingsPageId::Editor), {}}, s.services.defaults, s.look);
    addTextRows(page, s.look);
    addHeadingRows(page);
    addPageRows(page);
    addPaperRows(page);
    addWritingRows(page);
    addFocusRows(page);
    addLanguageRows(page);
    return page;
}

} // namespace orvane
