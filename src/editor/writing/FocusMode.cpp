// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/FocusMode.h"

#include "commands/AppCommandEvents.h"
#include "editor/view/EditorSettings.h"
#include "editor/view/EditorView.h"

namespace orvane {

FocusMode::FocusMode(EditorView& view, QObject* parent)
    : QObject(parent)
    , m_view(view)
{
    connect(&view, &EditorView::textChanged, this, &FocusMode::updateFocusDimming);
    // An edit has told already where its caret is.
    connect(&view, &EditorView::selectionChanged, this, [this] {
        if (m_shown != m_view.selection() || !m_view.focusRange())
            updateFocusDimming();
    });
}

void FocusMode::setGranularity(std::optional<FocusGranularity> granularity)
{
    if (granularity == m_granularity)
        return;
    m_granularity = granularity;
    if (!granularity)
        m_view.setFocusRange(std::nullopt);
    updateFocusDimming();
}

void FocusMode::updateFocusDimming()
{
    if (!m_granularity)
        return;
    m_shown = m_view.selection();
    m_view.setFocusRange(focusedTextRange(m_view.store(), *m_shown, *m_granularity));
}

void toggleFocusMode(const Services& services)
{
    focusModeSetting.write(services.defaults, !focusModeSetting.read(services.defaults));
    services.notifications.post(AppCommandEvents::focusModeChanged);
}

void setFocusParagraph(const Services& services)
{
    focusModeGranularitySetting.write(services.defaults, rawValue(FocusGranularity::paragraph));
    services.notifications.post(AppCommandEvents::focusModeChanged);
}

void setFocusSentence(const Services& services)
{
    focusModeGranularitySetting.write(services.defaults, rawValue(FocusGranularity::sentence));
    services.notifications.post(AppCommandEvents::focusModeChanged);
}

} // namespace orvane
