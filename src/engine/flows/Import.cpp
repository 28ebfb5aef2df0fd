#include "engine/flows/Import.h"

#include <algorithm>
#include <utility>

#include "engine/clipboard/OrdinaryFile.h"
#include "engine/flows/NewClipFile.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

// What is larger is no text and no picture that a clipboard should hold: the way to it is enough.
constexpr std::int64_t kLargestContent = 256 * 1024 * 1024;
constexpr std::size_t kWritePiece = 1024 * 1024;

// None of a directory and of what is too large.
std::vector<std::uint8_t> ContentOf(const std::wstring& path) {
    FilePort& files = ThePlatform().files;
    if (files.IsDirectory(path)) return {};
    {
        const FileOwner file(files.Open(path, FileUse::Read));
        if (!file.IsSet()) throw FileErrorOf(files.LastError(), path);
        if (files.Size(file.Get()).value_or(0) > kLargestContent) return {};
    }
    return ReadWholeFile(path);
}

void WriteRecords(const NewClipFile& file, const std::vector<MadeRecord>& records) {
    FilePort& files = ThePlatform().files;
    std::vector<std::uint8_t> bytes;
    for (const MadeRecord& record : records)
        AppendRecord(bytes, record.id, record.name, record.data);
    for (std::size_t at = 0; at < bytes.size();) {
        const auto piece = static_cast<std::uint32_t>(std::min(kWritePiece, bytes.size() - at));
        const auto written = files.Write(file.Handle(), bytes.data() + at, piece);
        if (!written) throw FileErrorOf(files.LastError(), file.Path());
        if (*written != piece) throw RuntimeError(ErrorNumber::DiskFull);
        at += piece;
    }
}

// The file's, without its extension.
std::wstring ClipNameOf(const std::wstring& path) {
    const std::wstring file = path.substr(path.find_last_of(L"\\/") + 1);  // npos + 1 is 0
    const std::size_t dot = file.rfind(L'.');
    const std::wstring name = dot == std::wstring::npos || dot == 0 ? file : file.substr(0, dot);
    const std::wstring kept = Trim(WithoutLettersBeyondAnsi(name));
    return kept.empty() ? L"Datei" : kept;
}

bool IsOnlyTheWay(const std::vector<MadeRecord>& records, const std::wstring& path) {
    const MadeRecord& first = records.front();
    return !PathsIn({first.id, first.name, 0, 0}, first.data).empty() && !IsFullPath(path);
}

}  // namespace

Node* ImportFile(NodeCollection& nodes, Node& container, const std::wstring& path, std::wstring& why) {
    Node* clip = nullptr;
    const auto error = ErrorIn([&] {
        const auto records = RecordsOfOrdinaryFile(path, ContentOf(path));
        if (IsOnlyTheWay(records, path))
            throw RuntimeError(
                ErrorNumber::InvalidArgument,
                L"Von dieser Datei lässt sich nur der Weg aufnehmen, und der ist nicht vollständig");
        NewClipFile file(container);
        if (!file.IsOpen()) return;  // told
        WriteRecords(file, records);
        file.Close();
        clip = &AddClip(nodes, container, file, ClipNameOf(path), static_cast<std::int16_t>(records.size()));
        file.Keep();
    });
    why = error ? path + L": " + error->Description() : std::wstring();
    return clip;
}

Import::Import(NodeCollection& nodes, Node& container, std::vector<std::wstring> paths)
    : nodes_(nodes), container_(&container), paths_(std::move(paths)) {}

bool Import::Step() {
    Node* const container = container_.Get();
    if (next_ >= paths_.size() || container == nullptr) return false;
    std::wstring why;
    if (ImportFile(nodes_, *container, paths_[next_++], why) != nullptr)
        ++made_;
    else if (!why.empty())
        failures_.push_back(why);
    else
        Stop();
    return true;
}

std::wstring Import::Summary() const {
    const auto number = [](std::size_t count) { return NumberText(static_cast<std::int64_t>(count)); };
    std::wstring text = number(made_) + (made_ == 1 ? L" Datei" : L" Dateien") + L" aufgenommen";
    if (!failures_.empty()) text += L"; " + number(failures_.size()) + L" Fehler";
    return text + L".";
}
