// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/tables/TableGridPopup.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "text/store/TableGrid.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace orvane {

namespace {

constexpr int square = 18;
constexpr int step = square + 3;
constexpr int mostRows = 1'000;

QString sizeText(int rows, int columns)
{
    return TableGridPopup::tr("%1 × %2").arg(columns).arg(rows);
}

} // namespace

class TableGridPopup::Field final : public QWidget {
public:
    Field(Look& look, QWidget* parent, std::function<void()> changed, std::function<void()> taken)
        : QWidget(parent)
        , m_look(look)
        , m_changed(std::move(changed))
        , m_taken(std::move(taken))
    {
        setFixedSize(mostSwept * step, mostSwept * step);
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(TableGridPopup::tr("Size of the table"));
    }

    int rows = 3;
    int columns = 3;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        for (int row = 0; row < mostSwept; ++row) {
            for (int column = 0; column < mostSwept; ++column) {
                const QRectF box(column * step + 0.5, row * step + 0.5, square - 1, square - 1);
                const bool isIn = row < rows && column < columns;
                drawPanel(painter, box, 3,
                          isIn ? blended(card.accent, row == 0 ? 0.45 : 0.25, card.ground)
                               : card.field,
                          isIn ? card.accent : card.border);
            }
        }
    }
    void mouseMoveEvent(QMouseEvent* event) override { sweep(event->position()); }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        sweep(event->position());
        if (rect().contains(event->position().toPoint()))
            m_taken();
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Left:
            return set(rows, columns - 1);
        case Qt::Key_Right:
            return set(rows, columns + 1);
        case Qt::Key_Up:
            return set(rows - 1, columns);
        case Qt::Key_Down:
            return set(rows + 1, columns);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return m_taken();
        default:
            QWidget::keyPressEvent(event);
        }
    }

private:
    void sweep(QPointF point) { set(int(point.y()) / step + 1, int(point.x()) / step + 1); }
    void set(int newRows, int newColumns)
    {
        rows = std::clamp(newRows, 1, mostSwept);
        columns = std::clamp(newColumns, 1, mostSwept);
        setAccessibleDescription(sizeText(rows, columns));
        m_changed();
        update();
    }

    Look& m_look;
    std::function<void()> m_changed;
    std::function<void()> m_taken;
};

TableGridPopup::TableGridPopup(Look& look, QWidget* parent)
    : BarPopup(tr("Insert Table"), look, parent)
    , m_size(makeLabel(sizeText(3, 3), TextStyle::Body, LabelInk::Primary, this))
{
    auto* rows = new QSpinBox(this);
    auto* columns = new QSpinBox(this);
    m_field = new Field(
        look, this,
        [this, rows, columns] {
            m_size->setText(sizeText(m_field->rows, m_field->columns));
            rows->setValue(m_field->rows);
            columns->setValue(m_field->columns);
        },
        [this] { choose(m_field->rows, m_field->columns); });
    rows->setRange(1, mostRows);
    rows->setValue(m_field->rows);
    rows->setAccessibleName(tr("Rows"));
    columns->setRange(1, TableGrid::mostColumns);
    columns->setValue(m_field->columns);
    columns->setAccessibleName(tr("Columns"));
    const auto show = [this, rows, columns] {
        m_size->setText(sizeText(rows->value(), columns->value()));
    };
    connect(rows, &QSpinBox::valueChanged, this, show);
    connect(columns, &QSpinBox::valueChanged, this, show);
    auto* insert = new QPushButton(tr("Insert"), this);
    insert->setAutoDefault(false);
    connect(insert, &QPushButton::clicked, this,
            [this, rows, columns] { choose(rows->value(), columns->value()); });
    column().addWidget(
        makeLabel(tr("Insert Table"), TextStyle::SectionHead, LabelInk::Secondary, this));
    column().addWidget(m_field);
    column().addWidget(m_size);
    auto* numbers = new QHBoxLayout;
    numbers->setSpacing(8);
    numbers->addWidget(columns);
    numbers->addWidget(rows);
    numbers->addWidget(insert, 1);
    column().addLayout(numbers);
    m_field->setFocus(Qt::PopupFocusReason);
}

void TableGridPopup::choose(int rows, int columns)
{
    close();
    emit chosen(rows, columns);
}

} // namespace orvane
