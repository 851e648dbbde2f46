// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceObserver.h"

#include "appearance/AppearanceTokens.h"
#include "appearance/Look.h"
#include "appearance/themes/AppearanceFields.h"
#include "platform/UserDefaults.h"

#include <QTimer>

namespace orvane {

AppearanceObserver::AppearanceObserver(const UserDefaults& defaults, Look& look, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_look(look)
    , m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &AppearanceObserver::update);
    const QString prefix = appearanceKeyPrefix();
    connect(&defaults, &UserDefaults::changed, this, [this, prefix](const QString& key) {
        if (key.startsWith(prefix) && !m_timer->isActive())
            m_timer->start();
    });
    update();
}

void AppearanceObserver::update()
{
    m_timer->stop();
    m_look.setTokens(tokensFor(readAppearance(m_defaults)));
}

} // namespace orvane
