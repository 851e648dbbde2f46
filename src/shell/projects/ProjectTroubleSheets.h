// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

#include <QPointer>
#include <QSet>

namespace orvane {

/// Tells a person, beside the work, that the open project's folder is gone or that its store was
/// replaced, carries out what they choose, and offers words that were rescued in an earlier run.
class ProjectTroubleSheets : public QObject {
    Q_OBJECT
public:
    ProjectTroubleSheets(AppState& appState, Look& look, SheetHost& sheets,
                         QObject* parent = nullptr);
    ~ProjectTroubleSheets() override;

private:
    void showTrouble();
    void askAgain();
    void update();
    void scheduleUpdate();
    void showBoth();
    [[nodiscard]] Question question() const;
    void answered(ProjectTrouble::Kind kind, const Answer& answer);
    void decide(int button);
    void saveCopy();
    void offerRescues();
    void tell(const QString& title, const QString& text);

    AppState& m_appState;
    Look& m_look;
    SheetHost& m_sheets;
    NotificationCenter::Observation m_saveWanted;
    std::unique_ptr<ShownQuestion> m_shown;
    std::optional<ProjectTrouble::Kind> m_shownKind;
    std::unique_ptr<Clock::Delay> m_nextUpdate;
    QPointer<Sheet> m_both;
    /// Rescue files that were answered with "Later" in this run.
    QSet<QString> m_postponed;
    bool m_isOffering = false;
};

} // namespace orvane
