// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/EditorFontSample.h"

#include "appearance/Drawing.h"
#include "appearance/Look.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr int cardHeight = 112;
constexpr int padding = 20;

} // namespace

EditorFontSample::EditorFontSample(const Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    setFixedHeight(cardHeight);
}

void EditorFontSample::showFont(const QString& family, double points)
{
    m_family = family;
    m_points = points;
    update();
}

void EditorFontSample::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const Tokens& t = m_look.tokens();
    const SurfaceTokens& page = t.on(Surface::Page);
    drawPanel(painter, rect(), 10, page.ground, page.border);
    painter.setFont(editorFont(m_family, m_points));
    painter.setPen(t.pageText);
    const QRect room = rect().adjusted(padding, 12, -padding, -12);
    painter.setClipRect(room);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap,
                     tr("The posts stood dry at noon, which no table allows. She copied the three "
                        "rows by lamp, twice, and put one copy into her boot."));
}

} // namespace orvane
