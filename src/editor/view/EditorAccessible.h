// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

class EditorView;
struct TextChange;

/// What screen readers know of text views: text, caret, selection, attributes, and where every
/// character stands, also of text that is out of sight and has never been drawn.
namespace editorAccessible {

/// Makes the interface known; done once a process, by the first view.
void install();

/// Tells screen readers, where there are any, that the text, the caret or the selection of `view`
/// has changed.
void announceChange(EditorView& view, const TextChange& change);
void announceSelection(EditorView& view);

} // namespace editorAccessible
} // namespace orvane
