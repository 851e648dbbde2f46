// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/layout/PaneArithmetic.h"

#include <QObject>

namespace orvane {

/// The remembered widths of the panes and their locks, for everybody who shows or stores them.
/// A width of 0 is not yet known. Main thread.
class SplitPaneLayoutModel : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] double binderWidth() const { return m_widths.binder; }
    [[nodiscard]] double editorWidth() const { return m_editorWidth; }
    [[nodiscard]] double inspectorWidth() const { return m_widths.inspector; }
    [[nodiscard]] SideWidths sideWidths() const { return m_widths; }
    [[nodiscard]] PaneLocks locks() const { return m_locks; }

    void setBinderWidth(double width) { set(m_widths.binder, width); }
    void setEditorWidth(double width) { set(m_editorWidth, width); }
    void setInspectorWidth(double width) { set(m_widths.inspector, width); }
    void setLocks(const PaneLocks& locks) { set(m_locks, locks); }

signals:
    void changed();

private:
    template <typename Value>
    void set(Value& field, const Value& value)
    {
        if (field == value)
            return;
        field = value;
        emit changed();
    }

    SideWidths m_widths;
    double m_editorWidth = PaneMetrics::editorPageWidthDefault;
    PaneLocks m_locks;
};

} // namespace orvane
