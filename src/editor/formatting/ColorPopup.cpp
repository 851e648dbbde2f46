// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/ColorPopup.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int swatchSize = 24;

class Swatch final : public QAbstractButton {
public:
    Swatch(const QColor& shown, bool isCurrent, Look& look, QWidget* parent)
        : QAbstractButton(parent)
        , m_shown(shown)
        , m_isCurrent(isCurrent)
        , m_look(look)
    {
        setFixedSize(swatchSize, swatchSize);
        setAttribute(Qt::WA_Hover);
        setFocusPolicy(Qt::TabFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        const QColor edge = blended(card.text, 0.22, card.ground);
        const bool showsRing = showsKeyboardFocus(*this);
        const int inset = underMouse() || showsRing ? 3 : 2;
        const QRectF chip = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
        drawPanel(painter, chip, 4, m_shown, edge);
        if (showsRing)
            drawFocusRing(painter, rect(), 6, card.accent);
        else if (underMouse())
            drawPanel(painter, rect(), 6, QColor(), blended(card.text, 0.4, card.ground));
        if (m_isCurrent) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(inkFor(m_shown), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.drawPolyline(QPolygonF({{7.5, 12.5}, {10.7, 15.6}, {16.5, 8.8}}));
        }
    }

private:
    QColor m_shown;
    bool m_isCurrent;
    Look& m_look;
};

} // namespace

ColorPopup::ColorPopup(const Palette& palette, Look& look, QWidget* parent)
    : BarPopup(palette.name, look, parent)
{
    column().addWidget(makeLabel(palette.name, TextStyle::SectionHead, LabelInk::Secondary, this));
    addSwatches(palette);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    QAbstractButton* none = addRow(palette.none);
    QAbstractButton* custom = addRow(tr("Custom…"));
    row->addWidget(none, 1);
    row->addWidget(custom, 1);
    column().addLayout(row);
    connect(none, &QAbstractButton::clicked, this, [this] {
        emit chosen(QColor());
        close();
    });
    connect(custom, &QAbstractButton::clicked, this, [this] {
        close();
        emit customRequested();
    });
    m_swatches.at(palette.current.value_or(0))->setFocus(Qt::PopupFocusReason);
}

void ColorPopup::addSwatches(const Palette& palette)
{
    auto* grid = new QGridLayout;
    grid->setSpacing(4);
    for (int i = 0; i < palette.colors.size(); ++i) {
        const WritingColor& each = palette.colors.at(i);
        auto* swatch = new Swatch(palette.shown.at(i), i == palette.current, look(), this);
        swatch->setAccessibleName(each.name);
        swatch->setToolTip(each.name);
        swatch->installEventFilter(this);
        connect(swatch, &QAbstractButton::clicked, this, [this, color = each.color] {
            emit chosen(color);
            close();
        });
        grid->addWidget(swatch, i / writingPaletteColumns, i % writingPaletteColumns);
        m_swatches.append(swatch);
    }
    column().addLayout(grid);
}

QAbstractButton* ColorPopup::addRow(const QString& text)
{
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    return button;
}

bool ColorPopup::eventFilter(QObject* watched, QEvent* event)
{
    const qsizetype at = m_swatches.indexOf(qobject_cast<QAbstractButton*>(watched));
    if (at < 0 || event->type() != QEvent::KeyPress)
        return BarPopup::eventFilter(watched, event);
    qsizetype to = at;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Left:
        to = at - 1;
        break;
    case Qt::Key_Right:
        to = at + 1;
        break;
    case Qt::Key_Up:
        to = at - writingPaletteColumns;
        break;
    case Qt::Key_Down:
        to = at + writingPaletteColumns;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_swatches.at(at)->click();
        return true;
    default:
        return BarPopup::eventFilter(watched, event);
    }
    if (to >= m_swatches.size())
        m_swatches.last()->nextInFocusChain()->setFocus(Qt::TabFocusReason);
    else if (to >= 0)
        m_swatches.at(to)->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace orvane
