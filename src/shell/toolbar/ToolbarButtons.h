// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QToolButton>

namespace orvane {

/// Shows the open project's title, cut where there is no room, and opens a menu.
class ProjectSwitcher : public QToolButton {
    Q_OBJECT
public:
    ProjectSwitcher(QMenu& menu, QWidget* parent = nullptr);

    void setTitle(const QString& title);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_title;
};

/// Looks like a field that says what can be found, and with which key.
class FinderButton : public QAbstractButton {
    Q_OBJECT
public:
    FinderButton(Look& look, QWidget* parent = nullptr);

    void setKeyText(const QString& key);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look& m_look;
    QString m_key;
};

} // namespace orvane
