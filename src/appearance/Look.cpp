// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/Look.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/SurfacePalette.h"

#include <QIconEngine>
#include <QLabel>
#include <QPainter>
#include <QPointer>

#include <functional>

namespace orvane {

namespace {

/// Draws a symbol in the colour that the look has at the moment of drawing.
class SymbolEngine final : public QIconEngine {
public:
    using Ink = std::function<QColor(const Tokens&)>;

    SymbolEngine(const Look* look, Symbol symbol, Ink ink)
        : m_look(look)
        , m_symbol(symbol)
        , m_ink(std::move(ink))
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        drawSymbol(*painter, rect, m_symbol, qMin(rect.width(), rect.height()), color(mode));
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
        QColor ink = m_ink(m_look->tokens());
        if (mode == QIcon::Disabled)
            ink.setAlphaF(0.35F);
        return ink;
    }

    QPointer<const Look> m_look;
    Symbol m_symbol;
    Ink m_ink;
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
    emit changed();
}

QColor Look::ground(Surface surface) const
{
    return m_tokens.on(surface).ground;
}

QPalette Look::palette(Surface surface) const
{
    return surfacePalette(m_tokens, surface);
}

InkPolarity Look::polarity(Surface surface) const
{
    return polarityOf(m_tokens.on(surface).text, ground(surface));
}

QIcon Look::icon(Symbol symbol, QColor Tokens::*ink) const
{
    return QIcon(new SymbolEngine(this, symbol, [ink](const Tokens& t) { return t.*ink; }));
}

QIcon Look::icon(Symbol symbol, Surface surface, QColor SurfaceTokens::*ink) const
{
    return QIcon(new SymbolEngine(this, symbol,
                                  [surface, ink](const Tokens& t) { return t.on(surface).*ink; }));
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
