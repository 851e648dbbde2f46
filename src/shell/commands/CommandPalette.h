// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/commands/CommandCenter.h"
#include "shell/commands/PaletteSearch.h"
#include "shell/sheets/SheetHost.h"

class QLineEdit;
class QLabel;
class QListView;

namespace orvane {

class CommandPaletteModel;

/// Finds a command or a note by some of its letters, and runs or opens it: a field over a list, at
/// the top of the window. The keyboard stays in the field; Up and Down walk the list, Return takes
/// the marked line, Escape leaves.
class CommandPalette : public Sheet {
    Q_OBJECT
public:
    CommandPalette(AppState& appState, CommandCenter& commands, Look& look);
    ~CommandPalette() override;

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] Placement placement() const override { return Placement::Top; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void search(const QString& text);
    void step(int by);
    void take(const QModelIndex& index);
    void fitHeight();

    AppState& m_appState;
    CommandCenter& m_commands;
    CommandPaletteModel* m_model;
    QLineEdit* m_field;
    QListView* m_list;
    QLabel* m_nothing = nullptr;
};

} // namespace orvane
