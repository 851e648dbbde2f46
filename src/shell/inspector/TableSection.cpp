// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/TableSection.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/Look.h"
#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"
#include "shell/inspector/FactRows.h"
#include "shell/inspector/FlowLayout.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionToolButton>
#include <QToolButton>

namespace orvane {

namespace {

constexpr int padding = 16;
constexpr int swatchSize = 28;
constexpr int colorSize = 20;

} // namespace

/// Shows a fill as it looks on the page.
class TableSection::Swatch final : public QToolButton {
public:
    Swatch(const QString& name, const Look& look, QWidget* parent)
        : QToolButton(parent)
        , m_look(look)
    {
        setFixedSize(swatchSize, swatchSize);
        setAccessibleName(name);
        setToolTip(name);
    }

    void setColor(const std::optional<RgbaColor>& color)
    {
        if (std::exchange(m_color, color) != color)
            update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOptionToolButton option;
        initStyleOption(&option);
        style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, this);
        const int inset = (swatchSize - colorSize) / 2;
        const QColor page = m_look.tokens().on(Surface::Page).ground;
        const QColor color =
            m_color ? blended(QColor(m_color->toQColor().rgb()), m_color->alpha, page) : page;
        const SurfaceTokens& surface = m_look.tokens().on(Surface::Inspector);
        drawPanel(painter, rect().adjusted(inset, inset, -inset, -inset), 5, color, surface.icon);
    }

private:
    const Look& m_look;
    std::optional<RgbaColor> m_color;
};

TableSection::TableSection(NotificationCenter& notifications, Look& look, QWidget* parent)
    : QWidget(parent)
    , m_notifications(notifications)
    , m_look(look)
    , m_grid(new QGridLayout)
    , m_rows(addFact(*m_grid, tr("Rows")))
    , m_columns(addFact(*m_grid, tr("Columns")))
    , m_selected(addFact(*m_grid, tr("Selected")))
    , m_headerFill(addSwatch(tr("Header Fill Color"), TableFill::header))
    , m_cellFill(addSwatch(tr("Cell Fill Color"), TableFill::cells))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding + 13, padding, 0);
    layout->setSpacing(13);
    addFactGrid(*layout, tr("Table"), *m_grid);
    layout->addWidget(makeButtons());
    m_observation = notifications.observe(editorSelectionSnapshotDidChange,
                                          [this](const EditorSelectionChange& change) {
                                              m_told = change;
                                              showOrHide();
                                          });
    hide();
}

TableSection::Swatch* TableSection::addSwatch(const QString& name, TableFill fill)
{
    const int row = m_grid->rowCount();
    auto* swatch = new Swatch(name, m_look, this);
    connect(swatch, &QToolButton::clicked, this, [this, swatch, fill] {
        const QRect anchor(swatch->mapToGlobal(QPoint()), swatch->size());
        m_notifications.post(TableCommands::chooseFill, TableFillChoice{fill, anchor, m_note});
    });
    m_grid->addWidget(makeLabel(name, TextStyle::Body, LabelInk::Secondary), row, 0);
    m_grid->addWidget(swatch, row, 1, Qt::AlignRight);
    return swatch;
}

QWidget* TableSection::makeButtons()
{
    auto* row = new QWidget(this);
    auto* flow = new FlowLayout(row, 8);
    const auto add = [&](const QString& name, const Notification<CommandTarget>& command) {
        auto* button = new QPushButton(name, row);
        button->setFixedHeight(28);
        flow->insertWidget(flow->count(), button);
        connect(button, &QPushButton::clicked, this,
                [this, command] { m_notifications.post(command, CommandTarget{m_note}); });
        return button;
    };
    add(tr("Clear Cell Fill"), TableCommands::clearCellFill);
    setButtonTone(add(tr("Delete Table"), TableCommands::deleteTable), ButtonTone::DangerText);
    return row;
}

void TableSection::setNote(const std::optional<QUuid>& note)
{
    m_note = note;
    showOrHide();
}

void TableSection::showOrHide()
{
    const auto& table = m_told.snapshot.table;
    if (!table || !m_note || m_told.targetNoteID != m_note)
        return hide();
    m_rows->setText(grouped(table->rows));
    m_columns->setText(grouped(table->columns));
    m_selected->setText(tr("%Ln cells", nullptr, table->selectedCells));
    m_headerFill->setColor(table->headerFill);
    m_cellFill->setColor(table->cellFill);
    show();
}

void TableSection::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(0, padding, width(), 1, m_look.tokens().on(Surface::Inspector).border);
}

} // namespace orvane
