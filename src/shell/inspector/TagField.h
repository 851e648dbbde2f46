// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QLineEdit>

#include <functional>
#include <optional>

class QStringListModel;

namespace orvane {

/// Where a tag is typed: looks like an empty chip until it has the keyboard, and completes from
/// the tags that there are. Return or a comma adds what was typed.
class TagField : public QLineEdit {
    Q_OBJECT
public:
    explicit TagField(Look& look, QWidget* parent = nullptr);

    /// What there is to complete from: asked for each time something is typed, with the text.
    using Choices = std::function<QStringList(const QString& text)>;
    void setChoices(Choices choices) { m_choicesFor = std::move(choices); }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void tagEntered(const QString& tag);
    /// Backspace or Left at the front: back to the last chip.
    void leftAtFront();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeCompleter();
    void commit();

    Look& m_look;
    Choices m_choicesFor;
    QStringListModel* m_choices;
    /// What the width of the words was measured for.
    mutable std::optional<QFont> m_hintFont;
    mutable QString m_hintText;
    mutable int m_wordsWidth = 0;
};

} // namespace orvane
