// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Timestamp.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QUuid>

#include <expected>
#include <optional>
#include <tuple>
#include <type_traits>

namespace orvane {

/// Whether values of this type may be handed to another thread: a copy shares nothing that somebody
/// else changes. Said type by type, so that a record with its unread bytes, a reference or a
/// pointer doesn't go along by mistake.
template <typename T>
inline constexpr bool isSendable = std::is_arithmetic_v<T> || std::is_enum_v<T>;

template <>
inline constexpr bool isSendable<void> = true;
template <>
inline constexpr bool isSendable<QString> = true;
template <>
inline constexpr bool isSendable<QByteArray> = true;
template <>
inline constexpr bool isSendable<QUuid> = true;
template <>
inline constexpr bool isSendable<Timestamp> = true;
template <typename T>
inline constexpr bool isSendable<QList<T>> = isSendable<T>;
template <typename T>
inline constexpr bool isSendable<QSet<T>> = isSendable<T>;
template <typename K, typename V>
inline constexpr bool isSendable<QHash<K, V>> = isSendable<K>&& isSendable<V>;
template <typename T>
inline constexpr bool isSendable<std::optional<T>> = isSendable<T>;
template <typename T, typename E>
inline constexpr bool isSendable<std::expected<T, E>> = isSendable<T>&& isSendable<E>;
template <typename... T>
inline constexpr bool isSendable<std::tuple<T...>> = (isSendable<T> && ...);

} // namespace orvane
