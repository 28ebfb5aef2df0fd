#include "engine/clipboard/OrdinaryFile.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "engine/clipboard/ClipFileLayout.h"
#include "engine/clipboard/DibLayout.h"
#include "engine/clipboard/FormatNames.h"
#include "platform/ByteBuffer.h"
#include "platform/MetafileBits.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr FormatNumber kWaveFormat = 12;

struct NumberedForm {
    FormatNumber id;
    OrdinaryForm form;
};
constexpr NumberedForm kNumberedForms[] = {
    {kUnicodeFormat, {OrdinaryKind::Text, L".txt", 0}},
    {kTextFormat, {OrdinaryKind::Text, L".txt", 1}},
    {kDibV5Format, {OrdinaryKind::Picture, L".bmp", 4}},
    {kDibFormat, {OrdinaryKind::Picture, L".bmp", 5}},
    {kTiffFormat, {OrdinaryKind::Picture, L".tif", 6}},
    {kEnhancedMetafileFormat, {OrdinaryKind::Drawing, L".emf", 1}},
    {kMetafilePictureFormat, {OrdinaryKind::Drawing, L".wmf", 2}},
    {kFilesFormat, {OrdinaryKind::FileList, L".dateien.txt", 0}},
    {kWaveFormat, {OrdinaryKind::Sound, L".wav", 0}},
};

struct NamedForm {
    const wchar_t* name;
    OrdinaryForm form;
};
constexpr NamedForm kNamedForms[] = {
    {L"HTML Format", {OrdinaryKind::WebPage, L".html", 0}},
    {L"text/html", {OrdinaryKind::WebPage, L".html", 1}},
    {L"Rich Text Format", {OrdinaryKind::RichText, L".rtf", 0}},
    {L"Rich Text Format Without Objects", {OrdinaryKind::RichText, L".rtf", 1}},
    {L"text/rtf", {OrdinaryKind::RichText, L".rtf", 2}},
    {L"PNG", {OrdinaryKind::Picture, L".png", 0}},
    {L"image/png", {OrdinaryKind::Picture, L".png", 1}},
    {L"GIF", {OrdinaryKind::Picture, L".gif", 2}},
    {L"image/gif", {OrdinaryKind::Picture, L".gif", 2}},
    {L"JFIF", {OrdinaryKind::Picture, L".jpg", 3}},
    {L"image/jpeg", {OrdinaryKind::Picture, L".jpg", 3}},
    {L"image/svg+xml", {OrdinaryKind::Drawing, L".svg", 0}},
    {L"Csv", {OrdinaryKind::Table, L".csv", 0}},
};

bool IsRegistered(FormatNumber id) {
    return !IsStandardFormat(id) && id != kDibV5Format;
}

std::string_view Characters(const Bytes& data) {
    return {reinterpret_cast<const char*>(data.data()), data.size()};
}

Bytes BytesOf(std::string_view characters) {
    return {characters.begin(), characters.end()};
}

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n";

// UTF-16 as the clipboard has it, the lower byte first.
Bytes Utf16Bytes(const std::wstring& text) {
    Bytes bytes;
    for (const char16_t unit : Utf16FromText(text)) {
        bytes.push_back(static_cast<std::uint8_t>(unit));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    }
    return bytes;
}

std::string_view UpToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::wstring TextOfRecord(const ClipRecord& record, const Bytes& data) {
    if (record.id == kTextFormat) return TextFromAnsi(UpToZero(Characters(data)));
    const std::wstring text = TextFromUtf16(Characters(data));
    return text.substr(0, text.find(L'\0'));
}

// The number behind a key such as "StartHTML:" in the head of a web page on the clipboard.
std::optional<std::size_t> PlaceInHead(std::string_view page, std::string_view key) {
    const std::size_t head = page.find('<');
    const std::size_t at = page.substr(0, head).find(key);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view line = page.substr(at + key.size());
    const auto number = ParseInt32(TextFromAnsi(line.substr(0, line.find_first_of("\r\n"))));
    if (!number || *number < 0 || static_cast<std::size_t>(*number) > page.size()) return std::nullopt;
    return static_cast<std::size_t>(*number);
}

std::string_view PageWithoutHead(std::string_view page) {
    page = UpToZero(page);
    if (!page.starts_with("Version:")) return page;
    for (const auto& [start, end] :
         {std::pair("StartHTML:", "EndHTML:"), std::pair("StartFragment:", "EndFragment:")}) {
        const auto first = PlaceInHead(page, start);
        const auto last = PlaceInHead(page, end);
        if (first && last && *first > 0 && *first < *last) return page.substr(*first, *last - *first);
    }
    const std::size_t head = page.find('<');
    return head == std::string_view::npos ? page : page.substr(head);
}

// --- Bitmaps: a file has 14 bytes in front of what the clipboard holds. ---

constexpr std::size_t kBitmapFileHeader = 14;

std::optional<Bytes> BitmapFile(const Bytes& dib) {
    const auto layout = CheckDib(dib);
    if (!layout) return std::nullopt;
    ByteWriter writer;
    writer.Bytes("BM", 2);
    writer.UInt32(static_cast<std::uint32_t>(kBitmapFileHeader + dib.size()));
    writer.UInt32(0);
    writer.UInt32(static_cast<std::uint32_t>(kBitmapFileHeader + layout->pixelOffset));
    writer.Bytes(dib.data(), dib.size());
    return writer.TakeImage();
}

// None when the pixels do not follow the header: the clipboard cannot say where they are.
std::optional<Bytes> DibOfBitmapFile(const Bytes& file) {
    if (file.size() <= kBitmapFileHeader || !Characters(file).starts_with("BM")) return std::nullopt;
    ByteReader reader(file);
    reader.Skip(10);
    const std::size_t pixels = reader.UInt32();
    Bytes dib(file.begin() + kBitmapFileHeader, file.end());
    const auto layout = CheckDib(dib);
    if (!layout || kBitmapFileHeader + layout->pixelOffset != pixels) return std::nullopt;
    return dib;
}

// --- Metafiles: a file that can be placed has 22 bytes in front of the bits. ---

constexpr std::size_t kPlaceableHeader = 22;
constexpr std::uint32_t kPlaceableKey = 0x9AC6CDD7;
constexpr std::int32_t kHundredthsOfMillimetres = 2540;  // to the inch
constexpr std::int32_t kIsotropic = 7;
constexpr std::int32_t kAnisotropic = 8;

// The numbers of the header by 16 bits, and their check sum.
Bytes PlaceableHeader(std::int32_t width, std::int32_t height, std::int32_t unitsPerInch) {
    ByteWriter writer;
    writer.UInt32(kPlaceableKey);
    for (const std::int32_t number : {0, 0, 0, width, height, unitsPerInch, 0, 0})
        writer.UInt16(static_cast<std::uint16_t>(number));
    Bytes header = writer.TakeImage();
    std::uint16_t sum = 0;
    for (std::size_t at = 0; at < header.size(); at += 2)
        sum ^= static_cast<std::uint16_t>(header[at] | header[at + 1] << 8);
    header.push_back(static_cast<std::uint8_t>(sum));
    header.push_back(static_cast<std::uint8_t>(sum >> 8));
    return header;
}

std::optional<Bytes> PlaceableMetafile(const Bytes& data) {
    if (data.size() <= kPictureHeaderSize) return std::nullopt;
    const Bytes bits(data.begin() + kPictureHeaderSize, data.end());
    if (!AreMetafileBits(bits.data(), bits.size())) return std::nullopt;
    ByteReader reader(data);
    const std::int32_t mode = reader.Int32();
    std::int32_t width = reader.Int32(), height = reader.Int32();
    // Only these modes say in the picture's header how large it is, the others leave it to the bits.
    const bool sized = (mode == kIsotropic || mode == kAnisotropic) && width > 0 && height > 0;
    if (!sized) width = height = 10 * kHundredthsOfMillimetres / 2;
    std::int32_t units = kHundredthsOfMillimetres;
    for (; std::max(width, height) > INT16_MAX; units /= 2) {
        width /= 2;
        height /= 2;
    }
    Bytes file = PlaceableHeader(width, height, units);
    file.insert(file.end(), bits.begin(), bits.end());
    return file;
}

std::optional<Bytes> PictureOfMetafile(const Bytes& file) {
    if (file.size() <= kPlaceableHeader || ByteReader(file).UInt32() != kPlaceableKey) return std::nullopt;
    if (!AreMetafileBits(file.data() + kPlaceableHeader, file.size() - kPlaceableHeader)) return std::nullopt;
    ByteReader reader(file);
    reader.Skip(6);
    const std::int32_t left = reader.Int16(), top = reader.Int16();
    const std::int32_t right = reader.Int16(), bottom = reader.Int16();
    const std::int32_t units = std::max<std::int32_t>(reader.UInt16(), 1);
    ByteWriter writer;
    writer.Int32(kAnisotropic);
    writer.Int32(std::max(right - left, 1) * kHundredthsOfMillimetres / units);
    writer.Int32(std::max(bottom - top, 1) * kHundredthsOfMillimetres / units);
    writer.Int32(0);
    writer.Bytes(file.data() + kPlaceableHeader, file.size() - kPlaceableHeader);
    return writer.TakeImage();
}

// --- File lists: a header that says where the paths begin and what letters they have. ---

constexpr std::size_t kDropHeader = 20;

Bytes FileListOf(const std::wstring& path) {
    ByteWriter writer;
    writer.UInt32(kDropHeader);
    for (int number = 0; number < 3; ++number)
        writer.Int32(0);
    writer.Int32(1);
    const Bytes paths = Utf16Bytes(path + std::wstring(2, L'\0'));
    writer.Bytes(paths.data(), paths.size());
    return writer.TakeImage();
}

std::vector<std::wstring> PathsInFileList(const Bytes& data) {
    if (data.size() < kDropHeader) return {};
    ByteReader reader(data);
    const std::size_t first = reader.UInt32();
    reader.Skip(12);
    const bool wide = reader.Int32() != 0;
    if (first < kDropHeader || first > data.size()) return {};
    const std::string_view letters = Characters(data).substr(first);
    const std::wstring all = wide ? TextFromUtf16(letters) : TextFromAnsi(letters);
    std::vector<std::wstring> paths;
    for (std::size_t at = 0; at < all.size() && all[at] != L'\0';) {
        const std::size_t end = std::min(all.find(L'\0', at), all.size());
        paths.push_back(all.substr(at, end - at));
        at = end + 1;
    }
    return paths;
}

// --- What a file is ---

bool EndsWith(const std::wstring& path, std::initializer_list<const wchar_t*> extensions) {
    const std::wstring lower = LowerCase(path);
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](const wchar_t* extension) { return lower.ends_with(extension); });
}

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// Control characters that do not move on a page: no text has them.
constexpr std::string_view kNoText("\0\1\2\3\4\5\6\7\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17", 18);

bool IsText(std::string_view bytes) {
    return !bytes.empty() &&
           (bytes.starts_with(kUtf16Mark) || bytes.find_first_of(kNoText) == std::string_view::npos);
}

// A mark in front says how it is written. Without one it is as programs of today write text, or in the code
// page of this system.
std::wstring TextOfFile(std::string_view bytes) {
    if (bytes.starts_with(kUtf16Mark)) return TextFromUtf16(bytes.substr(kUtf16Mark.size()));
    if (bytes.starts_with(kUtf8Mark)) return TextFromUtf8(bytes.substr(kUtf8Mark.size()));
    return IsUtf8(bytes) ? TextFromUtf8(bytes) : TextFromAnsi(bytes);
}

Bytes WithZero(std::string_view text) {
    Bytes bytes = BytesOf(text);
    bytes.push_back(0);
    return bytes;
}

MadeRecord RegisteredRecord(const wchar_t* name, Bytes data) {
    constexpr FormatNumber kAnyRegistered = 0xC000;  // the name counts
    return {kAnyRegistered, name, std::move(data)};
}

void AppendTexts(std::vector<MadeRecord>& records, const std::wstring& text) {
    records.push_back({kUnicodeFormat, FormatNameOf(kUnicodeFormat), Utf16Bytes(text + L'\0')});
    records.push_back({kTextFormat, FormatNameOf(kTextFormat), WithZero(AnsiFromText(text))});
}

// A web page as the clipboard has it, with the places of its parts in front.
Bytes PageWithHead(std::string_view page) {
    const auto number = [](std::size_t value) {
        std::string digits = std::to_string(value);
        return std::string(10 - std::min<std::size_t>(digits.size(), 10), '0') + digits;
    };
    const std::size_t head = std::string_view(
                                 "Version:0.9\r\nStartHTML:0123456789\r\nEndHTML:0123456789\r\n"
                                 "StartFragment:0123456789\r\nEndFragment:0123456789\r\n")
                                 .size();
    const std::string start = number(head), end = number(head + page.size());
    return WithZero("Version:0.9\r\nStartHTML:" + start + "\r\nEndHTML:" + end +
                    "\r\nStartFragment:" + start + "\r\nEndFragment:" + end + "\r\n" + std::string(page));
}

std::optional<MadeRecord> PictureRecord(const Bytes& bytes) {
    const std::string_view front = Characters(bytes);
    if (front.starts_with(kPngSignature)) return RegisteredRecord(L"PNG", bytes);
    if (front.starts_with("\xFF\xD8\xFF")) return RegisteredRecord(L"JFIF", bytes);
    if (front.starts_with("GIF8")) return RegisteredRecord(L"GIF", bytes);
    if (auto dib = DibOfBitmapFile(bytes)) return MadeRecord{kDibFormat, FormatNameOf(kDibFormat), *dib};
    if (AreEnhancedMetafileBits(bytes.data(), bytes.size()))
        return MadeRecord{kEnhancedMetafileFormat, FormatNameOf(kEnhancedMetafileFormat), bytes};
    if (auto picture = PictureOfMetafile(bytes))
        return MadeRecord{kMetafilePictureFormat, FormatNameOf(kMetafilePictureFormat), *picture};
    return std::nullopt;
}

}  // namespace

std::optional<OrdinaryForm> OrdinaryFormOf(const ClipRecord& record) {
    for (const NumberedForm& row : kNumberedForms)
        if (row.id == record.id) return row.form;
    if (!IsRegistered(record.id)) return std::nullopt;
    for (const NamedForm& row : kNamedForms)
        if (row.name == record.name) return row.form;
    return std::nullopt;
}

std::optional<Bytes> OrdinaryBytes(const ClipRecord& record, const Bytes& data) {
    const auto form = OrdinaryFormOf(record);
    if (!form || data.empty()) return std::nullopt;
    switch (record.id) {
        case kUnicodeFormat:
        case kTextFormat:
            return BytesOf(Utf8FromText(TextOfRecord(record, data)));
        case kDibFormat:
        case kDibV5Format:
            return BitmapFile(data);
        case kMetafilePictureFormat:
            return PlaceableMetafile(data);
        case kEnhancedMetafileFormat:
            if (!AreEnhancedMetafileBits(data.data(), data.size())) return std::nullopt;
            return data;
        case kFilesFormat: {
            std::wstring lines;
            for (const std::wstring& path : PathsInFileList(data))
                lines += path + L"\r\n";
            return lines.empty() ? std::nullopt : std::optional(BytesOf(Utf8FromText(lines)));
        }
        default:
            break;
    }
    if (form->kind == OrdinaryKind::WebPage) return BytesOf(PageWithoutHead(Characters(data)));
    if (form->kind == OrdinaryKind::RichText || form->kind == OrdinaryKind::Table)
        return BytesOf(UpToZero(Characters(data)));
    return data;
}

std::vector<ClipRecord> BestOfEachKind(const std::vector<ClipRecord>& records) {
    std::vector<ClipRecord> best;
    for (const ClipRecord& record : records) {
        const auto form = OrdinaryFormOf(record);
        if (!form || record.size < 1) continue;
        const auto same = std::find_if(best.begin(), best.end(), [&](const ClipRecord& other) {
            return OrdinaryFormOf(other)->kind == form->kind;
        });
        if (same == best.end())
            best.push_back(record);
        else if (form->rank < OrdinaryFormOf(*same)->rank)
            *same = record;
    }
    std::stable_sort(best.begin(), best.end(), [](const ClipRecord& a, const ClipRecord& b) {
        return OrdinaryFormOf(a)->kind < OrdinaryFormOf(b)->kind;
    });
    return best;
}

std::wstring BeginningOfText(const ClipRecord& record, const Bytes& data) {
    const auto form = OrdinaryFormOf(record);
    if (!form) return {};
    if (form->kind == OrdinaryKind::Text) return TextOfRecord(record, data);
    if (form->kind == OrdinaryKind::Table) return TextFromAnsi(UpToZero(Characters(data)));
    return {};
}

std::vector<std::wstring> PathsIn(const ClipRecord& record, const Bytes& data) {
    return record.id == kFilesFormat ? PathsInFileList(data) : std::vector<std::wstring>();
}

std::optional<PictureSize> PictureSizeOf(const ClipRecord& record, const Bytes& data) {
    if (record.id == kDibFormat || record.id == kDibV5Format) {
        const auto layout = CheckDibHead(data, static_cast<std::size_t>(record.size));
        if (layout) return PictureSize{layout->width, layout->height};
    }
    constexpr std::size_t kPngSize = 16;  // where it stands, the higher byte first
    const auto number = [&](std::size_t at) {
        return data[at] << 24 | data[at + 1] << 16 | data[at + 2] << 8 | data[at + 3];
    };
    const bool isPng = data.size() >= kPngSize + 8 && Characters(data).starts_with(kPngSignature);
    if (isPng) return PictureSize{number(kPngSize), number(kPngSize + 4)};
    return std::nullopt;
}

std::vector<MadeRecord> RecordsOfOrdinaryFile(const std::wstring& path, const Bytes& bytes) {
    std::vector<MadeRecord> records;
    if (auto picture = PictureRecord(bytes)) return {*picture};
    if (!IsText(Characters(bytes))) {
        records.push_back({kFilesFormat, FormatNameOf(kFilesFormat), FileListOf(path)});
        return records;
    }
    const std::string_view text = Characters(bytes);
    if (text.starts_with("{\\rtf"))
        records.push_back(RegisteredRecord(L"Rich Text Format", WithZero(text)));
    else if (EndsWith(path, {L".html", L".htm"}) && IsUtf8(text))
        records.push_back(RegisteredRecord(L"HTML Format", PageWithHead(text)));
    else if (EndsWith(path, {L".svg"}))
        records.push_back(RegisteredRecord(L"image/svg+xml", BytesOf(text)));
    else
        AppendTexts(records, TextOfFile(text));
    return records;
}
