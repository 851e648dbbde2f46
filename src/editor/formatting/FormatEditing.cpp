// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/FormatEditing.h"

#include "editor/formatting/EditorHighlightStrength.h"
#include "editor/view/CaretNavigator.h"
#include "editor/view/EditorView.h"
#include "editor/view/TextEdits.h"
#include "text/layout/LineBreaker.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/CellRules.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontInfo>

namespace orvane {

namespace {

constexpr double smallestFont = 1;
constexpr double largestFont = 1000;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(FormatEditing)
};

/// Whether this machine has the family, or another one that stands in for it.
bool hasFace(const QString& family)
{
    return !family.isEmpty() &&
           (QFontDatabase::hasFamily(family) || !QFont::substitutes(family).isEmpty());
}

TextFont convertedFont(TextFont font, const std::optional<QString>& family,
                       const std::optional<double>& size)
{
    if (family && hasFace(*family))
        font.family = *family;
    if (size && *size > 0)
        font.size = std::clamp(*size, smallestFont, largestFont);
    return font;
}

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character.isSurrogate();
}

/// The word that the caret is in or stands at the end of.
TextRange wordAtCaret(const TextStore& store, qsizetype caret)
{
    if (caret < store.length() && isWordCharacter(store.characterAt(caret)))
        return wordAt(store, caret);
    if (caret > 0 && isWordCharacter(store.characterAt(caret - 1)))
        return wordAt(store, caret - 1);
    return {caret, 0};
}

/// The runs of `text`, a paragraph at `location`, in another case. What a letter becomes may depend
/// on its neighbours in another run, so the paragraph is changed as a whole and then cut.
void appendInCase(QList<TextReplacement>& replacements, const AttributedString& text,
                  qsizetype location, LetterCase letterCase, const QLocale& language)
{
    const QString after = inCase(text.text(), letterCase, language);
    if (after == text.text())
        return;
    qsizetype from = 0;
    text.forEachCharacterRun(text.fullRange(), [&](TextRange run, const SharedCharacterStyle&) {
        const qsizetype to = run.end() == text.length()
                                 ? after.size()
                                 : inCase(text.text().left(run.end()), letterCase, language).size();
        appendDifference(replacements, location + run.location,
                         QStringView(text.text()).mid(run.location, run.length),
                         QStringView(after).mid(from, to - from), location + run.location);
        from = to;
    });
}

/// The parts of `range` outside page breaks, which look as they do whatever is done around them.
QList<TextRange> withoutPageBreaks(const TextStore& store, TextRange range)
{
    QList<TextRange> parts;
    qsizetype from = range.location;
    for (QTextBlock block = store.blockAt(range.location);
         block.isValid() && block.position() < range.end(); block = block.next()) {
        if (!isPageBreak(block))
            continue;
        if (block.position() > from)
            parts.append(TextRange::between(from, block.position()));
        from = std::min<qsizetype>(block.position() + block.length(), range.end());
    }
    if (from < range.end() || parts.isEmpty())
        parts.append(TextRange::between(from, std::max(from, range.end())));
    return parts;
}

} // namespace

FormatEditing::FormatEditing(EditorView& view, const UserDefaults& defaults)
    : m_view(view)
    , m_defaults(defaults)
{}

TextRange FormatEditing::selected() const
{
    return m_view.selection().range();
}

TextFont FormatEditing::fontOf(const CharacterStyle& style) const
{
    return style.font ? *style.font : m_view.layout().baseFont();
}

bool FormatEditing::allOf(const std::function<bool(const CharacterStyle&)>& isSo) const
{
    const TextStore& store = m_view.store();
    const TextRange range = selected();
    if (range.isEmpty())
        return isSo(*m_view.gateway().typingStyle());
    bool all = true;
    bool any = false;
    const auto look = [&](TextRange run, const SharedCharacterStyle& style) {
        // Nobody sees how the end of a paragraph looks.
        if (run.length == 1 && store.characterAt(run.location) == u'\n')
            return;
        any = true;
        all = all && isSo(*style);
    };
    for (const TextRange one : m_view.selectedRanges())
        store.forEachCharacterRun(one, look);
    return any ? all : isSo(*store.characterStyle(range.location));
}

void FormatEditing::changeCharacters(const QString& name, TextRange range,
                                     const CharacterChange& change)
{
    EditGateway& gateway = m_view.gateway();
    gateway.performUndoableDocumentEdit(name, [&](DocumentEditor& editor) {
        CharacterStyle typing = *editor.typingStyle();
        change(typing);
        const QList<TextRange> ranges =
            range == selected() ? m_view.selectedRanges() : QList{range};
        for (const TextRange one : ranges) {
            for (const TextRange part : withoutPageBreaks(m_view.store(), one)) {
                if (!part.isEmpty())
                    editor.modifyCharacterStyles(part, change);
            }
        }
        editor.setTypingStyle(SharedCharacterStyle(typing));
    });
}

void FormatEditing::changeParagraphs(const QString& name,
                                     const std::function<void(ParagraphStyle&)>& change)
{
    m_view.gateway().performUndoableDocumentEdit(name, [&](DocumentEditor& editor) {
        const SharedCharacterStyle typing = editor.typingStyle();
        for (const TextRange range : m_view.selectedRanges()) {
            for (const TextRange part : withoutPageBreaks(m_view.store(), range))
                editor.modifyParagraphStyles(part, change);
        }
        editor.setTypingStyle(typing);
    });
}

void FormatEditing::toggleFontTrait(FontTrait trait)
{
    const bool isBold = trait == FontTrait::bold;
    const auto has = [&](const CharacterStyle& style) {
        const TextFont font = fontOf(style);
        return isBold ? font.isBold() : font.italic;
    };
    const bool wanted = !allOf(has);
    changeCharacters(isBold ? Words::tr("Bold") : Words::tr("Italic"), selected(),
                     [&](CharacterStyle& style) {
                         if (has(style) == wanted)
                             return;
                         TextFont font = fontOf(style);
                         if (isBold)
                             font.weight = wanted ? QFont::Bold : QFont::Normal;
                         else
                             font.italic = wanted;
                         style.font = font;
                     });
}

void FormatEditing::toggleUnderline()
{
    const bool wanted =
        !allOf([](const CharacterStyle& style) { return style.underline != TextLine::none; });
    changeCharacters(Words::tr("Underline"), selected(), [&](CharacterStyle& style) {
        if ((style.underline != TextLine::none) != wanted)
            style.underline = wanted ? TextLine::single : TextLine::none;
    });
}

void FormatEditing::toggleStrikethrough()
{
    const bool wanted =
        !allOf([](const CharacterStyle& style) { return style.strikethrough != TextLine::none; });
    changeCharacters(Words::tr("Strikethrough"), selected(), [&](CharacterStyle& style) {
        if ((style.strikethrough != TextLine::none) != wanted)
            style.strikethrough = wanted ? TextLine::single : TextLine::none;
    });
}

void FormatEditing::toggleBaselineShift(BaselineShift shift)
{
    const bool wanted =
        !allOf([shift](const CharacterStyle& style) { return style.baselineShift == shift; });
    changeCharacters(
        shift == BaselineShift::superscript ? Words::tr("Superscript") : Words::tr("Subscript"),
        selected(),
        [&](CharacterStyle& style) { style.baselineShift = wanted ? shift : BaselineShift::none; });
}

void FormatEditing::applyRequestedFont(const std::optional<QString>& family,
                                       const std::optional<double>& size)
{
    changeCharacters(Words::tr("Font"), selected(), [&](CharacterStyle& style) {
        const TextFont before = fontOf(style);
        const TextFont after = convertedFont(before, family, size);
        if (after != before)
            style.font = after;
    });
}

void FormatEditing::applyForeground(const std::optional<RgbaColor>& color)
{
    changeCharacters(Words::tr("Text Color"), selected(),
                     [&](CharacterStyle& style) { style.foreground = color; });
}

void FormatEditing::applyHighlight(const std::optional<RgbaColor>& color)
{
    std::optional<RgbaColor> fit = color;
    if (fit) {
        const QString strength = editorHighlightStrengthSetting.read(m_defaults);
        fit = normalizeHighlight(*fit, editorHighlightStrength(strength));
    }
    changeCharacters(Words::tr("Highlight"), selected(),
                     [&](CharacterStyle& style) { style.background = fit; });
}

void FormatEditing::applyCase(LetterCase letterCase, const QLocale& language)
{
    const TextStore& store = m_view.store();
    TextRange range = selected();
    if (range.isEmpty())
        range = wordAtCaret(store, range.location);
    TextEdits edits;
    edits.name = letterCase == LetterCase::upper   ? Words::tr("Make Uppercase")
                 : letterCase == LetterCase::lower ? Words::tr("Make Lowercase")
                                                   : Words::tr("Capitalize");
    for (qsizetype from = range.location; from < range.end();) {
        const qsizetype to = std::min(store.paragraphRange(from).end(), range.end());
        const AttributedString text = store.attributedText(TextRange::between(from, to));
        appendInCase(edits.replacements, text, from, letterCase, language);
        from = to;
    }
    if (edits.replacements.isEmpty())
        return;
    const auto moved = [&](qsizetype position) {
        return positionAfter(edits.replacements, position, InsertionSide::after);
    };
    edits.selection =
        TextRange::between(selected().isEmpty() ? moved(selected().location) : selected().location,
                           moved(selected().end()));
    apply(edits, m_view.gateway());
}

void FormatEditing::setAlignment(TextAlignment alignment)
{
    changeParagraphs(Words::tr("Alignment"),
                     [&](ParagraphStyle& style) { style.alignment = alignment; });
}

FormatEditing::CharacterChange FormatEditing::taking(EditorParagraphStyleRole role) const
{
    const double size = configuredSize(role, m_defaults);
    const int weight = role == EditorParagraphStyleRole::body ? QFont::Normal : QFont::Bold;
    return [this, size, weight](CharacterStyle& style) {
        TextFont font = fontOf(style);
        font.size = size;
        font.weight = weight;
        style.font = font;
    };
}

void FormatEditing::applyParagraphRole(EditorParagraphStyleRole role)
{
    const TextRange paragraphs = m_view.store().paragraphsRange(selected());
    changeCharacters(Words::tr("Paragraph Style"), paragraphs, taking(role));
}

bool FormatEditing::isAtEndOfHeading() const
{
    const TextStore& store = m_view.store();
    const qsizetype caret = selected().location;
    if (!selected().isEmpty() || caret == store.paragraphRange(caret).location ||
        (caret < store.length() && store.characterAt(caret) != u'\n') ||
        cellRules::isInCell(store, caret))
        return false;
    constexpr auto body = EditorParagraphStyleRole::body;
    const double size = fontOf(*store.characterStyle(caret - 1)).size;
    return role(size, configuredSize(body, m_defaults), m_defaults) != body;
}

bool FormatEditing::beginBodyAfterHeading()
{
    if (!isAtEndOfHeading())
        return false;
    EditGateway& gateway = m_view.gateway();
    const CharacterChange toBody = taking(EditorParagraphStyleRole::body);
    const auto edit = [&](DocumentEditor& editor) {
        if (!gateway.insertParagraph())
            return;
        const qsizetype begin = editor.selection().position;
        if (begin < m_view.store().length())
            editor.modifyCharacterStyles({begin, 1}, toBody); // as high as an empty body paragraph
        CharacterStyle typing = *editor.typingStyle();
        toBody(typing);
        editor.setTypingStyle(SharedCharacterStyle(typing));
    };
    gateway.performUndoableDocumentEdit(Words::tr("Typing"), edit, EditEffect::changesText);
    m_view.ensureCaretVisible();
    return true;
}

void FormatEditing::applyParagraphMetrics(const ParagraphMetrics& metrics)
{
    const auto set = [](auto& value, const auto& wanted) {
        if (wanted)
            value = *wanted;
    };
    changeParagraphs(Words::tr("Paragraph Spacing"), [&](ParagraphStyle& style) {
        set(style.lineSpacing, metrics.lineSpacing);
        set(style.spacingBefore, metrics.paragraphSpacingBefore);
        set(style.spacingAfter, metrics.paragraphSpacingAfter);
        set(style.firstLineHeadIndent, metrics.firstLineHeadIndent);
        set(style.headIndent, metrics.headIndent);
        set(style.tailIndent, metrics.tailIndent);
        set(style.defaultTabInterval, metrics.defaultTabInterval);
        set(style.hyphenationFactor, metrics.hyphenationFactor);
        set(style.keepLinesTogether, metrics.keepsLinesTogether);
        set(style.keepWithNext, metrics.keepWithNext);
        set(style.widowControl, metrics.widowControl);
    });
}

void FormatEditing::applyParagraphBackground(const std::optional<RgbaColor>& color)
{
    changeParagraphs(Words::tr("Paragraph Background"),
                     [&](ParagraphStyle& style) { style.background = color; });
}

} // namespace orvane
