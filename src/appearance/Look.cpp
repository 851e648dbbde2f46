// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Look.h"

#include "appearance/Contrast.h"
#include "appearance/OrvaneStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QToolTip>

namespace orvane {

namespace {

/// Draws a symbol in the colour that the look has at the moment of drawing.
class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(const Look* look, Symbol symbol, QColor Tokens::*ink)
        : m_look(look)
        , m_symbol(symbol)
        , m_ink(ink)
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        Look::drawSymbol(*painter, rect, m_symbol, qMin(rect.width(), rect.height()), color(mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return symbolPixmap(m_symbol, qMin(size.width(), size.height()), color(mode));
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        QPixmap result = pixmap(size, mode, state);
        result.setDevicePixelRatio(scale);
        return result;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(*this); }
    QString key() const override { return QStringLiteral("orvane-symbol"); }
    bool isNull() override { return false; }

private:
    [[nodiscard]] QColor color(QIcon::Mode mode) const
    {
        if (!m_look)
            return Qt::gray;
        QColor ink = m_look->tokens().*m_ink;
        if (mode == QIcon::Disabled)
            ink.setAlphaF(0.35F);
        return ink;
    }

    QPointer<const Look> m_look;
    Symbol m_symbol;
    QColor Tokens::*m_ink;
};

} // namespace

Look::Look(const Tokens& tokens, QObject* parent)
    : QObject(parent)
    , m_tokens(tokens)
{}

void Look::setTokens(const Tokens& tokens)
{
    if (m_tokens == tokens)
        return;
    m_tokens = tokens;
    if (qobject_cast<OrvaneStyle*>(QApplication::style())) {
        setInkPolarity(polarity(Surface::Window));
        QApplication::setPalette(palette(Surface::Window));
    }
    emit changed();
}

QColor Look::ground(Surface surface) const
{
    switch (surface) {
    case Surface::Window:
        return m_tokens.window;
    case Surface::Pane:
        return m_tokens.pane;
    case Surface::Page:
        return m_tokens.page;
    case Surface::Card:
        return m_tokens.card;
    case Surface::Band:
        return m_tokens.band;
    case Surface::Rail:
        return m_tokens.rail;
    }
    return m_tokens.window;
}

QPalette Look::palette(Surface surface) const
{
    const Tokens& t = m_tokens;
    const bool onRail = surface == Surface::Rail;
    const bool onBand = surface == Surface::Band;
    const QColor ink = onRail ? t.textOnRail : onBand ? t.textOnBand : t.text;
    const QColor second = onRail   ? t.textSecondaryOnRail
                          : onBand ? t.textSecondaryOnBand
                                   : t.textSecondary;
    const QColor base = ground(surface);

    QPalette palette;
    palette.setColor(QPalette::Window, base);
    palette.setColor(QPalette::Base,
                     surface == Surface::Window || surface == Surface::Card ? t.field : base);
    palette.setColor(QPalette::AlternateBase, base);
    palette.setColor(QPalette::Button, t.control);
    palette.setColor(QPalette::ToolTipBase, t.card);
    palette.setColor(QPalette::ToolTipText, t.text);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText})
        palette.setColor(role, ink);
    palette.setColor(QPalette::PlaceholderText, second);
    palette.setColor(QPalette::Highlight, t.selection);
    palette.setColor(QPalette::HighlightedText, readableInk(t.text, t.selection));
    palette.setColor(QPalette::Link, readableInk(t.accent, base));
    palette.setColor(QPalette::Light, t.border);
    palette.setColor(QPalette::Midlight, t.border);
    palette.setColor(QPalette::Mid, t.border);
    palette.setColor(QPalette::Dark, t.border);
    palette.setColor(QPalette::Shadow, t.window);
    const QColor faded = blended(ink, 0.45, base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    return palette;
}

InkPolarity Look::polarity(Surface surface) const
{
    return polarityOf(palette(surface).color(QPalette::WindowText), ground(surface));
}

QIcon Look::icon(Symbol symbol, QColor Tokens::*ink) const
{
    return QIcon(new SymbolEngine(this, symbol, ink));
}

void Look::drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, double size,
                      const QColor& color)
{
    const double ratio = painter.device()->devicePixelRatioF();
    QPixmap pixmap = symbolPixmap(symbol, qRound(size * ratio), color);
    pixmap.setDevicePixelRatio(ratio);
    const auto snapped = [&](double value) {
        return std::round(value * ratio) / ratio;
    };
    painter.drawPixmap(
        QPointF(snapped(rect.center().x() - size / 2), snapped(rect.center().y() - size / 2)),
        pixmap);
}

void Look::wear()
{
    installFontSubstitutions();
    setInkPolarity(polarity(Surface::Window));
    QApplication::setFont(interfaceFont(TextStyle::Body));
    QApplication::setStyle(new OrvaneStyle(*this));
    QApplication::setPalette(palette(Surface::Window));
    QToolTip::setFont(interfaceFont(TextStyle::Body));
    QToolTip::setPalette(palette(Surface::Card));
}

QLabel* makeLabel(const QString& text, TextStyle style, LabelInk ink, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    setTextStyle(label, style);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(ink == LabelInk::Primary ? QPalette::WindowText
                                                      : QPalette::PlaceholderText);
    return label;
}

} // namespace orvane
