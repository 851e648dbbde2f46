// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/lists/ListItems.h"

#include <QByteArray>

#include <vector>

namespace orvane {

/// Writes lists as nested HTML lists: opens and closes them round the items that come one after the
/// other.
class HtmlListWriter {
public:
    explicit HtmlListWriter(QByteArray& html)
        : m_html(html)
    {}

    /// Begins an item with the marker `marker`; its contents are to follow. `css` are the
    /// declarations of its paragraph.
    void beginItem(const ListItem& item, QStringView marker, const QByteArray& css);
    /// Ends all lists: what comes is no item.
    void end();

private:
    struct List {
        EditorListStyle style = EditorListStyle::disc;
        QString bullet;
        int next = 1;
        bool hasItem = false;
    };

    void open(const ListItem& item, QStringView bullet);
    void close();

    QByteArray& m_html;
    std::vector<List> m_lists;
};

} // namespace orvane
