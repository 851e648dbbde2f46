// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/AttachmentManager.h"
#include "text/NoteEditorTypingAttributesCodec.h"
#include "text/OrvaneWorkspaceRTF.h"
#include "text/RandomText.h"
#include "text/archive/TextArchive.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTextDocument>

using namespace orvane;
using namespace Qt::StringLiterals;

namespace {

void save(const QString& folder, const QString& kind, unsigned seed, const QByteArray& bytes)
{
    QDir().mkpath(folder + u'/' + kind);
    QFile file(u"%1/%2/seed-%3"_s.arg(folder, kind).arg(seed));
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace

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
        const auto rtf = OrvaneWorkspaceRTF::data(text).value_or(QByteArray());
        save(folder, u"rtf"_s, seed, rtf);
        QTextDocument document;
        document.setPlainText(text.text());
        save(folder, u"html"_s, seed, document.toHtml().toUtf8());
    }
    return 0;
}
