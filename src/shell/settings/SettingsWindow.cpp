// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/SettingsWindow.h"

#include "appearance/SurfacePanel.h"
#include "shell/layout/WindowPlacement.h"
#include "shell/settings/SettingsSideList.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStackedLayout>

namespace orvane {

namespace {

constexpr int bandHeight = 48;
constexpr int sideWidth = 223;

Symbol symbolOf(SettingsPageId id)
{
    switch (id) {
    case SettingsPageId::General:
        return Symbol::Settings;
    case SettingsPageId::Editor:
        return Symbol::Writing;
    case SettingsPageId::Bullets:
        return Symbol::Bullets;
    case SettingsPageId::Appearance:
        return Symbol::Colors;
    case SettingsPageId::VersionHistory:
        return Symbol::History;
    case SettingsPageId::Shortcuts:
        return Symbol::Keyboard;
    case SettingsPageId::Projects:
        return Symbol::Project;
    }
    return Symbol::Settings;
}

/// A line of the surface's border colour between two parts of the window.
class Line final : public QWidget {
public:
    Line(const Look& look, Surface surface, Qt::Orientation orientation)
        : m_look(look)
        , m_surface(surface)
    {
        if (orientation == Qt::Horizontal)
            setFixedHeight(1);
        else
            setFixedWidth(1);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), m_look.tokens().on(m_surface).border);
    }

private:
    const Look& m_look;
    Surface m_surface;
};

} // namespace

SettingsWindow::SettingsWindow(const Services& services, Look& look, ShortcutCenter& shortcuts,
                               AppearanceThemeLibrary& themes)
    : m_s{{services.defaults, services.notifications, m_questions, services.beeper, services.trash,
           services.clock, services.licence, services.folders},
          look,
          shortcuts,
          themes,
          m_files}
    , m_stack(new QStackedLayout)
    , m_sheets(new SheetHost(look, this))
{
    setWindowTitle(tr("Settings"));
    setMinimumSize(960, 560);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(makeBand());
    layout->addWidget(new Line(look, Surface::Toolbar, Qt::Horizontal));
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(makeSide());
    row->addWidget(new Line(look, Surface::Binder, Qt::Vertical));
    row->addLayout(m_stack, 1);
    layout->addLayout(row, 1);
    resize(1100, 720);
    m_questions.setHost(m_sheets, &look);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int current) {
        if (current < 0)
            return;
        // A page that is left takes the keyboard with it.
        m_list->setFocus(Qt::OtherFocusReason);
        m_stack->setCurrentWidget(&page(SettingsPageId(current)));
    });
    m_list->setCurrentRow(0);
}

QWidget* SettingsWindow::makeBand()
{
    auto* band = new SurfacePanel(m_s.look, Surface::Toolbar, this);
    band->setFixedHeight(bandHeight);
    auto* row = new QHBoxLayout(band);
    row->addWidget(makeLabel(tr("Settings"), TextStyle::BodyStrong), 0, Qt::AlignCenter);
    return band;
}

QWidget* SettingsWindow::makeSide()
{
    auto* side = new SurfacePanel(m_s.look, Surface::Binder, this);
    side->setFixedWidth(sideWidth);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins(8, 12, 8, 12);
    m_list = new SettingsSideList(m_s.look, side);
    for (int i = 0; i < settingsPageCount; ++i)
        m_list->addPage(symbolOf(SettingsPageId(i)), title(SettingsPageId(i)));
    layout->addWidget(m_list);
    return side;
}

QWidget& SettingsWindow::page(SettingsPageId id)
{
    QWidget*& made = m_pages[size_t(id)];
    if (!made) {
        made = makeSettingsPage(id, m_s);
        m_stack->addWidget(made);
    }
    return *made;
}

void SettingsWindow::showPage(SettingsPageId id)
{
    m_list->setCurrentRow(int(id));
}

SettingsPageId SettingsWindow::currentPage() const
{
    return SettingsPageId(m_list->currentRow());
}

// What stands in it has had the key before.
void SettingsWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void SettingsWindow::present(const QWidget& parent)
{
    if (!isVisible())
        centreOver(*this, parent);
    show();
    raise();
    activateWindow();
}

} // namespace orvane
