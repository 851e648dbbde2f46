// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorSettings.h"

namespace orvane {

using namespace Qt::StringLiterals;

QString editorModeName(EditorMode mode)
{
    switch (mode) {
    case EditorMode::richText:
        return u"Rich Text"_s;
    case EditorMode::markdown:
        return u"Markdown"_s;
    case EditorMode::plainText:
        break;
    }
    return u"Plain Text"_s;
}

EditorMode editorModeNamed(const QString& name)
{
    for (const EditorMode mode : {EditorMode::richText, EditorMode::markdown}) {
        if (name == editorModeName(mode))
            return mode;
    }
    return EditorMode::plainText;
}

} // namespace orvane
