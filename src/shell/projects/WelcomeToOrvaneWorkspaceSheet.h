// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "shell/sheets/SheetHost.h"

namespace orvane {

/// What a person sees at the first launch: three points, and the two ways to a first project.
class WelcomeToOrvaneWorkspaceSheet : public Sheet {
    Q_OBJECT
public:
    /// Someone who has projects already is greeted with fewer words.
    enum class Visitor { New, HasProjects };

    WelcomeToOrvaneWorkspaceSheet(Visitor visitor, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

    using Sheet::close;

signals:
    void starterChosen();
    void blankChosen();
    void guideRequested();

private:
    [[nodiscard]] QWidget* makePoint(Symbol symbol, const QString& title, const QString& text);

    QWidget* m_starter = nullptr;
};

/// A page of help: how the program is laid out, how saving works, and the keys.
class GuideSheet : public Sheet {
    Q_OBJECT
public:
    /// `libraryPath` is where the projects lie.
    GuideSheet(const QString& libraryPath, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

private:
    QWidget* m_done = nullptr;
};

} // namespace orvane
