#include "commandline/LookCommands.h"

#include "commandline/Json.h"
#include "commandline/OpenedProfile.h"
#include "engine/clipboard/ClipRecords.h"
#include "engine/clipboard/OrdinaryFile.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "engine/views/FormatTexts.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// A file that is missing or damaged has fewer than its tag counts, or none.
std::vector<ClipRecord> RecordsThere(const Node& clip) {
    std::vector<ClipRecord> records;
    ErrorIn([&] { records = RecordsOf(ClipFileOf(&clip), AttributesOf(&clip).formatCount); });
    return records;
}

std::int64_t SizeOf(const std::vector<ClipRecord>& records) {
    std::int64_t size = 0;
    for (const ClipRecord& record : records)
        size += record.size;
    return size;
}

const wchar_t* KindOf(const Node& node) {
    if (IsProfileNode(&node)) return L"profile";
    return IsClipNode(&node) ? L"clip" : L"folder";
}

std::wstring LineOf(const Node& node, int depth) {
    const NodeAttributes tag = AttributesOf(&node);
    std::wstring line(static_cast<std::size_t>(depth) * 2, L' ');
    if (!IsClipNode(&node)) return line + node.Text() + L"/" + (tag.info.empty() ? L"" : L"  " + tag.info);
    const auto records = RecordsThere(node);
    line += L"#" + NumberText(tag.clipNumber) + L" " + node.Text() + L"  " + tag.timeCaptured + L"  " +
            SizeText(SizeOf(records)) + L" ";
    for (const ClipRecord& record : records)
        line += (&record == records.data() ? L" " : L", ") + record.name;
    if (records.size() != static_cast<std::size_t>(std::max<std::int16_t>(tag.formatCount, 0)))
        line += L"  (" + NumberText(tag.formatCount) + L" Formate gezählt)";
    return line + (tag.info.empty() ? L"" : L"  " + tag.info);
}

void WriteJson(const Node& node, int depth, JsonText& json) {
    const NodeAttributes tag = AttributesOf(&node);
    json.BeginObject();
    json.Member(L"kind", std::wstring(KindOf(node)));
    json.Member(L"depth", depth);
    json.Member(L"path", node.FullPath());
    json.Member(L"name", node.Text());
    json.Member(L"info", tag.info);
    if (IsClipNode(&node)) {
        json.Member(L"number", tag.clipNumber);
        json.Member(L"captured", tag.timeCaptured);
        json.BeginArray(L"formats");
        for (const ClipRecord& record : RecordsThere(node)) {
            json.BeginObject();
            json.Member(L"number", record.id);
            json.Member(L"name", record.name);
            json.Member(L"size", record.size);
            json.EndObject();
        }
        json.EndArray();
    }
    json.EndObject();
}

// --- One clip ---

constexpr std::int32_t kFirstLook = 4096;  // bytes
constexpr std::size_t kShownLetters = 200;

// Line breaks become blanks, so that the text fits one line.
std::wstring Shortened(const std::wstring& text) {
    std::wstring line;
    for (const wchar_t c : text.substr(0, kShownLetters)) {
        const bool isBreak = c == L'\r' || c == L'\n' || c == L'\t';
        if (isBreak && !line.ends_with(L' ')) line += L' ';
        if (!isBreak) line += static_cast<std::uint32_t>(c) < 0x20 ? L'·' : c;
    }
    return text.size() > kShownLetters ? line + L" …" : line;
}

std::wstring FirstLook(const Node& clip, const ClipRecord& record) {
    const auto data = DataOf(ClipFileOf(&clip), record, kFirstLook);
    if (const auto size = PictureSizeOf(record, data))
        return NumberText(size->width) + L" x " + NumberText(size->height) + L" Pixel";
    std::wstring look = BeginningOfText(record, data);
    for (const std::wstring& path : PathsIn(record, data))
        look += (look.empty() ? L"" : L"; ") + path;
    return Shortened(look);
}

void WriteRecord(const Node& clip, const ClipRecord& record, std::size_t place, ConsolePort& console) {
    std::wstring look;
    const auto error = ErrorIn([&] { look = FirstLook(clip, record); });
    console.Write(L"  " + NumberText(static_cast<std::int64_t>(place)) + L"  " + record.name + L" (" +
                  NumberText(record.id) + L")  " + ExactSizeText(record.size) + L"\n");
    if (error) look = error->Description();
    if (!look.empty()) console.Write(L"       " + look + L"\n");
}

}  // namespace

int RunList(const CommandContext& context) {
    const auto& values = context.arguments.Values();
    OpenedProfile profile(values.empty() ? kCurrentDirectory : values[0], OpenedProfile::kForReading);
    JsonText json;
    const bool asJson = context.arguments.Has(L"--json");
    if (asJson) json.BeginArray();
    for (TreeWalk<const Node> walk(&profile.Top()); walk.InSubtree(); walk.Step()) {
        if (asJson)
            WriteJson(*walk.Current(), walk.Depth(), json);
        else
            context.console.Write(LineOf(*walk.Current(), walk.Depth()) + L"\n");
    }
    if (asJson) json.EndArray();
    if (asJson) context.console.Write(json.Text() + L"\n");
    return 0;
}

int RunShow(const CommandContext& context) {
    OpenedProfile profile(context.arguments.Of(L"--directory", kCurrentDirectory),
                          OpenedProfile::kForReading);
    const Node& clip = profile.Find(context.arguments.Values()[0], OpenedProfile::Wanted::Clip);
    if (!IsClipNode(&clip)) throw CommandError{L"Das ist kein Clip: " + clip.FullPath()};
    const NodeAttributes tag = AttributesOf(&clip);
    context.console.Write(clip.FullPath() + L"\nNummer:      " + NumberText(tag.clipNumber) +
                          L"\nErfasst:     " + tag.timeCaptured + L"\nInformation: " + tag.info +
                          L"\nDatei:       " + ClipFileOf(&clip) + L"\n");
    const auto records = RecordsOf(ClipFileOf(&clip), tag.formatCount);
    for (std::size_t i = 0; i < records.size(); ++i)
        WriteRecord(clip, records[i], i + 1, context.console);
    if (records.size() == static_cast<std::size_t>(std::max<std::int16_t>(tag.formatCount, 0))) return 0;
    throw CommandError{L"Von " + NumberText(tag.formatCount) + L" Formaten sind nur " +
                           NumberText(static_cast<std::int64_t>(records.size())) + L" ganz.",
                       1};
}
