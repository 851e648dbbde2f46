// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QUuid>

#include <memory>

namespace orvane {

struct OWChartAttachment;
struct OrvaneNoteImageAttachment;

/// What stands on an object character (U+FFFC); null for all other characters.
///
/// An immutable value behind a shared pointer: a copy costs one atomic count, and copies may be
/// read on several threads at once. Whoever looks into an image or a chart includes its header.
class TextAttachment {
public:
    TextAttachment() = default;
    explicit(false) TextAttachment(OrvaneNoteImageAttachment image);
    explicit(false) TextAttachment(OWChartAttachment chart);

    [[nodiscard]] bool isNull() const { return !m_content; }
    /// The image or the chart that it is, or null.
    [[nodiscard]] const OrvaneNoteImageAttachment* image() const;
    [[nodiscard]] const OWChartAttachment* chart() const;
    /// The image's or the chart's own.
    [[nodiscard]] QUuid id() const;
    /// The same for two copies of one value; different values may be equal and differ here.
    [[nodiscard]] const void* identity() const { return m_content.get(); }

    /// Takes the identity first.
    friend bool operator==(const TextAttachment& left, const TextAttachment& right);

private:
    struct Content;
    std::shared_ptr<const Content> m_content;
};

} // namespace orvane
