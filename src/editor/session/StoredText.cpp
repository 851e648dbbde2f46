// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/StoredText.h"

#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString withNewlines(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    return text;
}

} // namespace

bool StoredText::isReadable() const
{
    const auto& first = rich ? rich : rtf;
    return !first || first->read().has_value();
}

bool StoredText::isSame(const StoredText& other, TextForm form) const
{
    if (form == TextForm::rich && (rich || other.rich))
        return rich == other.rich;
    if (form == TextForm::rich && (rtf || other.rtf))
        return rtf == other.rtf;
    return plain == other.plain;
}

AttributedString readRichText(const StoredText& stored, const TextFont& base)
{
    std::optional<AttributedString> text;
    if (stored.rich)
        text = AttachmentManager::decodePayload(stored.rich->readOrNothing());
    if (!text && stored.rtf) {
        if (auto rtf = OrvaneWorkspaceRTF::read(stored.rtf->readOrNothing()))
            text = std::move(rtf->text);
    }
    if (!text || text->isEmpty())
        text = AttributedString(withNewlines(stored.plain));
    text->modifyCharacterStyles(text->fullRange(), [&](CharacterStyle& style) {
        if (!style.font)
            style.font = base;
    });
    return std::move(*text);
}

bool hasFormatting(const AttributedString& text)
{
    std::optional<CharacterStyle> first;
    bool found = false;
    text.forEachCharacterRun(text.fullRange(), [&](TextRange, const SharedCharacterStyle& style) {
        CharacterStyle plain;
        plain.font = style->font;
        if (plain.font && (plain.font->isBold() || plain.font->italic))
            found = true;
        if (!first)
            first = plain;
        found = found || *style != plain || plain != *first;
    });
    text.forEachParagraphRun(text.fullRange(), [&](TextRange, const SharedParagraphStyle& style) {
        found = found || *style != ParagraphStyle();
    });
    return found;
}

QString plainForm(QString text)
{
    text.replace(QChar(objectCharacter), u' ');
    text.replace(QChar(lineSeparator), u'\n');
    return text;
}

RichForms richForms(const AttributedString& text, const HeadingSizes& headings)
{
    if (text.isEmpty())
        return {};
    return {OrvaneWorkspaceRTF::data(AttachmentManager::withoutImageBytes(text), headings),
            AttachmentManager::archivePayload(text), plainForm(text.text()),
            AttachmentManager::imageFiles(text)};
}

} // namespace orvane
