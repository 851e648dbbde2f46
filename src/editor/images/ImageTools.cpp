// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageTools.h"

#include "appearance/Look.h"
#include "editor/images/ImageEditing.h"
#include "editor/images/ImagePopover.h"
#include "editor/pane/CommandReceiver.h"
#include "editor/view/EditorView.h"
#include "text/layout/DimmedObject.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace orvane {

namespace {

using WrapMode = OrvaneNoteImageWrapMode;

/// So far the text shines through an image behind it.
constexpr qreal behindOpacity = 0.82;

QRectF inView(const QRectF& page, const EditorPaint& paint)
{
    return {paint.origin + page.topLeft() * paint.scale, page.size() * paint.scale};
}

QRectF pageOf(const EditorPaint& paint)
{
    return {(paint.clip.topLeft() - paint.origin) / paint.scale, paint.clip.size() / paint.scale};
}

} // namespace

ImageTools::ImageTools(EditorView& view, CommandReceiver& commands, Look& look,
                       const Services& services)
    : m_view(view)
    , m_commands(commands)
    , m_look(look)
    , m_services(services)
    , m_places(view)
    , m_insertion(view, services.questions)
{
    m_view.addExtension(this, ExtensionPriority::objects);
    connect(&view, &EditorView::textChanged, this, &ImageTools::onTextChanged);
    connect(&view, &EditorView::selectionChanged, this, &ImageTools::onSelectionChanged);
    connect(&view, &EditorView::scrolled, this, &ImageTools::placePopover);
    view.viewport()->installEventFilter(this);
    observeCommands();
    m_places.begin();
}

ImageTools::~ImageTools()
{
    delete m_popover;
    m_view.removeExtension(this);
}

void ImageTools::showText()
{
    m_drag.reset();
    closePopover();
    m_places.begin();
    onSelectionChanged();
}

bool ImageTools::isRich() const
{
    return m_commands.mode() == EditorMode::richText;
}

std::optional<qsizetype> ImageTools::selected() const
{
    return ImageEditing::selectedImage(m_view.gateway());
}

std::optional<SelectedImageInfo> ImageTools::selectedInfo() const
{
    const auto position = selected();
    if (!position)
        return std::nullopt;
    const OrvaneNoteImageAttachment& image = *ImageEditing::imageAt(m_view.store(), *position);
    return SelectedImageInfo{
        .attachmentID = image.attachmentID,
        .width = image.renderedSize.width(),
        .height = image.renderedSize.height(),
        .originalWidth = image.originalSize.width(),
        .originalHeight = image.originalSize.height(),
        .aspectRatioLocked = image.aspectRatioLocked,
        .wrapMode = image.wrapMode,
        .offsetX = image.floatingOffset.x(),
        .offsetY = image.floatingOffset.y(),
        .fileSize = image.file.size(),
        .caption = ImageEditing::caption(m_view.store(), *position),
        .description = image.description,
        .hasPopover = m_popover && m_popover->isVisible(),
    };
}

// Drawing

void ImageTools::paintFloating(QPainter& painter, const EditorPaint& paint, WrapMode mode,
                               qreal opacity)
{
    for (const auto& placed : m_places.floatingAttachmentLayouts(mode, pageOf(paint))) {
        painter.save();
        const auto& focus = m_view.focusRange();
        const bool isDimmed = focus && (placed.characterIndex < focus->location ||
                                        placed.characterIndex >= focus->end());
        painter.setOpacity(isDimmed ? opacity * dimmedObjectOpacity : opacity);
        painter.setPen(m_view.look().text.text);
        m_view.attachmentPainter().paintImage(painter, inView(placed.frame, paint),
                                              placed.attachment.file);
        painter.restore();
    }
}

void ImageTools::paintBehindText(QPainter& painter, const EditorPaint& paint)
{
    paintFloating(painter, paint, WrapMode::behindText, behindOpacity);
}

void ImageTools::paintOverText(QPainter& painter, const EditorPaint& paint)
{
    paintFloating(painter, paint, WrapMode::inFrontOfText, 1);
    const auto position = selected();
    if (!position)
        return;
    const qreal ratio = m_view.devicePixelRatioF();
    const auto onPixel = [ratio](qreal value) {
        return std::round(value * ratio) / ratio;
    };
    const QRectF exact = inView(m_places.frameOf(*position), paint);
    const QRectF frame(QPointF(onPixel(exact.left()), onPixel(exact.top())),
                       QPointF(onPixel(exact.right()), onPixel(exact.bottom())));
    if (!frame.adjusted(-12, -12, 12, 12).intersects(paint.clip))
        return;
    const SurfaceTokens& page = m_look.tokens().on(Surface::Page);
    painter.save();
    painter.setPen(QPen(page.accent, 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
    if (m_view.isEditable()) {
        painter.setBrush(m_view.look().background);
        for (const ResizeHandle handle : allResizeHandles)
            painter.drawRect(handleDotRect(handle, frame).adjusted(1, 1, -1, -1));
    }
    painter.restore();
}

// The mouse

QRectF ImageTools::frameInView(qsizetype position) const
{
    return m_view.toViewport(m_places.frameOf(position));
}

bool ImageTools::isOnText(QPointF page) const
{
    const qsizetype at = m_view.positionAt(m_view.toViewport(page));
    const auto near = TextRange::between(std::max<qsizetype>(0, at - 1),
                                         std::min(m_view.store().length(), at + 1));
    const QList<QRectF> rects = m_view.layout().rectsOf(near);
    return std::ranges::any_of(rects, [&](const QRectF& rect) { return rect.contains(page); });
}

/// In front of the text, then in it, then behind it where there is no text.
std::optional<qsizetype> ImageTools::imageAtPoint(QPointF page) const
{
    if (m_places.positions().isEmpty())
        return std::nullopt;
    const QRectF here(page, QSizeF(0.01, 0.01));
    const auto topmost = [&](WrapMode mode) -> std::optional<qsizetype> {
        const auto found = m_places.floatingAttachmentLayouts(mode, here);
        return found.isEmpty() ? std::nullopt : std::optional(found.last().characterIndex);
    };
    if (const auto front = topmost(WrapMode::inFrontOfText))
        return front;
    const qsizetype at = m_view.positionAt(m_view.toViewport(page));
    for (const qsizetype position : {at, at - 1}) {
        const auto* image = ImageEditing::imageAt(m_view.store(), position);
        if (image && !image->isFloating() &&
            m_view.layout().objectRect(int(position)).contains(page))
            return position;
    }
    const auto behind = topmost(WrapMode::behindText);
    return behind && (behind == selected() || !isOnText(page)) ? behind : std::nullopt;
}

void ImageTools::select(qsizetype position)
{
    m_view.setSelection(TextSelection::of(TextRange{position, 1}));
}

bool ImageTools::mousePressed(const EditorMouse& mouse)
{
    m_opensPopover = false;
    const bool isPlain = (mouse.modifiers & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (mouse.button == Qt::MiddleButton || !isPlain)
        return false;
    const QPointF point = m_view.toViewport(mouse.page);
    const auto before = selected();
    if (before && mouse.button == Qt::LeftButton && m_view.isEditable()) {
        if (const auto handle = handleAt(point, frameInView(*before))) {
            const auto* image = ImageEditing::imageAt(m_view.store(), *before);
            const QRectF frame = m_places.frameOf(*before);
            m_drag = Drag{*before,        handle, mouse.page, frame.size(), image->floatingOffset,
                          frame.topLeft()};
            closePopover();
            return true;
        }
    }
    const auto position = imageAtPoint(mouse.page);
    if (!position)
        return false;
    const OrvaneNoteImageAttachment& image = *ImageEditing::imageAt(m_view.store(), *position);
    select(*position);
    if (mouse.button == Qt::RightButton)
        return image.isFloating();
    m_opensPopover = true;
    const QRectF frame = m_places.frameOf(*position);
    m_drag = Drag{*position,    std::nullopt,         mouse.page,
                  frame.size(), image.floatingOffset, frame.topLeft()};
    return true;
}

void ImageTools::mouseMoved(const EditorMouse& mouse)
{
    if (!m_drag)
        return;
    const auto* image = ImageEditing::imageAt(m_view.store(), m_drag->position);
    if (!image)
        return m_drag.reset();
    if (!m_view.isEditable() && (m_drag->handle || image->isFloating()))
        return;
    const QPointF distance = mouse.page - m_drag->from;
    const bool isFar =
        (distance * m_view.zoom()).manhattanLength() >= QApplication::startDragDistance();
    if (!m_drag->hasMoved && !isFar && !m_drag->handle)
        return;
    m_opensPopover = false;
    if (!m_drag->handle && !image->isFloating()) {
        // It goes elsewhere as the text that it is.
        m_drag.reset();
        closePopover();
        return m_view.dragSelection();
    }
    EditGateway& text = m_view.gateway();
    bool isChanged = false;
    if (m_drag->handle) {
        const QSizeF size =
            resized(m_drag->startSize, *m_drag->handle, distance, image->aspectRatioLocked);
        isChanged = ImageEditing::drag(text, m_drag->position, size, !m_drag->hasMoved);
    } else if (image->isFloating()) {
        const QPointF origin = clampedFloatingOrigin(m_places.area(), image->renderedSize,
                                                     m_drag->startOrigin + distance);
        const auto placed =
            m_places.floatingAttachmentLayouts(image->wrapMode, m_places.frameOf(m_drag->position));
        const auto own =
            std::ranges::find(placed, m_drag->position, &FloatingAttachmentLayout::characterIndex);
        if (own != placed.end())
            isChanged = ImageEditing::dragOffset(text, m_drag->position, origin - own->anchorOrigin,
                                                 !m_drag->hasMoved);
    }
    m_drag->hasMoved = m_drag->hasMoved || isChanged;
}

void ImageTools::mouseReleased(const EditorMouse& /*mouse*/)
{
    endDrag();
}

void ImageTools::endDrag()
{
    const bool wasResized = m_drag && m_drag->handle;
    m_drag.reset();
    m_view.gateway().breakUndoCoalescing();
    if (std::exchange(m_opensPopover, false) || wasResized)
        openPopover();
}

std::optional<Qt::CursorShape> ImageTools::cursorAt(QPointF page)
{
    const auto here = selected();
    if (here && m_view.isEditable()) {
        if (const auto handle = handleAt(m_view.toViewport(page), frameInView(*here)))
            return cursorOf(*handle);
    }
    const auto position = imageAtPoint(page);
    if (!position)
        return std::nullopt;
    const bool isFloating = ImageEditing::imageAt(m_view.store(), *position)->isFloating();
    return isFloating && position == here ? Qt::SizeAllCursor : Qt::ArrowCursor;
}

bool ImageTools::keyPressed(const QKeyEvent& event)
{
    const auto position = selected();
    if (!position)
        return false;
    if (event.key() == Qt::Key_Escape && m_drag) {
        const Drag drag = *std::exchange(m_drag, std::nullopt);
        if (drag.hasMoved)
            m_view.undo();
        return true;
    }
    if (event.key() == Qt::Key_Escape) {
        closePopover();
        m_view.setSelection(TextSelection::caret(*position + 1));
        return true;
    }
    return false;
}

// What is selected

bool ImageTools::hasSelection() const
{
    return selected().has_value();
}

QList<TextRange> ImageTools::selectedRanges() const
{
    const auto position = selected();
    return position ? QList<TextRange>{{*position, 1}} : QList<TextRange>();
}

std::unique_ptr<QMimeData> ImageTools::copySelection() const
{
    return selected() ? m_view.textMimeOf(m_view.selection().range()) : nullptr;
}

void ImageTools::removeSelection(const QString& actionName)
{
    m_view.gateway().remove(m_view.selection().range(), EditKind::other, actionName);
}

void ImageTools::onTextChanged(const TextChange& change)
{
    const bool hadFloating = m_places.hasFloating();
    m_places.follow(change);
    // What floats reaches over paragraphs that have not changed.
    if (hadFloating || m_places.hasFloating())
        m_view.viewport()->update();
    if (m_popover)
        placePopover();
}

void ImageTools::onSelectionChanged()
{
    const auto position = selected();
    std::optional<QUuid> now;
    if (position)
        now = ImageEditing::imageAt(m_view.store(), *position)->attachmentID;
    if (now == m_shown)
        return;
    const bool wasSelected = m_shown.has_value();
    m_shown = now;
    closePopover();
    // Screen readers tell what a widget is described as when that changes.
    if (position) {
        const QString& words = ImageEditing::imageAt(m_view.store(), *position)->description;
        m_view.setAccessibleDescription(words.isEmpty() ? tr("Image without a description")
                                                        : tr("Image: %1").arg(words));
    } else if (wasSelected) {
        m_view.setAccessibleDescription({});
    }
    m_view.viewport()->update();
}

// Popover

void ImageTools::openPopover()
{
    if (!selected() || !m_view.isEditable())
        return;
    if (!m_popover) {
        m_popover = new ImagePopover(m_look, m_services.notifications, m_view);
        connect(m_popover, &ImagePopover::dismissed, this, [this] {
            closePopover();
            m_view.setFocus(Qt::OtherFocusReason);
        });
    }
    placePopover();
    m_popover->show();
    m_popover->raise();
    placePopover();
    emit infoChanged();
}

void ImageTools::closePopover()
{
    if (!m_popover)
        return;
    m_popover->hide();
    m_popover->deleteLater();
    m_popover = nullptr;
    emit infoChanged();
}

bool ImageTools::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &ImageTools::placePopover, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void ImageTools::placePopover()
{
    if (!m_popover)
        return;
    const auto info = selectedInfo();
    if (!info)
        return closePopover();
    m_popover->setInfo(*info, m_commands.note());
    m_popover->placeBeside(frameInView(*selected()).toAlignedRect());
}

// What comes in

void ImageTools::take(const QList<ImageSource>& sources, TextRange range)
{
    if (sources.isEmpty() || !m_view.isEditable())
        return;
    if (isRich())
        m_insertion.insertAt(range, sources);
    else if (m_offer)
        m_offer(sources, range);
}

bool ImageTools::canTake(const QMimeData& data) const
{
    return m_view.isEditable() && containsImagePasteboardData(data);
}

bool ImageTools::paste(const QMimeData& data)
{
    if (!canTake(data) || data.hasFormat(textMime::archiveType()))
        return false;
    take(droppedImageData(data), m_view.selection().range());
    return true;
}

std::optional<DropFeedback> ImageTools::dragMoved(const EditorDrag& drag)
{
    return canTake(drag.data) && !drag.data.hasFormat(textMime::archiveType())
               ? std::optional(DropFeedback::caret)
               : std::nullopt;
}

bool ImageTools::drop(const EditorDrag& drag)
{
    if (!canTake(drag.data) || drag.data.hasFormat(textMime::archiveType()))
        return false;
    take(droppedImageData(drag.data), {drag.position, 0});
    return true;
}

// Commands

void ImageTools::observeCommands()
{
    namespace Format = EditorFormatNotifications;
    constexpr auto rich = CommandScope::richNotes;
    const auto on = [this](const std::optional<QUuid>& image, auto act) {
        if (const auto position = ImageEditing::find(m_view.gateway(), image))
            act(m_view.gateway(), *position);
    };
    m_commands.observe(AppCommandEvents::insertImage, CommandScope::allNotes,
                       [this](const CommandTarget&) {
                           QList<ImageSource> sources;
                           for (const QString& path : m_insertion.chooseFiles(false))
                               sources.append({path, {}});
                           // Beside the image that is selected, not in its place.
                           const TextRange range = m_view.selection().range();
                           take(sources, selected() ? TextRange{range.end(), 0} : range);
                       });
    m_commands.observe(Format::setImageSize, rich, [on](const ImageSizeChoice& choice) {
        on(choice.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
            ImageEditing::setSize(text, position, choice.imageWidth, choice.imageHeight,
                                  choice.imageAspectLocked);
        });
    });
    m_commands.observe(Format::setImageWrapMode, rich, [on](const ImageWrapModeChoice& choice) {
        if (const auto mode = fromRawValue<WrapMode>(choice.imageWrapMode))
            on(choice.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
                ImageEditing::applyWrapMode(text, position, *mode);
            });
    });
    m_commands.observe(Format::setImageOffset, rich, [on](const ImageOffsetChoice& choice) {
        on(choice.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
            ImageEditing::setOffset(text, position, choice.offset);
        });
    });
    m_commands.observe(Format::resetSelectedImageSize, rich, [on](const ImageTarget& target) {
        on(target.imageAttachmentID, &ImageEditing::resetSize);
    });
    m_commands.observe(Format::removeSelectedImage, rich, [on](const ImageTarget& target) {
        on(target.imageAttachmentID, &ImageEditing::remove);
    });
    m_commands.observe(Format::replaceSelectedImage, rich, [on](const ImageReplacement& by) {
        const auto accepted = acceptImage(by.replacementImageData);
        if (accepted)
            on(by.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
                ImageEditing::replace(text, position, *accepted);
            });
    });
    m_commands.observe(Format::chooseReplacementImage, rich, [this](const ImageTarget& target) {
        chooseReplacement(target.imageAttachmentID);
    });
    m_commands.observe(Format::setImageCaption, rich, [this, on](const ImageTextChoice& choice) {
        on(choice.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
            ImageEditing::setCaption(text, position, choice.text, m_view.layout().baseFont());
        });
    });
    m_commands.observe(Format::setImageDescription, rich, [on](const ImageTextChoice& choice) {
        on(choice.imageAttachmentID, [&](EditGateway& text, qsizetype position) {
            ImageEditing::setDescription(text, position, choice.text);
        });
    });
}

void ImageTools::chooseReplacement(const std::optional<QUuid>& image)
{
    const auto position = ImageEditing::find(m_view.gateway(), image);
    if (!position || !m_view.isEditable())
        return;
    const QUuid id = ImageEditing::imageAt(m_view.store(), *position)->attachmentID;
    const QStringList paths = m_insertion.chooseFiles(true);
    if (paths.isEmpty())
        return;
    m_insertion.accept({{paths.first(), {}}}, [this, id](const QList<AcceptedImage>& images) {
        if (const auto there = ImageEditing::find(m_view.gateway(), id))
            ImageEditing::replace(m_view.gateway(), *there, images.first());
    });
}

void ImageTools::addToContextMenu(QMenu& menu, QPointF /*page*/, qsizetype /*position*/)
{
    const auto info = selectedInfo();
    if (!info || !isRich() || !m_view.isEditable())
        return;
    namespace Format = EditorFormatNotifications;
    const QUuid id = info->attachmentID;
    const auto note = m_commands.note();
    const auto add = [&](QMenu& to, const QString& text, auto act) {
        QAction* action = to.addAction(text);
        connect(action, &QAction::triggered, this, act);
        return action;
    };
    QMenu& placement = *menu.addMenu(tr("Placement"));
    for (const WrapMode mode : {WrapMode::inLine, WrapMode::topAndBottom, WrapMode::behindText,
                                WrapMode::inFrontOfText}) {
        QAction* action = add(placement, nameOf(mode), [this, id, note, mode] {
            m_services.notifications.post(Format::setImageWrapMode,
                                          ImageWrapModeChoice{id, rawValue(mode), note});
        });
        action->setCheckable(true);
        action->setChecked(mode == info->wrapMode);
    }
    add(menu, tr("Reset Size"), [this, id, note] {
        m_services.notifications.post(Format::resetSelectedImageSize, ImageTarget{id, note});
    });
    add(menu, tr("Caption and Description…"), [this] {
        openPopover();
        if (m_popover)
            m_popover->focusCaption();
    });
    add(menu, tr("Replace Image…"), [this, id, note] {
        m_services.notifications.post(Format::chooseReplacementImage, ImageTarget{id, note});
    });
    add(menu, tr("Remove Image"), [this, id, note] {
        m_services.notifications.post(Format::removeSelectedImage, ImageTarget{id, note});
    });
    menu.addSeparator();
}

} // namespace orvane
