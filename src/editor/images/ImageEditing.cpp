// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageEditing.h"

#include "editor/images/ImageHandles.h"
#include "text/store/CellRules.h"
#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <QCoreApplication>

#include <cmath>

namespace orvane::ImageEditing {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ImageEditing)
};

constexpr TextRange characterAt(qsizetype position)
{
    return {position, 1};
}

void putImage(DocumentEditor& editor, qsizetype position, OrvaneNoteImageAttachment image)
{
    image.prepareForDisplay();
    CharacterStyle style = *editor.store().characterStyle(position);
    style.attachment = TextAttachment(std::move(image));
    editor.setCharacterStyle(characterAt(position), SharedCharacterStyle(std::move(style)));
}

/// Changes the image as one step, or as part of the newest.
template <typename Change>
bool change(EditGateway& gateway, qsizetype position, const QString& name, bool isNewStep,
            Change&& how)
{
    const OrvaneNoteImageAttachment* image = imageAt(gateway.store(), position);
    if (!image || !gateway.isEditable())
        return false;
    OrvaneNoteImageAttachment changed = *image;
    how(changed);
    if (changed == *image)
        return false;
    const auto edit = [&](DocumentEditor& editor) {
        putImage(editor, position, std::move(changed));
    };
    return isNewStep ? gateway.performUndoableDocumentEdit(name, edit, EditEffect::changesText)
                     : gateway.amendLastEdit(name, edit);
}

/// The paragraph below that of a position, with its end; nothing in the last one.
std::optional<TextRange> paragraphBelow(const TextStore& store, qsizetype position)
{
    const TextRange here = store.paragraphRange(position);
    if (here.end() >= store.length() && !store.text(here).endsWith(u'\n'))
        return std::nullopt;
    return store.paragraphRange(here.end());
}

TextRange withoutEnd(const TextStore& store, TextRange paragraph)
{
    if (!paragraph.isEmpty() && store.characterAt(paragraph.end() - 1) == u'\n')
        --paragraph.length;
    return paragraph;
}

bool isCaption(const TextStore& store, TextRange words)
{
    constexpr qsizetype longest = 2'000;
    if (words.isEmpty() || words.length > longest ||
        store.paragraphStyle(words.location)->alignment != TextAlignment::center)
        return false;
    bool isItalic = true;
    store.forEachCharacterRun(words, [&](TextRange, const SharedCharacterStyle& style) {
        isItalic = isItalic && style->font && style->font->italic && !style->hasAttachment();
    });
    return isItalic;
}

/// The words of the caption that is there.
std::optional<TextRange> captionRange(const TextStore& store, qsizetype position)
{
    if (!imageAt(store, position) || cellRules::isInCell(store, position))
        return std::nullopt;
    const auto below = paragraphBelow(store, position);
    if (!below)
        return std::nullopt;
    const TextRange words = withoutEnd(store, *below);
    return isCaption(store, words) ? std::optional(words) : std::nullopt;
}

} // namespace

const OrvaneNoteImageAttachment* imageAt(const TextStore& store, qsizetype position)
{
    if (position < 0 || position >= store.length() ||
        store.characterAt(position) != QChar(objectCharacter))
        return nullptr;
    return store.characterStyle(position)->imageAttachment();
}

std::optional<qsizetype> selectedImage(const EditGateway& gateway)
{
    const TextRange selected = gateway.selection().range();
    if (selected.length != 1 || !imageAt(gateway.store(), selected.location))
        return std::nullopt;
    return selected.location;
}

std::optional<qsizetype> find(const EditGateway& gateway, const std::optional<QUuid>& attachmentID)
{
    const auto selected = selectedImage(gateway);
    if (!attachmentID)
        return selected;
    const TextStore& store = gateway.store();
    if (selected && imageAt(store, *selected)->attachmentID == *attachmentID)
        return selected;
    std::optional<qsizetype> found;
    store.forEachCharacterRun(store.fullRange(),
                              [&](TextRange run, const SharedCharacterStyle& style) {
                                  const auto* image = style->imageAttachment();
                                  if (!found && image && image->attachmentID == *attachmentID)
                                      found = run.location;
                              });
    return found && imageAt(store, *found) ? found : std::nullopt;
}

QSizeF sizeOfNew(QSizeF original)
{
    return original.width() <= widestNewImage ? original
                                              : original * (widestNewImage / original.width());
}

bool insert(EditGateway& gateway, const QList<AcceptedImage>& images)
{
    if (images.isEmpty())
        return false;
    AttributedString content;
    for (const AcceptedImage& accepted : images) {
        const SharedCharacterStyle plain = gateway.typingStyle();
        if (!content.isEmpty())
            content.append(QStringLiteral("\n"), plain);
        CharacterStyle style = *plain;
        style.link.clear();
        style.attachment = TextAttachment(OrvaneNoteImageAttachment::fromImageData(
            accepted.bytes, sizeOfNew(accepted.size), QUuid::createUuid()));
        content.append(QString(QChar(objectCharacter)), SharedCharacterStyle(std::move(style)));
    }
    return gateway.insert(content, Words::tr("Insert Image"));
}

bool setSize(EditGateway& gateway, qsizetype position, std::optional<double> width,
             std::optional<double> height, std::optional<bool> isLocked)
{
    return change(gateway, position, Words::tr("Resize Image"), true,
                  [&](OrvaneNoteImageAttachment& image) {
                      image.aspectRatioLocked = isLocked.value_or(image.aspectRatioLocked);
                      const QSizeF now = image.renderedSize;
                      QSizeF size(width.value_or(now.width()), height.value_or(now.height()));
                      if (!std::isfinite(size.width()) || !std::isfinite(size.height()))
                          return;
                      if (image.aspectRatioLocked && !width != !height && !now.isEmpty()) {
                          if (width)
                              size.setHeight(*width * now.height() / now.width());
                          else
                              size.setWidth(*height * now.width() / now.height());
                      }
                      if (width || height)
                          image.renderedSize = clampedImageSize(size);
                  });
}

bool drag(EditGateway& gateway, qsizetype position, QSizeF size, bool isFirst)
{
    return change(gateway, position, Words::tr("Resize Image"), isFirst,
                  [&](OrvaneNoteImageAttachment& image) { image.renderedSize = size; });
}

bool dragOffset(EditGateway& gateway, qsizetype position, QPointF offset, bool isFirst)
{
    return change(gateway, position, Words::tr("Move Image"), isFirst,
                  [&](OrvaneNoteImageAttachment& image) { image.floatingOffset = offset; });
}

bool setOffset(EditGateway& gateway, qsizetype position, QPointF offset)
{
    return dragOffset(gateway, position, offset, true);
}

bool resetSize(EditGateway& gateway, qsizetype position)
{
    return change(gateway, position, Words::tr("Reset Image Size"), true,
                  [](OrvaneNoteImageAttachment& image) {
                      image.renderedSize = sizeOfNew(image.originalSize);
                  });
}

bool applyWrapMode(EditGateway& gateway, qsizetype position, OrvaneNoteImageWrapMode mode)
{
    const OrvaneNoteImageAttachment* image = imageAt(gateway.store(), position);
    if (!image || image->wrapMode == mode || !gateway.isEditable())
        return false;
    OrvaneNoteImageAttachment changed = *image;
    changed.wrapMode = mode;
    return gateway.performUndoableDocumentEdit(
        Words::tr("Image Placement"),
        [&](DocumentEditor& editor) {
            putImage(editor, position, std::move(changed));
            qsizetype at = position;
            if (mode == OrvaneNoteImageWrapMode::topAndBottom) {
                const TextStore& store = editor.store();
                CharacterStyle plain = *store.characterStyle(at);
                plain.attachment = {};
                const SharedCharacterStyle style(plain);
                // Within a cell a line of its own is as good: a cell is one paragraph.
                const QString end = cellRules::isInCell(store, at) ? QString(QChar(lineSeparator))
                                                                   : QStringLiteral("\n");
                const auto partsLines = [](QChar c) {
                    return c == u'\n' || c == QChar(lineSeparator);
                };
                if (at + 1 < store.length() && !partsLines(store.characterAt(at + 1)))
                    editor.replace({at + 1, 0}, end, style);
                if (at > store.paragraphRange(at).location &&
                    !partsLines(store.characterAt(at - 1))) {
                    editor.replace({at, 0}, end, style);
                    ++at;
                }
            }
            editor.setSelection(TextSelection::of(characterAt(at)));
        },
        EditEffect::changesText);
}

bool replace(EditGateway& gateway, qsizetype position, const AcceptedImage& accepted)
{
    return change(gateway, position, Words::tr("Replace Image"), true,
                  [&](OrvaneNoteImageAttachment& image) {
                      const auto made = OrvaneNoteImageAttachment::fromImageData(
                          accepted.bytes, accepted.size, image.attachmentID);
                      const double width = image.renderedSize.width();
                      image.file = made.file;
                      image.originalSize = QSizeF(accepted.size);
                      image.renderedSize = clampedImageSize(
                          image.originalSize * (width / std::max(1.0, image.originalSize.width())));
                  });
}

bool remove(EditGateway& gateway, qsizetype position)
{
    return imageAt(gateway.store(), position) &&
           gateway.remove(characterAt(position), EditKind::other, Words::tr("Remove Image"));
}

QString caption(const TextStore& store, qsizetype position)
{
    const auto words = captionRange(store, position);
    return words ? store.text(*words).replace(QChar(lineSeparator), u' ') : QString();
}

bool setCaption(EditGateway& gateway, qsizetype position, const QString& text, const TextFont& base)
{
    const TextStore& store = gateway.store();
    const QString words = text.simplified();
    if (!imageAt(store, position) || !gateway.isEditable() ||
        cellRules::isInCell(store, position) || words == caption(store, position))
        return false;
    const auto there = captionRange(store, position);
    return gateway.performUndoableDocumentEdit(
        Words::tr("Image Caption"),
        [&](DocumentEditor& editor) {
            const TextSelection selection = editor.selection();
            if (there && words.isEmpty()) {
                // With the end of the paragraph before it.
                editor.remove({there->location - 1, there->length + 1});
            } else if (there) {
                editor.replace(*there, words, store.characterStyle(there->location));
            } else {
                CharacterStyle style;
                TextFont font = store.characterStyle(position)->font.value_or(base);
                font.italic = true;
                style.font = font;
                const TextRange above = withoutEnd(store, store.paragraphRange(position));
                ParagraphStyle centred;
                centred.alignment = TextAlignment::center;
                editor.replace({above.end(), 0}, QStringLiteral("\n") + words,
                               SharedCharacterStyle(style));
                editor.setParagraphStyle({above.end() + 1, words.size()},
                                         SharedParagraphStyle(std::move(centred)));
            }
            editor.setSelection(selection.clampedTo(editor.store().length()));
        },
        EditEffect::changesText);
}

bool setDescription(EditGateway& gateway, qsizetype position, const QString& text)
{
    return change(gateway, position, Words::tr("Image Description"), true,
                  [&](OrvaneNoteImageAttachment& image) { image.description = text.trimmed(); });
}

} // namespace orvane::ImageEditing
