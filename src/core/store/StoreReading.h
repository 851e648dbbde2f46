// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/store/StoreError.h"
#include "platform/Sendable.h"

#include <functional>
#include <memory>
#include <stop_token>

namespace orvane {

class StoreConnection;

/// One note as it is stored, without its body and its rich bytes.
struct StoredNote {
    QUuid id;
    QUuid folderID;
    QString title;
    QStringList tags;
    Timestamp createdAt;
    Timestamp updatedAt;
    /// In bytes of UTF-8.
    qsizetype bodySize = 0;
};
template <>
inline constexpr bool isSendable<StoredNote> = true;
template <>
inline constexpr bool isSendable<StoreError> = true;

/// An open store, for a thread beside the main one: a connection of its own, which can't write.
/// Each call sees what was last committed when it began, as a whole, whatever is saved meanwhile.
/// What it gives belongs to the caller. Used by one thread at a time.
class StoreReading {
public:
    template <typename T>
    using Result = std::expected<T, StoreError>;

    /// The store at this path, which is open in this process. What is under way ends with an error
    /// once `stop` is asked for.
    [[nodiscard]] static Result<StoreReading> open(const QString& storePath, std::stop_token stop);
    ~StoreReading();
    StoreReading(StoreReading&&) noexcept;
    StoreReading& operator=(StoreReading&&) noexcept;

    enum class Next { GoOn, Stop };

    /// Every note whose row is whole, in no order.
    [[nodiscard]] Result<QList<StoredNote>> notes();
    /// Calls `visit` with the id and the text in UTF-8 of every note that has one, as long as it
    /// says to go on. The text is valid during the call. One that is damaged is passed over, and
    /// counted in the result.
    Result<int> forEachBody(const std::function<Next(const QUuid& id, QByteArrayView utf8)>& visit);
    /// The bytes of the image with this hash, verified; an error where they are missing or damaged.
    [[nodiscard]] Result<QByteArray> image(const QByteArray& hash);
    /// The first bytes, at most `size`, of the texts of these notes, by the number of their rows.
    /// They are for showing alone: nothing tells whether they are damaged.
    [[nodiscard]] Result<QHash<qint64, QByteArray>> beginnings(const QList<qint64>& rows,
                                                               qsizetype size);

private:
    StoreReading(std::unique_ptr<StoreConnection> connection, std::stop_token stop);
    template <typename Look>
    auto look(Look&& look) -> Result<std::invoke_result_t<Look>>;

    std::unique_ptr<std::stop_token> m_stop; ///< at a place that stays, for SQLite
    std::unique_ptr<StoreConnection> m_connection;
};

} // namespace orvane
