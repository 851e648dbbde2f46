// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/notebook/Notebook.h"
#include "core/store/StoreWorker.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// How many notes and words the open project has outside its Trash. The words of each note are
/// counted once for each date of its last change; what is too much for one go is counted on a
/// thread of its own. Main thread.
class ProjectFigures {
public:
    /// The open store. `counted` is called when a count is through that was too much for `of`.
    ProjectFigures(QString storePath, std::function<void()> counted);
    ~ProjectFigures();

    struct Figures {
        int notes = 0;
        /// Nothing while that means to count more bytes of text than were allowed.
        std::optional<int> words;
    };
    /// Where more than `bytesAtOnce` bytes are to be counted a count begins, unless one is under
    /// way.
    [[nodiscard]] Figures of(const Notebook& notebook, qsizetype bytesAtOnce);

private:
    struct Counted {
        Timestamp updatedAt;
        int words = 0;
    };
    using Words = QHash<QUuid, int>;

    void countAside(const Notebook& notebook, const QList<Shared<NoteRecord>>& notes);
    void take(const StoreReading::Result<Words>& words, const QHash<QUuid, Timestamp>& dates);

    QString m_storePath;
    std::function<void()> m_tellCounted;
    QHash<QUuid, Counted> m_counted;
    bool m_isCounting = false;
    std::unique_ptr<StoreWorker> m_worker;
};

} // namespace orvane
