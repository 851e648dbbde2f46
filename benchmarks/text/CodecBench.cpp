// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSamples.h"
#include "support/Bench.h"
#include "text/archive/TextArchive.h"
#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>

namespace orvane::bench {
namespace {

constexpr int words = 1'000'000;
constexpr int rounds = 3;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// Milliseconds that the toolkit takes to write the same text as HTML and to read it back.
std::function<double()> htmlRoundTrip(const AttributedString& text)
{
    return [document = std::shared_ptr<QTextDocument>(stockDocument(text))] {
        return 1000 * seconds([&] {
                   QTextDocument back;
                   back.setUndoRedoEnabled(false);
                   back.setHtml(document->toHtml());
                   require(back.characterCount() > words);
               });
    };
}

Measurement archive()
{
    const AttributedString text = sampleText(words);
    return interleave(
        rounds,
        [&] {
            return 1000 * seconds([&] {
                       const auto back = TextArchive::decode(TextArchive::encode(text));
                       require(back && back->length() == text.length());
                   });
        },
        htmlRoundTrip(text));
}

Measurement rtf()
{
    const AttributedString text = sampleText(words);
    return interleave(
        rounds,
        [&] {
            return 1000 * seconds([&] {
                       const auto back = OrvaneWorkspaceRTF::read(*OrvaneWorkspaceRTF::data(text));
                       require(back && back->length() == text.length());
                   });
        },
        htmlRoundTrip(text));
}

/// From an immutable copy of the text to the payload that the store takes, against a memory copy of
/// the same bytes. It may run on any thread.
Measurement payload()
{
    const AttributedString text = sampleText(words);
    QByteArray bytes;
    return interleave(
        10,
        [&] { return 1000 * seconds([&] { bytes = AttachmentManager::archivePayload(text); }); },
        [&] {
            return 1000 * seconds([&] {
                       const QByteArray copy(bytes.constData(), bytes.size());
                       require(copy.size() == bytes.size());
                   });
        });
}

} // namespace
} // namespace orvane::bench

int main(int argc, char** argv)
{
    using namespace orvane::bench;
    QGuiApplication application(argc, argv);
    add({"text/archive", "ms", 0.1, archive});
    add({"text/rtf", "ms", 0.3, rtf});
    add({"text/payload", "ms", 150, payload, TargetOf::Figure});
    return runMain(argc, argv);
}
