# SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
# Writes the bytes of the file FROM as a constant of the C++ source TO.
file(READ "${FROM}" bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
file(WRITE "${TO}" "namespace orvane {
extern const unsigned char englishSentences[];
extern const int englishSentencesSize;
const unsigned char englishSentences[] = {${bytes}};
const int englishSentencesSize = int(sizeof(englishSentences));
} // namespace orvane
")
