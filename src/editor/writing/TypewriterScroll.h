// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "platform/Services.h"

#include <QObject>

namespace orvane {

class EditorView;

/// How far down the view a typewriter keeps the line that is written.
inline constexpr double typewriterShare = 0.45;

/// Keeps the line of the caret at one height of the view while the keyboard is in it, by moving the
/// text. A click moves it only when the button is let go, so that nothing moves below the pointer.
/// Off until told otherwise.
class TypewriterScroll final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`, which outlives it.
    explicit TypewriterScroll(EditorView& view, QObject* parent = nullptr);
    ~TypewriterScroll() override;

    void setEnabled(bool enabled);

    bool keyPressed(const QKeyEvent& event) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void maintainTypewriterViewportIfNeeded();

    EditorView& m_view;
    bool m_isEnabled = false;
    bool m_buttonIsDown = false;
};

/// The command: changes the setting, which all views follow.
void toggleTypewriterMode(const Services& services);

} // namespace orvane
