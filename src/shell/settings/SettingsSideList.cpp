// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsSideList.h"

#include "appearance/Drawing.h"
#include "shell/shortcuts/KeyRouting.h"

#include <QPainter>
#include <QStyledItemDelegate>

namespace orvane {

namespace {

constexpr int rowHeight = 36;
constexpr int symbolRole = Qt::UserRole;

class SideRowDelegate final : public QStyledItemDelegate {
public:
    SideRowDelegate(const Look& look, QWidget* list)
        : QStyledItemDelegate(list)
        , m_look(look)
        , m_list(*list)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {120, rowHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& s = m_look.tokens().on(Surface::Binder);
        const QRect row = option.rect;
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        drawRowGround(
            *painter, row,
            {chosen, option.state.testFlag(QStyle::State_MouseOver), showsKeyboardFocus(m_list)},
            s);
        const QColor ink = chosen ? s.textOnSelectedRow : s.text;
        drawSymbol(*painter, QRectF(row.left() + 8, row.top(), 16, row.height()),
                   Symbol(index.data(symbolRole).toInt()), 16, chosen ? ink : s.icon);
        painter->setFont(interfaceFont(TextStyle::BodyMedium));
        painter->setPen(ink);
        painter->drawText(row.adjusted(32, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft,
                          index.data(Qt::DisplayRole).toString());
        painter->restore();
    }

private:
    const Look& m_look;
    const QWidget& m_list;
};

} // namespace

SettingsSideList::SettingsSideList(const Look& look, QWidget* parent)
    : QListWidget(parent)
{
    setItemDelegate(new SideRowDelegate(look, this));
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setUniformItemSizes(true);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setAccessibleName(tr("Pages"));
    declareKeyFocus(this, KeyFocus::Control);
}

void SettingsSideList::addPage(Symbol symbol, const QString& title)
{
    auto* item = new QListWidgetItem(title, this);
    item->setData(symbolRole, int(symbol));
}

} // namespace orvane
