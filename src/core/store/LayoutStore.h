// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/BinderLayout.h"
#include "core/store/LayoutParts.h"

#include <QHash>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace SQLite {
class Database;
}

namespace orvane {

/// The Binder layout as rows of "OrvaneNotebookMeta": the row "main" with what is expanded, and
/// for each order one row or several, "folders/<parent or top>/<number>" and
/// "notes/<container>/<number>". A changed order rewrites the one part that changed. Rows that are
/// missing or unreadable make the layout poorer and are no damage: the order is made whole again
/// from the records.
class LayoutStore {
public:
    LayoutStore();
    LayoutStore(LayoutStore&&) noexcept;
    LayoutStore& operator=(LayoutStore&&) noexcept;
    ~LayoutStore();

    /// Throws SQLite::Exception, as does `write`.
    void read(SQLite::Database& database, qint64 storeKey);

    /// What is stored; nothing without a readable row "main".
    [[nodiscard]] const std::optional<BinderLayoutSnapshot>& layout() const { return m_layout; }

    /// Writes what differs from what is stored. Call it inside a transaction, and `commit` or
    /// `rollBack` when that has ended.
    void write(SQLite::Database& database, qint64 storeKey,
               const std::optional<BinderLayoutSnapshot>& layout);
    void commit();
    void rollBack();
    /// Lets go of the database, before its connection is closed or exchanged for another.
    void detach();

private:
    struct Order {
        QList<QUuid> ids;
        std::vector<LayoutPart> parts;
    };
    struct Change {
        QString name;
        std::optional<Order> order;
    };
    class Rows;

    template <typename Entry>
    void writeOrders(const QList<Entry>& stored, const QList<Entry>& wanted);
    void writeOrder(const QString& name, const QList<QUuid>& ids);
    void removeOrder(const QString& name);

    std::optional<BinderLayoutSnapshot> m_layout;
    /// By the name of their rows without the number.
    QHash<QString, Order> m_orders;
    qint64 m_mainRow = 0;
    /// Rows that stand in the table and mean nothing; removed with the next change.
    std::vector<qint64> m_strayRows;

    /// What the running transaction changes.
    struct Next {
        std::optional<BinderLayoutSnapshot> layout;
        std::vector<Change> orders;
        qint64 mainRow = 0;
        bool strayRowsGone = false;
    };
    std::optional<Next> m_next;
    std::unique_ptr<Rows> m_rows;
};

} // namespace orvane
