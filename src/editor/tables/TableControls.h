// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/tables/TableHandles.h"
#include "platform/NotificationCenter.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QToolButton;

namespace orvane {

class CommandReceiver;
class TableBar;
struct Services;

/// What stands round the table in which the caret is: its handles, a button below that adds a row,
/// one beside it that adds a column, and the bar of commands. The bar is there while the keyboard
/// is in the text or in the bar, and steps back while one types until the pointer moves.
class TableControls final : public QObject {
    Q_OBJECT
public:
    /// All outlive it.
    TableControls(EditorView& view, TableTools& tools, const CommandReceiver& commands, Look& look,
                  const Services& services);

    /// Something was typed or removed within a paragraph.
    void textTyped();
    /// The text has changed in another way.
    void tableChanged();
    /// Shows the bar and puts the keyboard into it.
    void takeKeyboard();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void schedule();
    void follow();
    void makeWidgets();
    [[nodiscard]] std::optional<TableOnView> table() const;
    [[nodiscard]] bool isKeyboardHere() const;
    void placeButtons(const std::optional<TableOnView>& table);
    /// Where the bar goes; nothing where it would stand on the caret's cell.
    [[nodiscard]] std::optional<QPoint> barPlace(const TableOnView& table) const;
    void showBar();
    void hideBar();

    EditorView& m_view;
    TableTools& m_tools;
    const CommandReceiver& m_commands;
    Look& m_look;
    NotificationCenter& m_notifications;
    TableHandles m_handles;
    // Made when a table is first worked on.
    TableBar* m_bar = nullptr;
    QToolButton* m_addRow = nullptr;
    QToolButton* m_addColumn = nullptr;
    QTimer m_barDelay;
    bool m_isScheduled = false;
    bool m_isTyping = false;
    QUuid m_table; // that of the caret
};

} // namespace orvane
