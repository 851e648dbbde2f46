// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/EditorPage.h"

#include "appearance/OrvaneStyle.h"
#include "core/PageSizePreset.h"
#include "editor/EditorSettings.h"
#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/page/LengthUnit.h"
#include "editor/spelling/Spelling.h"
#include "editor/writing/FocusedText.h"
#include "shell/settings/EditorFontSample.h"
#include "shell/settings/FontFamilies.h"
#include "shell/settings/SettingsPage.h"

#include <QCoreApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("SettingsPages", text);
}

NumberForm points()
{
    NumberForm form;
    form.lowest = 8;
    form.highest = 96;
    form.unit = tr("pt");
    return form;
}

void addTextRows(SettingsPage* page, Look& look)
{
    page->addHead(tr("Text"));
    QList<Choice> modes;
    for (const auto mode : {EditorMode::richText, EditorMode::plainText, EditorMode::markdown})
        modes.append({editorModeName(mode), editorModeName(mode)});
    page->addChoice(
        editorModeSetting,
        {tr("Written as"), tr("The note on the screen. A new note begins like the one before it.")},
        modes);
    SettingRow* font = page->addChoice(
        editorFontFamilySetting,
        {tr("Font"), tr("Each note remembers how it is written, its font and size.")},
        fontFamilyChoices());
    setLongList(qobject_cast<QComboBox*>(font->control()));
    page->addNumber(editorFontSizeSetting, {tr("Size"), {}}, points());
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
    page->addHead(tr("Page View"));
    page->addSwitch(pageViewEnabledSetting,
                    {tr("Write on a sheet of paper"),
                     tr("One sheet that grows with the text, instead of the open column.")});
    QList<Choice> sizes;
    for (const PageSizePreset preset : pageSizePresets)
        sizes.append({rawValue(preset), label(preset)});
    page->addChoice(
        pageSizePresetSetting,
        {tr("Paper"), tr("For printing and export. The sheet on the screen is as wide for all.")},
        sizes);
    page->addNumber(pageMarginTopSetting, {tr("Top margin"), {}}, margin());
    page->addNumber(pageMarginBottomSetting, {tr("Bottom margin"), {}}, margin());
    page->addNumber(pageMarginLeftSetting, {tr("Left margin"), {}}, margin());
    page->addNumber(pageMarginRightSetting,
                    {tr("Right margin"), tr("Where the sheet has no room, less of it is shown.")},
                    margin());
}

void addHeadingRows(SettingsPage* page)
{
    page->addHead(tr("Formatting"));
    page->addSwitch(showFormattingToolbarSetting,
                    {tr("Formatting toolbar"), tr("Above the text of rich notes.")});
    QList<Choice> strengths;
    using enum EditorHighlightStrength;
    for (const auto& [strength, label] :
         {std::pair(subtle, tr("Subtle")), {standard, tr("Standard")}, {strong, tr("Strong")}})
        strengths.append({rawValue(strength), label});
    page->addChoice(editorHighlightStrengthSetting,
                    {tr("Highlights"), tr("How strongly new highlights cover the page.")},
                    strengths);
    page->addHead(tr("Headings"));
    NumberForm form = points();
    form.above0 = true;
    for (const EditorParagraphStyleRole heading : headingCases) {
        const bool isFirst = heading == headingCases.front();
        const QString hint =
            isFirst ? tr("Headings that are made from now on take these sizes.") : QString();
        page->addNumber(sizeSetting(heading), {rawValue(heading), hint}, form);
    }
}

void addPageRows(SettingsPage* page)
{
    page->addHead(tr("Page"));
    NumberForm percent;
    percent.lowest = 50;
    percent.highest = 300;
    percent.step = 5;
    percent.unit = tr("%");
    percent.scale = 100;
    page->addNumber(
        editorDisplayZoomSetting,
        {tr("Zoom"), tr("How large the page is shown. Lines still break in the same places.")},
        percent);
    page->addSwitch(rulerVisibleSetting,
                    {tr("Ruler over rich text"),
                     tr("Shows and moves the indents and tab stops of the selected paragraphs.")});
    NumberForm room;
    room.lowest = 0;
    room.highest = 2000;
    room.step = 20;
    room.unit = tr("px");
    page->addNumber(bottomDocumentPaddingSetting,
                    {tr("Room below the text"),
                     tr("So that the last line can be written in the middle of the page.")},
                    room);
}

void addWritingRows(SettingsPage* page)
{
    page->addHead(tr("Writing"));
    page->addSwitch(autoBracketingSetting,
                    {tr("Close brackets and quotes"),
                     tr("Typing the first of a pair writes both, or puts them round what is "
                        "selected. Not in Markdown.")});
    page->addSwitch(smartPasteSetting,
                    {tr("Fit pasted text to the note"),
                     tr("Text from elsewhere takes the font, size and colour of the place. Bold, "
                        "italic and links stay.")});
    page->addSwitch(typewriterModeSetting,
                    {tr("Typewriter mode"),
                     tr("The line that is written stays at one height, and the text moves.")});
}

void addFocusRows(SettingsPage* page)
{
    page->addHead(tr("Focus"));
    page->addSwitch(focusModeSetting,
                    {tr("Focus mode"), tr("Everything but what is being written is dimmed.")});
    SettingRow* granularity =
        page->addChoice(focusModeGranularitySetting, {tr("Kept in sight"), {}},
                        {{focusGranularityName(FocusGranularity::paragraph), tr("The paragraph")},
                         {focusGranularityName(FocusGranularity::sentence), tr("The sentence")}});
    NumberForm percent;
    percent.lowest = 5;
    percent.highest = 100;
    percent.step = 5;
    percent.unit = tr("%");
    percent.scale = 100;
    SettingRow* ink = page->addNumber(
        focusModeDimOpacitySetting,
        {tr("Strength of the rest"), tr("How much of their colour dimmed words keep.")}, percent);
    for (SettingRow* row : {granularity, ink})
        page->enableWith(row, focusModeSetting);
}

void addLanguageRows(SettingsPage* page)
{
    page->addHead(tr("Language"));
    page->addSwitch(spellingEnabledSetting,
                    {tr("Check spelling while writing"), tr("Words not found are underlined.")});
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
