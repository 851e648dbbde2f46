// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>

namespace orvane {

class OrvaneWorkspaceApp;
class TourHand;

/// The stops of the tour at the page: page view with a page break and the ruler, in the Light and
/// the Dark look, wide and narrow. A note is open; everything is as before afterwards.
void tourPages(OrvaneWorkspaceApp& app, const TourHand& hand,
               const std::function<void(const QString& name)>& picture);

/// Rows of the Binder that are selected together, where they can go, and a note in the Trash.
void tourRows(OrvaneWorkspaceApp& app, const TourHand& hand,
              const std::function<void(const QString&)>& picture);

/// A note that is pasted from another program's document, with what came and what stayed behind.
/// The note stays.
void tourOthers(OrvaneWorkspaceApp& app, const TourHand& hand,
                const std::function<void(const QString&)>& picture);

} // namespace orvane
