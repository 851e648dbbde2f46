// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageBreaks.h"

#include "text/layout/LineBreaker.h"
#include "text/store/CellRules.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>
#include <QGuiApplication>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// A person never sees it: a page break shows as a line with a label.
constexpr double formFeedSize = 1;

SharedCharacterStyle formFeedStyle(const QColor& line)
{
    CharacterStyle style;
    style.font = TextFont{QGuiApplication::font().family(), formFeedSize};
    style.foreground = RgbaColor::fromQColor(line);
    return style;
}

SharedParagraphStyle centred()
{
    ParagraphStyle style;
    style.alignment = TextAlignment::center;
    return style;
}

} // namespace

bool insertPageBreak(EditGateway& text, TextFormatting formatting, const QColor& line)
{
    const TextStore& store = text.store();
    const TextRange selected = text.selection().range();
    const QString breaking = u"\n\f\n"_s;
    if (cellRules::isInCell(store, selected.location) ||
        cellRules::isInCell(store, selected.end()) || !text.shouldChangeText(selected, breaking))
        return false;
    const bool isRich = formatting == TextFormatting::rich;
    const SharedCharacterStyle around = text.typingStyle();
    const SharedParagraphStyle above = store.paragraphStyle(selected.location);
    const SharedParagraphStyle below = store.paragraphStyle(selected.end());
    // The ends of the lines keep the style of the text: one would type in theirs after a click.
    const SharedCharacterStyle middle = isRich ? formFeedStyle(line) : around;
    const QString name = QCoreApplication::translate("PageBreaks", "Page Break");
    return text.performUndoableDocumentEdit(
        name,
        [&](DocumentEditor& editor) {
            text.insert(AttributedString(breaking, around), name);
            const qsizetype after = editor.selection().position;
            const TextRange formFeed{after - 2, 1};
            editor.setCharacterStyle(formFeed, middle);
            editor.setParagraphStyle({after - 3, 0}, above);
            editor.setParagraphStyle(formFeed, isRich ? centred() : above);
            editor.setParagraphStyle({after, 0}, below);
            editor.setTypingStyle(around);
        },
        EditEffect::changesText);
}

} // namespace orvane
