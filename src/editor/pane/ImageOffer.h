// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/images/ImageInsertion.h"

namespace orvane {

class AppState;
class EditorSession;
class ImageTools;

/// Asks what becomes of images for a note that holds none: the note is made rich, or in Markdown
/// the files are kept among the project's assets and linked to at `range`. Main thread.
void offerImages(const QList<ImageSource>& sources, TextRange range, EditorSession& session,
                 AppState& app, ImageTools& images);

} // namespace orvane
