// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "commands/AppCommandEvents.h"
#include "platform/Services.h"

#include <QObject>

#include <vector>

namespace orvane {

class EditorTextHost;
class PageRuler;

/// The commands about the page of one text host: page view, ruler and page breaks; and its zoom, by
/// the wheel and by keys that work in all of its window. Main thread.
class PageTools final : public QObject {
    Q_OBJECT
public:
    /// All arguments outlive it. The ruler goes to the top of the host's parent, by Tab before
    /// `afterRuler`.
    PageTools(EditorTextHost& host, const Services& services, Look& look, QWidget& afterRuler);
    ~PageTools() override;

    /// The zooms that are offered, as shares of a pixel for a point, smallest first.
    [[nodiscard]] QList<double> zoomChoices() const;
    void setZoom(double zoom);

private:
    void observe(const Notification<CommandTarget>& command, void (PageTools::*act)());
    void togglePageView();
    void toggleRuler();
    void breakPage();
    void zoomBy(qreal steps);
    void zoomIn();
    void zoomOut();
    void resetZoom();
    void makeZoomKeys();
    void showRuler();

    EditorTextHost& m_host;
    Services m_services;
    Look& m_look;
    PageRuler* m_ruler;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
