// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/html/HtmlTokenizer.h"
#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"

#include <QStringView>

namespace orvane {

/// The elements that the reader tells apart. All others are containers without a look.
enum class HtmlTag : quint8 {
    other,
    a,
    b,
    big,
    blockquote,
    body,
    br,
    caption,
    center,
    code,
    col,
    dd,
    del,
    div,
    dl,
    dt,
    em,
    font,
    form,
    h1,
    h2,
    h3,
    h4,
    h5,
    h6,
    head,
    hr,
    i,
    img,
    input,
    ins,
    kbd,
    li,
    link,
    mark,
    meta,
    ol,
    p,
    pre,
    s,
    samp,
    section,
    small,
    span,
    strike,
    strong,
    sub,
    sup,
    table,
    tbody,
    td,
    tfoot,
    th,
    thead,
    tr,
    tt,
    u,
    ul,
    unseen, ///< what is no text of the document, as buttons and drawings
    var,
    wbr,
};

[[nodiscard]] HtmlTag htmlTag(const QString& name);
/// Whether the element stands on lines of its own.
[[nodiscard]] bool isBlock(HtmlTag tag);
/// Whether it has no contents and no end tag.
[[nodiscard]] bool isVoid(HtmlTag tag);

/// Whether the element is a picture or drawing that says nothing: by the document's word, for
/// standing in the place of a sign, or for being no larger than a letter.
[[nodiscard]] bool isDecoration(const HtmlToken& token);
/// Whether an `unseen` element is something that a reader of the page would miss.
[[nodiscard]] bool isLeftOutMedium(const HtmlToken& token);

/// What an element gives to the text within it.
struct HtmlLook {
    CharacterStyle characters;
    ParagraphStyle paragraph;
    bool preservesSpace = false;
    bool isHidden = false;
};

/// Changes the parent's look by the element's own nature and attributes and by its `style`. Lengths
/// come out in points; `base` is the font of text without any.
void applyHtmlElement(HtmlLook& look, HtmlTag tag, const HtmlToken& token, const TextFont& base);

} // namespace orvane
