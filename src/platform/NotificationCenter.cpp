// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/NotificationCenter.h"

namespace orvane {

NotificationCenter::Observation NotificationCenter::add(const char* name, std::type_index type,
                                                        std::function<void(const void*)> call)
{
    Channel& channel = m_channels[QLatin1String(name)];
    Q_ASSERT(channel.type == typeid(void) || channel.type == type);
    channel.type = type;
    std::erase_if(channel.observers, [](const auto& observer) { return observer.expired(); });
    auto observer = std::make_shared<Observer>(Observer{std::move(call), m_posts});
    channel.observers.push_back(observer);
    return Observation(std::move(observer));
}

void NotificationCenter::deliver(const char* name, std::type_index type, const void* payload)
{
    const auto channel = m_channels.constFind(QLatin1String(name));
    if (channel == m_channels.cend())
        return;
    Q_ASSERT(channel->type == type);
    if (channel->type != type)
        return;
    const quint64 serial = ++m_posts;
    const auto observers = channel->observers; // observers may come and go while they are called
    for (const auto& weak : observers) {
        const auto observer = weak.lock();
        if (observer && observer->sincePost < serial)
            observer->call(payload);
    }
}

int NotificationCenter::countObservers(const char* name) const
{
    const auto channel = m_channels.constFind(QLatin1String(name));
    if (channel == m_channels.cend())
        return 0;
    return int(std::count_if(channel->observers.begin(), channel->observers.end(),
                             [](const auto& observer) { return !observer.expired(); }));
}

} // namespace orvane
