// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/SmartPaste.h"

#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>
#include <QMimeData>

namespace orvane {

namespace {

constexpr int boldWeight = 700;

} // namespace

AttributedString cleanWebFormatting(AttributedString text, const CharacterStyle& typing,
                                    const TextFont& base)
{
    text.modifyCharacterStyles(text.fullRange(), [&](CharacterStyle& style) {
        TextFont font = typing.font.value_or(base);
        if (style.font && style.font->italic)
            font.italic = true;
        if (style.font && style.font->isBold())
            font.weight = std::max(font.weight, boldWeight);
        style.font = font;
        style.foreground = typing.foreground;
        style.background.reset();
        style.autoTagBaseFontSize.reset();
    });
    return text;
}

SmartPaste::SmartPaste(EditorView& view)
    : m_view(view)
{
    m_view.addExtension(this, ExtensionPriority::writing);
}

SmartPaste::~SmartPaste()
{
    m_view.removeExtension(this);
}

bool SmartPaste::paste(const QMimeData& data)
{
    const bool isRich = m_view.formatting() == TextFormatting::rich;
    if (!m_isEnabled || !isRich || data.hasFormat(textMime::archiveType()))
        return false;
    EditGateway& gateway = m_view.gateway();
    const SharedCharacterStyle typing = gateway.typingStyle();
    const SharedParagraphStyle paragraph =
        gateway.store().paragraphStyle(gateway.selection().range().location);
    auto imported = textMime::decode(data, TextFormatting::rich, {typing, paragraph});
    if (!imported)
        return false;
    if (gateway.insert(
            cleanWebFormatting(std::move(imported->text), *typing, m_view.layout().baseFont()),
            QCoreApplication::translate("orvane::EditorView", "Paste")))
        m_view.tellPasted(imported->account, data);
    return true;
}

} // namespace orvane
