// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/TableCommands.h"
#include "editor/formatting/EditorSelectionSnapshot.h"

#include <QWidget>

class QGridLayout;
class QLabel;

namespace orvane {

class Look;

/// What there is to know of the table in which the caret of the selected note is, with its fills.
/// Hidden while it is in none. It posts commands and touches no text.
class TableSection final : public QWidget {
    Q_OBJECT
public:
    /// Both outlive it.
    TableSection(NotificationCenter& notifications, Look& look, QWidget* parent);

    /// The note that is selected; none to show nothing.
    void setNote(const std::optional<QUuid>& note);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    class Swatch;

    Swatch* addSwatch(const QString& name, TableFill fill);
    [[nodiscard]] QWidget* makeButtons();
    void showOrHide();

    NotificationCenter& m_notifications;
    Look& m_look;
    std::optional<QUuid> m_note;
    EditorSelectionChange m_told;
    QGridLayout* m_grid;
    QLabel* m_rows;
    QLabel* m_columns;
    QLabel* m_selected;
    Swatch* m_headerFill;
    Swatch* m_cellFill;
    NotificationCenter::Observation m_observation;
};

} // namespace orvane
