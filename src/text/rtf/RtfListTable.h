// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/ListItems.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <optional>

namespace orvane {

/// The lists of an RTF document that is being written: which paragraph belongs to which, so that
/// other programs count them as the text does.
class RtfListTable {
public:
    static constexpr int levelCount = 9;

    struct Item {
        ListItem item;
        int list = 0; ///< the number behind `\ls`
        int level = 0;
    };

    explicit RtfListTable(const AttributedString& text);

    /// The item that begins at `paragraphStart`, or null. Asked in the order of the text.
    [[nodiscard]] const Item* itemAt(qsizetype paragraphStart);

    /// Whether an item begins within `paragraph`, before whose items all others have been asked
    /// for.
    [[nodiscard]] bool hasItemsIn(TextRange paragraph);

    /// The list table and the table of overrides; nothing where there are no lists.
    void appendTables(QByteArray& rtf) const;

private:
    struct Level {
        EditorListStyle style = EditorListStyle::disc;
        QString bullet;
        int start = 1;
        int next = 1;
    };
    using Levels = std::array<std::optional<Level>, levelCount>;

    void skipTo(qsizetype position);
    [[nodiscard]] static bool fits(const Levels& levels, int level, const ListItem& item,
                                   QStringView bullet);
    static void count(Levels& levels, int level, const ListItem& item, QStringView bullet);
    [[nodiscard]] int listNumber(const Levels& levels);
    [[nodiscard]] static QByteArray levelWords(const std::optional<Level>& level, int index);

    QList<Item> m_items;
    qsizetype m_next = 0;
    QHash<QByteArray, int> m_lists; // the words of the levels, and the list's id
    QHash<int, int> m_bulletLists;  // `\ls` of a list without numbers, by its id
    QByteArray m_listTable;
    QByteArray m_overrides;
    int m_listNumber = 0;
};

} // namespace orvane
