// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QStringView>

namespace orvane {

/// Appends text so that every RTF reader gives it back: ASCII as it is, Western characters as bytes
/// of code page 1252, all others as `\u` with a fallback for readers without Unicode.
void appendRtfText(QByteArray& rtf, QStringView text);

/// Appends a control word and its number, as in `\fs24`.
void appendRtfWord(QByteArray& rtf, QByteArrayView word, int number);

} // namespace orvane
