// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSamples.h"
#include "support/Bench.h"
#include "text/archive/TextArchive.h"
#include "text/attachments/AttachmentManager.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"
#include "text/rtf/ImportedList.h"
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

/// The sample with three items of a list in every ten paragraphs.
AttributedString sampleWithLists()
{
    const AttributedString sample = sampleText(words);
    AttributedString text;
    text.reserve(sample.length() + sample.length() / 100);
    const SharedParagraphStyle item =
        ImportedList::style({}, ImportedList::numberMarker(ListMarker::decimal, 1), 0);
    int paragraph = 0;
    sample.forEachParagraph([&](TextRange range, const SharedParagraphStyle& own) {
        const int number = paragraph++ % 10 - 4;
        const bool isItem = number >= 1 && number <= 3 && !range.isEmpty();
        const SharedParagraphStyle& style = isItem ? item : own;
        if (isItem) {
            const QString marker = ImportedList::numberMarker(ListMarker::decimal, number);
            text.append(ImportedList::prefix(marker, 0), sample.characterStyle(range.location),
                        style);
        }
        range.length += range.end() < sample.length() ? 1 : 0;
        sample.forEachCharacterRun(range, [&](TextRange run, const SharedCharacterStyle& look) {
            text.append(QStringView(sample.text()).sliced(run.location, run.length), look, style);
        });
    });
    return text;
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
    const AttributedString text = sampleWithLists();
    return interleave(
        rounds,
        [&] {
            return 1000 * seconds([&] {
                       const auto back = OrvaneWorkspaceRTF::read(
                           *OrvaneWorkspaceRTF::data(text, HeadingSizes()));
                       require(back && back->text.length() == text.length());
                   });
        },
        htmlRoundTrip(text));
}

Measurement html()
{
    const AttributedString text = sampleWithLists();
    return interleave(
        rounds,
        [&] {
            return 1000 * seconds([&] {
                       const auto back = readHtmlBytes(writeHtml(text, HeadingSizes()));
                       require(back.text.length() > 5 * words);
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
    add({"text/html", "ms", 0.3, html});
    add({"text/payload", "ms", 150, payload, TargetOf::Figure});
    return runMain(argc, argv);
}
