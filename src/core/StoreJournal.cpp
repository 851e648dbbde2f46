// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/StoreJournal.h"

#include "core/PersistentStoreRecovery.h"
#include "core/StoreConnection.h"

#include <QFileInfo>

namespace orvane {

bool hasJournal(const QString& storePath)
{
    return QFileInfo(persistentStoreFiles(storePath).at(1)).size() > 0;
}

std::optional<StoreState> stateWithoutJournal(const QString& storePath)
{
    auto connection = StoreConnection::open(storePath, StoreConnection::Access::Immutable);
    if (!connection)
        return std::nullopt;
    const auto state = (*connection)->run([&] {
        // A fold that was cut short may leave a file shorter than its header says.
        (*connection)->database().exec("PRAGMA writable_schema = ON");
        return readStoreState((*connection)->database());
    });
    return state ? std::optional(*state) : std::nullopt;
}

bool journalFits(const StoreState& alone, const StoreState& together)
{
    const qint64 raised = together.generation - alone.generation;
    return alone.storeKey == together.storeKey && raised >= 0 && raised <= 2;
}

} // namespace orvane
