// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/writing/FocusedText.h"
#include "platform/Services.h"

#include <QObject>

namespace orvane {

class EditorView;

/// Dims all of a view's text but what is written in. Dimming is drawn and never part of the text.
/// Off until told otherwise.
class FocusMode final : public QObject {
    Q_OBJECT
public:
    /// `view` outlives it.
    explicit FocusMode(EditorView& view, QObject* parent = nullptr);

    /// Nothing for no dimming.
    void setGranularity(std::optional<FocusGranularity> granularity);

private:
    void updateFocusDimming();

    EditorView& m_view;
    std::optional<FocusGranularity> m_granularity;
    std::optional<TextSelection> m_shown; ///< the selection that the view's dimming is of
};

// The commands. They change the settings, which all views follow, and post `focusModeChanged`.

void toggleFocusMode(const Services& services);
void setFocusParagraph(const Services& services);
void setFocusSentence(const Services& services);

} // namespace orvane
