// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/ShortcutsPage.h"

#include "shell/settings/ShortcutRow.h"
#include "shell/shortcuts/ShortcutCenter.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orvane {

ShortcutsPage::ShortcutsPage(const Services& services, ShortcutCenter& shortcuts, Look& look,
                             QWidget* parent)
    : SettingsPage({tr("Shortcuts"),
                    tr("Press a key to record another one in its place. It works at once in every "
                       "window.")},
                   services.defaults, look, parent)
    , m_notifications(services.notifications)
    , m_shortcuts(shortcuts)
{
    makeTitleControls();
    addSpace(12);
    makeRows();
    observeRecording(services.notifications);
    connect(&shortcuts, &ShortcutCenter::bindingsChanged, this, &ShortcutsPage::showBindings);
    showBindings();
}

ShortcutsPage::~ShortcutsPage()
{
    stopRecording();
}

void ShortcutsPage::makeTitleControls()
{
    m_filter = new QLineEdit;
    m_filter->setPlaceholderText(tr("Find by name or key"));
    m_filter->setAccessibleName(tr("Find a shortcut by name or key"));
    m_filter->setFixedWidth(220);
    m_filter->addAction(look().icon(Symbol::Search, Surface::Page, &SurfaceTokens::textSecondary),
                        QLineEdit::LeadingPosition);
    connect(m_filter, &QLineEdit::textChanged, this, &ShortcutsPage::filter);
    auto* restore = new QPushButton(tr("Restore Defaults"));
    restore->setAutoDefault(false);
    connect(restore, &QPushButton::clicked, this, [this] {
        stopRecording();
        m_shortcuts.restoreDefaults();
        showBindings();
    });
    addToTitle(m_filter);
    addToTitle(restore);
}

void ShortcutsPage::makeRows()
{
    for (const ShortcutAction action : allShortcutActions()) {
        auto* row = new ShortcutRow(action, look());
        m_rows.append(row);
        addWidget(row);
        connect(row, &ShortcutRow::recordingWanted, this, [this, action] { record(action); });
        connect(row, &ShortcutRow::defaultWanted, this,
                [this, action] { m_shortcuts.restoreDefault(action); });
        connect(row, &ShortcutRow::shortcutWanted, this,
                [this, action](const ShortcutData& shortcut) {
                    m_shortcuts.setShortcut(action, shortcut);
                });
    }
    m_nothing = makeLabel({}, TextStyle::Body, LabelInk::Secondary);
    m_nothing->hide();
    addWidget(m_nothing);
}

void ShortcutsPage::observeRecording(NotificationCenter& notifications)
{
    m_observations.push_back(notifications.observe(
        ShortcutRecordingState::capturePreview, [this](const ShortcutCapturePreview& preview) {
            if (m_recorded == preview.action)
                row(preview.action).showRecording(preview.desktopText);
        }));
    m_observations.push_back(notifications.observe(
        ShortcutRecordingState::captureCompleted, [this](const ShortcutCapture& capture) {
            stopRecording();
            m_shortcuts.setShortcut(capture.action, capture.shortcut);
            showBindings();
            row(capture.action).showRecorded(m_shortcuts.bindings());
        }));
    m_observations.push_back(notifications.observe(ShortcutRecordingState::captureCancelled,
                                                   [this](const NoPayload&) { stopRecording(); }));
}

ShortcutRow& ShortcutsPage::row(ShortcutAction action) const
{
    return *m_rows.at(int(action));
}

void ShortcutsPage::showBindings()
{
    const ShortcutBindings& bindings = m_shortcuts.bindings();
    for (ShortcutRow* row : m_rows) {
        if (row->action() != m_recorded)
            row->showBinding(bindings);
    }
}

void ShortcutsPage::record(ShortcutAction action)
{
    const bool again = m_recorded == action;
    stopRecording();
    if (again)
        return;
    m_recorded = action;
    m_shortcuts.recording().begin(action);
    // A press anywhere else ends the recording.
    qApp->installEventFilter(this);
    row(action).showRecording({});
}

void ShortcutsPage::stopRecording()
{
    const auto recorded = std::exchange(m_recorded, std::nullopt);
    if (!recorded)
        return;
    m_shortcuts.recording().end();
    qApp->removeEventFilter(this);
    row(*recorded).showBinding(m_shortcuts.bindings());
}

void ShortcutsPage::filter(const QString& words)
{
    stopRecording();
    const QString wanted = words.trimmed();
    bool any = false;
    for (ShortcutRow* row : m_rows) {
        const bool matches = isAnswered(row->action()) && row->matches(wanted);
        row->setVisible(matches);
        any = any || matches;
    }
    m_nothing->setText(tr("No action has “%1” in its name or key.").arg(wanted));
    m_nothing->setVisible(!any);
}

/// A command that nothing in this program answers has no row.
bool ShortcutsPage::isAnswered(ShortcutAction action) const
{
    const PostableCommand command = notification(action);
    return !command || command.isObserved(m_notifications);
}

void ShortcutsPage::showEvent(QShowEvent* event)
{
    filter(m_filter->text());
    SettingsPage::showEvent(event);
}

void ShortcutsPage::hideEvent(QHideEvent* event)
{
    stopRecording();
    SettingsPage::hideEvent(event);
}

bool ShortcutsPage::eventFilter(QObject* watched, QEvent* event)
{
    const bool leaves = event->type() == QEvent::WindowDeactivate && watched == window();
    const bool elsewhere = event->type() == QEvent::MouseButtonPress && watched->isWidgetType() &&
                           m_recorded && watched != &row(*m_recorded).keyButton();
    if (m_recorded && (leaves || elsewhere))
        stopRecording();
    return SettingsPage::eventFilter(watched, event);
}

} // namespace orvane
