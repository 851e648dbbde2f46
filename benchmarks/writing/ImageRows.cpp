// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// A note with photographs against the same note without.
#include "editor/EditorSamples.h"
#include "editor/images/ImageEditing.h"
#include "text/attachments/ImagePictures.h"
#include "writing/WritingPane.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QTextDocument>
#include <QTextEdit>
#include <QUrl>

#include <memory>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize twelveMegapixels(4000, 3000);
constexpr QSizeF shownSize(440, 330);

/// A photograph of 12 megapixels, of some 2 MB.
const QByteArray& photograph()
{
    static const QByteArray bytes = [] {
        QImage image(twelveMegapixels, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                const int grain = (x * 31 + y * 17 + x * y) % 13;
                line[x] = qRgb((x / 16 + grain) % 256, (y / 12 + grain) % 256, (x + y) / 28 % 256);
            }
        }
        QByteArray encoded;
        QBuffer buffer(&encoded);
        image.save(&buffer, "JPEG", 80);
        return encoded;
    }();
    return bytes;
}

/// The same with a comment of its own, so that it is another file.
QByteArray photograph(int number)
{
    const QByteArray comment = QByteArray::number(number).rightJustified(8, '0');
    QByteArray bytes = photograph();
    return bytes.insert(2, QByteArray::fromHex("fffe000a") + comment);
}

/// Words with that many photographs among them. The first three are this note's own.
AttributedString textWith(int images, int note)
{
    AttributedString text;
    for (int i = 0; i < images; ++i) {
        auto image = OrvaneNoteImageAttachment::fromImageData(
            photograph(i < 3 ? 1'000 * (note + 1) + i : i), shownSize, QUuid::createUuid());
        image.originalSize = twelveMegapixels;
        text.append(AttributedString::object(image));
        text.append(u"\nThe tide had gone out further than anybody remembered.\n"_s, {});
    }
    return text;
}

/// As many lines of about the same height, without any.
AttributedString textWithout(int images)
{
    AttributedString text;
    for (int i = 0; i < images; ++i)
        text.append(u"The tide had gone out further than anybody remembered.\n"_s.repeated(13), {},
                    {});
    return text;
}

struct Notes : Pane {
    QUuid plain = add(textWithout(200));
    QUuid add(const AttributedString& text)
    {
        const QUuid id = *app.createNote(u"Note"_s, {});
        app.selection().selectNote(id);
        pane.session().setMode(EditorMode::richText);
        pane.session().gateway().insert(text, u"Paste"_s);
        pane.session().flushDraftToDisk(id);
        settle();
        return id;
    }
    void reopen()
    {
        app.projectSession().closeProject();
        app.projectSession().openProject(project, false);
        app.selection().selectNote(plain);
        settle();
    }
    [[nodiscard]] EditorView& view() const { return pane.textView(); }
};

/// The images that are seen, with the size that they are seen at.
QList<std::pair<ImageFile, QSize>> seenIn(const EditorView& view)
{
    QList<std::pair<ImageFile, QSize>> images;
    const QString text = view.store().text();
    for (qsizetype at = -1; (at = text.indexOf(QChar(objectCharacter), at + 1)) >= 0;) {
        const QRectF rect = view.toViewport(view.layout().objectRect(int(at)));
        if (rect.top() > view.viewport()->height())
            break;
        images.append({ImageEditing::imageAt(view.store(), at)->file,
                       QSize(qRound(rect.width()), qRound(rect.height()))});
    }
    return images;
}

bool isComplete(EditorView& view)
{
    ImagePictures& pictures = view.attachmentPainter().pictures();
    const auto images = seenIn(view);
    return !images.isEmpty() && std::ranges::all_of(images, [&](const auto& image) {
        return pictures.picture(image.first, image.second).state == ImagePictures::State::Ready;
    });
}

Measurement openNote()
{
    constexpr int rounds = 5;
    Notes ours;
    QList<QUuid> notes;
    for (int i = 0; i < rounds; ++i)
        notes.append(ours.add(textWith(200, i)));
    std::vector<double> opened;
    std::vector<double> decoded;
    ours.app.projectSession().closeProject();
    for (const QUuid& note : std::as_const(notes)) {
        // A program that has shown nothing yet.
        AppState app(ours.services());
        EditorPaneView pane(app, ours.look);
        followSelection(pane.session(), app);
        showForKeys(pane);
        app.projectSession().refreshProjects();
        app.projectSession().openProject(ours.project, false);
        app.selection().selectNote(ours.plain);
        settle();
        EditorView& view = pane.textView();
        opened.push_back(1e3 * seconds([&] {
                             app.selection().selectNote(note);
                             while (!isComplete(view))
                                 QApplication::processEvents(QEventLoop::WaitForMoreEvents);
                             view.viewport()->repaint();
                         }));
        QList<std::pair<QByteArray, QSize>> files;
        for (const auto& [file, size] : seenIn(view))
            files.append({*app.imageBytes(file.hash()), size});
        decoded.push_back(1e3 * seconds([&] {
                              for (const auto& [bytes, size] : files)
                                  (void)decodedImage(bytes, size);
                          }));
    }
    return {median(opened), median(decoded)};
}

Measurement scroll()
{
    Notes ours;
    const QUuid note = ours.add(textWith(200, 0));
    const auto pages = [&](const QUuid& shown) {
        ours.reopen();
        ours.app.selection().selectNote(shown);
        ours.pane.focusText();
        ours.view().setSelection(TextSelection::caret(0));
        settle();
        std::vector<double> times;
        for (int i = 0; i < 60; ++i)
            times.push_back(ours.frames.until([&] { pressKey(ours.view(), Qt::Key_PageDown); }));
        return percentile(times, 0.99);
    };
    const double with = pages(note);
    return {with, pages(ours.plain)};
}

/// Of the program, in megabytes.
double residentMegabytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no figures of memory");
    return file.readAll().split(' ').at(1).toDouble() * 4096 / (1 << 20);
}

template <typename View>
void scrollThrough(View& view)
{
    for (int i = 0; i < 60; ++i) {
        pressKey(view, Qt::Key_PageDown);
        for (int turn = 0; turn < 20; ++turn)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
}

Measurement memory()
{
    Measurement measured;
    {
        Notes ours;
        const QUuid note = ours.add(textWith(40, 0));
        ours.reopen();
        double start = residentMegabytes();
        ours.app.selection().selectNote(note);
        ours.pane.focusText();
        ours.view().setSelection(TextSelection::caret(0));
        scrollThrough(ours.view());
        measured.figure = residentMegabytes() - start;
    }
    const double start = residentMegabytes();
    QTextEdit stock;
    QString html;
    for (int i = 0; i < 40; ++i) {
        const QUrl url(u"image:%1"_s.arg(i));
        stock.document()->addResource(QTextDocument::ImageResource, url,
                                      decodedImage(photograph(i), {}));
        html +=
            u"<p><img src='%1' width='440' height='330'></p><p>The tide had gone out.</p>"_s.arg(
                url.toString());
    }
    stock.setHtml(html);
    showForKeys(stock);
    scrollThrough(stock);
    measured.baseline = residentMegabytes() - start;
    return measured;
}

Measurement save()
{
    Notes with;
    const QUuid note = with.add(textWith(200, 0));
    with.reopen();
    with.app.selection().selectNote(note);
    with.focusMiddle();
    Notes without;
    without.app.selection().selectNote(without.plain);
    without.focusMiddle();
    int typed = 0;
    const auto keyAndSave = [&](Notes& notes, const QUuid& shown) {
        return 1e3 * seconds([&] {
                   typeNext(notes.view(), notes.frames, typed);
                   notes.pane.session().flushDraftToDisk(shown);
               });
    };
    return interleave(
        20, [&] { return keyAndSave(with, note); },
        [&] { return keyAndSave(without, without.plain); });
}

Measurement key()
{
    Notes with;
    const QUuid note = with.add(textWith(20, 0));
    with.reopen();
    with.app.selection().selectNote(note);
    Notes without;
    without.app.selection().selectNote(without.plain);
    for (Notes* notes : {&with, &without}) {
        notes->pane.focusText();
        notes->view().setSelection(
            TextSelection::caret(notes->view().store().text().indexOf(u"tide")));
        notes->view().ensureCaretVisible();
        settle();
    }
    int inWith = 0;
    int inWithout = 0;
    return interleave(
        200, [&] { return typeNext(with.view(), with.frames, inWith); },
        [&] { return typeNext(without.view(), without.frames, inWithout); });
}

} // namespace

void addImageRows()
{
    add({"images/open-200", "ms", 1.5, openNote});
    add({"images/scroll-200", "ms", 2, scroll});
    add({"images/memory-40", "MB", 0.1, memory});
    add({"images/save-200", "ms", 1.5, save});
    add({"images/key", "ms", 1.15, key});
}

} // namespace orvane::bench
