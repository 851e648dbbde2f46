// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/PaneRail.h"

#include "appearance/SurfacePanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace orvane {

PaneRail::PaneRail(Look& look, Surface surface, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_surface(surface)
    , m_capsule(new SurfacePanel(look, surface, this))
{
    auto* outer = new QHBoxLayout(this);
    outer->setContentsMargins(8, 0, 8, 0);
    m_capsule->setFixedHeight(32);
    outer->addWidget(m_capsule);
}

QToolButton* PaneRail::makeButton(Symbol symbol, const QString& name, QWidget* parent)
{
    auto* button = new QToolButton(parent ? parent : m_capsule);
    const auto showPicture = [this, button, symbol] {
        button->setIcon(m_look.icon(symbol, m_surface));
    };
    connect(&m_look, &Look::changed, button, showPicture);
    showPicture();
    button->setIconSize({16, 16});
    button->setFixedSize(28, 28);
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QLabel* PaneRail::makeText(QWidget* parent)
{
    auto* text = new QLabel(parent ? parent : m_capsule);
    const auto applyFont = [this, text] {
        text->setFont(interfaceFont(TextStyle::Body, m_look.polarity(m_surface)));
    };
    connect(&m_look, &Look::changed, text, applyFont);
    applyFont();
    return text;
}

} // namespace orvane
