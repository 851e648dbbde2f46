// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/sheets/SheetHost.h"

class QAbstractItemModel;
class QHBoxLayout;
class QLineEdit;
class QListView;
class QModelIndex;
class QPushButton;

namespace orvane {

/// A list that is searched by some letters of what stands in it. The keyboard stays in the field:
/// Up and Down walk the list, Return chooses the marked row, as a click does.
class SearchListSheet : public Sheet {
    Q_OBJECT
public:
    struct Words {
        QString title;
        QString placeholder;
    };

    /// A sheet in the middle of the window, or a small one beside what it is about.
    enum class Form { Sheet, Popover };

    /// The model lives as long as this.
    SearchListSheet(const Words& words, QAbstractItemModel& model, Form form, Look& look,
                    QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] Placement placement() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Fills the model with what fits the text.
    virtual void search(const QString& text) = 0;
    virtual void choose(const QModelIndex& index) = 0;
    /// A click chooses a row, unless that would be too much for a click.
    virtual void clicked(const QModelIndex& index) { choose(index); }
    /// The row to be marked after a search.
    [[nodiscard]] virtual QModelIndex best() const;
    /// Searches for what stands in the field, and marks the first row.
    void refresh();
    [[nodiscard]] QModelIndex marked() const;
    void mark(const QModelIndex& index);
    [[nodiscard]] QListView& list() const { return *m_list; }
    /// Buttons go to the end of the row at the foot of the sheet.
    [[nodiscard]] QPushButton* addButton(const QString& text);
    [[nodiscard]] QHBoxLayout& buttons() const { return *m_buttons; }

private:
    [[nodiscard]] QLayout* makeHead(const QString& title);

    Form m_form;
    QLineEdit* m_field;
    QListView* m_list;
    QHBoxLayout* m_buttons;
};

} // namespace orvane
