// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QWidget>

namespace orvane {

class AppState;
class EditorPaneView;
class Look;

/// The place in the main window where the selected record is shown: it follows the selection and
/// tells the surface that the record is for which one to show. All records are written texts.
class RecordPage : public QWidget {
    Q_OBJECT
public:
    RecordPage(AppState& appState, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] EditorPaneView& textPane() const { return *m_text; }

private:
    EditorPaneView* m_text;
};

} // namespace orvane
