// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/TextMime.h"

#include "editor/tables/TableText.h"
#include "editor/writing/AddressLinks.h"
#include "text/archive/TextArchive.h"
#include "text/attachments/AttachmentManager.h"
#include "text/attachments/ImagePictures.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"
#include "text/rtf/OrvaneWorkspaceRTF.h"

namespace orvane::textMime {

using namespace Qt::StringLiterals;

namespace {

const QString& plainType()
{
    static const QString type = u"text/plain"_s;
    return type;
}

/// What GTK programs ask for under Wayland; they don't take the type without its charset.
const QString& utf8Type()
{
    static const QString type = u"text/plain;charset=utf-8"_s;
    return type;
}

const QString& htmlType()
{
    static const QString type = u"text/html"_s;
    return type;
}

const QStringList& rtfTypes()
{
    static const QStringList types{u"text/rtf"_s, u"application/rtf"_s, u"text/richtext"_s};
    return types;
}

QString asPlainText(const AttributedString& text)
{
    QString plain = tabbedText(text);
    plain.replace(QChar(lineSeparator), u'\n');
    plain.remove(QChar(objectCharacter));
    return plain;
}

QString pngType()
{
    return QStringLiteral("image/png");
}

/// The first image of a text as PNG, whatever its own kind.
QByteArray asPng(const AttributedString& text)
{
    QByteArray png;
    text.forEachCharacterRun(text.fullRange(), [&](TextRange, const SharedCharacterStyle& style) {
        const auto picture = AttachmentManager::exchangedPicture(style->attachment);
        if (!picture || !png.isEmpty())
            return;
        png = picture->format == AttachmentManager::PictureFormat::png
                  ? picture->data
                  : AttachmentManager::pngData(decodedImage(picture->data, {}))
                        .value_or(QByteArray());
    });
    return png;
}

class TextMimeData : public QMimeData {
public:
    enum class Content { text, oneImage };
    TextMimeData(std::function<AttributedString()> text, TextFormatting formatting,
                 const HeadingSizes& headings, Content content = Content::text)
        : m_text(std::move(text))
        , m_formatting(formatting)
        , m_headings(headings)
        , m_content(content)
    {}

    [[nodiscard]] QStringList formats() const override
    {
        if (m_formatting == TextFormatting::plain)
            return {utf8Type(), plainType()};
        const QStringList image =
            m_content == Content::oneImage ? QStringList{pngType()} : QStringList();
        return QStringList{archiveType()} + image + rtfTypes().first(2) +
               QStringList{htmlType(), utf8Type(), plainType()};
    }

    [[nodiscard]] bool hasFormat(const QString& type) const override
    {
        return formats().contains(type);
    }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& type, QMetaType /*wanted*/) const override
    {
        if (!hasFormat(type))
            return {};
        const AttributedString text = m_text();
        if (type == archiveType())
            return TextArchive::encode(text, ImageBytes::inside);
        if (rtfTypes().contains(type))
            return OrvaneWorkspaceRTF::data(text, m_headings).value_or(QByteArray());
        if (type == htmlType())
            return QString::fromUtf8(writeHtml(text, m_headings));
        if (type == pngType())
            return asPng(text);
        if (type == utf8Type())
            return asPlainText(text).toUtf8();
        return asPlainText(text);
    }

private:
    std::function<AttributedString()> m_text;
    TextFormatting m_formatting;
    HeadingSizes m_headings;
    Content m_content;
};

std::optional<ImportedText> decodeRich(const QMimeData& data, const SharedCharacterStyle& style)
{
    if (data.hasFormat(archiveType())) {
        if (auto text = TextArchive::decode(data.data(archiveType())))
            return ImportedText{*std::move(text), {}};
    }
    for (const QString& type : rtfTypes()) {
        if (!data.hasFormat(type))
            continue;
        if (auto imported = OrvaneWorkspaceRTF::read(data.data(type));
            imported && !imported->text.isEmpty())
            return *std::move(imported);
    }
    if (data.hasHtml()) {
        HtmlReadOptions options;
        if (style->font)
            options.baseFont = *style->font;
        if (ImportedText imported = readHtml(data.html(), options); !imported.text.isEmpty())
            return imported;
    }
    return std::nullopt;
}

/// How many pictures and other objects the data has beside its text, at least.
qsizetype objectsIn(const QMimeData& data)
{
    if (data.hasFormat(archiveType())) {
        if (const auto text = TextArchive::decode(data.data(archiveType())))
            return text->text().count(QChar(objectCharacter));
    }
    qsizetype objects = 0;
    for (const QString& type : rtfTypes()) {
        if (data.hasFormat(type))
            objects = std::max(objects, data.data(type).count("\\pict"));
    }
    if (data.hasHtml()) {
        const QString html = data.html();
        qsizetype tags = 0;
        for (const auto tag : {"<img"_L1, "<svg"_L1, "<object"_L1, "<video"_L1, "<canvas"_L1})
            tags += html.count(tag, Qt::CaseInsensitive);
        objects = std::max(objects, tags);
    }
    return objects;
}

} // namespace

QString archiveType()
{
    return u"application/x-orvaneworkspace-text"_s;
}

std::unique_ptr<QMimeData> encode(const AttributedString& text, TextFormatting formatting,
                                  const HeadingSizes& headings)
{
    return encodeLater([text] { return text; }, formatting, headings);
}

std::unique_ptr<QMimeData> encodeLater(std::function<AttributedString()> text,
                                       TextFormatting formatting, const HeadingSizes& headings)
{
    return std::make_unique<TextMimeData>(std::move(text), formatting, headings);
}

std::unique_ptr<QMimeData> encodeImageLater(std::function<AttributedString()> text,
                                            const HeadingSizes& headings)
{
    return std::make_unique<TextMimeData>(std::move(text), TextFormatting::rich, headings,
                                          TextMimeData::Content::oneImage);
}

bool canDecode(const QMimeData& data, TextFormatting formatting)
{
    if (data.hasText())
        return true;
    if (formatting == TextFormatting::plain)
        return false;
    const QStringList formats = data.formats();
    return data.hasHtml() || formats.contains(archiveType()) ||
           std::any_of(rtfTypes().begin(), rtfTypes().end(),
                       [&](const QString& type) { return formats.contains(type); });
}

std::optional<ImportedText> decode(const QMimeData& data, TextFormatting formatting,
                                   const Surroundings& place)
{
    const bool isRich = formatting == TextFormatting::rich;
    if (isRich) {
        if (auto imported = decodeRich(data, place.style)) {
            if (!data.hasFormat(archiveType()))
                imported->text = withAddressLinks(std::move(imported->text));
            return imported;
        }
    }
    if (!data.hasText())
        return std::nullopt;
    QString text = data.text();
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    AttributedString plain(text, place.style);
    ParagraphStyle paragraph = *place.paragraph;
    paragraph.cell.reset();
    plain.setParagraphStyle(plain.fullRange(), paragraph);
    return ImportedText{isRich ? withAddressLinks(std::move(plain)) : std::move(plain), {}};
}

bool bringsAll(const QMimeData& data, const AttributedString& decoded)
{
    return !data.hasUrls() && !data.hasImage() &&
           objectsIn(data) <= decoded.text().count(QChar(objectCharacter));
}

} // namespace orvane::textMime
