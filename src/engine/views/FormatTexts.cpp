#include "engine/views/FormatTexts.h"

#include <algorithm>

#include "platform/Text.h"

namespace {

const FormatDescription kBesideTheTable[] = {
    {L"HTML Format", L"Text", L"Webseite (HTML)"},
    {L"text/html", L"Text", L"Webseite (HTML)"},
    {L"application/xhtml+xml", L"Text", L"Webseite (XHTML)"},
    {L"text/plain", L"Text", L"Text ohne Formate"},
    {L"UTF8_STRING", L"Text", L"Text in Unicode (UTF-8)"},
    {L"LOCALE", L"Text", L"Sprache des Textes"},
    {L"text/rtf", L"Text", L"Formatierter Text (RTF)"},
    {L"text/richtext", L"Text", L"Formatierter Text (RTF)"},
    {L"application/rtf", L"Text", L"Formatierter Text (RTF)"},
    {L"Rich Text Format Without Objects", L"Text", L"Formatierter Text ohne Objekte"},
    {L"RTF As Text", L"Text", L"Formatierter Text als Text"},
    {L"UniformResourceLocator", L"Text", L"Internetadresse"},
    {L"UniformResourceLocatorW", L"Text", L"Internetadresse in Unicode"},
    {L"Chromium internal source URL", L"Text", L"Herkunft der Webseite"},
    {L"chromium/x-source-url", L"Text", L"Herkunft der Webseite"},

    {L"PNG", L"Paint", L"PNG-Bild"},
    {L"image/png", L"Paint", L"PNG-Bild"},
    {L"JFIF", L"Paint", L"JPEG-Bild"},
    {L"JPEG", L"Paint", L"JPEG-Bild"},
    {L"image/jpeg", L"Paint", L"JPEG-Bild"},
    {L"GIF", L"Paint", L"GIF-Bild"},
    {L"image/gif", L"Paint", L"GIF-Bild"},
    {L"TIFF", L"Paint", L"TIFF-Bild"},
    {L"image/tiff", L"Paint", L"TIFF-Bild"},
    {L"image/bmp", L"Paint", L"Bitmap-Datei"},
    {L"image/webp", L"Paint", L"WebP-Bild"},
    {L"MAX", L"Paint", L"Geräteunabhängige Bitmap (Version 5)"},
    {L"image/svg+xml", L"Paint", L"Zeichnung (SVG)"},
    {L"image/x-inkscape-svg", L"Paint", L"Zeichnung aus Inkscape"},
    {L"image/x-emf", L"Paint", L"Erweitertes Metafile"},
    {L"image/x-wmf", L"Paint", L"MetaFile"},
    {L"application/pdf", L"Paint", L"PDF-Dokument"},
    {L"Art::GVML ClipFormat", L"Paint", L"Zeichnung aus einem Office-Programm"},
    {L"Drawing Format", L"Paint", L"Zeichnung aus einem Office-Programm"},
    {L"GDIMetaFile", L"Paint", L"Zeichnung aus LibreOffice"},
    {L"SVXB (StarView Bitmap/Animation)", L"Paint", L"Bild aus LibreOffice"},

    {L"Sylk", L"Text", L"Tabelle (SYLK)"},
    {L"DIF", L"Text", L"Tabelle (DIF)"},
    {L"Csv", L"Text", L"Tabelle, durch Zeichen getrennt"},
    {L"text/csv", L"Text", L"Tabelle, durch Zeichen getrennt"},
    {L"XML Spreadsheet", L"Text", L"Excel-Tabelle (XML)"},
    {L"Biff5", L"OLE", L"Excel-Tabelle (Biff5)"},
    {L"Biff8", L"OLE", L"Excel-Tabelle (Biff8)"},
    {L"Biff12", L"OLE", L"Excel-Tabelle (Biff12)"},
    {L"application/x-gnumeric", L"OLE", L"Tabelle aus Gnumeric"},
    {L"application/vnd.oasis.opendocument.text", L"OLE", L"OpenDocument-Text"},

    {L"Files", L"OLE", L"Dateiliste"},
    {L"text/uri-list", L"OLE", L"Dateiliste"},
    {L"x-special/gnome-copied-files", L"OLE", L"Dateiliste"},
    {L"FileName", L"OLE", L"Dateiname, kurz"},
    {L"FileNameW", L"OLE", L"Dateiname in Unicode"},
    {L"FileGroupDescriptorW", L"OLE", L"Namen von Dateien"},
    {L"FileContents", L"OLE", L"Inhalt von Dateien"},
    {L"Shell IDList Array", L"OLE", L"Einträge aus dem Explorer"},
    {L"Preferred DropEffect", L"OLE", L"Kopieren oder Verschieben"},

    {L"Star Embed Source (XML)", L"OLE", L"Einzubettendes Objekt aus LibreOffice"},
    {L"Star Object Descriptor (XML)", L"OLE", L"Beschreibung des Objekts aus LibreOffice"},
    {L"Link", L"OLE", L"Verknüpfung"},
    {L"Embedded Object", L"OLE", L"Eingebettetes Objekt"},
    {L"CanIncludeInClipboardHistory", L"Help", L"Ob der Verlauf es aufnehmen darf"},
    {L"NXClip", L"Clip", L"Kennzeichen dieses Programms"},
};

const FormatDescription* FindBesideTheTable(const std::wstring& name) {
    const auto found = std::find_if(std::begin(kBesideTheTable), std::end(kBesideTheTable),
                                    [&](const FormatDescription& known) { return known.Name == name; });
    return found != std::end(kBesideTheTable) ? found : nullptr;
}

// Of "kind;parameters" the name on Windows, if the parameters have one, else the kind.
std::wstring PlainName(const std::wstring& name) {
    const std::size_t kindEnd = name.find(L';');
    if (kindEnd == std::wstring::npos) return name;
    constexpr std::wstring_view kWindowsName = L"windows_formatname=\"";
    const std::size_t given = name.find(kWindowsName);
    if (given == std::wstring::npos) return name.substr(0, kindEnd);
    const std::size_t begin = given + kWindowsName.size();
    return name.substr(begin, name.find(L'"', begin) - begin);
}

std::wstring WithThousands(std::int64_t number) {
    std::wstring digits = NumberText(number);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, 1, L'.');
    }
    return digits;
}

std::wstring Bytes(std::int64_t number) {
    return WithThousands(number) + (number == 1 ? L" Byte" : L" Bytes");
}

}  // namespace

const FormatDescription& DescriptionOf(const std::wstring& formatName) {
    const std::int16_t row = FormatDescriptionIndex(formatName);
    const FormatDescription* const known = row == 0 ? FindBesideTheTable(PlainName(formatName)) : nullptr;
    return known != nullptr ? *known : FormatDescriptionAt(row);
}

std::wstring SizeText(std::int64_t bytes) {
    constexpr std::int64_t kStep = 1024;
    if (bytes < kStep) return Bytes(bytes);
    const wchar_t* unit = L" KB";
    // In tenths; from 999,5 on it would be read as a thousand.
    std::int64_t tenths = (bytes * 10 + kStep / 2) / kStep;
    constexpr std::int64_t kThousand = 9995;
    if (tenths >= kThousand) {
        unit = L" MB";
        tenths = (bytes * 10 + kStep * kStep / 2) / (kStep * kStep);
    }
    if (tenths >= 100) return WithThousands((tenths + 5) / 10) + unit;
    return NumberText(tenths / 10) + L"," + NumberText(tenths % 10) + unit;
}

std::wstring ExactSizeText(std::int64_t bytes) {
    return Bytes(bytes);
}
