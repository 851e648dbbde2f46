// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/ThemeFile.h"
#include "text/RandomText.h"
#include "text/archive/NoteEditorTypingAttributesCodec.h"
#include "text/archive/TextArchive.h"
#include "text/attachments/AttachmentManager.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTextDocument>

using namespace orvane;
using namespace Qt::StringLiterals;

namespace {

/// A small image in one of the kinds that notes keep.
QByteArray imageOf(unsigned seed)
{
    constexpr const char* formats[] = {"PNG", "JPEG", "WEBP", "BMP"};
    if (seed % 5 == 0)
        return "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><defs><g id='a'>"
               "<path d='M0 0l9 9'/></g></defs><use href='#a'/></svg>";
    QImage image(int(seed % 17 + 1), int(seed % 11 + 1), QImage::Format_ARGB32);
    image.fill(QColor::fromHsv(int(seed * 37 % 360), 200, 200, int(seed * 53 % 256)));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, formats[seed % 4]);
    return bytes;
}

void save(const QString& folder, const QString& kind, unsigned seed, const QByteArray& bytes)
{
    QDir().mkpath(folder + u'/' + kind);
    QFile file(u"%1/%2/seed-%3"_s.arg(folder, kind).arg(seed));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace

void savePatterns(const QString& folder)
{
    const QByteArray rtf[] = {R"({\rtf1 |\li1\par)",
                              R"({\rtf1 |\fs7\b x\plain)",
                              R"({\rtf1 |{)",
                              R"({\rtf1\trowd\cellx9 |\cell)",
                              R"({\rtf1 |\trowd\cellx1\cell\row)",
                              R"({\rtf1 |{\pict\jpegblip ffd8ff})",
                              R"({\rtf1 |\tx1\par)",
                              R"({\rtf1{\colortbl|;)",
                              R"({\rtf1{\fonttbl|\f1;)",
                              R"({\rtf1 |{\field{\*\fldinst HYPERLINK a}{\fldrslt b}})"};
    const QByteArray html[] = {"|<td>",
                               "|<b>",
                               "|<li>",
                               "|<table>",
                               "|<p style=margin-left:1pt>x",
                               "|</p>",
                               "|<ul>",
                               "|<td colspan=999>",
                               "|<td rowspan=9>",
                               "|&amp;",
                               "|<br>",
                               "|<img src=data:image/jpeg;base64,/9j/>",
                               "<|a b=c ",
                               "|<a href=x>y</a>"};
    unsigned number = 0;
    for (QByteArray pattern : rtf)
        save(folder, u"rtf_repeated"_s, number++, pattern.replace('|', '\1'));
    for (QByteArray pattern : html)
        save(folder, u"html_repeated"_s, number++, pattern.replace('|', '\1'));
}

void saveThemes(const QString& folder)
{
    save(folder, u"theme_file"_s, 1, ThemeFile::encode(signatureBundle()));
    save(folder, u"theme_file"_s, 2, ThemeFile::encode(googleWorkspaceBundle()));
    save(folder, u"theme_file"_s, 3,
         QByteArray::fromHex("0a0180000000000000008b0220000000000000000c00"));
}

// fuzz_seeds FOLDER: a corpus for each fuzzer in a folder of its name.
int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argc > 1 ? argv[1] : "corpus");
    for (unsigned seed = 1; seed <= 40; ++seed) {
        RandomText all(seed);
        const AttributedString text = all.document();
        save(folder, u"archive"_s, seed, TextArchive::encode(text));
        save(folder, u"payload"_s, seed, AttachmentManager::archivePayload(text));
        save(folder, u"typing_attributes"_s, seed,
             NoteEditorTypingAttributesCodec::archive({all.characterStyle(), all.paragraphStyle()})
                 .value_or(QByteArray()));
        const auto rtf = OrvaneWorkspaceRTF::data(text, HeadingSizes()).value_or(QByteArray());
        save(folder, u"rtf"_s, seed, rtf);
        QTextDocument document;
        document.setPlainText(text.text());
        save(folder, u"html"_s, seed, document.toHtml().toUtf8());
        save(folder, u"image"_s, seed, imageOf(seed));
    }
    savePatterns(folder);
    saveThemes(folder);
    return 0;
}
