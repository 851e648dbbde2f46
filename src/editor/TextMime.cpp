// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/TextMime.h"

#include "text/OrvaneWorkspaceRTF.h"
#include "text/archive/TextArchive.h"
#include "text/html/HtmlReader.h"
#include "text/html/HtmlWriter.h"

#include <QHash>

namespace orvane::textMime {

using namespace Qt::StringLiterals;

namespace {

const QString ownFormat = u"application/x-orvane-text"_s;
const QStringList rtfFormats{u"text/rtf"_s, u"application/rtf"_s, u"text/richtext"_s};
const QString htmlFormat = u"text/html"_s;
const QString plainFormat = u"text/plain"_s;

QString asPlainText(const AttributedString& text)
{
    QString plain = text.text();
    plain.replace(QChar(lineSeparator), u'\n');
    plain.remove(QChar(objectCharacter));
    return plain;
}

/// Keeps the text and makes each form of it only when somebody asks: a selection is offered to
/// other programs at every change, and mostly nobody takes it.
class RichText final : public QMimeData {
public:
    explicit RichText(AttributedString text)
        : m_text(std::move(text))
    {}

    [[nodiscard]] QStringList formats() const override
    {
        return QStringList{ownFormat} + rtfFormats + QStringList{htmlFormat, plainFormat};
    }
    [[nodiscard]] bool hasFormat(const QString& format) const override
    {
        return formats().contains(format);
    }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType) const override
    {
        if (format == ownFormat)
            return TextArchive::encode(m_text);
        if (format == htmlFormat)
            return QString::fromUtf8(writeHtml(m_text));
        if (format == plainFormat)
            return asPlainText(m_text);
        if (rtfFormats.contains(format))
            return OrvaneWorkspaceRTF::data(m_text).value_or(QByteArray());
        return {};
    }

private:
    AttributedString m_text;
};

/// A copy is a thing of its own: its tables and attachments get new identities.
void renewIdentities(AttributedString& text)
{
    QHash<QUuid, QUuid> tables;
    text.modifyParagraphStyles(text.fullRange(), [&](ParagraphStyle& style) {
        if (!style.cell)
            return;
        QUuid& id = tables[style.cell->table.id];
        if (id.isNull())
            id = QUuid::createUuid();
        style.cell->table.id = id;
    });
    text.modifyCharacterStyles(text.fullRange(), [](CharacterStyle& style) {
        if (const auto* image = style.imageAttachment()) {
            OrvaneNoteImageAttachment copy = *image;
            copy.attachmentID = QUuid::createUuid();
            style.attachment = TextAttachment(std::move(copy));
        } else if (const auto* chart = style.chartAttachment()) {
            OWChartAttachment copy = *chart;
            copy.chartBlock.id = QUuid::createUuid();
            style.chartBlockData = copy.chartBlock.toJson();
            style.attachment = TextAttachment(std::move(copy));
        }
    });
}

std::optional<AttributedString> decodeRich(const QMimeData& data, const SharedCharacterStyle& style)
{
    if (data.hasFormat(ownFormat)) {
        if (auto text = TextArchive::decode(data.data(ownFormat)); text && !text->isEmpty()) {
            renewIdentities(*text);
            return std::move(*text);
        }
    }
    for (const QString& format : rtfFormats) {
        if (!data.hasFormat(format))
            continue;
        if (auto text = OrvaneWorkspaceRTF::read(data.data(format)); text && !text->isEmpty())
            return text;
    }
    if (data.hasHtml()) {
        HtmlReadOptions options;
        options.baseFont = style->font.value_or(TextFont{});
        if (AttributedString text = readHtml(data.html(), options); !text.isEmpty())
            return text;
    }
    return std::nullopt;
}

} // namespace

std::unique_ptr<QMimeData> encode(const AttributedString& text, TextFormatting formatting)
{
    if (formatting == TextFormatting::rich)
        return std::make_unique<RichText>(text);
    auto data = std::make_unique<QMimeData>();
    data->setText(asPlainText(text));
    return data;
}

bool canDecode(const QMimeData& data, TextFormatting formatting)
{
    if (data.hasText())
        return true;
    const auto offers = [&](const QString& format) {
        return data.hasFormat(format);
    };
    return formatting == TextFormatting::rich &&
           (data.hasHtml() || offers(ownFormat) ||
            std::any_of(rtfFormats.begin(), rtfFormats.end(), offers));
}

std::optional<AttributedString> decode(const QMimeData& data, TextFormatting formatting,
                                       const SharedCharacterStyle& style)
{
    if (formatting == TextFormatting::rich) {
        if (auto text = decodeRich(data, style))
            return text;
    }
    if (!data.hasText())
        return std::nullopt;
    QString text = data.text();
    text.replace(u"\r\n"_s, u"\n"_s);
    text.replace(u'\r', u'\n');
    return AttributedString(text, style);
}

} // namespace orvane::textMime
