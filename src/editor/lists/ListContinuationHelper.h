// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/lists/ListText.h"
#include "editor/view/TextEdits.h"

/// Lists are literal text: a list item is a line that begins with tabs and a marker, and its
/// paragraph style indents it. There is no list object.
///
/// These functions read a text and say what to change; they change nothing. Each result is one
/// undoable edit. It touches only lines whose marker or style really changes, however long the
/// list. Paragraphs in a table keep their cell, and lines that share a paragraph have no style of
/// their own.
///
/// **Numbering.** Every operation counts the numbered items of all lists anew. A list is a run of
/// lines that are items. Each level counts for itself, from 1; an item drops the counts of deeper
/// levels; bullets in between don't stop the count. Each item keeps its style; a letter that is
/// also a Roman digit goes on with the letters before it.
///
/// Lines that only happen to look like an item, such as a paragraph that begins with a year or with
/// an initial, are left as they are: a list is reached where the operation changed one of its lines
/// or a line next to it, or where its paragraphs are labelled as a list, and an unlabelled line
/// counts only if its list is long enough for its number.
namespace orvane::ListContinuationHelper {

/// Return. Nothing if there is a selection or the caret's line is no item, or merely begins like
/// one
/// ("1984. It was") with no item above it; then Return does what it always does. An item without
/// text ends the list: its marker goes and no line is added. Any other item goes on: what follows
/// the caret becomes the next item. Named "List".
[[nodiscard]] std::optional<TextEdits> handleReturn(const ListText& text, TextRange selection);

/// Takes the marker and the indents of the item at `position` away. Named "List".
[[nodiscard]] std::optional<TextEdits> removeListMarker(const ListText& text, qsizetype position);

/// Tab (`delta` 1) and Back-tab (`delta` -1). Nothing if there is a selection or the caret's line
/// is no item. Back-tab on the first level takes the marker away. Named "Indent" and "Outdent".
[[nodiscard]] std::optional<TextEdits> updateListIndent(const ListText& text, TextRange selection,
                                                        int delta);

/// Counts anew as described above, in the lists that `touched` touches and in labelled ones.
[[nodiscard]] TextEdits renumberOrderedLists(const ListText& text, TextRange touched);

/// Makes the selected lines items of `style`; if all of them are already, makes them plain lines.
/// Lines that are items of another style keep their level. Named "List Style".
[[nodiscard]] TextEdits toggleList(const ListText& text, TextRange selection,
                                   EditorListStyle style);

/// The same with a bullet of a person's own and the colour of its marker; absent for the colour
/// that one would type in. Named "Custom Bullet".
[[nodiscard]] TextEdits toggleCustomBullet(const ListText& text, TextRange selection,
                                           const QString& character,
                                           const std::optional<RgbaColor>& color);

/// Makes those of the selected lines plain that have a bullet of the library.
[[nodiscard]] TextEdits removeAnyCustomBullet(const ListText& text, TextRange selection);

/// Ticks the box at `position`, or empties a ticked one; nothing if no box stands there. Named
/// "Tick" and "Untick".
[[nodiscard]] std::optional<TextEdits> toggleCheckbox(const ListText& text, qsizetype position);

} // namespace orvane::ListContinuationHelper
