// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QToolButton>

#include <functional>

class QMenu;

namespace orvane {

/// A choice in the status strip: a word with an arrow behind it, whose menu opens upwards.
class StripMenuButton final : public QToolButton {
    Q_OBJECT
public:
    explicit StripMenuButton(QWidget* parent = nullptr);

    /// Shown on a click.
    [[nodiscard]] QMenu& choices() const { return *m_choices; }
    /// Makes the choices anew before each time that they are shown.
    void setFill(std::function<void(QMenu&)> fill) { m_fill = std::move(fill); }
    /// What stands in the strip, and what the choice is of, as "Mode of the note".
    void setChoice(const QString& what, const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QMenu* m_choices;
    std::function<void(QMenu&)> m_fill;
};

} // namespace orvane
