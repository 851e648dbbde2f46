// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <typeindex>
#include <vector>

namespace orvane {

/// Names one kind of notification and the type of what it carries. Descriptors are constants;
/// two with one name are one notification, and must carry one type.
template <typename Payload>
struct Notification {
    const char* name;
};

/// The payload of a notification that carries nothing.
struct NoPayload {
    bool operator==(const NoPayload&) const = default;
};

/// Hands notifications from those who post to those who observe, without either knowing the
/// other. Posting calls the observers at once, in the order in which they began to observe; an
/// observer that begins during a post is first called at the next. Main thread.
class NotificationCenter {
    struct Observer;

public:
    /// Keeps an observer alive: destroying it ends the observing, also in the middle of a post.
    class Observation {
    public:
        Observation() = default;
        [[nodiscard]] bool isActive() const { return m_observer != nullptr; }

    private:
        friend class NotificationCenter;
        explicit Observation(std::shared_ptr<Observer> observer)
            : m_observer(std::move(observer))
        {}
        std::shared_ptr<Observer> m_observer;
    };

    template <typename Payload, typename Action>
    [[nodiscard]] Observation observe(const Notification<Payload>& notification, Action action)
    {
        return add(notification.name, typeid(Payload),
                   [action = std::move(action)](const void* payload) mutable {
                       action(*static_cast<const Payload*>(payload));
                   });
    }

    template <typename Payload>
    void post(const Notification<Payload>& notification, const Payload& payload)
    {
        deliver(notification.name, typeid(Payload), &payload);
    }
    void post(const Notification<NoPayload>& notification) { post(notification, NoPayload{}); }

    /// Whether anybody observes it now, by which a menu tells whether a command would act.
    template <typename Payload>
    [[nodiscard]] bool isObserved(const Notification<Payload>& notification) const
    {
        return countObservers(notification.name) > 0;
    }

private:
    struct Observer {
        std::function<void(const void*)> call;
        quint64 sincePost = 0;
    };

    Observation add(const char* name, std::type_index type, std::function<void(const void*)> call);
    void deliver(const char* name, std::type_index type, const void* payload);
    [[nodiscard]] int countObservers(const char* name) const;

    struct Channel {
        std::type_index type = typeid(void);
        std::vector<std::weak_ptr<Observer>> observers;
    };
    QHash<QLatin1String, Channel> m_channels;
    quint64 m_posts = 0;
};

} // namespace orvane
