// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ThemePreview.h"

#include "appearance/Drawing.h"
#include "appearance/Typography.h"

#include <QCoreApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace orvane {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ThemePreview)
};

void fill(QPainter& painter, const QRectF& rect, const QColor& color, double radius = 0)
{
    drawPanel(painter, rect, radius, color);
}

/// The ground with the backdrop's gradient running over the whole of `window`.
void fillGround(QPainter& painter, const QRectF& rect, const QRectF& window,
                const SurfaceTokens& surface)
{
    QLinearGradient gradient(window.topLeft(), window.bottomLeft());
    gradient.setColorAt(0, surface.groundTop);
    gradient.setColorAt(0.5, surface.ground);
    gradient.setColorAt(1, surface.groundBottom);
    painter.fillRect(rect, gradient);
}

void clipRound(QPainter& painter, const QRectF& rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    painter.setClipPath(path, Qt::IntersectClip);
}

/// Draws the parts of one preview into their places.
class Preview {
public:
    Preview(QPainter& painter, const QRectF& rect, const Tokens& tokens)
        : p(painter)
        , t(tokens)
        , window(rect)
        , binder(rect.left(), rect.top() + bandHeight, std::round(rect.width() * 0.26),
                 rect.height() - bandHeight)
        , inspector(rect.right() - std::round(rect.width() * 0.24), binder.top(),
                    std::round(rect.width() * 0.24), binder.height())
        , page(binder.right(), binder.top(), inspector.left() - binder.right(), binder.height())
    {}

    void draw()
    {
        fillGround(p, window, window, t.on(Surface::Window));
        drawToolbar();
        drawBinder();
        drawPage();
        drawInspector();
    }

private:
    static constexpr double bandHeight = 22;
    static constexpr double barHeight = 18;
    static constexpr double rowHeight = 20;

    void text(const QRectF& rect, const QString& words, const QColor& color, double pixels,
              QFont::Weight weight = QFont::Normal, int align = Qt::AlignLeft)
    {
        QFont font = interfaceFont(TextStyle::Label);
        font.setPixelSize(int(pixels));
        font.setWeight(weight);
        p.setFont(font);
        p.setPen(color);
        p.drawText(rect, align | Qt::AlignVCenter | Qt::TextSingleLine,
                   QFontMetricsF(font).elidedText(words, Qt::ElideRight, rect.width()));
    }

    void dots(QPointF at, int count, const QColor& color)
    {
        for (int i = 0; i < count; ++i)
            fill(p, QRectF(at.x() + i * 12, at.y() - 3, 6, 6), color, 1.5);
    }

    void drawToolbar()
    {
        const SurfaceTokens& s = t.on(Surface::Toolbar);
        const QRectF band(window.left(), window.top(), window.width(), bandHeight);
        fillGround(p, band, window, s);
        dots({band.left() + 8, band.center().y()}, 2, s.icon);
        text(band.adjusted(36, 0, -80, 0), Words::tr("Tidewater, a novel"), s.text, 9,
             QFont::Medium);
        dots({band.right() - 40, band.center().y()}, 3, s.icon);
        p.fillRect(QRectF(band.left(), band.bottom() - 1, band.width(), 1), s.border);
    }

    void drawRail(Surface surface, const QRectF& rect)
    {
        const SurfaceTokens& s = t.on(surface);
        fill(p, rect, s.ground, 4);
        text(rect.adjusted(6, 0, -30, 0),
             surface == Surface::BinderTopRail ? Words::tr("Filter") : QString(), s.textSecondary,
             8);
        dots({rect.right() - 24, rect.center().y()}, 2, s.icon);
    }

    void drawBinder()
    {
        const SurfaceTokens& s = t.on(Surface::Binder);
        fillGround(p, binder, window, s);
        drawRail(Surface::BinderTopRail,
                 QRectF(binder.left() + 5, binder.top() + 5, binder.width() - 11, 16));
        drawRail(Surface::BinderRail,
                 QRectF(binder.left() + 5, binder.bottom() - 21, binder.width() - 11, 16));
        double y = binder.top() + 27;
        const QRectF folder(binder.left() + 10, y, binder.width() - 16, rowHeight);
        text(folder, Words::tr("Manuscript"), s.text, 9, QFont::Medium);
        text(folder, QStringLiteral("3"), s.textSecondary, 8, QFont::Normal, Qt::AlignRight);
        y += rowHeight;
        const QRectF selected(binder.left() + 5, y, binder.width() - 11, rowHeight + 5);
        fill(p, selected, s.selectedRow, 3);
        fill(p, QRectF(selected.left(), selected.top() + 4, 2, selected.height() - 8), s.accent);
        text(selected.adjusted(10, 2, -4, -12), Words::tr("Low water"), s.textOnSelectedRow, 9);
        text(selected.adjusted(10, 12, -4, -2), Words::tr("Mara counts"),
             s.textSecondaryOnSelectedRow, 8);
        y = selected.bottom();
        for (const QString& name : {Words::tr("The harbour"), Words::tr("Salt")}) {
            text(QRectF(binder.left() + 15, y, binder.width() - 20, rowHeight), name, s.text, 9);
            y += rowHeight;
        }
        p.fillRect(QRectF(binder.right() - 1, binder.top(), 1, binder.height()), s.border);
    }

    void drawPage()
    {
        const SurfaceTokens& s = t.on(Surface::Page);
        const SurfaceTokens& bar = t.on(Surface::FormattingBar);
        const SurfaceTokens& strip = t.on(Surface::StatusStrip);
        fillGround(p, page, window, s);
        const QRectF top(page.left(), page.top(), page.width(), barHeight);
        fill(p, top, bar.ground);
        text(top.adjusted(8, 0, 0, 0), Words::tr("Body"), bar.text, 8);
        dots({top.left() + 40, top.center().y()}, 4, bar.icon);
        const QRectF bottom(page.left(), page.bottom() - 15, page.width(), 15);
        fill(p, bottom, strip.ground);
        text(bottom.adjusted(8, 0, -8, 0), Words::tr("2,011 words"), strip.textSecondary, 8);
        text(bottom.adjusted(8, 0, -8, 0), Words::tr("Saved"), strip.textSecondary, 8,
             QFont::Normal, Qt::AlignRight);

        const QRectF column = page.adjusted(18, barHeight + 12, -14, -20);
        const QRectF title(column.left(), column.top(), column.width(), 18);
        text(title, Words::tr("The harbour ledger"), t.pageText, 13, QFont::Bold);
        const QStringList lines{Words::tr("The ledger had been kept by four"),
                                Words::tr("hands in sixty years, and each had"),
                                Words::tr("pressed harder.")};
        double y = title.bottom() + 6;
        for (const QString& line : lines) {
            text(QRectF(column.left(), y, column.width(), 14), line, t.pageText, 10);
            y += 14;
        }
        const double width = QFontMetricsF(p.font()).horizontalAdvance(lines.last());
        p.fillRect(QRectF(column.left() + width + 2, y - 13, 1.5, 12), t.caret);
        drawPaper(QRectF(column.left(), y + 8, column.width(), page.bottom() - 22 - y - 8));
    }

    /// The sheet of page view, as a corner of it.
    void drawPaper(const QRectF& rect)
    {
        if (rect.height() < 24)
            return;
        fill(p, rect, t.desk, 3);
        const QRectF sheet = rect.adjusted(12, 8, -12, 0);
        p.fillRect(sheet, t.paper);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(t.paperEdge, 1));
        p.drawPolyline(QPolygonF{{sheet.left() + 0.5, sheet.bottom()},
                                 {sheet.left() + 0.5, sheet.top() + 0.5},
                                 {sheet.right() - 0.5, sheet.top() + 0.5},
                                 {sheet.right() - 0.5, sheet.bottom()}});
        text(sheet.adjusted(10, 4, -8, 4 + 14 - sheet.height()), Words::tr("Page"), t.pageText, 9);
    }

    void drawInspector()
    {
        const SurfaceTokens& s = t.on(Surface::Inspector);
        fillGround(p, inspector, window, s);
        p.fillRect(QRectF(inspector.left(), inspector.top(), 1, inspector.height()), s.border);
        drawRail(Surface::InspectorTopRail,
                 QRectF(inspector.left() + 6, inspector.top() + 5, inspector.width() - 11, 16));
        drawRail(Surface::InspectorRail,
                 QRectF(inspector.left() + 6, inspector.bottom() - 21, inspector.width() - 11, 16));
        double y = inspector.top() + 28;
        const std::pair<QString, QString> rows[] = {
            {Words::tr("Words"), QStringLiteral("2,011")},
            {Words::tr("Changed"), QStringLiteral("14:32")}};
        for (const auto& [name, value] : rows) {
            const QRectF line(inspector.left() + 10, y, inspector.width() - 18, 14);
            text(line, name, s.textSecondary, 8);
            text(line, value, s.text, 8, QFont::Normal, Qt::AlignRight);
            y += 15;
        }
        p.fillRect(QRectF(inspector.left() + 1, y + 5, inspector.width() - 1, 1), s.border);
        const QRectF button(inspector.left() + 10, y + 14, 46, 16);
        fill(p, button, t.accent, 3);
        text(button, Words::tr("Restore"), t.textOnAccent, 8, QFont::Medium, Qt::AlignHCenter);
        text(QRectF(inspector.left() + 10, y + 36, inspector.width() - 18, 14),
             Words::tr("Linked note"), s.link, 8);
    }

    QPainter& p;
    const Tokens& t;
    QRectF window;
    QRectF binder;
    QRectF inspector;
    QRectF page;
};

} // namespace

void paintThemeSwatch(QPainter& painter, const QRectF& rect, const Tokens& tokens)
{
    constexpr double radius = 5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    clipRound(painter, rect, radius);
    const SurfaceTokens& page = tokens.on(Surface::Page);
    const SurfaceTokens& binder = tokens.on(Surface::Binder);
    fillGround(painter, rect, rect, page);
    const QRectF pane(rect.left(), rect.top(), std::round(rect.width() * 0.26), rect.height());
    fillGround(painter, pane, rect, binder);
    fill(painter, QRectF(pane.left() + 4, pane.top() + 5, pane.width() - 8, 7),
         tokens.on(Surface::BinderTopRail).ground, 3);
    for (int row = 0; row < 3; ++row)
        fill(painter, QRectF(pane.left() + 5, pane.top() + 20 + row * 9, pane.width() - 12, 3),
             row == 1 ? binder.accent : binder.textSecondary, 1.5);
    const double x = pane.right() + 8;
    const double room = rect.right() - x - 8;
    fill(painter, QRectF(x, rect.top() + 10, room * 0.55, 4), tokens.pageText, 2);
    fill(painter, QRectF(x, rect.top() + 21, room, 3), page.textSecondary, 1.5);
    fill(painter, QRectF(x, rect.top() + 29, room * 0.82, 3), page.textSecondary, 1.5);
    painter.fillRect(QRectF(x, rect.top() + 38, 2, 9), tokens.caret);
    fill(painter, QRectF(pane.right(), rect.bottom() - 7, rect.right() - pane.right(), 7),
         tokens.on(Surface::StatusStrip).ground);
    painter.restore();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawPanel(painter, rect, radius, {}, page.border);
    painter.restore();
}

void paintThemePreview(QPainter& painter, const QRectF& rect, const Tokens& tokens)
{
    constexpr double radius = 8;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    clipRound(painter, rect, radius);
    Preview(painter, rect, tokens).draw();
    painter.restore();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawPanel(painter, rect, radius, {}, tokens.on(Surface::Page).border);
    painter.restore();
}

} // namespace orvane
