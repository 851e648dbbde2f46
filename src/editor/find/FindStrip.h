// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "editor/find/TextSearch.h"

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace orvane {

class FindSession;

/// The strip in which a person finds and replaces, below the text: a line for the query with the
/// count of matches, and one for the replacement that is there on demand. Hidden at first. While it
/// is hidden no match is marked, but its fields keep what they hold.
class FindStrip : public SurfacePanel {
    Q_OBJECT
public:
    enum class Controls { find, findAndReplace };

    /// `session` outlives it.
    FindStrip(FindSession& session, Look& look, QWidget* parent = nullptr);

    /// Shows the strip with the keyboard in the query, all of it selected. A `suggestion` takes the
    /// query's place unless it is empty.
    void open(Controls controls, const QString& suggestion = {});
    /// Hides the strip and tells `dismissed`.
    void dismiss();
    /// For another note: hidden, without replacement, both fields empty. `dismissed` is told only
    /// where the keyboard was in the strip.
    void reset();
    /// Whether the text may be changed; else only finding is offered.
    void setEditable(bool editable);

    [[nodiscard]] bool hasKeyboard() const;
    [[nodiscard]] bool showsReplacement() const { return m_showsReplacement; }
    void find(FindDirection direction);

signals:
    /// The keyboard is to go back to the text.
    void dismissed();
    /// Undo or redo was asked for in a field that has nothing of the kind: the text has.
    void undoRequested();
    void redoRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QLineEdit* makeField(const QString& name);
    [[nodiscard]] QToolButton* makeButton(Symbol symbol, const QString& name, const QString& keys);
    void fillFindRow(QGridLayout& grid);
    void fillReplaceRow(QGridLayout& grid);
    void showReplacement(bool shows);
    void searchAsTyped();
    void replace();
    void replaceAll();
    void showCount();
    void showInCount(const QString& text);
    void forgetTyping();

    FindSession& m_session;
    QLineEdit* m_query;
    QLineEdit* m_replacement;
    QLabel* m_count;
    QToolButton* m_previous = nullptr;
    QToolButton* m_next = nullptr;
    QToolButton* m_replaceToggle = nullptr;
    QPushButton* m_replace = nullptr;
    QPushButton* m_replaceAll = nullptr;
    bool m_showsReplacement = false;
    bool m_isEditable = true;
};

} // namespace orvane
