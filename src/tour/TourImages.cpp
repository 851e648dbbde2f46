// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "tour/TourImages.h"

#include "appearance/themes/AppearanceThemeLibrary.h"
#include "appearance/themes/BundledThemes.h"
#include "editor/images/ImageEditing.h"
#include "editor/pane/EditorPaneView.h"
#include "editor/view/EditorView.h"
#include "shell/window/MainWindow.h"
#include "text/attachments/AttachmentManager.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"
#include "tour/TourHand.h"

#include <QLinearGradient>
#include <QPainter>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

/// Posts in the water at dusk.
QByteArray evening()
{
    constexpr QSize size(1200, 900);
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(0x3a4a66));
    sky.setColorAt(0.45, QColor(0xe6bc86));
    sky.setColorAt(0.6, QColor(0xf3d9a5));
    sky.setColorAt(0.61, QColor(0xa78d78));
    sky.setColorAt(1, QColor(0x4a4a52));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xfff1c9));
    painter.drawEllipse(QPointF(290, 490), 40, 40);
    painter.setBrush(QColor(0x15161c));
    for (int i = 0; i < 13; ++i) {
        const qreal nearness = i / 12.0;
        const qreal width = 6 + 22 * nearness;
        const qreal height = 60 + 260 * nearness;
        const QRectF post(360 + 760 * nearness * (0.5 + nearness / 2), 560 - height / 3, width,
                          height);
        painter.save();
        painter.translate(post.center());
        if (i == 12)
            painter.rotate(5);
        painter.drawRect(post.translated(-post.center()));
        painter.restore();
    }
    painter.end();
    return *AttachmentManager::pngData(image);
}

} // namespace

void tourImages(const TourStop& stop)
{
    EditorPaneView& pane = stop.window.editorPane();
    pane.session().setMode(EditorMode::richText);
    pane.focusText();
    EditorView& view = pane.textView();
    EditGateway& text = view.gateway();
    const AttributedString before = view.store().attributedText();
    const qsizetype at = view.store().paragraphRange(0).end() - 1;
    view.setSelection(TextSelection::caret(at));
    ImageEditing::insert(text, {{evening(), {1200, 900}, {}}});
    ImageEditing::applyWrapMode(text, at, OrvaneNoteImageWrapMode::topAndBottom);
    const qsizetype position = view.store().text().indexOf(QChar(objectCharacter));
    ImageEditing::setCaption(text, position, u"The thirteen posts at dusk. No. 13 leans seaward."_s,
                             view.layout().baseFont());
    const auto rect = [&] {
        return view.toViewport(view.layout().objectRect(int(position)));
    };
    view.scrollToRange({0, 0});
    TourHand::settle();
    stop.hand.click(*view.viewport(), rect().center().toPoint());
    ImagePictures& pictures = view.attachmentPainter().pictures();
    stop.expect(TourHand::waitFor([&] {
                    return pictures
                               .picture(ImageEditing::imageAt(view.store(), position)->file,
                                        rect().size().toSize())
                               .state == ImagePictures::State::Ready;
                }),
                u"the image is decoded"_s);
    const auto inBothLooks = [&](const QString& name) {
        stop.picture(name);
        stop.themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Light);
        stop.picture(name + u"-light"_s);
        stop.themes.applyTheme(signatureBundle().id, AppearanceThemeMode::Dark);
    };
    inBothLooks(u"image"_s);
    stop.hand.press(Qt::Key_Escape);
    ImageEditing::applyWrapMode(text, position, OrvaneNoteImageWrapMode::inFrontOfText);
    ImageEditing::setSize(text, position, 260, std::nullopt, true);
    ImageEditing::setOffset(text, position, {300, 30});
    view.setSelection(TextSelection::of(TextRange{position, 1}));
    inBothLooks(u"image-in-front"_s);
    while (text.canUndo() && !(view.store().attributedText() == before))
        text.undo();
    view.setSelection(TextSelection::caret(0));
}

} // namespace orvane
