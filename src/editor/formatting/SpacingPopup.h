// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/EditorFormatNotifications.h"
#include "editor/formatting/BarPopup.h"
#include "editor/formatting/EditorSelectionSnapshot.h"

class QDoubleSpinBox;
class QGridLayout;

namespace orvane {

/// The spacing of lines and paragraphs, which the text takes while it is set, and the way to the
/// colour behind paragraphs.
class SpacingPopup : public BarPopup {
    Q_OBJECT
public:
    SpacingPopup(const EditorSelectionSnapshot& snapshot, Look& look, QWidget* parent);

signals:
    void changed(const orvane::ParagraphMetrics& metrics);
    void backgroundRequested();

private:
    void addField(QGridLayout& grid, const QString& name, double value,
                  std::optional<double> ParagraphMetrics::*metric);

    QList<QDoubleSpinBox*> m_fields;
};

} // namespace orvane
