// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/ParagraphStyle.h"

#include <QHash>
#include <QString>

#include <array>
#include <optional>

namespace orvane {

/// The lists that an RTF document defines, and how far each has been counted: markers of items
/// whose text the document leaves to its reader.
class RtfListCounter {
public:
    static constexpr int levelCount = 9;

    struct Level {
        ListMarker kind = ListMarker::decimal;
        bool isBullet = false;
        bool isUnmarked = false;
        int start = 1;
        /// What stands there; a character below 9 stands for the number of that level.
        QString text;
    };

    // The definitions, in the order of the document. What comes out of place is passed over.

    void beginList();
    void beginLevel();
    void beginOverride();
    void beginLevelOverride();
    /// The list that is being defined is number `id`, or the override is one of that list.
    void setListId(int id);
    /// The override is what items name as `number`.
    void setOverrideNumber(int number);
    void setStart(int start);
    /// The level that is being defined, or null.
    [[nodiscard]] Level* level();

    /// Counts an item of the list that paragraphs call `number`, and gives its marker; empty where
    /// the list is unknown or shows none.
    [[nodiscard]] QString nextMarker(int number, int level);

private:
    template <typename Value>
    using PerLevel = std::array<Value, levelCount>;
    struct List {
        PerLevel<Level> levels;
        int levelsDefined = 0;
        PerLevel<std::optional<int>> numbers; ///< of the items before
    };
    struct Override {
        int listId = 0;
        PerLevel<std::optional<int>> starts;
        PerLevel<std::optional<Level>> levels;
        int levelsDefined = 0;
        bool isUsed = false;
    };
    enum class Defined { nothing, list, override };

    Defined m_defined = Defined::nothing;
    List m_list;
    Override m_override;
    bool m_definesLevel = false;
    QHash<int, List> m_lists;         // by their ids
    QHash<int, Override> m_overrides; // by what items call them
};

} // namespace orvane
