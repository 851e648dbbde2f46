// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QAbstractButton>
#include <QUuid>

class QLineEdit;

namespace orvane {

class Look;

/// One pair of themes in the studio: swatches of its Light and Dark variant, its name, and a
/// button for what else can be done with it. Checked, it is the one that the studio works on.
class ThemeCard : public QAbstractButton {
    Q_OBJECT
public:
    ThemeCard(const QUuid& id, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] const QUuid& themeID() const { return m_id; }
    void showTheme(const QString& name, const Tokens& light, const Tokens& dark, bool active);
    /// Puts a field in the name's place. Return and leaving the field take the name, Escape keeps
    /// the old one.
    void editName();

    [[nodiscard]] QSize sizeHint() const override { return {256, 126}; }

signals:
    void menuWanted(const QPoint& globalPosition);
    void renamed(const QString& name);
    void applyWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QRect nameRect() const;
    enum class NewName { taken, dropped };
    void endNaming(NewName name);

    QUuid m_id;
    Look& m_look;
    Tokens m_light;
    Tokens m_dark;
    bool m_active = false;
    QAbstractButton* m_more;
    QLineEdit* m_nameField = nullptr;
};

/// The card behind the last: saves the look as it is now.
class SaveLookCard : public QAbstractButton {
    Q_OBJECT
public:
    explicit SaveLookCard(Look& look, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override { return {256, 126}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look& m_look;
};

} // namespace orvane
