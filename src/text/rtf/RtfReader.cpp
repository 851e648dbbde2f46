// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfReader.h"

#include "text/rtf/RtfInterpreter.h"

namespace orvane {

std::optional<RtfContent> readRtf(QByteArrayView rtf, const std::function<QUuid()>& newId)
{
    if (rtf.startsWith("\xEF\xBB\xBF"))
        rtf = rtf.sliced(3);
    rtf = rtf.trimmed();
    if (!rtf.startsWith("{\\rtf"))
        return std::nullopt;
    RtfInterpreter interpreter(rtf, newId);
    interpreter.run();
    RtfContent content;
    content.text = interpreter.finish();
    content.backgroundColor = interpreter.pageBackground;
    content.account = interpreter.account;
    return content;
}

} // namespace orvane
