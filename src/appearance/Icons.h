// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

#include <optional>

namespace orvane {

/// The pictures of the interface by meaning; which drawing of the icon theme stands for each is
/// told in one table.
enum class Symbol {
    AlignCenter,
    AlignJustified,
    AlignLeft,
    AlignRight,
    AllProjects,
    Back,
    Bold,
    BulletList,
    Bullets,
    ChevronDown,
    ChevronRight,
    ChevronUp,
    Clear,
    Close,
    Colors,
    Details,
    Folder,
    Forward,
    HeaderFill,
    Help,
    Highlight,
    History,
    Image,
    Italic,
    Keyboard,
    LeftPane,
    LineSpacing,
    Locked,
    Menu,
    More,
    NewFolder,
    NewNote,
    Note,
    NumberedList,
    Panes,
    Paste,
    PdfNote,
    Pin,
    Plus,
    Project,
    ProjectSparkles,
    Rename,
    Replace,
    Revert,
    RightPane,
    Search,
    Settings,
    Sort,
    Strikethrough,
    Table,
    TableColumnLeft,
    TableColumnRight,
    TableRemoveColumn,
    TableRemoveRow,
    TableRowAbove,
    TableRowBelow,
    Tag,
    TextColor,
    Trash,
    Underline,
    Unlocked,
    Warning,
    Writing,
};

/// The drawing for a stored icon value of a project, such as "sparkles"; a general one for a value
/// that has none.
[[nodiscard]] Symbol projectSymbol(const std::optional<QString>& storedIcon);

/// The symbol in one colour, `pixels` device pixels square, transparent around it. Drawings are
/// vector graphics and sharp at any size; rendered ones are kept. An icon theme that is missing
/// gives an empty picture and one line in the log.
[[nodiscard]] QPixmap symbolPixmap(Symbol symbol, int pixels, const QColor& color);

} // namespace orvane
