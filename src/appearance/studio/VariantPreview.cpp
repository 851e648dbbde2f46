// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/VariantPreview.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "appearance/studio/ThemePreview.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr int captionHeight = 26;

} // namespace

VariantPreview::VariantPreview(const QString& name, Look& look, QWidget* parent)
    : QAbstractButton(parent)
    , m_look(look)
{
    setText(name);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMinimumWidth(300);
}

void VariantPreview::showTokens(const Tokens& tokens, bool onScreen)
{
    m_tokens = tokens;
    m_onScreen = onScreen;
    setAccessibleName(onScreen ? tr("%1 variant, on screen").arg(text())
                               : tr("%1 variant").arg(text()));
    update();
}

void VariantPreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const SurfaceTokens& s = m_look.tokens().on(Surface::Page);
    const QRect caption(4, 0, width() - 8, captionHeight);
    const QFont font = interfaceFont(isChecked() ? TextStyle::BodyStrong : TextStyle::BodyMedium);
    painter.setFont(font);
    painter.setPen(isChecked() || underMouse() ? s.text : s.textSecondary);
    painter.drawText(caption, Qt::AlignVCenter | Qt::AlignLeft, text());
    if (m_onScreen) {
        painter.setFont(interfaceFont(TextStyle::Label));
        painter.setPen(s.textSecondary);
        painter.drawText(caption, Qt::AlignVCenter | Qt::AlignRight, tr("on screen"));
    }
    const QRectF frame(0, captionHeight, width(), height() - captionHeight);
    paintThemePreview(painter, frame.adjusted(4, 4, -4, -4), m_tokens);
    if (isChecked())
        drawFocusRing(painter, frame, 10, s.accent);
    if (showsKeyboardFocus(*this))
        drawFocusRing(painter, QRectF(rect()).adjusted(0, 2, -0, -(height() - captionHeight)), 6,
                      s.accent);
}

} // namespace orvane
