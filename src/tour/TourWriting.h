// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvane {

class OrvaneWorkspaceApp;
class TourHand;

/// The stops of the tour at writing: focus mode on a paragraph and on a sentence, typewriter mode,
/// and the sheet of a link, in the Light and the Dark look, and the context menu. A note of several
/// paragraphs is open; everything is as before afterwards.
void tourWriting(OrvaneWorkspaceApp& app, const TourHand& hand,
                 const std::function<void(const QString& name)>& picture,
                 const std::function<void(QWidget& shown, const QString& name)>& pictureOfPopup);

} // namespace orvane
