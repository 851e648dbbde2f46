// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"

#include <QByteArray>
#include <QPointF>

namespace orvane {

/// An image of a rich note; without an id the one that is selected.
struct ImageTarget {
    std::optional<QUuid> imageAttachmentID = {};
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageTarget&) const = default;
};

/// Another size on the page, in points; what is absent stays, or follows where the proportions are
/// locked.
struct ImageSizeChoice {
    std::optional<QUuid> imageAttachmentID = {};
    std::optional<double> imageWidth = {};
    std::optional<double> imageHeight = {};
    std::optional<bool> imageAspectLocked = {};
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageSizeChoice&) const = default;
};

/// `imageWrapMode` is the stored word of a placement, "Top and Bottom".
struct ImageWrapModeChoice {
    std::optional<QUuid> imageAttachmentID = {};
    QString imageWrapMode;
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageWrapModeChoice&) const = default;
};

/// How far an image that floats stands from its anchor, in points.
struct ImageOffsetChoice {
    std::optional<QUuid> imageAttachmentID = {};
    QPointF offset;
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageOffsetChoice&) const = default;
};

/// The bytes of an image file.
struct ImageReplacement {
    std::optional<QUuid> imageAttachmentID = {};
    QByteArray replacementImageData;
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageReplacement&) const = default;
};

/// A caption or a description; an empty one takes it away.
struct ImageTextChoice {
    std::optional<QUuid> imageAttachmentID = {};
    QString text;
    std::optional<QUuid> noteID = {};

    bool operator==(const ImageTextChoice&) const = default;
};

} // namespace orvane

/// What is done to an image. Nothing happens where there is none of that id.
namespace orvane::EditorFormatNotifications {

inline constexpr Notification<ImageSizeChoice> setImageSize{
    "OrvaneWorkspace.EditorFormat.SetImageSize"};
inline constexpr Notification<ImageWrapModeChoice> setImageWrapMode{
    "OrvaneWorkspace.EditorFormat.SetImageWrapMode"};
inline constexpr Notification<ImageOffsetChoice> setImageOffset{
    "OrvaneWorkspace.EditorFormat.SetImageOffset"};
inline constexpr Notification<ImageTarget> resetSelectedImageSize{
    "OrvaneWorkspace.EditorFormat.ResetSelectedImageSize"};
inline constexpr Notification<ImageReplacement> replaceSelectedImage{
    "OrvaneWorkspace.EditorFormat.ReplaceSelectedImage"};
/// The person chooses the file.
inline constexpr Notification<ImageTarget> chooseReplacementImage{
    "OrvaneWorkspace.EditorFormat.ChooseReplacementImage"};
inline constexpr Notification<ImageTarget> removeSelectedImage{
    "OrvaneWorkspace.EditorFormat.RemoveSelectedImage"};
inline constexpr Notification<ImageTextChoice> setImageCaption{
    "OrvaneWorkspace.EditorFormat.SetImageCaption"};
inline constexpr Notification<ImageTextChoice> setImageDescription{
    "OrvaneWorkspace.EditorFormat.SetImageDescription"};

} // namespace orvane::EditorFormatNotifications
