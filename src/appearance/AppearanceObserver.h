// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QObject>

class QTimer;

namespace orvane {

class Look;
class UserDefaults;

/// Keeps the look that everybody wears at what the keys under `settings.appearance.` say. However
/// many keys change in one turn of the event loop, new tokens are made once, before the next
/// frame is painted.
class AppearanceObserver : public QObject {
    Q_OBJECT
public:
    /// Gives `look` the tokens of the present keys at once.
    AppearanceObserver(const UserDefaults& defaults, Look& look, QObject* parent = nullptr);

    /// Brings the look up to date now, where a change can't wait for the event loop.
    void update();

private:
    const UserDefaults& m_defaults;
    Look& m_look;
    QTimer* m_timer;
};

} // namespace orvane
