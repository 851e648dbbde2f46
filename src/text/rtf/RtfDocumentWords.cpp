// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfWords.h"

#include <QCoreApplication>

namespace orvane {
namespace {

void enter(RtfInterpreter& interpreter, RtfParameter, int destination)
{
    interpreter.state().destination = RtfDestination(destination);
}

void skip(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.skipGroup();
}

void collect(RtfInterpreter& interpreter, RtfParameter, int destination)
{
    interpreter.collect(RtfDestination(destination));
}

// A destination whose contents are read where it stands.
void readThrough(RtfInterpreter&, RtfParameter, int) {}

void beginPicture(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (interpreter.state().destination == RtfDestination::shape) {
        interpreter.placeholders.append(
            QCoreApplication::translate("RtfReader", "[Floating picture left out]"));
        return interpreter.skipGroup();
    }
    interpreter.state().destination = RtfDestination::picture;
    interpreter.picture = {};
}

void beginField(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.state().isField = true;
}

void beginUnicodeAlternative(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.state().destination = RtfDestination::body;
}

// Of a shape in the text its words are read; of the one that fills the page, its colour.
void beginShape(RtfInterpreter& interpreter, RtfParameter, int)
{
    const RtfDestination present = interpreter.state().destination;
    if (present == RtfDestination::body)
        interpreter.state().destination = RtfDestination::shape;
    else if (present != RtfDestination::pageBackground && present != RtfDestination::shape)
        interpreter.skipGroup();
}

void beginShapePart(RtfInterpreter& interpreter, RtfParameter, int destination)
{
    if (interpreter.state().destination == RtfDestination::pageBackground)
        interpreter.collect(RtfDestination(destination));
    else if (interpreter.state().destination != RtfDestination::shape)
        interpreter.skipGroup(); // a shape's own may hold a picture
}

void beginAside(RtfInterpreter& interpreter, RtfParameter, int kind)
{
    interpreter.beginAside(RtfInterpreter::AsideKind(kind));
}

void beginTargetName(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (interpreter.state().destination == RtfDestination::body)
        interpreter.collect(RtfDestination::targetName);
    else
        interpreter.skipGroup();
}

void skipHeader(RtfInterpreter& interpreter, RtfParameter, int)
{
    if (interpreter.state().destination == RtfDestination::body)
        ++interpreter.account.headers;
    interpreter.skipGroup();
}

void setDocumentCodePage(RtfInterpreter& interpreter, RtfParameter parameter, int codePage)
{
    interpreter.documentCodePage = codePage > 0 ? codePage : parameter.value;
}

void setDefaultFont(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.defaultFont = parameter.value;
}

void setDefaultTab(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.defaultTab = std::clamp(parameter.value, 0, 31'680);
}

void setFontCharset(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.state().destination == RtfDestination::fontTable) {
        RtfInterpreter::Font& font = interpreter.fonts[interpreter.fontInTable];
        font.charset = parameter.value;
        font.codePage = codePageOfCharset(parameter.value);
    }
}

void setFontCodePage(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    if (interpreter.state().destination == RtfDestination::fontTable)
        interpreter.fonts[interpreter.fontInTable].codePage = parameter.value;
}

void setColorChannel(RtfInterpreter& interpreter, RtfParameter parameter, int shift)
{
    const QRgb channel = QRgb(std::clamp(parameter.value, 0, 255)) << shift;
    const QRgb others = interpreter.pendingColor & ~(QRgb(0xFF) << shift);
    interpreter.pendingColor = others | channel | 0xFF000000U;
}

void setPictureFormat(RtfInterpreter& interpreter, RtfParameter, int format)
{
    interpreter.picture.kind =
        format == 0 ? QCoreApplication::translate("RtfReader", "metafile", "kind of picture")
                    : QCoreApplication::translate("RtfReader", "bitmap", "kind of picture");
}

template <int RtfInterpreter::Picture::*member>
void setPictureNumber(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.picture.*member = std::clamp(parameter.value, 0, 100'000);
}

void setUnicodeSkip(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.state().unicodeSkip = std::clamp(parameter.valueOr(1), 0, 1'000);
}

void insertUnicode(RtfInterpreter& interpreter, RtfParameter parameter, int)
{
    interpreter.insertUnicode(parameter.value);
}

void insertCharacter(RtfInterpreter& interpreter, RtfParameter, int character)
{
    const auto unit = char16_t(character);
    interpreter.insertText(QStringView(&unit, 1));
}

void breakColumn(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.breakColumn();
}

void breakPage(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.breakPage();
}

void endParagraph(RtfInterpreter& interpreter, RtfParameter, int)
{
    interpreter.endParagraph();
}

void addDestinations(RtfWordTable& table)
{
    table.insert({
        {"fonttbl", {enter, int(RtfDestination::fontTable)}},
        {"colortbl", {enter, int(RtfDestination::colorTable)}},
        {"fldinst", {collect, int(RtfDestination::fieldInstruction)}},
        {"listtext", {collect, int(RtfDestination::listText)}},
        {"pntext", {collect, int(RtfDestination::listText)}},
        {"background", {enter, int(RtfDestination::pageBackground)}},
        {"field", {beginField}},
        {"pict", {beginPicture}},
        {"shp", {beginShape}},
        {"shpinst", {beginShape}},
        {"do", {beginShape}},
        {"shptxt", {beginAside, int(RtfInterpreter::AsideKind::textBox)}},
        {"dptxbxtext", {beginAside, int(RtfInterpreter::AsideKind::textBox)}},
        {"footnote", {beginAside, int(RtfInterpreter::AsideKind::footnote)}},
        {"annotation", {beginAside, int(RtfInterpreter::AsideKind::comment)}},
        {"bkmkstart", {beginTargetName}},
        {"atnauthor", {collect, int(RtfDestination::commentAuthor)}},
        {"sn", {beginShapePart, int(RtfDestination::shapeName)}},
        {"sv", {beginShapePart, int(RtfDestination::shapeValue)}},
        {"shppict", {readThrough}},
        {"fldrslt", {readThrough}},
        {"cs", {readThrough}},
        {"upr", {enter, int(RtfDestination::replaced)}},
        {"ud", {beginUnicodeAlternative}},
    });
    for (const char* name :
         {"header", "headerl", "headerr", "headerf", "footer", "footerl", "footerr", "footerf"})
        table.insert({name, {skipHeader}});
    for (const char* name :
         {"stylesheet", "info",      "nonshppict", "shprslt", "revtbl",         "rsidtbl",
          "filetbl",    "xe",        "tc",         "bkmkend", "atnid",          "template",
          "private",    "ftnsep",    "ftnsepc",    "aftnsep", "aftnsepc",       "objdata",
          "objclass",   "objname",   "falt",       "panose",  "fontemb",        "fontfile",
          "themedata",  "datafield", "rxe",        "txe",     "nesttableprops", "picprop",
          "blipuid"})
        table.insert({name, {skip}});
}

void addCharacters(RtfWordTable& table)
{
    table.insert({
        {"u", {insertUnicode}},
        {"uc", {setUnicodeSkip}},
        {"par", {endParagraph}},
        {"sect", {endParagraph}},
        {"line", {insertCharacter, 0x2028, true}},
        {"lbr", {insertCharacter, 0x2028, true}},
        {"tab", {insertCharacter, 0x0009, true}},
        {"page", {breakPage, 0, true}},
        {"column", {breakColumn, 0, true}},
        {"emdash", {insertCharacter, 0x2014, true}},
        {"endash", {insertCharacter, 0x2013, true}},
        {"bullet", {insertCharacter, 0x2022, true}},
        {"lquote", {insertCharacter, 0x2018, true}},
        {"rquote", {insertCharacter, 0x2019, true}},
        {"ldblquote", {insertCharacter, 0x201C, true}},
        {"rdblquote", {insertCharacter, 0x201D, true}},
        {"emspace", {insertCharacter, 0x2003, true}},
        {"enspace", {insertCharacter, 0x2002, true}},
        {"qmspace", {insertCharacter, 0x2005, true}},
        {"zwj", {insertCharacter, 0x200D, true}},
        {"zwnj", {insertCharacter, 0x200C, true}},
        {"ltrmark", {insertCharacter, 0x200E, true}},
        {"rtlmark", {insertCharacter, 0x200F, true}},
    });
}

} // namespace

void addDocumentWords(RtfWordTable& table)
{
    addDestinations(table);
    addCharacters(table);
    table.insert({
        {"ansicpg", {setDocumentCodePage}},
        {"mac", {setDocumentCodePage, 10000}},
        {"pc", {setDocumentCodePage, 437}},
        {"pca", {setDocumentCodePage, 850}},
        {"deff", {setDefaultFont}},
        {"deftab", {setDefaultTab}},
        {"fcharset", {setFontCharset}},
        {"cpg", {setFontCodePage}},
        {"red", {setColorChannel, 16}},
        {"green", {setColorChannel, 8}},
        {"blue", {setColorChannel, 0}},
        {"wmetafile", {setPictureFormat, 0}},
        {"emfblip", {setPictureFormat, 0}},
        {"macpict", {setPictureFormat, 0}},
        {"pmmetafile", {setPictureFormat, 0}},
        {"dibitmap", {setPictureFormat, 1}},
        {"wbitmap", {setPictureFormat, 1}},
        {"picwgoal", {setPictureNumber<&RtfInterpreter::Picture::width>}},
        {"pichgoal", {setPictureNumber<&RtfInterpreter::Picture::height>}},
        {"picscalex", {setPictureNumber<&RtfInterpreter::Picture::scaleX>}},
        {"picscaley", {setPictureNumber<&RtfInterpreter::Picture::scaleY>}},
    });
}

const RtfWord* findRtfWord(QByteArrayView name)
{
    static const RtfWordTable table = [] {
        RtfWordTable words;
        addCharacterWords(words);
        addParagraphWords(words);
        addTableWords(words);
        addNumberingWords(words);
        addDocumentWords(words);
        return words;
    }();
    const auto found = table.find(std::string_view(name.data(), std::size_t(name.size())));
    return found == table.end() ? nullptr : &found->second;
}

} // namespace orvane
