// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QString>

namespace orvane {

/// One piece of an HTML document.
struct HtmlToken {
    enum class Kind { startTag, endTag, text, end };
    struct Attribute {
        QStringView name;
        QStringView value; ///< its references not yet decoded
    };

    Kind kind = Kind::end;
    QString name;     ///< of a tag, in lower case
    QStringView text; ///< its references not yet decoded
    QList<Attribute> attributes;

    /// The decoded value of an attribute; null when there is none of that name, which is in lower
    /// case.
    [[nodiscard]] QString attribute(QStringView wanted) const;
};

/// Cuts HTML into tags and text, forgiving as browsers are. Comments, declarations and the contents
/// of scripts and style sheets are passed over. The views point into the text given. It always
/// ends, in time linear in the text.
class HtmlTokenizer {
public:
    explicit HtmlTokenizer(QStringView html)
        : m_html(html)
    {}

    [[nodiscard]] HtmlToken next();

private:
    [[nodiscard]] bool beginsTag() const;
    void skipDeclaration();
    HtmlToken tag();
    void readAttributes(QList<HtmlToken::Attribute>& attributes);
    QStringView attributeValue();
    void skipRawText(const QString& element);
    void skipBlanks();
    [[nodiscard]] char16_t at(qsizetype offset) const;

    QStringView m_html;
    qsizetype m_position = 0;
};

} // namespace orvane
