// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>

namespace orvane::fuzz {

/// The bytes to parse. In the fuzzers named "repeated" they are half a megabyte: what stands before
/// the first byte 1, then what stands behind it over and over. So costs that grow faster than the
/// input show, which in small inputs can't.
inline QByteArray input(const unsigned char* data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
#ifdef ORVANE_FUZZ_REPEATED
    const qsizetype mark = bytes.indexOf('\1');
    const QByteArray pattern = bytes.sliced(mark + 1);
    bytes.truncate(std::max<qsizetype>(0, mark));
    if (!pattern.isEmpty())
        bytes += pattern.repeated(500'000 / pattern.size());
#endif
    return bytes;
}

} // namespace orvane::fuzz
