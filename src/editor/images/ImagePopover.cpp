// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImagePopover.h"

#include "appearance/Drawing.h"
#include "editor/view/EditorView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr int shadow = 16;
constexpr int padding = 12;
constexpr int cardWidth = 288;
constexpr int gap = 16; // between card and image

} // namespace

ImagePopover::ImagePopover(Look& look, NotificationCenter& notifications, EditorView& view)
    : QWidget(view.window())
    , m_look(look)
    , m_view(view)
    , m_controls(
          new ImageControls(ImageControls::Shape::wide, look, Surface::Card, notifications, this))
{
    setAccessibleName(tr("Image"));
    setPalette(look.palette(Surface::Card));
    connect(&look, &Look::changed, this, [this] { setPalette(m_look.palette(Surface::Card)); });
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(shadow + padding, shadow + padding, shadow + padding,
                               shadow + padding);
    column->addWidget(m_controls);
    setFixedWidth(cardWidth + 2 * shadow);
    hide();
}

void ImagePopover::setInfo(const SelectedImageInfo& info, const std::optional<QUuid>& note)
{
    m_controls->setInfo(info, note);
}

void ImagePopover::focusCaption()
{
    m_controls->focusCaption();
}

void ImagePopover::placeBeside(const QRect& image)
{
    adjustSize();
    const QWidget* viewport = m_view.viewport();
    const QWidget* host = parentWidget();
    const QRect page(viewport->mapTo(host, QPoint()), viewport->size());
    const QRect there = image.translated(page.topLeft());
    setVisible(there.intersects(page));
    const QSize card(cardWidth, height() - 2 * shadow);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int right = there.right() + gap;
    const int left = there.left() - gap - card.width();
    // A little of it may stand over the pane beside the page, as long as it is in the window.
    const bool fitsRight = right + card.width() <= page.right() + padding;
    const bool fitsLeft = left >= page.left() - padding;
    int x = page.right() - card.width() - padding;
    if (isMirrored ? fitsLeft : !fitsRight && fitsLeft)
        x = left;
    else if (fitsRight)
        x = right;
    x = std::clamp(x, 4, std::max(4, host->width() - card.width() - 4));
    const int lowest = std::max(page.top() + 4, page.bottom() - card.height() - 4);
    const int y = std::clamp(there.top() - 6, page.top() + 4, lowest);
    move(x - shadow, y - shadow);
}

void ImagePopover::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    const QRect face = rect().adjusted(shadow, shadow, -shadow, -shadow);
    drawCardShadow(painter, face, popupRadius);
    drawPanel(painter, face, popupRadius, card.ground, card.border);
}

void ImagePopover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit dismissed();
    else
        QWidget::keyPressEvent(event);
}

// Nothing falls through to the text.
void ImagePopover::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

} // namespace orvane
