// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Icons.h"
#include "commands/TableCommands.h"
#include "text/value/ParagraphStyle.h"

#include <QWidget>

#include <functional>

class QHBoxLayout;
class QToolButton;

namespace orvane {

class Look;
class NotificationCenter;

/// The commands of the table in which the caret is, in a card that floats beside it. It posts
/// commands and touches no text.
///
/// A click leaves the keyboard where it is. With the keyboard in it, arrow keys, Home and End go
/// about in it and Escape goes back to the text.
class TableBar final : public QWidget {
    Q_OBJECT
public:
    /// Both outlive it.
    TableBar(NotificationCenter& notifications, Look& look, QWidget* parent);

    /// The note that the commands are for.
    void setNote(const std::optional<QUuid>& note) { m_note = note; }
    void setAlignment(TextAlignment alignment);
    /// Leaves words out where the card would be wider than `pixels`. False where it is even so.
    [[nodiscard]] bool fitInto(int pixels);
    [[nodiscard]] QSize sizeHint() const override;
    /// Shows it at a place of the parent, with its shadow round it.
    void showAt(QPoint topLeft);
    void takeKeyboard();

signals:
    /// The keyboard is to go back to the text.
    void left();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class WordButton;

    QToolButton* addButton(Symbol symbol, const QString& name, std::function<void()> act);
    void addCommand(Symbol symbol, const QString& name, const Notification<CommandTarget>& command);
    void addFill(Symbol symbol, const QString& name, TableFill fill);
    void addSeparator();
    void take(QToolButton* button);
    void openAlignments();
    void goTo(QToolButton* button);

    NotificationCenter& m_notifications;
    Look& m_look;
    std::optional<QUuid> m_note;
    QWidget* m_shadow; // beside it, the parent's
    QHBoxLayout* m_row;
    QToolButton* m_alignment = nullptr;
    TextAlignment m_shownAlignment = TextAlignment::natural;
    QList<WordButton*> m_words;
    QList<QToolButton*> m_buttons;
};

} // namespace orvane
