// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace orvane {

class AppearanceThemeLibrary;
class MainWindow;
class NotificationCenter;
class TourHand;

/// What a stop of the tour works with.
struct TourStop {
    MainWindow& window;
    const TourHand& hand;
    AppearanceThemeLibrary& themes;
    NotificationCenter& notifications;
    std::function<void(const QString& name)> picture;
    std::function<void(QWidget& shown, const QString& name)> pictureOfPopup;
    std::function<void(bool holds, const QString& what)> expect;
};

/// Formats the note on the screen by the keys and the formatting bar, in the Light and the Dark
/// look. The note is a rich one of several paragraphs; its text stays as it is but for one list.
void tourFormatting(const TourStop& stop);

} // namespace orvane
