// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/ListStyleNames.h"

#include "text/lists/ListMarker.h"

#include <QCoreApplication>

#include <array>

namespace orvane {

namespace {

constexpr std::array<const char*, editorListStyleCount> names{
    QT_TRANSLATE_NOOP("EditorListStyle", "Disc"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Large Bullet"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Arrow"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Dash"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Circle"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Square"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Diamond"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Star"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Check Mark"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Check Box"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Decimal"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Upper Roman"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Upper Alphabet"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Lower Alphabet"),
    QT_TRANSLATE_NOOP("EditorListStyle", "Lower Roman"),
};

} // namespace

QString displayName(EditorListStyle style)
{
    return QCoreApplication::translate("EditorListStyle", names[std::size_t(style)]);
}

QString markerSample(EditorListStyle style)
{
    const int last = isNumbered(style) ? 3 : 1;
    QString sample;
    for (int number = 1; number <= last; ++number)
        sample += ListContinuationHelper::markerPrefix(style, 0, number);
    return sample.trimmed();
}

} // namespace orvane
