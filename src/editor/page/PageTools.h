// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/AppCommandEvents.h"
#include "platform/Services.h"

#include <QObject>

#include <vector>

namespace orvane {

class EditorTextHost;

/// The commands about the page of one text host: page view, ruler and page breaks. Main thread.
class PageTools final : public QObject {
    Q_OBJECT
public:
    /// All arguments outlive it.
    PageTools(EditorTextHost& host, const Services& services, Look& look);

private:
    void observe(const Notification<CommandTarget>& command, void (PageTools::*act)());
    void togglePageView();
    void toggleRuler();
    void breakPage();

    EditorTextHost& m_host;
    Services m_services;
    Look& m_look;
    std::vector<NotificationCenter::Observation> m_observations;
};

} // namespace orvane
