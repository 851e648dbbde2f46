// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <optional>
#include <type_traits>

namespace orvane {

/// The words under which the values of an enumeration are stored, in its order and from 0 on. An
/// enumeration gets them next to where it stands:
///
///     template <>
///     inline constexpr auto storedWords<Fruit> = std::to_array<QStringView>({u"apple", u"pear"});
template <typename Enum>
inline constexpr auto storedWords = nullptr;

template <typename Enum>
concept HasStoredWords = !std::is_null_pointer_v<std::remove_cv_t<decltype(storedWords<Enum>)>>;

/// The stored word of a value.
template <HasStoredWords Enum>
[[nodiscard]] QString rawValue(Enum value)
{
    return storedWords<Enum>[std::size_t(value)].toString();
}

/// The value that a stored word means; nothing for any other word.
template <HasStoredWords Enum>
[[nodiscard]] std::optional<Enum> fromRawValue(QStringView word,
                                               Qt::CaseSensitivity letters = Qt::CaseSensitive)
{
    for (std::size_t i = 0; i < storedWords<Enum>.size(); ++i) {
        if (word.compare(storedWords<Enum>[i], letters) == 0)
            return Enum(i);
    }
    return std::nullopt;
}

} // namespace orvane
