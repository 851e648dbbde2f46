// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/html/HtmlReader.h"

#include "text/html/CssDeclarations.h"
#include "text/html/HtmlElements.h"
#include "text/html/HtmlEntities.h"
#include "text/html/HtmlLists.h"
#include "text/html/HtmlParagraphs.h"
#include "text/lists/ListMarker.h"
#include "text/value/LinkTargets.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QStringDecoder>

#include <array>
#include <vector>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

// Elements nested deeper share the look of this one.
constexpr std::size_t deepestElement = 400;
constexpr int deepestList = 8;

struct Element {
    HtmlTag tag = HtmlTag::other;
    std::size_t name = 0; // tells apart elements that have no tag of their own
    SharedCharacterStyle characters;
    SharedParagraphStyle paragraph;
    bool preservesSpace = false;
    bool isHidden = false;
    bool breaksPageAfter = false;
    std::optional<OfficeListStyle> officeList = std::nullopt;
};

/// What an element's look depends on. The views are of the document.
struct LookKey {
    HtmlTag tag;
    QStringView style;
    const void* characters; // of the element round it
    const void* paragraph;
    bool preservesSpace;
    bool isHidden;

    bool operator==(const LookKey&) const = default;
};

std::size_t qHash(const LookKey& key, std::size_t seed = 0) noexcept
{
    return qHashMulti(seed, int(key.tag), key.style, key.characters, key.paragraph);
}

/// The look of an element, and what keeps the identities in its key alive.
struct KnownLook {
    SharedCharacterStyle outerCharacters;
    SharedParagraphStyle outerParagraph;
    SharedCharacterStyle characters = {};
    SharedParagraphStyle paragraph = {};
    bool preservesSpace = false;
    bool isHidden = false;
};

constexpr qsizetype mostLooks = 4'096;

class Reader {
public:
    Reader(qsizetype inputSize, const HtmlReadOptions& options)
        : m_options(options)
        , m_paragraphs(inputSize)
        , m_characterStyles(4'000'000 + 32 * inputSize)
    {
        CharacterStyle base;
        base.font = options.baseFont;
        m_stack.push_back({HtmlTag::other, 0, base, {}});
    }

    void read(QStringView html);
    ImportedText finish();

private:
    void startTag(const HtmlToken& token);
    void endTag(const HtmlToken& token);
    void text(QStringView text);

    void closeImplied(HtmlTag tag);
    void closeUpTo(std::size_t index);
    void closeTop();
    [[nodiscard]] std::size_t find(HtmlTag tag, std::size_t name) const;
    void open(HtmlTag tag, const HtmlToken& token);
    void applyLook(Element& element, HtmlTag tag, const HtmlToken& token);
    void readLook(Element& element, HtmlTag tag, const HtmlToken& token);

    void endOfficeMarker();
    /// Called when the item's element is open.
    void startItem(const HtmlToken& token);
    void startTableElement(HtmlTag tag, const HtmlToken& token);
    void checkBox(bool isTicked);
    void image(const HtmlToken& token);
    void voidElement(HtmlTag tag, const HtmlToken& token);
    void literal(const QString& text);

    /// How many elements of this kind are open.
    [[nodiscard]] int& openCount(HtmlTag tag) { return m_openCount[std::size_t(tag)]; }
    [[nodiscard]] const Element& top() const { return m_stack.back(); }

    const HtmlReadOptions& m_options;
    HtmlParagraphs m_paragraphs;
    StyleInterner<CharacterStyle> m_characterStyles;
    QHash<LookKey, KnownLook> m_looks;
    std::vector<Element> m_stack;
    std::vector<HtmlList> m_lists;
    QString m_officeMarker;
    ImportAccount m_account;
    int m_tableDepth = 0;
    std::array<int, std::size_t(HtmlTag::wbr) + 1> m_openCount{};
};

/// Whether the element's style begins a page before or after it, as `side` says.
bool breaksPage(const HtmlToken& token, QStringView side)
{
    const QString style = token.attribute(u"style");
    if (!style.contains(u"break-", Qt::CaseInsensitive))
        return false;
    const auto breaks = [&](const CssDeclaration& declaration) {
        const bool isThere = declaration.name == u"break-%1"_s.arg(side) ||
                             declaration.name == u"page-break-%1"_s.arg(side);
        return isThere && (declaration.value.startsWith(u"always", Qt::CaseInsensitive) ||
                           declaration.value.startsWith(u"page", Qt::CaseInsensitive));
    };
    const auto declarations = parseCssDeclarations(style);
    return std::ranges::any_of(declarations, breaks);
}

// Tells apart elements that share a tag.
std::size_t nameOf(HtmlTag tag, const HtmlToken& token)
{
    return tag == HtmlTag::other || tag == HtmlTag::unseen ? qHash(token.name) : 0;
}

bool isCell(HtmlTag tag)
{
    return tag == HtmlTag::td || tag == HtmlTag::th;
}

void Reader::read(QStringView html)
{
    HtmlTokenizer tokenizer(html);
    for (;;) {
        const HtmlToken token = tokenizer.next();
        switch (token.kind) {
        case HtmlToken::Kind::startTag:
            startTag(token);
            break;
        case HtmlToken::Kind::endTag:
            endTag(token);
            break;
        case HtmlToken::Kind::text:
            text(token.text);
            break;
        case HtmlToken::Kind::end:
            return;
        }
    }
}

ImportedText Reader::finish()
{
    closeUpTo(1);
    m_paragraphs.endBlock();
    AttributedString text = m_paragraphs.finish();
    dropUnlinkedTargets(text);
    return {std::move(text), m_account};
}

void Reader::text(QStringView text)
{
    if (top().isHidden)
        return;
    const QString decoded = decodeHtmlEntities(text);
    if (top().officeList && top().officeList->isMarker) {
        m_officeMarker += decoded;
        return;
    }
    if (top().preservesSpace)
        m_paragraphs.preservedText(decoded, top().characters, top().paragraph);
    else
        m_paragraphs.collapsedText(decoded, top().characters, top().paragraph);
}

void Reader::literal(const QString& text)
{
    if (!top().isHidden && !text.isEmpty())
        m_paragraphs.collapsedText(text, top().characters, top().paragraph);
}

void Reader::startTag(const HtmlToken& token)
{
    const HtmlTag tag = htmlTag(token.name);
    if (isVoid(tag))
        return voidElement(tag, token);
    if (tag == HtmlTag::unseen && !top().isHidden && isLeftOutMedium(token))
        ++m_account.media;
    if (tag == HtmlTag::body)
        closeUpTo(1); // whatever the head left open
    closeImplied(tag);
    if (isBlock(tag)) {
        m_paragraphs.endBlock();
        // What comes first begins a page anyhow.
        if (!m_paragraphs.isEmpty() && breaksPage(token, u"before"))
            m_paragraphs.pageBreak(top().characters, top().paragraph);
    }
    if (tag == HtmlTag::table || tag == HtmlTag::tr || isCell(tag))
        startTableElement(tag, token);
    else if (tag == HtmlTag::ul || tag == HtmlTag::ol) {
        if (m_stack.size() < deepestElement)
            m_lists.push_back(htmlList(tag, token, m_lists.size()));
    }
    open(tag, token);
    if (tag == HtmlTag::li)
        startItem(token);
}

void Reader::open(HtmlTag tag, const HtmlToken& token)
{
    const std::size_t name = nameOf(tag, token);
    if (m_stack.size() >= deepestElement)
        return;
    Element element = top();
    element.tag = tag;
    element.name = name;
    element.breaksPageAfter = isBlock(tag) && breaksPage(token, u"after");
    if (tag != HtmlTag::other || !token.attributes.isEmpty())
        applyLook(element, tag, token);
    m_stack.push_back(std::move(element));
    ++openCount(tag);
}

// Documents repeat few styles many times.
void Reader::applyLook(Element& element, HtmlTag tag, const HtmlToken& token)
{
    const bool isPlain = token.attributes.isEmpty();
    const bool isStyled = token.attributes.size() == 1 && token.attributes[0].name == u"style";
    const LookKey key{tag,
                      isStyled ? token.attributes[0].value : QStringView(),
                      element.characters.identity(),
                      element.paragraph.identity(),
                      element.preservesSpace,
                      element.isHidden};
    if (isPlain || isStyled) {
        const auto known = m_looks.constFind(key);
        if (known != m_looks.constEnd()) {
            element.characters = known->characters;
            element.paragraph = known->paragraph;
            element.preservesSpace = known->preservesSpace;
            element.isHidden = known->isHidden;
            return;
        }
    }
    KnownLook look{.outerCharacters = element.characters, .outerParagraph = element.paragraph};
    readLook(element, tag, token);
    if ((isPlain || isStyled) && !element.officeList) {
        if (m_looks.size() >= mostLooks)
            m_looks.clear();
        look.characters = element.characters;
        look.paragraph = element.paragraph;
        look.preservesSpace = element.preservesSpace;
        look.isHidden = element.isHidden;
        m_looks.insert(key, look);
    }
}

void Reader::readLook(Element& element, HtmlTag tag, const HtmlToken& token)
{
    HtmlLook look{*element.characters, *element.paragraph, element.preservesSpace,
                  element.isHidden};
    if (isCell(tag))
        look.paragraph.background.reset();
    applyHtmlElement(look, tag, token, m_options.baseFont);
    element.characters = m_characterStyles.intern(look.characters, element.characters);
    element.paragraph = m_paragraphs.shared(look.paragraph);
    element.preservesSpace = look.preservesSpace;
    element.isHidden = look.isHidden;
    if (!element.officeList || !element.officeList->isMarker) {
        if (const auto list = officeListStyle(token))
            element.officeList = list;
    }
}

void Reader::endTag(const HtmlToken& token)
{
    const HtmlTag tag = htmlTag(token.name);
    if (tag == HtmlTag::br)
        return voidElement(tag, token);
    const std::size_t index = find(tag, nameOf(tag, token));
    if (index > 0)
        closeUpTo(index);
}

// The place of the innermost open element of this kind, 0 for none. What is outside of a cell is
// not closed from within it.
std::size_t Reader::find(HtmlTag tag, std::size_t name) const
{
    if (m_openCount[std::size_t(tag)] == 0)
        return 0;
    const bool isTablePart = tag == HtmlTag::table || tag == HtmlTag::tr || isCell(tag) ||
                             tag == HtmlTag::tbody || tag == HtmlTag::thead ||
                             tag == HtmlTag::tfoot;
    for (std::size_t i = m_stack.size() - 1; i > 0; --i) {
        if (m_stack[i].tag == tag && m_stack[i].name == name)
            return i;
        if (isCell(m_stack[i].tag) && !isTablePart)
            return 0;
        if (m_stack[i].tag == HtmlTag::table)
            return 0;
    }
    return 0;
}

void Reader::closeUpTo(std::size_t index)
{
    while (m_stack.size() > index)
        closeTop();
}

void Reader::closeTop()
{
    const HtmlTag tag = top().tag;
    if (isBlock(tag))
        m_paragraphs.endBlock();
    const SharedCharacterStyle style = top().characters;
    if (top().breaksPageAfter)
        m_paragraphs.pageBreak(style, top().paragraph);
    const auto isMarker = [](const Element& element) {
        return element.officeList && element.officeList->isMarker;
    };
    if (isMarker(top()) && m_stack.size() > 1 && !isMarker(m_stack[m_stack.size() - 2]))
        endOfficeMarker();
    const bool isOfficeItem = tag == HtmlTag::p && top().officeList && !isMarker(top());
    m_stack.pop_back();
    --openCount(tag);
    if (tag == HtmlTag::li || isOfficeItem)
        m_paragraphs.endItem();
    else if ((tag == HtmlTag::ul || tag == HtmlTag::ol) && !m_lists.empty())
        m_lists.pop_back();
    else if (isCell(tag) && m_tableDepth == 1)
        m_paragraphs.table()->endCell(style);
    else if (tag == HtmlTag::table && --m_tableDepth == 0)
        m_paragraphs.endTable();
}

void Reader::closeImplied(HtmlTag tag)
{
    const auto closeFirstOf = [&](std::initializer_list<HtmlTag> tags,
                                  std::initializer_list<HtmlTag> bounds) {
        if (std::ranges::all_of(tags, [&](HtmlTag wanted) { return openCount(wanted) == 0; }))
            return;
        for (std::size_t i = m_stack.size() - 1; i > 0; --i) {
            if (std::ranges::find(tags, m_stack[i].tag) != tags.end())
                return closeUpTo(i);
            if (std::ranges::find(bounds, m_stack[i].tag) != bounds.end())
                return;
        }
    };
    using enum HtmlTag;
    if (isCell(tag))
        closeFirstOf({td, th}, {table});
    else if (tag == tr || tag == tbody || tag == thead || tag == tfoot)
        closeFirstOf({tr, tbody, thead, tfoot}, {table});
    else if (tag == li)
        closeFirstOf({li}, {ul, ol, table, td, th});
    else if (tag == dt || tag == dd)
        closeFirstOf({dt, dd}, {dl, table, td, th});
    if (isBlock(tag) && tag != table)
        closeFirstOf({p}, {table, td, th, li, blockquote, div, section, body});
}

void Reader::startItem(const HtmlToken& token)
{
    HtmlList fallback;
    HtmlList& list = m_lists.empty() ? fallback : m_lists.back();
    bool isNumber = false;
    const int value = token.attribute(u"value").toInt(&isNumber);
    if (isNumber)
        list.next = value;
    const int level = std::clamp(int(m_lists.size()) - 1, 0, deepestList);
    HtmlList own = list;
    applyListStyle(own, token);
    list.next = std::min(list.next, 1'000'000'000) + 1;
    if (!top().isHidden)
        m_paragraphs.beginItem(htmlMarker(own), level, top().characters->foreground);
}

void Reader::endOfficeMarker()
{
    const Element& element = top();
    const QString family = element.characters->font.value_or(m_options.baseFont).family;
    const QString marker = officeMarker(std::exchange(m_officeMarker, {}), family);
    const auto isItem = [](const Element& outer) {
        return outer.officeList && !outer.officeList->isMarker;
    };
    const auto item = std::ranges::find_if(m_stack.rbegin(), m_stack.rend(), isItem);
    if (marker.isEmpty() || item == m_stack.rend() || element.isHidden)
        return;
    // The number of a heading is part of its text.
    const bool isHeading = std::ranges::any_of(m_stack, [](const Element& outer) {
        return outer.tag >= HtmlTag::h1 && outer.tag <= HtmlTag::h6;
    });
    if (isHeading)
        m_paragraphs.collapsedText(marker + u' ', element.characters, element.paragraph);
    else
        m_paragraphs.beginItem(marker, item->officeList->level, element.characters->foreground);
}

// A table within a cell becomes lines of that cell.
void Reader::startTableElement(HtmlTag tag, const HtmlToken& token)
{
    if (m_stack.size() >= deepestElement)
        return;
    if (tag == HtmlTag::table) {
        if (++m_tableDepth == 1)
            m_paragraphs.beginTable(token, m_options.newId());
    } else if (m_tableDepth == 1 && tag == HtmlTag::tr) {
        m_paragraphs.table()->beginRow();
    } else if (m_tableDepth == 1) {
        m_paragraphs.table()->beginCell(token);
    }
}

void Reader::voidElement(HtmlTag tag, const HtmlToken& token)
{
    switch (tag) {
    case HtmlTag::br:
        if (top().isHidden)
            return;
        if (breaksPage(token, u"before") || breaksPage(token, u"after"))
            return m_paragraphs.pageBreak(top().characters, top().paragraph);
        return m_paragraphs.lineBreak(top().characters, top().paragraph);
    case HtmlTag::hr:
        m_paragraphs.endBlock();
        literal(u"———"_s);
        return m_paragraphs.endBlock();
    case HtmlTag::img:
        return image(token);
    case HtmlTag::input:
        if (token.attribute(u"type").compare(u"checkbox", Qt::CaseInsensitive) == 0 &&
            !top().isHidden)
            checkBox(!token.attribute(u"checked").isNull());
        return;
    default:
        return;
    }
}

void Reader::checkBox(bool isTicked)
{
    const QString box(
        QChar(isTicked ? ListContinuationHelper::tickedBox : ListContinuationHelper::emptyBox));
    if (!m_paragraphs.replaceMarker(box))
        literal(box + u' ');
}

void Reader::image(const HtmlToken& token)
{
    if (top().isHidden)
        return;
    const QString source = token.attribute(u"src");
    const qsizetype comma = source.indexOf(u',');
    const QStringView header = QStringView(source).first(std::max<qsizetype>(0, comma));
    QByteArray data;
    if (header.startsWith(u"data:image/", Qt::CaseInsensitive) &&
        header.endsWith(u";base64", Qt::CaseInsensitive))
        data = QByteArray::fromBase64(QStringView(source).sliced(comma + 1).toLatin1());
    if (!data.startsWith("\x89PNG\r\n\x1a\n") && !data.startsWith("\xff\xd8\xff")) {
        m_account.pictures += isDecoration(token) ? 0 : 1;
        return m_paragraphs.alternativeText(token.attribute(u"alt"), top().characters,
                                            top().paragraph);
    }
    auto image = OrvaneNoteImageAttachment::fromImageData(data, std::nullopt, m_options.newId());
    const auto width = parseCssLength(token.attribute(u"width"), 0, 0);
    const auto height = parseCssLength(token.attribute(u"height"), 0, 0);
    const double aspect = image.originalSize.height() / image.originalSize.width();
    if (width && *width > 0)
        image.renderedSize = {*width, height && *height > 0 ? *height : *width * aspect};
    else if (height && *height > 0)
        image.renderedSize = {*height / aspect, *height};
    CharacterStyle style = *top().characters;
    style.attachment = TextAttachment(std::move(image));
    m_paragraphs.object(std::move(style), top().paragraph);
}

} // namespace

namespace {

// The clipboard of some systems puts lines before the document that tell where in it the selection
// begins and ends.
QStringView withoutClipboardHeader(QStringView html)
{
    const qsizetype begin = html.indexOf(u'<');
    const bool hasHeader = begin > 0 && html.trimmed().startsWith(u"Version:") &&
                           html.first(begin).contains(u"StartHTML:");
    return hasHeader ? html.sliced(begin) : html;
}

} // namespace

ImportedText readHtml(QStringView html, const HtmlReadOptions& options)
{
    html = withoutClipboardHeader(html);
    Reader reader(html.size(), options);
    reader.read(html);
    return reader.finish();
}

ImportedText readHtmlBytes(QByteArrayView html, const HtmlReadOptions& options)
{
    QStringDecoder decoder = QStringDecoder::decoderForHtml(html);
    if (!decoder.isValid())
        decoder = QStringDecoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(html);
    return readHtml(text, options);
}

} // namespace orvane
