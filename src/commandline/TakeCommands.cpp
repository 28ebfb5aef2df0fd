#include "commandline/TakeCommands.h"

#include "commandline/OpenedProfile.h"
#include "commandline/Progress.h"
#include "engine/clipboard/ClipRecords.h"
#include "engine/clipboard/OrdinaryFile.h"
#include "engine/flows/Export.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

std::wstring WantedOutput(const CommandContext& context) {
    const std::wstring output = context.arguments.Of(L"--output");
    if (output.empty()) throw CommandError{L"Es fehlt -o mit dem Ziel."};
    return output;
}

// The record that the user names by its place, or by its name.
ClipRecord RecordNamed(const std::vector<ClipRecord>& records, const std::wstring& named) {
    const auto place = static_cast<std::size_t>(ParseInt32(named).value_or(0));
    if (place >= 1 && place <= records.size()) return records[place - 1];
    for (const ClipRecord& record : records)
        if (UpperCase(record.name) == UpperCase(named)) return record;
    throw CommandError{L"Der Clip hat kein Format \"" + named + L"\"."};
}

ClipRecord WantedRecord(const std::vector<ClipRecord>& records, const CommandContext& context) {
    const auto& values = context.arguments.Values();
    if (values.size() > 1) return RecordNamed(records, values[1]);
    const auto best = BestOfEachKind(records);
    if (best.empty())
        throw CommandError{L"Der Clip hat kein Format für eine gewöhnliche Datei; siehe show und --raw."};
    return best.front();
}

void WriteNewFile(const std::wstring& path, const std::vector<std::uint8_t>& bytes) {
    FilePort& files = ThePlatform().files;
    FileOwner file(files.Open(path, FileUse::NewOnly));
    if (!file.IsSet()) throw FileErrorOf(files.LastError(), path);
    const auto written = files.Write(file.Get(), bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (written == bytes.size()) return;
    const RuntimeError error =
        written ? RuntimeError(ErrorNumber::DiskFull) : FileErrorOf(files.LastError(), path);
    file = FileOwner();
    files.Remove(path);
    throw error;
}

}  // namespace

int RunExtract(const CommandContext& context) {
    const std::wstring output = WantedOutput(context);
    OpenedProfile profile(context.arguments.Of(L"--directory", kCurrentDirectory),
                          OpenedProfile::kForReading);
    const Node& clip = profile.Find(context.arguments.Values()[0], OpenedProfile::Wanted::Clip);
    if (!IsClipNode(&clip)) throw CommandError{L"Das ist kein Clip: " + clip.FullPath()};
    const std::wstring file = ClipFileOf(&clip);
    const ClipRecord record = WantedRecord(RecordsOf(file, AttributesOf(&clip).formatCount), context);
    const auto data = DataOf(file, record);
    const auto bytes = context.arguments.Has(L"--raw") ? std::optional(data) : OrdinaryBytes(record, data);
    if (!bytes)
        throw CommandError{L"Das Format \"" + record.name +
                           L"\" gibt es nicht als gewöhnliche Datei; siehe --raw."};
    WriteNewFile(output, *bytes);
    return 0;
}

int RunExport(const CommandContext& context) {
    const std::wstring output = WantedOutput(context);
    OpenedProfile profile(context.arguments.Of(L"--directory", kCurrentDirectory),
                          OpenedProfile::kForReading);
    const auto& values = context.arguments.Values();
    const Node* const node = values.empty() ? &profile.Top() : &profile.Find(values[0]);
    Export files({&node, 1}, output);
    {
        Progress progress(context.console, L"Export");
        while (files.Step())
            progress.Show(files.Done(), files.Count());
    }
    for (const std::wstring& failure : files.Failures())
        context.console.WriteError(failure + L"\n");
    context.console.Write(files.Summary() + L"\n");
    return files.Failures().empty() ? 0 : 1;
}
