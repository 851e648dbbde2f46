// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/FontFamilies.h"

#include "appearance/FontFamilies.h"

namespace orvane {

QList<Choice> fontFamilyChoices()
{
    QList<Choice> choices;
    for (const QString& family : writingFontFamilies())
        choices.append({family, family});
    return choices;
}

} // namespace orvane
