// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QFont>
#include <QString>

namespace orvane {

/// The font of a run of text, by the family's name. It says what was asked for: whether the family
/// is installed, and what stands in for it, is decided where text is laid out.
struct TextFont {
    QString family;
    double size = 12; ///< in points
    int weight = 400; ///< 1 to 1000; 400 is regular, 700 bold
    bool italic = false;

    bool operator==(const TextFont&) const = default;

    /// Whether a person would call it bold: semibold (600) and heavier.
    [[nodiscard]] bool isBold() const { return weight >= 600; }

    [[nodiscard]] QFont toQFont() const;
    [[nodiscard]] static TextFont fromQFont(const QFont& font);
};

[[nodiscard]] std::size_t qHash(const TextFont& font, std::size_t seed = 0) noexcept;

} // namespace orvane
