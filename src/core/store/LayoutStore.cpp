// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/LayoutStore.h"

#include "core/records/RecordJson.h"
#include "core/store/ColumnText.h"
#include "core/store/StoreStatement.h"

#include <QSet>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(const BinderFolderOrderEntry& entry)
{
    return u"folders/"_s + (entry.parentFolderID ? uuidText(*entry.parentFolderID) : u"top"_s);
}

QString nameOf(const BinderNoteOrderEntry& entry)
{
    return u"notes/"_s + uuidText(entry.folderID);
}

bool sameContainer(const BinderFolderOrderEntry& a, const BinderFolderOrderEntry& b)
{
    return a.parentFolderID == b.parentFolderID;
}

bool sameContainer(const BinderNoteOrderEntry& a, const BinderNoteOrderEntry& b)
{
    return a.folderID == b.folderID;
}

const QList<QUuid>& idsOf(const BinderFolderOrderEntry& entry)
{
    return entry.childFolderIDs;
}

const QList<QUuid>& idsOf(const BinderNoteOrderEntry& entry)
{
    return entry.noteIDs;
}

bool isFolderOrder(QStringView name)
{
    return name.startsWith("folders/"_L1);
}

// The order's container; the outer optional is empty for a name that is none of ours.
std::optional<std::optional<QUuid>> containerOf(QStringView name)
{
    const bool folders = isFolderOrder(name);
    if (!folders && !name.startsWith("notes/"_L1))
        return std::nullopt;
    const QStringView container = name.mid(name.indexOf(u'/') + 1);
    if (folders && container == "top"_L1)
        return std::optional<QUuid>();
    const auto id = uuidFromText(container);
    return id ? std::optional(id) : std::nullopt;
}

struct StoredPart {
    LayoutPart part;
    QList<QUuid> ids;
};

// All rows of the table that can be read, by what they are.
struct StoredLayoutRows {
    qint64 mainRow = 0;
    std::optional<BinderLayoutSnapshot> main;
    QHash<QString, std::vector<StoredPart>> orders;
    /// In the order in which they stand.
    QStringList names;
    std::vector<qint64> strays;

    void take(qint64 row, const QString& id, QByteArrayView json, bool sound);
};

void StoredLayoutRows::take(qint64 row, const QString& id, QByteArrayView json, bool sound)
{
    if (id == "main"_L1 && mainRow == 0) {
        mainRow = row;
        const auto value = parseJson(json.toByteArray());
        auto layout =
            sound && value ? fromJson<BinderLayoutSnapshot>(*value) : std::unexpected(JsonError());
        if (layout)
            main = *std::move(layout);
        return;
    }
    const qsizetype slash = id.lastIndexOf(u'/');
    const QString name = id.left(std::max<qsizetype>(slash, 0));
    bool isNumber = false;
    const qint64 number = QStringView(id).mid(slash + 1).toLongLong(&isNumber);
    const auto container = containerOf(name);
    auto ids = sound && isNumber && container
                   ? layoutPartFromStore(json, isFolderOrder(name), *container)
                   : std::nullopt;
    if (!ids) {
        qWarning("The stored order %ls can't be read and is made anew", qUtf16Printable(id));
        strays.push_back(row);
        return;
    }
    auto& parts = orders[name];
    if (parts.empty())
        names.append(name);
    parts.push_back({{row, number, ids->size()}, *std::move(ids)});
}

} // namespace

class LayoutStore::Rows {
public:
    Rows(SQLite::Database& database, qint64 storeKey)
        : m_database(database)
        , m_storeKey(storeKey)
        , m_insert(
              database,
              "INSERT INTO OrvaneNotebookMeta (id, binderLayoutJSON, checksum) VALUES (?, ?, ?)")
        , m_update(database, "UPDATE OrvaneNotebookMeta SET id = ?, binderLayoutJSON = ?, "
                             "checksum = ? WHERE row = ?")
        , m_remove(database, "DELETE FROM OrvaneNotebookMeta WHERE row = ?")
    {}

    // Overwrites `row`, or makes a new one for 0; returns its number.
    qint64 write(qint64 row, const QString& id, const std::optional<QByteArray>& json)
    {
        const QByteArray idText = id.toUtf8();
        StoreStatement& statement = row != 0 ? m_update : m_insert;
        RowBinder values(statement, m_storeKey, 1);
        values.text(idText);
        if (json)
            values.bytes(*json);
        else
            values.null();
        values.checksum();
        if (row != 0)
            statement.bindInteger(values.nextParameter(), row);
        statement.run();
        return row != 0 ? row : m_database.getLastInsertRowid();
    }
    void remove(qint64 row)
    {
        m_remove.bindInteger(1, row);
        m_remove.run();
    }

private:
    SQLite::Database& m_database;
    qint64 m_storeKey;
    StoreStatement m_insert;
    StoreStatement m_update;
    StoreStatement m_remove;
};

LayoutStore::LayoutStore() = default;
LayoutStore::LayoutStore(LayoutStore&&) noexcept = default;
LayoutStore& LayoutStore::operator=(LayoutStore&&) noexcept = default;
LayoutStore::~LayoutStore() = default;

void LayoutStore::read(SQLite::Database& database, qint64 storeKey)
{
    StoreStatement statement(
        database,
        "SELECT row, id, binderLayoutJSON, checksum FROM OrvaneNotebookMeta ORDER BY row");
    StoredLayoutRows rows;
    while (statement.step()) {
        const StoreValue id = statement.value(1);
        const StoreValue json = statement.value(2);
        const StoreValue checksum = statement.value(3);
        StoreChecksum sum(storeKey);
        id.addTo(sum);
        json.addTo(sum);
        rows.take(statement.value(0).integer(), QString::fromUtf8(id.bytes()), json.bytes(),
                  checksum.isNull() || sum.value() == checksum.integer());
    }
    m_mainRow = rows.mainRow;
    m_strayRows = std::move(rows.strays);
    m_layout = std::move(rows.main);
    m_orders.clear();
    if (m_layout) {
        m_layout->folderOrderEntries.clear();
        m_layout->noteOrderEntries.clear();
    }
    for (const QString& name : std::as_const(rows.names)) {
        std::vector<StoredPart>& parts = rows.orders[name];
        std::sort(parts.begin(), parts.end(),
                  [](const auto& a, const auto& b) { return a.part.number < b.part.number; });
        Order order;
        for (const StoredPart& part : parts) {
            order.ids += part.ids;
            order.parts.push_back(part.part);
        }
        if (!m_layout) {
            for (const LayoutPart& part : order.parts)
                m_strayRows.push_back(part.row);
            continue;
        }
        const auto container = *containerOf(name);
        if (isFolderOrder(name))
            m_layout->folderOrderEntries.append({container, order.ids});
        else
            m_layout->noteOrderEntries.append({container.value_or(QUuid()), order.ids});
        m_orders.insert(name, order);
    }
}

void LayoutStore::write(SQLite::Database& database, qint64 storeKey,
                        const std::optional<BinderLayoutSnapshot>& layout)
{
    if (!m_rows)
        m_rows = std::make_unique<Rows>(database, storeKey);
    m_next = Next{layout, {}, m_mainRow, false};
    const BinderLayoutSnapshot none;
    const BinderLayoutSnapshot& stored = m_layout ? *m_layout : none;
    const BinderLayoutSnapshot& wanted = layout ? *layout : none;

    const bool mainDiffers = m_layout.has_value() != layout.has_value() || m_mainRow == 0 ||
                             stored.expandedFolderIDs != wanted.expandedFolderIDs;
    if (mainDiffers) {
        std::optional<QByteArray> json;
        if (layout)
            json = encodeJson(toJson(BinderLayoutSnapshot{{}, {}, wanted.expandedFolderIDs}));
        m_next->mainRow = m_rows->write(m_mainRow, u"main"_s, json);
    }
    writeOrders(stored.folderOrderEntries, wanted.folderOrderEntries);
    writeOrders(stored.noteOrderEntries, wanted.noteOrderEntries);
    if (mainDiffers || !m_next->orders.empty()) {
        for (const qint64 row : m_strayRows)
            m_rows->remove(row);
        m_next->strayRowsGone = true;
    }
}

template <typename Entry>
void LayoutStore::writeOrders(const QList<Entry>& stored, const QList<Entry>& wanted)
{
    bool sameContainers = stored.size() == wanted.size();
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        const Entry& entry = wanted.at(i);
        const bool samePlace = i < stored.size() && sameContainer(stored.at(i), entry);
        sameContainers = sameContainers && samePlace;
        // Lists that share their memory are told to be equal without a look inside.
        if (!samePlace || idsOf(stored.at(i)) != idsOf(entry))
            writeOrder(nameOf(entry), idsOf(entry));
    }
    if (sameContainers)
        return;
    QSet<QString> names;
    for (const Entry& entry : wanted)
        names.insert(nameOf(entry));
    for (const Entry& entry : stored) {
        if (const QString name = nameOf(entry); !names.contains(name))
            removeOrder(name);
    }
}

void LayoutStore::writeOrder(const QString& name, const QList<QUuid>& ids)
{
    const auto stored = m_orders.constFind(name);
    if (stored != m_orders.cend() && stored->ids == ids)
        return;
    static const Order none;
    const Order& before = stored != m_orders.cend() ? *stored : none;
    LayoutPartsPlan plan = planLayoutParts(before.ids, before.parts, ids);
    for (const qint64 row : plan.removedRows)
        m_rows->remove(row);
    const std::optional<QUuid> container = containerOf(name).value_or(std::nullopt);
    for (const LayoutPartsPlan::Write& write : plan.writes) {
        LayoutPart& part = plan.parts[write.part];
        const QString id = name + u'/' + QString::number(part.number);
        part.row = m_rows->write(write.row, id,
                                 layoutPartToStore(write.ids, isFolderOrder(name), container));
    }
    m_next->orders.push_back({name, Order{ids, std::move(plan.parts)}});
}

void LayoutStore::removeOrder(const QString& name)
{
    for (const LayoutPart& part : m_orders.value(name).parts)
        m_rows->remove(part.row);
    m_next->orders.push_back({name, std::nullopt});
}

void LayoutStore::commit()
{
    if (!m_next)
        return;
    m_layout = std::move(m_next->layout);
    m_mainRow = m_next->mainRow;
    for (Change& change : m_next->orders) {
        if (change.order)
            m_orders.insert(change.name, *std::move(change.order));
        else
            m_orders.remove(change.name);
    }
    if (m_next->strayRowsGone)
        m_strayRows.clear();
    m_next.reset();
}

void LayoutStore::rollBack()
{
    m_next.reset();
}

void LayoutStore::detach()
{
    m_rows.reset();
}

} // namespace orvane
